#pragma once

#include <tav/Annotation.h>
#include <tav/Node.h>

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <optional>
#include <vector>

namespace tool {

// Where an editor put things, as it left it in their metadata. The y axis points down.

/// The entry "uiPosition" of a node or of its compound.
std::optional<QPointF> storedPosition(TAV_marlo_v1::Node const& node);
/// The entry "coords": left, top, width and height.
std::optional<QRectF> storedArea(TAV_marlo_v1::Annotation const& annotation);
/// The entry "color" as "#rrggbb": so written, or as three numbers from 0 to 1.
std::optional<QString> storedColour(TAV_marlo_v1::Annotation const& annotation);

/// How much positions have to be spread so that boxes of these sizes, centred on them, stay apart:
/// editors use units of their own. Boxes at one place stay there.
double spreadFor(std::vector<QPointF> const& positions, std::vector<QSizeF> const& sizes);

} // namespace tool
