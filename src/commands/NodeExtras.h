#pragma once

#include "commands/WatchPointState.h"

#include <tav/Annotation.h>
#include <tav/Node.h>
#include <tav/StringArray.h>

#include <optional>
#include <vector>

namespace TAV_marlo_v1::detail {

/// What the text of a node, or of a compound, leaves out: states, messages, watch points, values that
/// text can't carry, and inside a compound some flags, some connections and the order of those at the ends
/// that text does not list. Ports and nodes are named by their place, which reading the text brings back.
class NodeExtras {
public:
    explicit NodeExtras(Node const& node);
    bool empty() const noexcept;
    void restore(Node& node) const;

private:
    /// A port of the node, or with `isInner` one that its compound has inside.
    struct PortPlace {
        PortIOType ioType;
        bool isInner;
        std::vector<unsigned> indices; // in the list, then in child lists
    };
    struct PortExtras {
        PortPlace place;
        std::optional<StringArray> values;
        std::optional<WatchPointState> watchPoint;
        PortFlags flags; // of an inner port that no IO node shows, otherwise none
    };
    /// One end of a connection inside the compound.
    struct End {
        unsigned node; // kNotFound: the port is the compound's own
        PortPlace place;
    };
    struct ConnectionOrder {
        End port;
        std::vector<End> others;
    };
    struct Message {
        String subject, text;
        MessageType type;
    };

    void notePorts(PortList const& list, bool isInner, bool notesFlags);
    void notePort(Port const& port, bool notesFlags);
    void noteCompound(Compound const& compound);
    void noteConnections(Compound const& compound, PortList const& list, bool isInner);
    void noteConnections(Compound const& compound, Port const& port);
    void noteAnnotationOrder(Compound const& compound);
    void noteOrder(Compound const& compound, Port const& port);
    static End endOf(Compound const& compound, Port const& port);
    static PortPlace placeOf(Port const& port);

    static Port* find(Node& node, PortPlace const& place);
    static Port* find(Compound& compound, End const& end);
    static void restorePort(Port& port, PortExtras const& extras);
    static void restoreOrder(Compound& compound, ConnectionOrder const& order);
    void restoreAnnotationOrder(Compound& compound) const;
    void restoreMessages(Node& node) const;

    NodeFlags m_flags;
    std::vector<NodeStateFlag> m_states;
    SharedTextRef m_typeDisplayName;
    std::vector<Message> m_messages;
    std::vector<PortExtras> m_ports;
    std::vector<std::pair<End, End>> m_unsaved; // connections inside the compound that its text leaves out
    std::vector<ConnectionOrder> m_orders;
    // The kinds in list order, unless all backdrops stand before all sticky notes, as they do in text.
    std::vector<Annotation::AnnotationType> m_annotationTypes;
    std::vector<std::pair<unsigned, NodeExtras>> m_nodes; // those inside that have any, by index
};

} // namespace TAV_marlo_v1::detail
