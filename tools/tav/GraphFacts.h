#pragma once

#include <tav/Compound.h>

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QString>

namespace tool {

/// What can be counted in a graph.
struct GraphFacts {
    QString name;
    QString type;
    qint64 nodes = 0;     ///< without compounds and IO nodes
    qint64 compounds = 0; ///< inside the graph
    qint64 ioNodes = 0;
    qint64 depth = 0;  ///< levels of compounds inside each other; 0 for none
    qint64 inputs = 0; ///< of nodes and compounds, seen from outside; so for outputs
    qint64 outputs = 0;
    qint64 connections = 0; ///< each once
    qint64 backdrops = 0;
    qint64 stickyNotes = 0;
    QMap<QString, qint64> types; ///< how many nodes, compounds included, bear each type
};

GraphFacts countFacts(TAV_marlo_v1::Compound const& top);
QJsonObject toJson(GraphFacts const& facts);

} // namespace tool
