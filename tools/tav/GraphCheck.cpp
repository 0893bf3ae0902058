#include "GraphCheck.h"

#include "Cycles.h"
#include "Terminal.h"

#include <tav/kit/StandardRuntime.h>

#include <QtCore/QHash>
#include <QtCore/QXmlStreamReader>

#include <optional>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// Data type by full port name.
using PortTypes = QHash<QString, QString>;

struct NodeText {
    QString name;
    unsigned index = 0;
    PortTypes inputs;
    PortTypes outputs;
    QStringList openPorts; // the ports whose elements are open, outermost first, by full name
};

/// One end of a connection as the text names it: a port of a node, or one of the compound's own.
struct End {
    bool isOutput = false; // seen by the connection: values come out of it
    QString node;          // null for the compound itself
    QString port;
    QString type;
    unsigned nodeIndex = 0;
};

struct ConnectionText {
    Position position;
    unsigned from;
    unsigned to;
};

/// The inside of a compound.
struct Scope {
    PortTypes inputs; // of the compound around, from outside
    PortTypes outputs;
    QHash<QString, NodeText> nodes;
    std::vector<QString> nodeNames;
    QSet<QString> annotations;
    QSet<QString> connected; // pairs that were looked at: one may stand twice, once from each side
    std::vector<ConnectionText> links;
};

class Check {
public:
    Check(QByteArray const& text, kit::StandardRuntime const* library)
        : m_text(text)
        , m_reader(text)
        , m_library(library)
    {
        // As the graph's reader sees it: a prefix makes another name.
        m_reader.setNamespaceProcessing(false);
    }

    CheckResult run()
    {
        qsizetype const lines = m_text.count('\n') + 1;
        for (quint64 token = 0; !m_reader.atEnd(); ++token) {
            if (token % 4096 == 0)
                showStage(QString("checking, line %1 of %2").arg(m_reader.lineNumber()).arg(lines));
            m_position = placeOfNextToken();
            m_last = m_reader.readNext();
            if (m_last == QXmlStreamReader::StartElement)
                start();
            else if (m_last == QXmlStreamReader::EndElement)
                end();
        }
        sortByPosition(m_result.problems);
        return std::move(m_result);
    }

private:
    /// The stream reader tells where a token ended: the next one begins there. Behind text it has taken
    /// the "<" already.
    Position placeOfNextToken() const
    {
        bool const ahead = m_last == QXmlStreamReader::Characters || m_reader.columnNumber() == 0;
        return {m_reader.lineNumber(), qMax<qint64>(1, m_reader.columnNumber() + (ahead ? 0 : 1))};
    }

    void say(Severity severity, QString const& text) { m_result.problems.push_back({severity, m_position, text}); }

    QString attribute(char const* name) const { return m_reader.attributes().value(QLatin1String(name)).toString(); }

    /// The graph's reader skips what does not belong where it stands, with all that is in it.
    void start()
    {
        QString const element = m_reader.name().toString();
        if (!belongs(m_open.isEmpty() ? QString() : m_open.last(), element)) {
            m_reader.skipCurrentElement();
            m_last = QXmlStreamReader::EndElement;
            return;
        }
        m_open.append(element);
        if (element == u"tavNode" || element == u"tavCompound")
            startNode(element == u"tavCompound");
        else if (element == u"port")
            startPort();
        else if (element == u"sub_root")
            startScope();
        else if (element == u"tavBackdrop" || element == u"tavStickyNote")
            noteAnnotation();
        else if (element == u"connection")
            checkConnection();
    }

    /// Of metadata and members nothing is judged: they belong nowhere here.
    static bool belongs(QString const& parent, QString const& element)
    {
        static QHash<QString, QStringList> const children = {
            {"", {"tavCompound"}},
            {"tavCompound", {"ports", "child_graph"}},
            {"tavNode", {"ports"}},
            {"ports", {"port"}},
            {"port", {"ports"}},
            {"child_graph", {"sub_root"}},
            {"sub_root", {"nodes", "backdrops", "sticky_notes", "connections"}},
            {"nodes", {"node", "compound"}},
            {"node", {"tavNode"}},
            {"compound", {"tavCompound"}},
            {"backdrops", {"tavBackdrop"}},
            {"sticky_notes", {"tavStickyNote"}},
            {"connections", {"connection"}},
        };
        auto const found = children.constFind(parent);
        return found != children.constEnd() && found->contains(element);
    }

