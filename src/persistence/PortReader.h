#pragma once

#include "persistence/DataTypeLookup.h"
#include "persistence/ElementSource.h"
#include "persistence/ReadAttributes.h"

#include <tav/Types.h>

#include <vector>

namespace TAV_marlo_v1 {

class Compound;
class Port;
class PortList;

/// Makes ports of nodes and compounds that are in no graph yet from "port" elements. A handler begins
/// with one of the three operations at the start tag and hands everything on while the reader is active.
/// Nobody is asked or told.
class PortReader {
public:
    PortReader(ElementSource& source, DataTypeLookup& types) noexcept
        : m_source(source)
        , m_types(types)
    {
    }

    /// A port at the end of a node's list.
    void beginNodePort(PortList& list, PortAttributes const& attributes);
    /// Both sides of a compound port; the text is about the inner or about the outer one.
    void beginCompoundPort(Compound& compound, PortIOType outsideType, PortAttributes const& attributes,
                           bool textIsInner);
    /// A port that is there already: its flags, values, children and members are replaced.
    void beginKnownPort(Port& port, PortAttributes const& attributes);

    /// A port without owner: everything but its name, type and direction. Of several values the text's
    /// outer ones count.
    void beginFreePort(Port& port, PortAttributes const& attributes);

    bool isActive() const noexcept { return !m_states.empty(); }
    /// Leaves what is open where it is: the text is read from its beginning again.
    void abandon() noexcept;
    void startElement(std::string_view name, ElementAttributes const& attributes);
    void endElement();

private:
    enum class State : unsigned char { Port, Metadatas, Entry, Children, Members, Member };

    /// A port whose element is open.
    struct Level {
        Port* port;
        bool isNew;
    };

    bool enter(State state, std::string_view name, ElementAttributes const& attributes);
    void enterPort(Port& port, bool isNew);
    void enterEntry(ElementAttributes const& attributes);
    void enterChild(ElementAttributes const& attributes);
    void enterMember(ElementAttributes const& attributes);
    void leavePort();

    Port& append(PortList& list, PortAttributes const& attributes);
    void update(Port& port, PortAttributes const& attributes);
    void applyFlags(Port& port, std::uint32_t flags);
    void applyOptions(Port& port, PortAttributes const& attributes);
    void applyValues(Port& port, PortAttributes const& attributes);

    ElementSource& m_source;
    DataTypeLookup& m_types;
    std::vector<State> m_states;
    std::vector<Level> m_levels;
    unsigned m_skipDepth = 0; // within an element that is not known
};

/// The other side of a compound port, or of a child of one; children that the other side lacks are made.
/// Null for any other port.
Port* ensureTwin(Port& port);

} // namespace TAV_marlo_v1
