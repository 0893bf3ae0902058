#include "DotGraph.h"

#include "DotLabels.h"
#include "StoredLayout.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/Port.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/QtText.h>
#include <tav/WatchPoint.h>

#include <QtCore/QHash>

#include <algorithm>
#include <cmath>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

constexpr std::size_t kShortList = 24; // shown whole
constexpr std::size_t kMostRows = 64;
constexpr char kNodeHead[] = "#e6ebf0";
constexpr char kCompoundHead[] = "#cfe0f2";
constexpr char kBorderHead[] = "#f3e8d2";
constexpr char kNoteColour[] = "#fff6bf";

/// A port with those of its children, in order.
void collectPorts(PortList const& list, std::vector<AddRefWrapper<Port>>& ports)
{
    for (AddRefWrapper<Port> const& port : list) {
        ports.push_back(port);
        if (AddRefWrapper<PortList> const children = port->children())
            collectPorts(*children, ports);
    }
}

std::vector<AddRefWrapper<Port>> portsOf(PortList const& list)
{
    std::vector<AddRefWrapper<Port>> ports;
    collectPorts(list, ports);
    return ports;
}

QString typeOf(Port const& port)
{
    AddRefWrapper<PortDataType> const type = port.getDataType();
    return type ? toQString(type->getName()) : QString();
}

/// The port's own values. What is connected gets others.
QString valueOf(Port const& port, bool evenIfConnected = false)
{
    StringArray values;
    bool const counts = (evenIfConnected || !port.isConnected()) && port.getPortDefaultValues(values);
    return counts ? serializeToQString(values, ";") : QString();
}

/// A compound's nodes grouped by the backdrops that they lie on; the rest under null.
using Groups = QHash<Annotation const*, std::vector<AddRefWrapper<Node>>>;

/// The smallest backdrop that the place lies on.
Annotation const* backdropAt(Compound const& compound, QPointF place)
{
    Annotation const* found = nullptr;
    double smallest = 0;
    for (AddRefWrapper<Annotation> const& annotation : compound.annotations()) {
        std::optional<QRectF> const area = storedArea(*annotation);
        if (annotation->getType() != Annotation::eBackdrop || !area || !area->contains(place))
            continue;
        double const size = area->width() * area->height();
        if (!found || size < smallest) {
            found = annotation.get();
            smallest = size;
        }
    }
    return found;
}

QString titleOf(Annotation const& annotation)
{
    QString const title = toQString(annotation.getAnnotationMetaDataValue("title"));
    return title.isEmpty() && annotation.getType() == Annotation::eBackdrop ? toQString(annotation.getName()) : title;
}

class DotGraph {
public:
    explicit DotGraph(DotOptions const& options)
        : m_options(options)
    {
    }

    QByteArray run(Compound const& top)
    {
        m_text = "digraph tav {\n"
                 "graph [charset=\"UTF-8\", rankdir=LR, fontname=\"sans-serif\", fontsize=11, nodesep=0.25, "
                 "ranksep=0.9, labelloc=t, labeljust=l";
        // Parts that hang together with nothing stand side by side instead of in one endless column.
        m_text += m_options.storedPositions ? ", splines=true" : ", pack=24, packmode=\"array\"";
        m_text += "];\nnode [shape=plain, fontname=\"sans-serif\", fontsize=10];\n"
                  "edge [arrowsize=0.6, penwidth=1.3];\n";
        if (m_options.storedPositions)
            writePlacedContents(top);
        else
            writeContents(top, 0);
        writeConnections();
        QString const path = toQString(top.getAsNode()->getFullPathName().getName());
        m_text += "label=" + legendLabel(path == "/" ? toQString(top.getName()) : path, m_colours) + ";\n}\n";
        return m_text.toUtf8();
    }

private:
    QString newName() { return QString("n%1").arg(m_count++); }

    // ---- rows

