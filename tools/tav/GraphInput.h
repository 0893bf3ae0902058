#pragma once

#include "Problem.h"

#include <tav/kit/Document.h>
#include <tav/kit/StandardRuntime.h>

#include <QtCore/QByteArray>

#include <memory>
#include <string>
#include <vector>

namespace tool {

/// A graph text that was asked for on the command line.
class GraphInput {
public:
    /// @param path UTF-8; "-" is standard input
    explicit GraphInput(std::string const& path);

    /// How messages name it.
    QString const& name() const noexcept { return m_name; }
    bool isStandardInput() const noexcept { return m_path == "-"; }
    std::string const& path() const noexcept { return m_path; }
    QByteArray const& bytes() const noexcept { return m_bytes; }

    /// Reads the bytes. @return false, after a message, when they cannot be had
    bool read();
    /// Reads the bytes into the document. @return false with the reader's one problem
    bool open(TAV_marlo_v1::kit::Document& document, Problem& problem) const;

private:
    std::string m_path;
    QString m_name;
    QByteArray m_bytes;
};

/// Reads a graph and all that is wrong with it into a document; what makes it unreadable is reported.
bool openOrReport(GraphInput& input, TAV_marlo_v1::kit::Document& document);

/// As openOrReport, but reports and refuses any error in the graph too: what the reader mends by leaving it out is
/// not to get lost without a word when the graph is written.
bool openWholeOrReport(GraphInput& input, TAV_marlo_v1::kit::Document& document);

/// Reads a graph file into a document and finds the graph at a path of it, "/" being the whole.
/// @return empty, after a message, when there is none
TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> openCompound(std::string const& file, std::string const& path,
                                                                 TAV_marlo_v1::kit::Document& document);

/// Adds the library files of the command line. @return false, after a message, when one is unusable
bool addLibraries(TAV_marlo_v1::kit::StandardRuntime& runtime, std::vector<std::string> const& libraryFiles);
/// A runtime with the library files of the command line. @return null, after a message, when one is unusable
std::unique_ptr<TAV_marlo_v1::kit::StandardRuntime> makeRuntime(std::vector<std::string> const& libraryFiles);

} // namespace tool
