#pragma once

#include "persistence/ElementSink.h"
#include "persistence/PortWriter.h"

#include <tav/Types.h>

#include <vector>

namespace TAV_marlo_v1 {

class Annotation;
class Compound;
class Metadata;
class Node;
class PortFilterCallback;
class StringArray;

/// Writes nodes, compounds, annotations and selections in one pass into one sink.
///
/// What the library writes itself goes straight in; only the text of a class that overrides a hook is
/// parsed and copied. Nested compounds cost no stack.
class GraphWriter {
public:
    /// Whether the root asks its class for a text of its own. Everything inside does.
    enum Root { eAskingHook, eWithoutHook };

    explicit GraphWriter(ElementSink& sink) noexcept
        : m_sink(sink)
        , m_ports(sink)
    {
    }

    void writeNode(Node const& node, PortFilterCallback* filter, Root root);
    void writeCompound(Compound const& compound, PortFilterCallback* filter, Root root);
    void writeItems(Compound const& compound, StringArray const& nodeNames, StringArray const& annotationNames,
                    ESaveMode mode);
    void writeAnnotation(Annotation const& annotation);

private:
    /// A "sub_root" whose nodes are being written.
    struct OpenGraph {
        Compound const* compound;
        std::vector<Node*> nodes;
        std::size_t next = 0;
    };

    void writeOpenGraphs();
    void writeItem(Node& node);
    void beginCompound(Compound const& compound, PortFilterCallback* filter);
    void endCompound();
    void beginGraph(Compound const& compound, std::vector<Node*> nodes);
    void writeAnnotations(std::vector<Annotation*> const& annotations);
    /// @return whether the class wrote the node or compound itself
    template <class Access, class Object>
    bool writeOwnText(Object const& object, PortFilterCallback* filter);
    /// @param libraryClass whether the store is known to be written by the library
    void writeMetadata(Metadata const& object, bool isLibraryClass);
    void writeNodeMetadata(Node const& owner);

    ElementSink& m_sink;
    PortWriter m_ports;
    std::vector<OpenGraph> m_open;
};

} // namespace TAV_marlo_v1
