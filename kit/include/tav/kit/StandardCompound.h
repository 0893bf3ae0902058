#pragma once

#include <tav/kit/Export.h>

#include <tav/Compound.h>

namespace TAV_marlo_v1::kit {

/// A compound that makes its nodes from the presets of a StandardRuntime, and the compounds inside,
/// whether they are asked for or read from text. The runtime decides of what classes they are.
class TAV_KIT_API StandardCompound : public Compound {
public:
    /// Makes the compound of the owner node; a null `name` keeps the owner's.
    static AddRefWrapper<StandardCompound> createNew(AddRefWrapper<Node> const& owner, char const* name);

    /// @param flags eInputIO or eOutputIO, not both. @return empty for any other, or after a veto
    AddRefWrapper<Node> createIONode(NodeFlags flags) override;
    /// A taken name becomes the next free one; a null or empty one is "compound".
    /// @return empty after a veto, or when the runtime refuses the name
    AddRefWrapper<Compound> createNewCompound(char const* name) override;
    /// A copy of the preset at that path, under the next free name. A definition without text gives a
    /// node without ports. @return empty when the path leads nowhere, or after a veto
    AddRefWrapper<Node> createNodeFromPreset(char const* path) override;
    /// StandardRuntime::makeNode, if the runtime knows the type.
    AddRefWrapper<Node> createBareNode(char const* typeName, NodeFlags flags) override;
    /// StandardRuntime::makeCompound; a StandardCompound without such a runtime.
    AddRefWrapper<Node> createBareOwner(char const* typeName) override;
    AddRefWrapper<Compound> createBareCompound(AddRefWrapper<Node> const& owner, char const* typeName) override;

protected:
    StandardCompound(AddRefWrapper<Node> const& owner, char const* name);
    ~StandardCompound() override;
};

} // namespace TAV_marlo_v1::kit