    void end()
    {
        QString const element = m_open.takeLast();
        if (element == u"tavNode" || element == u"tavCompound")
            endNode();
        else if (element == u"port")
            m_nodes.back().openPorts.pop_back();
        else if (element == u"sub_root")
            endScope();
    }

    void startNode(bool isCompound)
    {
        NodeText node;
        node.name = attribute("name");
        if (!m_scopes.empty()) {
            Scope& scope = m_scopes.back();
            if (scope.nodes.contains(node.name))
                say(Severity::error, QString("there is a node \"%1\" in this graph already").arg(node.name));
            node.index = static_cast<unsigned>(scope.nodeNames.size());
            scope.nodeNames.push_back(node.name);
        }
        bool const isIO = (attribute("flag").toUInt() & eAnyIO) != 0;
        if (m_library && !isCompound && !isIO)
            judgeType(attribute("type"));
        m_nodes.push_back(std::move(node));
    }

    void judgeType(QString const& type)
    {
        if (m_library->knowsNodeType(type.toUtf8().constData()))
            return;
        say(Severity::error, QString("the library knows no node type \"%1\"").arg(type));
        m_result.unknownTypes.insert(type);
    }

    void endNode()
    {
        NodeText node = std::move(m_nodes.back());
        m_nodes.pop_back();
        if (!m_scopes.empty() && !m_scopes.back().nodes.contains(node.name))
            m_scopes.back().nodes.insert(node.name, node);
    }

    void startPort()
    {
        NodeText& node = m_nodes.back();
        bool const isInput = attribute("is_input") == u"yes";
        QString const name = attribute("name");
        QString const fullName = node.openPorts.isEmpty() ? name : node.openPorts.last() + '.' + name;
        node.openPorts.append(fullName);

        PortTypes& ports = isInput ? node.inputs : node.outputs;
        if (ports.contains(fullName)) {
            say(Severity::error, QString("the node \"%1\" has an %2 \"%3\" already")
                                     .arg(node.name, isInput ? "input" : "output", fullName));
            return;
        }
        ports.insert(fullName, attribute("type"));
    }

    void startScope()
    {
        Scope scope;
        scope.inputs = m_nodes.back().inputs;
        scope.outputs = m_nodes.back().outputs;
        m_scopes.push_back(std::move(scope));
    }

    void endScope()
    {
        sayCycles(m_scopes.back());
        m_scopes.pop_back();
    }

    void noteAnnotation()
    {
        QString const name = attribute("name");
        if (m_scopes.back().annotations.contains(name))
            say(Severity::error, QString("there is an annotation \"%1\" in this graph already").arg(name));
        m_scopes.back().annotations.insert(name);
    }

    void checkConnection()
    {
        static constexpr char const* names[] = {"output_port", "input_port", "inner_output_port", "inner_input_port"};
        std::vector<End> ends;
        bool complete = true;
        for (char const* name : names) {
            if (!m_reader.attributes().hasAttribute(QLatin1String(name)))
                continue;
            std::optional<End> const found = findEnd(name, attribute(name));
            complete = complete && found.has_value();
            if (found)
                ends.push_back(*found);
        }
        if (complete && ends.size() == 2)
            checkPair(ends[0], ends[1]);
        else if (complete)
            say(Severity::error, QString("the connection names %1 ports instead of 2").arg(ends.size()));
    }

    /// The port that one attribute names; says so when there is none.
    std::optional<End> findEnd(QString const& attributeName, QString const& text)
    {
        Scope const& scope = m_scopes.back();
        End end;
        // A compound's input is where values come out, as seen from inside.
        end.isOutput = attributeName == u"output_port" || attributeName == u"inner_input_port";
        if (attributeName.startsWith(u"inner_")) {
            PortTypes const& ports = attributeName == u"inner_input_port" ? scope.inputs : scope.outputs;
            auto const port = ports.find(text);
            if (port == ports.end()) {
                say(Severity::error, QString("the connection leads to \"%1\", but the compound has no such %2")
                                         .arg(text, end.isOutput ? "input" : "output"));
                return std::nullopt;
            }
            end.port = text;
            end.type = *port;
            return end;
        }
        return findNodeEnd(end, text) ? std::optional<End>(end) : std::nullopt;
    }