    PortRow rowOf(Port const& port, QString const& anchor)
    {
        QString text = toQString(port.getFullName().getName());
        if (port.isFanIn())
            text += " +";
        if (port.getWatchPoint())
            text += QString(" ") + QChar(0x25c9);
        return {anchor, text, valueOf(port), m_colours.colourOf(typeOf(port))};
    }

    /// The rows for a list of ports, each remembered as the end of edges. In a long list those that are
    /// not connected share one row, and so do those beyond the limit.
    /// @param border the compound whose border is drawn: connections on either side count
    std::vector<PortRow> rowsOf(PortList const& list, QString const& node, QString const& prefix,
                                Compound const* border = nullptr)
    {
        std::vector<AddRefWrapper<Port>> const ports = portsOf(list);
        std::vector<PortRow> rows;
        std::size_t hidden = 0;
        QString const restAnchor = prefix + "rest";
        for (AddRefWrapper<Port> const& port : ports) {
            AddRefWrapper<Port> const inside = border ? border->getReversePort(port) : AddRefWrapper<Port>();
            bool const connected = port->isConnected() || (inside && inside->isConnected());
            bool const shown = ports.size() <= kShortList || (connected && rows.size() < kMostRows);
            QString const anchor = shown ? prefix + QString::number(rows.size()) : restAnchor;
            addEnd(port, node + ':' + anchor);
            if (inside)
                addEnd(inside, node + ':' + anchor);
            if (!shown) {
                ++hidden;
                continue;
            }
            rows.push_back(rowOf(*port, anchor));
            if (inside && rows.back().note.isEmpty() && !port->isConnected())
                rows.back().note = valueOf(*inside, /*evenIfConnected=*/true);
        }
        if (hidden > 0)
            rows.push_back({restAnchor, QString("%1 more").arg(hidden), {}, "#a0a0a0"});
        return rows;
    }

    void addEnd(AddRefWrapper<Port> const& port, QString const& end)
    {
        m_ends.insert(port.get(), end);
        if (port->getPortIOType() == eOutput)
            m_sources.push_back(port);
    }

    // ---- boxes

    BoxLabel boxOf(Node const& node, QString const& name)
    {
        AddRefWrapper<Compound> const compound = node.getAsCompound();
        QString subtitle = toQString(node.getNodeTypeDisplayName());
        if (compound)
            subtitle += QString(" (%1 inside)").arg(compound->nodes().size());
        return {toQString(node.getName()), subtitle, compound ? kCompoundHead : kNodeHead,
                rowsOf(node.inputs(), name, "i"), rowsOf(node.outputs(), name, "o")};
    }

    void writeBox(QString const& name, QString const& label, QString const& attributes = {})
    {
        m_text += name + " [label=" + label + attributes + "];\n";
    }

    /// The ports of a compound, seen from both sides at once: edges from outside end at the very row
    /// where those inside begin.
    void writeBorder(Compound const& compound, PortIOType side)
    {
        AddRefWrapper<Node> const owner = compound.getAsNode();
        PortList const& outside = side == eInput ? owner->inputs() : owner->outputs();
        if (outside.empty())
            return;
        QString const name = newName();
        std::vector<PortRow> const rows = rowsOf(outside, name, "p", &compound);
        QString const label = borderLabel(side == eInput ? "inputs" : "outputs", kBorderHead, rows);
        PortList const& inside = side == eInput ? compound.innerInputs() : compound.innerOutputs();
        AddRefWrapper<Node> const ioNode = compound.getAssociatedIONode(inside[0u]);
        if (m_options.storedPositions)
            m_placed.push_back({name, label, ioNode ? storedPosition(*ioNode) : std::nullopt, estimate(rows, {}, {})});
        else
            writeBox(name, label);
    }

    // ---- contents laid out by Graphviz

    void writeContents(Compound const& compound, int level)
    {
        writeBorder(compound, eInput);
        Groups groups;
        for (AddRefWrapper<Node> const& node : compound.nodes()) {
            std::optional<QPointF> const place = storedPosition(*node);
            groups[place ? backdropAt(compound, *place) : nullptr].push_back(node);
        }
        for (AddRefWrapper<Annotation> const& annotation : compound.annotations())
            writeAnnotation(*annotation, groups.value(annotation.get()), level);
        writeNodes(groups.value(nullptr), level);
        writeBorder(compound, eOutput);
    }

