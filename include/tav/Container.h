#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Annotation.h>
#include <tav/ChangeBracket.h>
#include <tav/ChangeBracketClient.h>
#include <tav/HostEditorNotifier.h>
#include <tav/Node.h>
#include <tav/Port.h>
#include <tav/String.h>
#include <tav/Types.h>

#include <cstdint>
#include <memory>

namespace TAV_marlo_v1 {

class Runtime;

/// The host's holder of one top-level graph. The host derives from it and supplies five answers.
///
/// An editor registered with getEditorNotifier() hears every change anywhere in the graph in the
/// order in which they happen. A bracket on the container holds back every notifier of the graph:
/// when the outermost one closes, the container's editors get their batch first, then each node's
/// editors, in the order in which the nodes got their first change.
class TAV_API Container : public ChangeBracketClient {
public:
    enum ESearchIOType : std::uint32_t { eSearchInput = 0, eSearchOutput = 1, eSearchAnyIO = 2 };
    enum ESearchMode : std::uint32_t {
        eSearchOwnPorts = 0,   ///< the node's own ports
        eSearchChildPorts = 1, ///< and their child and member ports
        eSearchAllPorts = 2    ///< and, of a compound, the ports seen from inside
    };

    Container();
    Container(Container const&) = delete;
    Container& operator=(Container const&) = delete;

    ~Container() override;

protected:
    void executeChange() override;

public:
    virtual char const* getName() const = 0;
    /// UTF-8; "" for a graph that was never saved.
    virtual char const* getFilePath() const = 0;
    /// Makes the compounds anew from their definitions, after the runtime's libraries changed.
    virtual void rebuildCompounds() = 0;
    virtual bool isReadOnly() const = 0;
    /// Null for none.
    virtual Runtime* getRuntime() const = 0;
    /// Asks a client outside the graph whether the two ports, each by node and port name, may be connected.
    virtual ClientConnectionStatus canConnectWithClient(char const* fromNode, char const* fromPort, char const* toNode,
                                                        char const* toPort, String& message);
    /// Brackets the client, which may be null, and this container together.
    virtual ChangeBracket createChangeBracket(ChangeBracketClient* client);

    // ---- the graph

    void setTopNode(AddRefWrapper<Node> const& node);
    AddRefWrapper<Node> getTopNode() const;
    HostEditorNotifier& getEditorNotifier() noexcept;
    void openChangeBracket();
    void closeChangeBracket();

    // Look-ups find what getFullPathName() gave, from the top node on ("/" is the top node), also when
    // names hold "/" or "."; a miss is an empty handle. Where two things have one path, the first in
    // list order is found.

    AddRefWrapper<Node> findNodeFromPath(char const* path) const;
    /// Inputs are tried before outputs, and a node's own ports before those seen from inside. The
    /// direction is that of the port itself.
    AddRefWrapper<Port> findPortFromPath(char const* path, ESearchIOType ioType, ESearchMode mode) const;
    /// The annotation of that name in the compound at the path in front of it.
    AddRefWrapper<Annotation> findAnnotationFromPath(char const* path) const;
    /// The pair of ports with these paths that can be connected with each other: both in one
    /// sub-graph, one giving and one taking. @return false, with both handles empty, when there is none
    bool findPortsForConnection(char const* outputPath, char const* inputPath, AddRefWrapper<Port>& output,
                                AddRefWrapper<Port>& input) const;

    // ---- registry of containers by UUID, process-wide; nothing is owned

    /// Files the container and reports the graph-created waypoint. A text registered again leads to
    /// the new container.
    static void registerWithUUID(char const* uuid, Container* container);
    static void unregisterWithUUID(char const* uuid);
    /// Null when the text is not registered.
    static Container* getFromUUID(char const* uuid);
    /// The first text, in byte order, under which the container is registered.
    static bool getUUIDFromContainer(Container const* container, String& uuid);

private:
    friend class ContainerAccess;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null; src/host/ContainerImpl.h
};

} // namespace TAV_marlo_v1
