#pragma once

#include <tav/tav.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace tav_test {

using namespace TAV_marlo_v1;

/// What can be seen of a graph, object by object.
struct Picture {
    struct PortFacts {
        std::string name, type, values, metadata;
        unsigned flags = 0;
        bool isInner = false;
        std::multiset<Port*> links;
        std::vector<Port*> linkOrder;
        bool operator==(PortFacts const& o) const
        {
            return std::tie(name, type, values, metadata, flags, links, linkOrder)
                   == std::tie(o.name, o.type, o.values, o.metadata, o.flags, o.links, o.linkOrder);
        }
    };
    struct NodeFacts {
        std::string name, metadata;
        std::vector<Port*> inputs, outputs;
        bool operator==(NodeFacts const& o) const
        {
            return std::tie(name, metadata, inputs, outputs) == std::tie(o.name, o.metadata, o.inputs, o.outputs);
        }
    };
    std::map<Port*, PortFacts> ports;
    std::map<Node*, NodeFacts> nodes;
    std::map<Compound*, std::set<Node*>> children;
    std::map<Compound*, std::vector<Node*>> order;
    std::map<Annotation*, std::pair<std::string, std::string>> annotations;

    static std::string textOf(PropertyList const& list) { return list.serialize(eSerializeLossless).toChar(); }

    static PortFacts factsOf(Port& port)
    {
        PortFacts facts;
        facts.name = port.getName();
        facts.type = port.getDataType() ? port.getDataType()->getName() : "";
        if (StringArray values; port.getPortDefaultValues(values))
            facts.values = "=" + std::string(values.serialize(eSerializeLossless).toChar());
        facts.metadata = port.getPortMetaDataValue("key").toChar();
        facts.flags = port.getFlags();
        facts.isInner = port.isCompoundInternalPort();
        facts.linkOrder = orderOf<Port>(port.connectedTo());
        facts.links.insert(facts.linkOrder.begin(), facts.linkOrder.end());
        return facts;
    }

    template <class Item, class List>
    static std::vector<Item*> orderOf(List const& list)
    {
        std::vector<Item*> items;
        for (AddRefWrapper<Item> const& item : list)
            items.push_back(item.get());
        return items;
    }

    std::vector<Port*> seePorts(PortList const& list)
    {
        std::vector<Port*> seen;
        for (AddRefWrapper<Port> const& port : list) {
            ports[port.get()] = factsOf(*port);
            seen.push_back(port.get());
        }
        return seen;
    }

    void see(Node& node)
    {
        nodes[&node] = {node.getName(), textOf(node.getPropertyList()), seePorts(node.inputs()),
                        seePorts(node.outputs())};
        if (AddRefWrapper<Compound> const compound = node.getAsCompound())
            see(*compound);
    }

    void see(Annotation& annotation)
    {
        annotations[&annotation] = {annotation.getName(), textOf(annotation.getPropertyList())};
    }

    void see(Compound& compound)
    {
        std::set<Node*>& inside = children[&compound];
        inside.clear();
        order[&compound] = orderOf<Node>(compound.nodes());
        for (AddRefWrapper<Node> const& node : compound.nodes()) {
            inside.insert(node.get());
            see(*node);
        }
        for (AddRefWrapper<Annotation> const& annotation : compound.annotations())
            see(*annotation);
        seePorts(compound.innerInputs());
        seePorts(compound.innerOutputs());
    }
};

/// Keeps a picture by what it is told: it looks at a whole object when the object appears, and afterwards
/// only at the one thing that is said to have changed.
class PictureKeeper : public TAV_marlo_v1::HostEditor {
public:
    Picture picture;
    // What it was told of, so that an address means one object for the whole test.
    std::vector<AddRefWrapper<Port>> keptPorts;
    std::vector<AddRefWrapper<Node>> keptNodes;