    void writeNodes(std::vector<AddRefWrapper<Node>> const& nodes, int level)
    {
        for (AddRefWrapper<Node> const& node : nodes) {
            if (node->testFlag(eAnyIO))
                continue; // the border shows its ports
            if (node->isCompound() && level < m_options.depth) {
                writeCluster(*node->getAsCompound(), level);
                continue;
            }
            QString const name = newName();
            writeBox(name, boxLabel(boxOf(*node, name)));
        }
    }

    void openCluster(QString const& label, QString const& fill, QString const& line)
    {
        m_text += QString("subgraph cluster_%1 {\nstyle=\"rounded,filled\"; margin=14; fillcolor=\"%2\"; color=\"%3\"; "
                          "label=")
                      .arg(newName(), fill, line);
        m_text += label + ";\n";
    }

    void writeCluster(Compound const& compound, int level)
    {
        AddRefWrapper<Node> const owner = compound.getAsNode();
        openCluster(headingLabel(toQString(compound.getName()), toQString(owner->getNodeTypeDisplayName())),
                    level % 2 == 0 ? "#f2f6fb" : "#e4edf7", "#8ba3bf");
        // A cluster without nodes would not be drawn at all.
        if (compound.nodes().empty() && owner->inputs().empty() && owner->outputs().empty())
            writeBox(newName(), "<empty>", ", fontcolor=\"#909090\"");
        writeContents(compound, level + 1);
        m_text += "}\n";
    }

    void writeAnnotation(Annotation const& annotation, std::vector<AddRefWrapper<Node>> const& nodes, int level)
    {
        QString const colour = storedColour(annotation).value_or(kNoteColour);
        QString const text = toQString(annotation.getAnnotationMetaDataValue("text"));
        if (!nodes.empty()) {
            openCluster(noteLabel(titleOf(annotation), text), colour, "#b0a890");
            writeNodes(nodes, level);
            m_text += "}\n";
            return;
        }
        bool const isNote = annotation.getType() == Annotation::eStickyNote;
        writeBox(newName(), noteLabel(titleOf(annotation), text),
                 QString(", shape=%1, style=\"filled%2\", fillcolor=\"%3\", color=\"#b0a890\"")
                     .arg(isNote ? "note" : "box", isNote ? "" : ",rounded", colour));
    }

    // ---- contents where the editor put them

    struct PlacedBox {
        QString name;
        QString label;
        std::optional<QPointF> place;
        QSizeF size;
    };

    /// About how large Graphviz will draw it, in points: it measures the text only when it draws.
    static QSizeF estimate(std::vector<PortRow> const& left, std::vector<PortRow> const& right, QString const& title)
    {
        auto const widest = [](std::vector<PortRow> const& rows) {
            qsizetype most = 0;
            for (PortRow const& row : rows)
                most =
                    std::max(most, std::min<qsizetype>(row.text.size(), 32) + std::min<qsizetype>(row.note.size(), 20));
            return most;
        };
        double const letters = static_cast<double>(std::max(widest(left) + widest(right) + 4, title.size()));
        double const rows = static_cast<double>(std::max(left.size(), right.size()) + 2);
        return {7 * letters + 20, 19 * rows};
    }

    void writePlacedContents(Compound const& compound)
    {
        writeBorder(compound, eInput);
        for (AddRefWrapper<Node> const& node : compound.nodes()) {
            if (node->testFlag(eAnyIO))
                continue;
            QString const name = newName();
            BoxLabel const box = boxOf(*node, name);
            m_placed.push_back({name, boxLabel(box), storedPosition(*node), estimate(box.left, box.right, box.title)});
        }
        writeBorder(compound, eOutput);
        double const spread = spreadOfPlaced();
        writePlacedAnnotations(compound, spread);
        writePlacedBoxes(spread);
    }

