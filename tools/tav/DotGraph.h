#pragma once

#include <tav/Compound.h>

#include <QtCore/QByteArray>

namespace tool {

struct DotOptions {
    int depth = 0;                ///< levels of nested compounds that are opened
    bool storedPositions = false; ///< nodes where the editor put them; opens no compound
};

/// The graph in Graphviz's language.
QByteArray dotOf(TAV_marlo_v1::Compound const& compound, DotOptions const& options);

} // namespace tool
