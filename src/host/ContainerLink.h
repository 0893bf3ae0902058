#pragma once

#include "host/BackLink.h"

namespace TAV_marlo_v1 {

class Container;
class HostEditorNotifier;
class Node;
class Runtime;

namespace detail {
/// One for each container, made on first use: its nodes do not dangle when it dies before them.
using ContainerLink = BackLink<Container>;
} // namespace detail

/// What the library itself may ask of a container. All of it is cheap.
class ContainerAccess {
public:
    /// Without a reference for the caller; null for a null container.
    static detail::ContainerLink* link(Container* container);
    static Node* topNode(Container const& container) noexcept;
    /// The container's notifier if a change must be told to it: somebody listens, or a bracket keeps
    /// changes for whoever registers meanwhile. Null otherwise.
    static HostEditorNotifier* activeNotifier(Container const& container) noexcept;
    /// Whether a bracket holds back every notifier of the graph.
    static bool isBracketed(Container const& container) noexcept;

    /// The runtimes where the container is registered, so that it can leave them when it dies.
    static void noteRuntime(Container& container, Runtime& runtime);
    static void forgetRuntime(Container& container, Runtime& runtime) noexcept;
};

namespace detail {

class ContainerLinkRef : public BackLinkRef<Container> {
public:
    ContainerLinkRef() noexcept = default;
    /// A null container makes an empty reference.
    explicit ContainerLinkRef(Container* container)
        : BackLinkRef(ContainerAccess::link(container))
    {
    }
};

} // namespace detail

} // namespace TAV_marlo_v1
