#pragma once

#include <pel_1_2/PELSink.h>

#include <string>

/// Appends each report to a file as one JSON object a line:
/// {"waypoint":"...","time":"...","attributes":{"...":"..."}}
/// The file is opened for each report, so that several processes may share it. Bytes that are not
/// UTF-8 are written as U+FFFD.
class PEL_API PELFileSink : public PELSink {
public:
    /// @param path UTF-8; a null path writes nothing
    explicit PELFileSink(char const* path);
    ~PELFileSink() override;
    void write(PELReport const& report) override;

    /// Whether every report so far reached the file.
    bool good() const noexcept { return m_good; }
    /// The line for a report, without the line feed.
    static std::string toJson(PELReport const& report);

private:
    std::string m_path;
    bool m_good = true;
};
