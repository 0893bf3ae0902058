#include "Commands.h"
#include "EditRuntime.h"
#include "EditShell.h"
#include "EditTable.h"
#include "GraphInput.h"
#include "Terminal.h"

#include <tav/kit/Files.h>

#include <QtCore/QList>

#include <CLI/CLI.hpp>

#include <map>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

struct EditOptions {
    std::string file;
    std::string script;
    std::string output;
    std::vector<std::string> libraries;
    std::vector<std::string> plugins;
    bool undoAll = false;
    bool keepGoing = false;

    bool isFromTerminal() const { return script.empty() && isTerminal(stdin); }
    bool isFromStandardInput() const { return script.empty() || script == "-"; }
};

QByteArray textOf(kit::Document const& document)
{
    String const text = document.getTopCompound()->saveToString(nullptr);
    return QByteArray(text.toChar(), static_cast<qsizetype>(text.size()));
}

/// @return what went wrong, empty when nothing did
QString writeFile(std::string const& path, QByteArray const& bytes)
{
    StatusStr const status =
        kit::writeFile(path.c_str(), bytes.constData(), static_cast<unsigned long long>(bytes.size()));
    return QString::fromUtf8(status.getErrorString());
}

/// Talks to whoever runs the tool. The files of a script are written when it has been played to its end: one
/// that stops on the way leaves nothing.
class ToolHost final : public EditHost {
public:
    ToolHost(EditOptions const& options, kit::Document const& document)
        : m_options(options)
        , m_document(document)
        , m_isShell(options.isFromTerminal())
        , m_written(m_isShell ? textOf(document) : QByteArray())
    {
    }

    void print(std::string const& text) override
    {
        QByteArray const bytes = QByteArray::fromStdString(text);
        if (m_options.output == "-")
            std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
        else
            writeOut(bytes);
    }

    void note(std::string const& text) override
    {
        if (m_isShell)
            print(text + '\n');
    }

    void save(std::string const& path) override
    {
        std::string const target = path.empty() ? m_options.file : path;
        if (target == "-")
            throw EditError("expected a file: the graph comes from standard input");
        m_files[target] = textOf(m_document);
        if (!m_isShell)
            return;
        QString const wrong = writeFiles();
        if (!wrong.isEmpty())
            throw EditError(wrong.toStdString());
        m_written = textOf(m_document);
        note("wrote " + target);
    }

    /// Whoever leaves the shell is told what stays unwritten.
    void noteUnwritten()
    {
        if (m_options.output.empty() && m_written != textOf(m_document))
            note("the changes were not saved");
    }

    /// @return what went wrong, empty when nothing did
    QString writeFiles()
    {
        QString wrong;
        for (auto const& [path, bytes] : m_files) {
            wrong = writeFile(path, bytes);
            if (!wrong.isEmpty())
                break;
        }
        m_files.clear();
        return wrong;
    }

private:
    EditOptions const& m_options;
    kit::Document const& m_document;
    bool m_isShell;
    QByteArray m_written;                      // by the shell, last
    std::map<std::string, QByteArray> m_files; // asked for and not written yet
};

/// @return whether every line was played
bool playScript(GraphInput const& script, EditSession& session, bool keepGoing)
{
    bool isRight = true;
    int number = 0;
    auto const tell = [&](std::string const& wrong) {
        isRight = isRight && wrong.empty();
        if (!wrong.empty())
            writeError(script.name() + ':' + QString::number(number) + ": error: " + QString::fromStdString(wrong));
    };
    QByteArray const mark = "\xef\xbb\xbf"; // that some editors put in front of UTF-8
    QByteArray const text = script.bytes().startsWith(mark) ? script.bytes().mid(mark.size()) : script.bytes();
    for (QByteArray const& line : text.split('\n')) {
        ++number;
        tell(session.play(line.toStdString()));
        if (session.isOver() || (!isRight && !keepGoing))
            break;
    }
    if (isRight || keepGoing)
        tell(session.finish());
    return isRight;
}

bool writeResult(EditOptions const& options, ToolHost& host, kit::Document const& document)
{
    QString wrong = host.writeFiles();
    if (wrong.isEmpty() && options.output == "-")
        return writeOut(textOf(document));
    if (wrong.isEmpty() && !options.output.empty())
        wrong = writeFile(options.output, textOf(document));
    if (!wrong.isEmpty())
        writeError(wrong);
    return wrong.isEmpty();
}

ExitCode runEdit(EditOptions const& options)
{
    GraphInput input(options.file);
    if (input.isStandardInput() && options.isFromStandardInput()) {
        writeError("tav: standard input cannot be both the graph and the script");
        return eWrongUsage;
    }
    EditRuntime runtimes;
    kit::StandardRuntime* const runtime = runtimes.load(options.plugins, options.libraries);
    GraphInput script(options.script.empty() ? "-" : options.script);
    bool const isShell = options.isFromTerminal();
    if (!runtime || (!isShell && !script.read()))
        return eWrongInput;
    kit::Document document(runtime);
    if (!openWholeOrReport(input, document))
        return eWrongInput;

    ToolHost host(options, document);
    EditSession session(document, host);
    bool isRight = true;
    if (isShell) {
        runShell(session);
        host.noteUnwritten();
    } else {
        isRight = playScript(script, session, options.keepGoing);
    }
    if (!isRight && !options.keepGoing)
        return eWrongInput;
    if (options.undoAll && !session.undoAll()) {
        writeError("tav: an edit could not be taken back; nothing is written");
        return eWrongInput;
    }
    return writeResult(options, host, document) && isRight ? eRight : eWrongInput;
}

} // namespace

void addEditCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<EditOptions>();
    CLI::App* const command =
        app.add_subcommand("edit", "Changes a graph by a script of edits, or by those typed at a terminal.");
    command->add_option("FILE", options->file, "A graph file; \"-\" is standard input")->required();
    command->add_option("-s,--script", options->script,
                        "The script; \"-\", or none without a terminal, is standard input");
    command->add_option("-o,--output", options->output, "Writes the graph to this file; \"-\" is standard output");
    command->add_option("--library", options->libraries, "A library file with presets")->allow_extra_args(false);
    command->add_option("--plugin", options->plugins, "A plug-in: its presets, and its runtime for the graph")
        ->allow_extra_args(false);
    command->add_flag("--undo-all", options->undoAll, "Takes every edit back before -o writes the graph");
    command->add_flag("--keep-going", options->keepGoing, "Goes on behind a wrong line, and writes");
    command->footer(
        "A script has one edit a line. \"#\" starts a comment; a word with blanks stands in double quotes, with\n"
        "\\\" and \\\\ and \\n in it. \"/\" is the whole graph, \"/a/b\" a node, \"/a/b.out\" a port: of a compound "
        "its\n"
        "outside, of an IO node the inside. A wrong line gives \"script:line: error: text\" and ends the run with "
        "exit\n"
        "code 1 and no file written. Without -o nothing is written but what \"save\" asks for. With --undo-all the\n"
        "output is what \"tav format\" makes of the file: the file itself to the byte, if tav wrote it.\n\n"
        "Edits:\n"
        + editsAsText("")
        + "\nExamples:\n"
          "  tav edit scene.xml -s changes.txt -o changed.xml --library nodes.library.xml\n"
          "  echo 'set /blur.size 3' | tav edit scene.xml -o scene.xml\n"
          "  tav edit scene.xml");
    command->callback([options, &outcome] { outcome = runEdit(*options); });
}

} // namespace tool
