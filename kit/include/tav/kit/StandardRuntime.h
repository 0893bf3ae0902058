#pragma once

#include <tav/kit/Export.h>

#include <tav/Compound.h>
#include <tav/Node.h>
#include <tav/NodeDefinition.h>
#include <tav/Runtime.h>
#include <tav/StatusStr.h>
#include <tav/String.h>

#include <memory>

namespace TAV_marlo_v1::kit {

/// A runtime with the usual data types and a node library that is filled from library files.
///
/// The data types are bool, int, float, string, float2, float3, float4, color, the enumerations
/// interpolation and blend_mode, and any. Vectors and colours hold one value for each component.
///
/// A library file is the text of a compound of type "library". Compounds of that type in it are
/// sub-libraries; every other node or compound is a definition, named as the node is, and a preset:
/// nodes are made from its text. The metadata entry "uiname" gives a definition its nice name.
///
/// A runtime with classes of its own derives from it and overrides makeNode and makeCompound.
class TAV_KIT_API StandardRuntime : public Runtime {
public:
    explicit StandardRuntime(char const* name = "standard");
    ~StandardRuntime() override;

    /// Puts the library below the root library, under the name that the text gives it: its definitions
    /// have the preset paths "library/sub-library/definition".
    /// @param sourceName stands in front of an error message
    /// @return the error, with nothing added: text that can't be used, another root, a name that is taken
    [[nodiscard]] StatusStr addLibraryFromText(char const* text, char const* sourceName);
    /// As addLibraryFromText, for the file at that path (UTF-8).
    [[nodiscard]] StatusStr addLibraryFile(char const* path);

    /// Whether a definition bears that name or makes nodes of that type: a preset may be called otherwise
    /// than what it makes, and several presets may make the same.
    bool knowsNodeType(char const* type) const;

    // What a StandardCompound of this runtime, and a Document, make their objects by.

    /// A node outside of any graph, without name, type and ports. Here a plain Node.
    virtual AddRefWrapper<Node> makeNode(Container* container, char const* type);
    /// The compound of the owner node, already set as its owned compound. Here a StandardCompound.
    virtual AddRefWrapper<Compound> makeCompound(AddRefWrapper<Node> const& owner, char const* type);

    /// The graph text that nodes of this definition are made from, rooted at "tavNode" or "tavCompound";
    /// "" for a definition that came from somewhere else.
    static String getPresetText(AddRefWrapper<NodeDefinition> const& definition);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1::kit
