#include "EditSession.h"

#include "EditActions.h"
#include "EditTable.h"

#include <tav/CopyPasteCommandBase.h>

#include <charconv>

using namespace TAV_marlo_v1;

namespace tool {

EditSession::EditSession(kit::Document& document, EditHost& host)
    : m_document(document)
    , m_host(host)
    , m_stack(&document)
{
    CopyPasteCommandBase::setUseLocalClipboard(true); // what is copied stays in the script
}

std::string EditSession::play(std::string_view line)
{
    try {
        Words words = wordsOf(line);
        if (words.empty())
            return {};
        m_line = line;
        Edit const& edit = takeEdit(words);
        edit.check(words);
        edit.play(*this, words);
        return {};
    } catch (EditError const& error) {
        return error.what();
    }
}

std::string EditSession::finish()
{
    if (m_openGroups == 0)
        return {};
    for (; m_openGroups > 0; --m_openGroups)
        m_stack.endMacro();
    return R"(expected "end" for each "begin", found the end of the script)";
}

bool EditSession::undoAll()
{
    finish();
    bool isWhole = true;
    while (m_stack.canUndo())
        isWhole = m_stack.undo() && isWhole;
    return isWhole;
}

bool EditSession::redoAll()
{
    bool isWhole = true;
    while (m_stack.canRedo())
        isWhole = m_stack.redo() && isWhole;
    return isWhole;
}

void EditSession::requireNoGroup() const
{
    if (m_openGroups > 0)
        throw EditError(R"(expected "end" first: a "begin" is open)");
}

void EditSession::undo(unsigned count)
{
    requireNoGroup();
    if (m_stack.index() < count)
        throw EditError("expected at most " + std::to_string(m_stack.index()) + ", the number of edits to take back");
    for (unsigned i = 0; i < count; ++i) {
        m_host.note(std::string("taken back: ") + m_stack.undoText().toChar());
        if (!m_stack.undo())
            throw EditError("the edit could not be taken back wholly");
    }
}

void EditSession::redo(unsigned count)
{
    requireNoGroup();
    if (redoCount() < count)
        throw EditError("expected at most " + std::to_string(redoCount()) + ", the number of edits to make again");
    for (unsigned i = 0; i < count; ++i) {
        m_host.note(std::string("made again: ") + m_stack.redoText().toChar());
        if (!m_stack.redo())
            throw EditError("the edit could not be made again wholly");
    }
}

void EditSession::beginGroup(std::string const& text)
{
    m_stack.beginMacro(text.c_str());
    ++m_openGroups;
}

void EditSession::endGroup()
{
    if (m_openGroups == 0)
        throw EditError(R"(found "end" without "begin")");
    m_stack.endMacro();
    --m_openGroups;
}

// ---- the edits that are the session's own

namespace {

/// The number of edits that the words name, one without a word.
unsigned countOf(Words const& words)
{
    if (words.empty())
        return 1;
    unsigned count = 0;
    char const* const end = words[0].c_str() + words[0].size();
    auto const [stop, error] = std::from_chars(words[0].c_str(), end, count);
    if (error != std::errc() || stop != end || count == 0)
        throw EditError("expected a number of edits, found \"" + words[0] + '"');
    return count;
}

} // namespace

void undo(EditSession& session, Words const& words)
{
    session.undo(countOf(words));
}

void redo(EditSession& session, Words const& words)
{
    session.redo(countOf(words));
}

void beginGroup(EditSession& session, Words const& words)
{
    session.beginGroup(words[0]);
}

void endGroup(EditSession& session, Words const&)
{
    session.endGroup();
}

void save(EditSession& session, Words const& words)
{
    session.host().save(words.empty() ? std::string() : words[0]);
}

void quit(EditSession& session, Words const&)
{
    session.quit();
}

} // namespace tool
