#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Instrumentable.h>
#include <tav/Namable.h>
#include <tav/NodeLibrary.h>
#include <tav/PortDataType.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

class Compound;
class Container;
class RuntimeNotifierClient;

/// What one evaluation back end brings: node libraries, port data types and capabilities. A plug-in
/// derives from it, constructs one and owns it. Each runtime counts as one user of the host.
class TAV_API Runtime : public Namable, public Instrumentable {
protected:
    /// `name` is the key under which the host files the runtime.
    explicit Runtime(char const* name);

public:
    ~Runtime() override;
    virtual void setNodeLibrary(AddRefWrapper<NodeLibrary> const& library);
    // MSVC puts virtual operations of one name into the table from the last to the first; declared the other
    // way round for it, they have the same places everywhere.
#if defined(_MSC_VER)
    virtual AddRefWrapper<NodeLibrary> getNodeLibrary() const;
    virtual AddRefWrapper<NodeLibrary> getNodeLibrary(AddRefWrapper<Compound> const& compound) const;
#else
    /// The library for nodes of that compound: the root library by default.
    virtual AddRefWrapper<NodeLibrary> getNodeLibrary(AddRefWrapper<Compound> const& compound) const;
    /// The root library; empty until one was set.
    virtual AddRefWrapper<NodeLibrary> getNodeLibrary() const;
#endif
    /// NodeLibrary::findLibrary of the root library.
    virtual AddRefWrapper<NodeLibrary> findLibrary(char const* name) const;
    /// Whether nodes, ports and annotations may be called that. By default every name is legal.
    virtual bool isLegalName(char const* name) const;
    virtual unsigned getNumberOfPortDataTypes() const;
#if defined(_MSC_VER)
    virtual AddRefWrapper<PortDataType> getPortDataType(unsigned index) const;
    virtual AddRefWrapper<PortDataType> getPortDataType(char const* name) const;
#else
    virtual AddRefWrapper<PortDataType> getPortDataType(char const* name) const;
    /// Empty past the end.
    virtual AddRefWrapper<PortDataType> getPortDataType(unsigned index) const;
#endif
    /// The type of that name, made with the default value if there is none yet.
    virtual AddRefWrapper<PortDataType> createPortDataType(char const* name, char const* defaultValue);
    /// Publishes a compound, or with `wholeGraph` the graph it is the top of, to the back end. By
    /// default nothing; `data` means what caller and runtime agree on.
    virtual void doPublishCompound(AddRefWrapper<Compound> const& compound, bool wholeGraph, void* data);

    /// The definition at "library/sub-library/definition", without the root library's own name; a bare
    /// definition name is looked for in the root and then depth first. Empty when there is none.
    AddRefWrapper<NodeDefinition> getNodeDefinitionFromPresetPath(char const* path) const;

    /// The containers are not owned. Clients are told in every case.
    void registerContainer(Container* container);
    void unregisterContainer(Container* container);
    unsigned getNumberOfContainers() const;
    /// In the order of the addresses; null past the end.
    Container* getContainerAt(unsigned index) const;
    /// Makes every registered container rebuild its compounds.
    void forceRebuildCompounds();

    void registerNotifierClient(RuntimeNotifierClient* client);
    void unregisterNotifierClient(RuntimeNotifierClient* client);

    /// No bit of `feature` is disabled.
    bool supports(UIFeatureFlag feature) const;
    void disableCapability(UIFeatureFlag feature);
    /// Replaces the whole set.
    void disableCapabilities(unsigned long long mask);

    /// The metadata names that connecting copies onto a compound port: "UIWidget" and "UIWidgetProp"
    /// from the start. Their order means nothing.
    void registerPortMetaDataToCopy(char const* name);
    void unregisterPortMetaDataToCopy(char const* name);
    void getPortMetaDatasToCopy(StringArray& names) const;

private:
    Runtime(Runtime const&) = delete;
    Runtime& operator=(Runtime const&) = delete;

    friend class Container;
    friend class Host;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1