    double spreadOfPlaced() const
    {
        std::vector<QPointF> places;
        std::vector<QSizeF> sizes;
        for (PlacedBox const& box : m_placed) {
            if (!box.place)
                continue;
            places.push_back(*box.place);
            sizes.push_back(box.size);
        }
        return spreadFor(places, sizes);
    }

    static QString positionText(QPointF point)
    {
        return QString(", pos=\"%1,%2!\"").arg(point.x(), 0, 'f', 1).arg(-point.y(), 0, 'f', 1);
    }

    /// Boxes without a place stand in a row below the others, from their left end on.
    void writePlacedBoxes(double spread)
    {
        QRectF taken;
        for (PlacedBox const& box : m_placed) {
            if (box.place)
                taken |= QRectF(spread * *box.place - QPointF(box.size.width(), box.size.height()) / 2, box.size);
        }
        double left = taken.left();
        for (PlacedBox const& box : m_placed) {
            if (box.place) {
                writeBox(box.name, box.label, positionText(spread * *box.place));
                continue;
            }
            QPointF const point(left + box.size.width() / 2, taken.bottom() + 60 + box.size.height() / 2);
            writeBox(box.name, box.label, positionText(point));
            left += box.size.width() + 40;
        }
    }

    /// Before the nodes, so that these are drawn on top.
    void writePlacedAnnotations(Compound const& compound, double spread)
    {
        for (AddRefWrapper<Annotation> const& annotation : compound.annotations()) {
            QRectF const area = storedArea(*annotation).value_or(QRectF());
            QString const size = area.isEmpty() ? QString()
                                                : QString(", width=%1, height=%2, fixedsize=true")
                                                      .arg(spread * area.width() / 72, 0, 'f', 3)
                                                      .arg(spread * area.height() / 72, 0, 'f', 3);
            bool const isNote = annotation->getType() == Annotation::eStickyNote;
            writeBox(newName(),
                     noteLabel(titleOf(*annotation), toQString(annotation->getAnnotationMetaDataValue("text"))),
                     QString(", shape=%1, labelloc=t, style=\"filled%2\", fillcolor=\"%3\", color=\"#b0a890\"")
                             .arg(isNote ? "note" : "box", isNote ? "" : ",rounded",
                                  storedColour(*annotation).value_or(kNoteColour))
                         + size + positionText(spread * area.center()));
        }
    }

    // ---- connections

    /// What one port feeds would all stand in one column, which nobody can look over once it is long:
    /// then it is spread over several. Edges across columns cost time: a very long one stays as it is.
    static unsigned columnsFor(unsigned targets)
    {
        bool const isLong = targets > 16 && targets <= 300;
        return isLong ? static_cast<unsigned>(std::lround(std::sqrt(targets / 4.0))) : 1u;
    }

    void writeConnections()
    {
        for (AddRefWrapper<Port> const& source : m_sources) {
            QString const tail = m_ends.value(source.get());
            QString const colour = m_colours.colourOf(typeOf(*source));
            PortList const& targets = source->connectedTo();
            unsigned const columns = columnsFor(targets.size());
            for (unsigned i = 0; i < targets.size(); ++i) {
                QString const head = m_ends.value(targets[i].get());
                if (!head.isEmpty())
                    m_text += QString("%1:e -> %2:w [color=\"%3\", minlen=%4];\n")
                                  .arg(tail, head, colour)
                                  .arg(1 + i % columns);
            }
        }
    }

    DotOptions m_options;
    QString m_text;
    unsigned m_count = 0;
    TypeColours m_colours;
    QHash<Port const*, QString> m_ends;         // where in the picture a port is
    std::vector<AddRefWrapper<Port>> m_sources; // where connections begin
    std::vector<PlacedBox> m_placed;
};

} // namespace

QByteArray dotOf(Compound const& compound, DotOptions const& options)
{
    return DotGraph(options).run(compound);
}

} // namespace tool