    void tav_onConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& a,
                                AddRefWrapper<Port> const& b) override
    {
        link(type, a.get(), b.get());
        link(type, b.get(), a.get());
    }
    void tav_onCompoundConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& a,
                                        AddRefWrapper<Port> const& b) override
    {
        tav_onConnectionChange(type, a, b);
    }
    void tav_onNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port) override { change(type, port); }
    void tav_onCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port) override
    {
        change(type, port);
    }

    void tav_onNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound,
                          AddRefWrapper<Node> const& node) override
    {
        keptNodes.push_back(node);
        if (type == eNodeAdded && compound->nodes().findNode(node) != kNotFound) {
            picture.see(*node);
            picture.children[compound.get()].insert(node.get());
            picture.order[compound.get()] = Picture::orderOf<Node>(compound->nodes());
        }
        if (type == eNodeRenamed && picture.nodes.count(node.get()))
            picture.nodes[node.get()].name = node->getName();
        if (type == eNodeMetadataChanged && picture.nodes.count(node.get()))
            picture.nodes[node.get()].metadata = Picture::textOf(node->getPropertyList());
        if (type == eNodeDeleted)
            forget(node.get());
        if (type == eNodeRemoved) {
            picture.children[compound.get()].erase(node.get());
            std::erase(picture.order[compound.get()], node.get());
        }
    }

    void tav_onAnnotationChange(EAnnotationChangeType type, AddRefWrapper<Compound> const&,
                                AddRefWrapper<Annotation> const& annotation) override
    {
        if (type == eAnnotationRemoved)
            picture.annotations.erase(annotation.get());
        else if (annotation->getParentCompound())
            picture.see(*annotation);
    }

private:
    void link(ECnxChangeType type, Port* port, Port* other)
    {
        auto const found = picture.ports.find(port);
        if (found == picture.ports.end())
            return;
        // An object that was looked at late has shown some of what is told only now; ports may be connected
        // more than once.
        std::multiset<Port*>& links = found->second.links;
        auto const now = Picture::orderOf<Port>(port->connectedTo());
        auto const count = static_cast<std::size_t>(std::count(now.begin(), now.end(), other));
        if (type == eCnxRemoved && links.count(other) > count)
            links.erase(links.find(other));
        else if (type != eCnxRemoved && links.count(other) < count)
            links.insert(other);
        found->second.linkOrder = now;
    }

    void change(EPortChangeType type, AddRefWrapper<Port> const& port)
    {
        keptPorts.push_back(port);
        AddRefWrapper<Node> const node = port->getParentNode();
        if (type == ePortRemoved) {
            picture.ports.erase(port.get());
            for (auto& [known, facts] : picture.nodes) {
                std::erase(facts.inputs, port.get());
                std::erase(facts.outputs, port.get());
            }
            return;
        }
        if (!port->getParent())
            return; // its node is gone by now, which will be told too
        if (type == ePortAdded)
            picture.ports[port.get()] = Picture::factsOf(*port);
        if (type == ePortAdded || type == ePortMoved) {
            for (auto& [known, facts] : picture.nodes) {
                if (known == node.get() || known->testFlag(eAnyIO))
                    arrange(*known, facts);
            }
        }
        auto const found = picture.ports.find(port.get());
        if (found == picture.ports.end())
            return;
        Picture::PortFacts const now = Picture::factsOf(*port);
        switch (type) {
        case ePortRenamed:
            found->second.name = now.name;
            break;
        case ePortDataTypeChanged:
            found->second.type = now.type;
            break;
        case ePortValuesChanged:
        case ePortValuesReset:
            found->second.values = now.values;
            break;
        case ePortMetadataChanged:
            found->second.metadata = now.metadata;
            break;
        case ePortFlagsChanged:
        case ePortExposureChanged:
        case ePortFanInChanged:
            found->second.flags = now.flags;
            break;
        default:
            break;
        }
    }

    static void arrange(Node& node, Picture::NodeFacts& facts)
    {
        facts.inputs = Picture::orderOf<Port>(node.inputs());
        facts.outputs = Picture::orderOf<Port>(node.outputs());
    }

    void forget(Node* node)
    {
        auto const found = picture.nodes.find(node);
        if (found == picture.nodes.end())
            return;
        std::vector<Port*> gone(found->second.inputs);
        gone.insert(gone.end(), found->second.outputs.begin(), found->second.outputs.end());
        picture.nodes.erase(found);
        if (AddRefWrapper<Compound> const compound = node->getAsCompound()) {
            picture.children.erase(compound.get());
            picture.order.erase(compound.get());
            for (AddRefWrapper<Annotation> const& annotation : compound->annotations())
                picture.annotations.erase(annotation.get());
        }
        for (Port* port : gone)
            forget(port);
    }

    static void dropLink(Picture::PortFacts& facts, Port* port)
    {
        facts.links.erase(port);
        std::erase(facts.linkOrder, port);
    }

    void forget(Port* port)
    {
        auto const found = picture.ports.find(port);
        if (found == picture.ports.end() || found->second.isInner) // an IO node may leave the ports that it showed
            return;
        for (Port* other : found->second.links) {
            if (auto const end = picture.ports.find(other); end != picture.ports.end())
                dropLink(end->second, port);
        }
        picture.ports.erase(port);
    }
};

} // namespace tav_test
