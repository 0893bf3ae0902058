#include "BuildInfo.h"

#include <cstdio>
#include <cstdlib>

#if defined(_WIN32)
#    include <io.h>
#endif

namespace TAV_marlo_v1 {

namespace {

bool hasStandardError()
{
#if defined(_WIN32)
    return _fileno(stderr) >= 0;
#else
    return fileno(stderr) >= 0;
#endif
}

/// The library's answer, at load, to whoever wants to know which build was loaded.
bool writeBuildInformationIfAsked()
{
    char const* const asked = std::getenv("TANAGER_DUMP_VERSION_INFO");
    if (!asked || std::strtol(asked, nullptr, 10) == 0 || !hasStandardError())
        return false;
    namespace build = detail::build;
    std::fprintf(stderr, "%16s: %s version %u.%u.%u (%s, build %u, commit %.7s, branch %s)\n", "TAV", "Tav",
                 build::kVersionMajor, build::kVersionMinor, build::kVersionPatch, build::kBuildDateTime,
                 build::kBuildNumber, build::kCommit, build::kBranch);
    std::fflush(stderr);
    return true;
}

[[maybe_unused]] bool const s_wroteAtLoad = writeBuildInformationIfAsked();

} // namespace

} // namespace TAV_marlo_v1
