#pragma once

#include "persistence/GraphReader.h"

#include <tav/HostEditorNotifier.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

/// Marks the pending notifications of the notifiers that a change of a compound's contents reaches, so
/// that those of a change that failed can be dropped. A bracket must be open on them.
class PendingMarks {
public:
    explicit PendingMarks(Compound& compound);
    void drop() noexcept;

private:
    struct Mark {
        AddRefWrapper<Node> node; // that is the notifier, null for the container's
        HostEditorNotifier* notifier;
        std::size_t count;
    };

    void add(AddRefWrapper<Node> const& node, HostEditorNotifier& notifier);

    std::vector<Mark> m_marks;
};

/// Puts items that were read into the compound they were read for: asked, named and told of like any
/// that are added. When one is refused, or memory ends, everything is taken back and nobody hears of it.
class ItemCommit {
public:
    ItemCommit(Compound& target, StagedItems& items);
    ItemCommit(ItemCommit const&) = delete;
    ItemCommit& operator=(ItemCommit const&) = delete;

    /// The arrays to which the names are appended; null for none.
    struct Names {
        StringArray* nodes = nullptr;
        StringArray* annotations = nullptr;
        StringArray* sources = nullptr;
    };

    /// @return false, with the graph as it was, when an item was refused; error() says which
    bool run(Names const& names);
    std::string const& error() const noexcept { return m_error; }

private:
    bool addAll(Names const& names);
    bool addCompoundPorts(PortIOType outsideType);
    bool addNodes();
    bool addAnnotations();
    bool refuse(char const* what, char const* name);
    void collectNames(Names const& names);
    void handOutNames(Names const& names) noexcept;
    void takeBack() noexcept;

    Compound& m_target;
    AddRefWrapper<Node> m_owner;
    StagedItems& m_items;
    PendingMarks m_marks;
    std::string m_error;
    StringArray m_nodeNames;
    StringArray m_annotationNames;
    StringArray m_sourceNames;

    // What takeBack() takes back.
    std::vector<std::pair<PortList*, AddRefWrapper<Port>>> m_addedPorts;
    std::size_t m_addedNodes = 0;
    std::size_t m_addedAnnotations = 0;
    std::vector<std::pair<AddRefWrapper<Port>, AddRefWrapper<Port>>> m_addedLinks;
    std::vector<AddRefWrapper<Port>> m_addedWatchPoints;

    friend class InnerConnections;
};

} // namespace TAV_marlo_v1
