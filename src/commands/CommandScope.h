#pragma once

#include "commands/Address.h"
#include "host/ContainerLink.h"

#include <tav/ChangeBracket.h>
#include <tav/ChangeBracketClient.h>
#include <tav/Compound.h>
#include <tav/Container.h>

#include <optional>

namespace TAV_marlo_v1::detail {

/// The container that a command works in. A container that died leaves the command without one.
class CommandScope {
public:
    /// The first container counts; later calls change nothing.
    void setContainerOnce(Container* container)
    {
        if (!m_isSet && container) {
            m_container = ContainerLinkRef(container);
            m_isSet = true;
        }
    }
    void setContainer(Container* container)
    {
        m_container = ContainerLinkRef(container);
        m_isSet = container != nullptr;
    }
    Container* container() const noexcept { return m_container.get(); }
    Scene scene() const noexcept { return {container(), nullptr}; }

    /// For a part of a command, which always works within the bracket of the whole.
    void leaveBracketToWhole() noexcept { m_isPart = true; }
    /// Holds back what editors hear until the command is done.
    std::optional<ChangeBracket> openBracket()
    {
        if (m_isPart)
            return std::nullopt;
        Container* const present = container();
        return present ? present->createChangeBracket(&m_client) : ChangeBracket(&m_client);
    }

private:
    ContainerLinkRef m_container;
    bool m_isSet = false;
    bool m_isPart = false;
    ChangeBracketClient m_client;
};

/// The one compound or node that a command is aimed at, by the path that the host gave.
class CommandTarget {
public:
    void set(Container* container, char const* path)
    {
        m_scope.setContainer(container);
        m_path = path;
    }
    /// As set. @return whether the path leads to a node now
    bool setNode(Container* container, char const* path)
    {
        set(container, path);
        return static_cast<bool>(findNode());
    }
    /// As set. @return whether the path leads to a compound now
    bool setCompound(Container* container, char const* path)
    {
        set(container, path);
        return static_cast<bool>(findCompound());
    }
    AddRefWrapper<Node> findNode() const
    {
        Container const* const container = m_scope.container();
        return container ? container->findNodeFromPath(m_path.toChar()) : AddRefWrapper<Node>();
    }
    AddRefWrapper<Compound> findCompound() const
    {
        AddRefWrapper<Node> const node = findNode();
        return node ? node->getAsCompound() : AddRefWrapper<Compound>();
    }
    String const& path() const noexcept { return m_path; }
    CommandScope& scope() noexcept { return m_scope; }
    CommandScope const& scope() const noexcept { return m_scope; }

private:
    CommandScope m_scope;
    String m_path;
};

} // namespace TAV_marlo_v1::detail
