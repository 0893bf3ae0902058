#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace tool {

/// Has Graphviz lay out and draw a graph. Its programs are called, not its library: what goes wrong
/// in there with an odd graph then is a message and not a crash.
/// @param program "dot", or "neato" for nodes that have a place
/// @param format "svg" or "png"
/// @return false with the reason in `error`
bool drawWithGraphviz(QString const& program, QString const& format, QByteArray const& dotText, QByteArray& picture,
                      QString& error);

} // namespace tool
