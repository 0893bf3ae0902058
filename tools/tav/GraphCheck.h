#pragma once

#include "Problem.h"

#include <QtCore/QByteArray>
#include <QtCore/QSet>

namespace TAV_marlo_v1::kit {
class StandardRuntime;
}

namespace tool {

/// What is to be said about a graph text that the reader accepts: the reader mends what it can and
/// tells nothing of places, so this reads the text once more, for what is in it and where.
struct CheckResult {
    Problems problems; ///< in the order of their places
    QSet<QString> unknownTypes;
};

/// @param library null: node types are not judged
CheckResult checkGraph(QByteArray const& text, TAV_marlo_v1::kit::StandardRuntime const* library);

} // namespace tool
