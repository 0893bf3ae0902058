#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Flaggable.h>
#include <tav/IndexedIteratable.h>
#include <tav/NiceNamable.h>
#include <tav/NodeDefinition.h>
#include <tav/ReferenceCounted.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

class NodeLibraryNotifierClient;

/// A tree of node definitions: each library holds definitions and sub-libraries, and keeps them alive.
class TAV_API NodeLibrary : public ReferenceCounted, public NiceNamable, public Flaggable<LibraryFlags> {
public:
    static AddRefWrapper<NodeLibrary> createNew(char const* name, char const* niceName);

    /// Nothing happens when the library holds a definition of that name.
    void addNode(AddRefWrapper<NodeDefinition> const& definition);
    /// Makes a definition and adds it. It is returned, naming this library as its parent, also when
    /// the name is taken and it was therefore not added.
    AddRefWrapper<NodeDefinition> addNode(char const* name, char const* niceName);
    /// The definition of that name in this library alone; empty when there is none. Constant time.
    AddRefWrapper<NodeDefinition> findNode(char const* name) const;
    unsigned getNumberOfNodes() const;
    AddRefWrapper<NodeDefinition> getNodeAt(unsigned index) const;
    using NodeDefs = IndexedIteratable<NodeLibrary, AddRefWrapper<NodeDefinition>, &NodeLibrary::getNumberOfNodes,
                                       &NodeLibrary::getNodeAt>;
    NodeDefs nodeDefs() const { return NodeDefs(*this); }

    /// Appends, without a check for duplicates. A library that this one is a part of changes nothing.
    void addSubLibrary(AddRefWrapper<NodeLibrary> const& library);
    /// An index past the end changes nothing.
    void removeSubLibraryAt(unsigned index);
    unsigned getNumberOfSubLibraries() const;
    AddRefWrapper<NodeLibrary> getSubLibraryAt(unsigned index) const;
    using SubLibraries = IndexedIteratable<NodeLibrary, AddRefWrapper<NodeLibrary>,
                                           &NodeLibrary::getNumberOfSubLibraries, &NodeLibrary::getSubLibraryAt>;
    SubLibraries subLibraries() const { return SubLibraries(*this); }
    /// Not owned; null for a root, and once the parent died or removed this library.
    NodeLibrary* parent() const noexcept;

    /// This library if the text is its name or nice name; else a direct sub-library of that name; else
    /// the first hit of the same search in each sub-library in order. The text is no path.
    AddRefWrapper<NodeLibrary> findLibrary(char const* name) const;
    /// Orders the definitions of this library alone by name, byte-wise.
    void sort();

    /// The client is not owned.
    void registerNotifierClient(NodeLibraryNotifierClient* client);
    void unregisterNotifierClient(NodeLibraryNotifierClient* client);
    unsigned peekNotifierClientCount() const;

protected:
    NodeLibrary(char const* name, char const* niceName);
    ~NodeLibrary() override;

private:
    void tell(ENodeLibraryChangeType type, unsigned index);

    friend class NodeLibraryAccess;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1
