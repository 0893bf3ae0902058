#pragma once

#include <tav/NodeLibrary.h>
#include <tav/NodeLibraryNotifierClient.h>

#include "host/BackLink.h"
#include "host/ClientRegistry.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TAV_marlo_v1 {

struct NodeLibraryNotifierClient::Record : detail::ClientMemberships<NodeLibraryNotifierClient> {
    using ClientMemberships::ClientMemberships;
};

struct NodeLibrary::Impl {
    explicit Impl(NodeLibrary& library)
        : link(new detail::BackLink<NodeLibrary>(library))
    {
    }
    Impl(Impl const&) = delete;
    Impl& operator=(Impl const&) = delete;
    ~Impl() { link->cut(); }

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    /// The first definition of each name.
    using NameIndex = std::unordered_map<std::string, NodeDefinition*, Hash, std::equal_to<>>;
    /// Made anew if a definition was renamed since.
    NameIndex& index();

    detail::BackLink<NodeLibrary>* link;
    detail::BackLinkRef<NodeLibrary> parent;
    std::vector<AddRefWrapper<NodeDefinition>> definitions;
    std::vector<AddRefWrapper<NodeLibrary>> subLibraries;
    detail::ClientRegistry<NodeLibraryNotifierClient> clients;

    NameIndex names;
    unsigned long long namesAsOf = 0; // the count of renames when the index was made, from 1
};

class NodeLibraryAccess {
public:
    static detail::BackLink<NodeLibrary>* link(NodeLibrary* library) noexcept
    {
        return library ? library->m_impl->link : nullptr;
    }
    static void markFiled(NodeDefinition& definition) noexcept { definition.m_isFiled = true; }
};

namespace detail {
/// Counts the renames of filed definitions. A definition may be filed in several libraries, and knows
/// one of them at most: each library compares the count before it trusts its index.
unsigned long long& definitionRenames() noexcept;
} // namespace detail

} // namespace TAV_marlo_v1
