#include "EditShell.h"

#include "EditCompletion.h"
#include "Terminal.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#if defined(TAV_HAS_LINE_EDITING)
#    include <histedit.h>
#endif

namespace tool {

namespace {

constexpr char kPrompt[] = "tav> ";

#if defined(TAV_HAS_LINE_EDITING)

char const* promptOf(EditLine*)
{
    return kPrompt;
}

void showChoices(Words const& words)
{
    std::string text = "\n";
    for (std::string const& word : words)
        text += word + "  ";
    std::fputs((text + '\n').c_str(), stdout);
}

/// Replaces the word at the cursor by what it can only become, or shows what it may become.
unsigned char completeWord(EditLine* editor, int)
{
    void* document = nullptr;
    el_get(editor, EL_CLIENTDATA, &document);
    LineInfo const* const info = el_line(editor);
    std::string_view const line(info->buffer, static_cast<std::size_t>(info->cursor - info->buffer));
    Completions const found = completionsOf(*static_cast<TAV_marlo_v1::kit::Document const*>(document), line);
    if (found.words.empty())
        return CC_REFRESH_BEEP;

    std::string const typed(line.substr(found.begin));
    std::string becomes = found.common();
    if (found.words.size() > 1 && (becomes.size() <= typed.size() || becomes.compare(0, typed.size(), typed) != 0)) {
        showChoices(found.words);
        return CC_REDISPLAY;
    }
    if (found.isWhole())
        becomes += ' ';
    // Counted in characters, as the editor does.
    auto const isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; };
    el_deletestr(editor, static_cast<int>(std::count_if(typed.begin(), typed.end(), isFirstByte)));
    return el_insertstr(editor, becomes.c_str()) == 0 ? CC_REFRESH : CC_REFRESH_BEEP;
}

/// Lines with a history and completion.
class Lines {
public:
    explicit Lines(EditSession& session)
        : m_editor(el_init("tav", stdin, stdout, stderr))
        , m_history(history_init())
    {
        HistEvent event;
        history(m_history, &event, H_SETSIZE, 1000);
        history(m_history, &event, H_SETUNIQUE, 1);
        el_set(m_editor, EL_CLIENTDATA, static_cast<void*>(&session.document()));
        el_set(m_editor, EL_PROMPT, promptOf);
        el_set(m_editor, EL_EDITOR, "emacs");
        el_set(m_editor, EL_SIGNAL, 1);
        el_set(m_editor, EL_HIST, history, m_history);
        el_set(m_editor, EL_ADDFN, "tav-complete", "completes the word", completeWord);
        el_set(m_editor, EL_BIND, "^I", "tav-complete", nullptr);
    }
    Lines(Lines const&) = delete;
    Lines& operator=(Lines const&) = delete;
    ~Lines()
    {
        history_end(m_history);
        el_end(m_editor);
    }

    std::optional<std::string> next()
    {
        int size = 0;
        char const* const text = el_gets(m_editor, &size);
        if (!text || size <= 0) {
            std::fputs("\n", stdout);
            return {};
        }
        std::string line(text, static_cast<std::size_t>(size));
        HistEvent event;
        if (line.find_first_not_of(" \t\r\n") != std::string::npos)
            history(m_history, &event, H_ENTER, line.c_str());
        while (!line.empty() && line.back() == '\n')
            line.pop_back();
        return line;
    }

private:
    EditLine* m_editor;
    History* m_history;
};

#else

/// Lines as the terminal gives them.
class Lines {
public:
    explicit Lines(EditSession&) {}

    std::optional<std::string> next()
    {
        std::fputs(kPrompt, stdout);
        std::fflush(stdout);
        return readTypedLine();
    }
};

#endif

} // namespace

void runShell(EditSession& session)
{
    Lines lines(session);
    while (!session.isOver()) {
        std::optional<std::string> const line = lines.next();
        if (!line)
            break;
        std::string const wrong = session.play(*line);
        if (!wrong.empty())
            writeError(QString::fromStdString("error: " + wrong));
    }
}

} // namespace tool
