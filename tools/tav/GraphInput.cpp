#include "GraphInput.h"

#include "GraphCheck.h"
#include "Terminal.h"

#include <tav/kit/Files.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

constexpr int kStandardInput = 0;

/// A message of the kit without the name of its source, which the report puts there itself.
Problem problemFrom(StatusStr const& status, QString const& sourceName)
{
    QString const message = QString::fromUtf8(status.getErrorString());
    QString const prefix = sourceName + ": ";
    return problemFromMessage(message.startsWith(prefix) ? message.mid(prefix.size()) : message);
}

QString readProblem(QFile& file, std::string const& path, QByteArray& bytes)
{
    // By its descriptor: as a stream, the end of what is piped in would be an error on Windows.
    bool const opened = path == "-" ? file.open(kStandardInput, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!opened)
        return file.errorString();
    constexpr qint64 pieceSize = qint64(16) << 20;
    if (!file.isSequential())
        bytes.reserve(file.size());
    QString const name = shortName(file.fileName());
    for (QByteArray piece = file.read(pieceSize); !piece.isEmpty(); piece = file.read(pieceSize)) {
        bytes.append(piece);
        showStage(QString("reading %1, %2 MB").arg(name).arg(bytes.size() / 1000000));
    }
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

} // namespace

GraphInput::GraphInput(std::string const& path)
    : m_path(path)
    , m_name(path == "-" ? QString("<stdin>") : QString::fromStdString(path))
{
}

bool GraphInput::read()
{
    QFile file(QString::fromStdString(m_path));
    QString problem = QString::fromUtf8(kit::pathFault(m_path.c_str()).toChar());
    if (problem.isEmpty())
        problem = QFileInfo(file).isDir() ? QString("it is a folder") : readProblem(file, m_path, m_bytes);
    if (problem.isEmpty())
        return true;
    report(m_name, {{Severity::error, {}, "cannot be read: " + problem}});
    return false;
}

bool GraphInput::open(kit::Document& document, Problem& problem) const
{
    showSilentStage(QString("building the graph of %1, %2 MB").arg(shortName(m_name)).arg(m_bytes.size() / 1000000),
                    m_bytes.size());
    StatusStr const status = document.openText(m_bytes.constData(), static_cast<unsigned long long>(m_bytes.size()),
                                               m_name.toUtf8().constData());
    problem = !status ? problemFrom(status, m_name) : Problem{};
    return problem.text.isEmpty();
}

bool openOrReport(GraphInput& input, kit::Document& document)
{
    if (!input.read())
        return false;
    Problem problem{};
    if (input.open(document, problem))
        return true;
    report(input.name(), {problem});
    return false;
}

bool openWholeOrReport(GraphInput& input, kit::Document& document)
{
    if (!openOrReport(input, document))
        return false;
    Problems const problems = checkGraph(input.bytes(), nullptr).problems;
    if (countOf(problems, Severity::error) == 0)
        return true;
    report(input.name(), problems);
    return false;
}

AddRefWrapper<Compound> openCompound(std::string const& file, std::string const& path, kit::Document& document)
{
    GraphInput input(file);
    if (!openOrReport(input, document))
        return {};
    AddRefWrapper<Node> const node = document.findNodeFromPath(path.c_str());
    AddRefWrapper<Compound> const compound = node ? node->getAsCompound() : AddRefWrapper<Compound>();
    if (!compound) {
        char const* const what = node ? "is a node without a graph inside" : "leads to no node";
        report(input.name(), {{Severity::error, {}, QString("the path \"%1\" %2").arg(path.c_str(), what)}});
    }
    return compound;
}

bool addLibraries(kit::StandardRuntime& runtime, std::vector<std::string> const& libraryFiles)
{
    for (std::string const& path : libraryFiles) {
        GraphInput library(path);
        if (!library.read())
            return false;
        StatusStr const status =
            runtime.addLibraryFromText(library.bytes().constData(), library.name().toUtf8().constData());
        if (!status) {
            report(library.name(), {problemFrom(status, library.name())});
            return false;
        }
    }
    return true;
}

std::unique_ptr<kit::StandardRuntime> makeRuntime(std::vector<std::string> const& libraryFiles)
{
    auto runtime = std::make_unique<kit::StandardRuntime>();
    return addLibraries(*runtime, libraryFiles) ? std::move(runtime) : nullptr;
}

} // namespace tool