    /// Names of nodes and of ports may hold dots: whatever split fits is right.
    bool findNodeEnd(End& end, QString const& text)
    {
        Scope const& scope = m_scopes.back();
        QString knownNode;
        for (qsizetype dot = text.indexOf('.'); dot >= 0; dot = text.indexOf('.', dot + 1)) {
            auto const node = scope.nodes.find(text.left(dot));
            if (node == scope.nodes.end())
                continue;
            knownNode = node->name;
            PortTypes const& ports = end.isOutput ? node->outputs : node->inputs;
            auto const port = ports.find(text.mid(dot + 1));
            if (port == ports.end())
                continue;
            end.node = node->name;
            end.nodeIndex = node->index;
            end.port = port.key();
            end.type = *port;
            return true;
        }
        char const* const kind = end.isOutput ? "output" : "input";
        if (knownNode.isNull())
            say(Severity::error, QString("the connection leads to \"%1\", but there is no such node").arg(text));
        else
            say(Severity::error, QString("the connection leads to \"%1\", but the node \"%2\" has no such %3")
                                     .arg(text, knownNode, kind));
        return false;
    }

    void checkPair(End const& first, End const& second)
    {
        if (first.isOutput == second.isOutput) {
            say(Severity::error,
                QString("the connection leads from an %1 to an %1").arg(first.isOutput ? "output" : "input"));
            return;
        }
        Scope& scope = m_scopes.back();
        End const& from = first.isOutput ? first : second;
        End const& to = first.isOutput ? second : first;
        QString const pair = describe(from) + " to " + describe(to);
        if (scope.connected.contains(pair))
            return;
        scope.connected.insert(pair);
        if (from.type != to.type && from.type != u"any" && to.type != u"any")
            say(Severity::warning,
                QString("the connection %1 joins the types %2 and %3").arg(pair, from.type, to.type));
        if (!from.node.isNull() && !to.node.isNull())
            scope.links.push_back({m_position, from.nodeIndex, to.nodeIndex});
    }

    static QString describe(End const& end)
    {
        return end.node.isNull() ? '"' + end.port + '"' : '"' + end.node + '.' + end.port + '"';
    }

    void sayCycles(Scope const& scope)
    {
        Edges edges(scope.nodeNames.size());
        for (ConnectionText const& link : scope.links)
            edges[link.from].push_back(link.to);
        std::vector<unsigned> cycleOf(scope.nodeNames.size(), 0);
        std::vector<QString> texts;
        for (std::vector<unsigned> const& cycle : findCycles(edges)) {
            QStringList names;
            for (unsigned node : cycle) {
                names.append(scope.nodeNames[node]);
                cycleOf[node] = static_cast<unsigned>(texts.size()) + 1;
            }
            texts.push_back(names.join(", "));
        }
        std::vector<bool> said(texts.size(), false);
        for (ConnectionText const& link : scope.links) {
            unsigned const cycle = cycleOf[link.from];
            if (cycle == 0 || cycle != cycleOf[link.to] || said[cycle - 1])
                continue;
            said[cycle - 1] = true;
            m_result.problems.push_back(
                {Severity::note, link.position, "here begins a cycle of the nodes " + texts[cycle - 1]});
        }
    }

    QByteArray const& m_text;
    QXmlStreamReader m_reader;
    kit::StandardRuntime const* m_library;
    QXmlStreamReader::TokenType m_last = QXmlStreamReader::NoToken;
    Position m_position;
    QStringList m_open;            // the elements that are open, outermost first
    std::vector<NodeText> m_nodes; // the nodes and compounds whose elements are open
    std::vector<Scope> m_scopes;
    CheckResult m_result;
};

} // namespace

CheckResult checkGraph(QByteArray const& text, kit::StandardRuntime const* library)
{
    return Check(text, library).run();
}

} // namespace tool
