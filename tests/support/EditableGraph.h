#pragma once

#include "support/TestGraph.h"

#include <functional>

namespace tav_test {

using namespace TAV_marlo_v1;

/// Counts the questions that owners are asked, and says no to one of them.
struct Questions {
    long left = -1; // until the refused one; negative: none is refused
    bool wasRefused = false;
    std::function<void()> onAsked;

    bool ask()
    {
        if (onAsked)
            onAsked();
        if (left < 0)
            return true;
        if (left-- > 0)
            return true;
        wasRefused = true;
        return false;
    }
    static Questions& get()
    {
        static Questions questions;
        return questions;
    }
};

/// A watch point that can be told from the one that stood there before.
class TestWatchPoint : public WatchPoint {
public:
    void enable(bool on) override { m_enabled = on; }
    bool enabled() const override { return m_enabled; }

private:
    bool m_enabled = true;
};

/// The owner's questions, asked of the test.
template <class Base>
class Asking : public Base {
public:
    using Base::Base;
    using PortHandle = AddRefWrapper<Port>;

    bool onPortAddConnection(PortHandle const& a, PortHandle const& b) override
    {
        return Questions::get().ask() && Base::onPortAddConnection(a, b);
    }
    bool onPortRemoveConnection(PortHandle const& a, PortHandle const& b) override
    {
        return Questions::get().ask() && Base::onPortRemoveConnection(a, b);
    }
    bool onPortSetDataType(PortHandle const& port, AddRefWrapper<PortDataType> const& type) override
    {
        return Questions::get().ask() && Base::onPortSetDataType(port, type);
    }
    bool onPortListPortAdd(PortList const& list, PortHandle const& port) override
    {
        return Questions::get().ask() && Base::onPortListPortAdd(list, port);
    }
    bool onPortListPortRemove(PortList const& list, PortHandle const& port) override
    {
        return Questions::get().ask() && Base::onPortListPortRemove(list, port);
    }
    bool onPortListPortMove(PortList const& list, unsigned from, unsigned to) override
    {
        return Questions::get().ask() && Base::onPortListPortMove(list, from, to);
    }
    bool onPortSetDefaultValues(PortHandle const& port, StringArray const& values) override
    {
        return Questions::get().ask() && Base::onPortSetDefaultValues(port, values);
    }
    bool onPortResetDefaultValues(PortHandle const& port, StringArray& values) override
    {
        return Questions::get().ask() && Base::onPortResetDefaultValues(port, values);
    }
    bool onPortSetMetaDataValue(PortHandle const& port, char const* key, char const* value) override
    {
        return Questions::get().ask() && Base::onPortSetMetaDataValue(port, key, value);
    }
    bool onPortSetName(PortHandle const& port, char const* name) override
    {
        return Questions::get().ask() && Base::onPortSetName(port, name);
    }
    bool onPortCreateWatchPoint(PortHandle const&, AddRefWrapper<WatchPoint>& watchPoint) override
    {
        if (!Questions::get().ask())
            return false;
        watchPoint = AddRefWrapper<WatchPoint>(new TestWatchPoint);
        return true;
    }
    bool onPortRemoveWatchPoint(PortHandle const& port) override
    {
        return Questions::get().ask() && Base::onPortRemoveWatchPoint(port);
    }
    bool onPortCanSetFlag(PortHandle const& port, PortFlags flag) const override
    {
        return flag == eReconnecting || (Questions::get().ask() && Base::onPortCanSetFlag(port, flag));
    }
    bool onPortCanClearFlag(PortHandle const& port, PortFlags flag) const override
    {
        return flag == eReconnecting || (Questions::get().ask() && Base::onPortCanClearFlag(port, flag));
    }
};

class TestNode : public Asking<Node> {
public:
    using Asking<Node>::Asking;
    static AddRefWrapper<Node> create(Container* container, char const* name, char const* type)
    {
        AddRefWrapper<Node> const node(new TestNode(container));
        if (name)
            node->Namable::setName(name);
        node->setNodeTypeName(type);
        return node;
    }
};

/// Makes nodes from presets: "adder" with two inputs and an output, and "way in", an IO node.
class TestCompound : public Asking<Compound> {
public:
    static AddRefWrapper<Compound> create(AddRefWrapper<Node> const& owner)
    {
        AddRefWrapper<Compound> const compound(new TestCompound(owner));
        owner->setOwnedCompound(compound);
        return compound;
    }

    AddRefWrapper<Node> createIONode(NodeFlags flags) override
    {
        AddRefWrapper<Node> const node = TestNode::create(container(), flags == eInputIO ? "input" : "output", "io");
        node->setFlag(flags);
        return nodes().add(node) ? node : AddRefWrapper<Node>();
    }
    AddRefWrapper<Compound> createNewCompound(char const* name) override
    {
        AddRefWrapper<Node> const owner = TestNode::create(container(), name, "compound");
        AddRefWrapper<Compound> const compound = create(owner);
        return nodes().add(owner) ? compound : AddRefWrapper<Compound>();
    }
    AddRefWrapper<Node> createNodeFromPreset(char const* path) override
    {
        if (std::string(path) == "way in")
            return createIONode(eInputIO);
        if (std::string(path) != "adder")
            return {};
        AddRefWrapper<Node> const node = TestNode::create(container(), path, path);
        for (char const* const name : {"a", "b"})
            node->createNodePort(eInput, name, {}, PortProperties(eNoPortFlags, {}, StringArray("0")));
        node->createNodePort(eOutput, "sum", {}, PortProperties());
        return nodes().add(node) ? node : AddRefWrapper<Node>();
    }
    AddRefWrapper<Node> createBareNode(char const* type, NodeFlags) override
    {
        return TestNode::create(container(), nullptr, type);
    }
    AddRefWrapper<Node> createBareOwner(char const* type) override
    {
        return TestNode::create(container(), nullptr, type);
    }
    AddRefWrapper<Compound> createBareCompound(AddRefWrapper<Node> const& owner, char const*) override
    {
        return create(owner);
    }
    bool onNodeAdd(AddRefWrapper<Node> const& node) override
    {
        return Questions::get().ask() && Compound::onNodeAdd(node);
    }
    bool onNodeRemove(AddRefWrapper<Node> const& node) override
    {
        return Questions::get().ask() && Compound::onNodeRemove(node);
    }
    bool onAnnotationAdd(AddRefWrapper<Annotation> const&) override { return Questions::get().ask(); }
    bool onAnnotationRemove(AddRefWrapper<Annotation> const&) override { return Questions::get().ask(); }
    bool onAnnotationSetName(AddRefWrapper<Annotation> const&, char const*) override { return Questions::get().ask(); }

private:
    explicit TestCompound(AddRefWrapper<Node> const& owner)
        : Asking<Compound>(owner, nullptr)
    {
    }
    Container* container() const { return getAsNode() ? getAsNode()->getContainer() : nullptr; }
};

/// A small graph that has one of everything: a compound with IO nodes and an input and an output of one
/// name inside another, a hub, a fan-in port with members, watch points, metadata, options, values that
/// text can't carry, annotations, states and messages, a referenced compound.
struct EditableGraph {
    TestRuntime runtime;
    TestContainer container{&runtime};
    AddRefWrapper<PortDataType> type = runtime.createPortDataType("float", "0");
    AddRefWrapper<Node> topNode = TestNode::create(&container, "top", "graph");
    AddRefWrapper<Compound> top = TestCompound::create(topNode);

    EditableGraph() { build(); }
    ~EditableGraph() { container.setTopNode({}); }
    EditableGraph(EditableGraph const&) = delete;
    EditableGraph& operator=(EditableGraph const&) = delete;

    AddRefWrapper<Node> node(char const* path) const { return container.findNodeFromPath(path); }
    AddRefWrapper<Compound> compound(char const* path) const { return node(path)->getAsCompound(); }
    AddRefWrapper<Port> in(char const* path, unsigned index) const { return node(path)->inputs()[index]; }
    AddRefWrapper<Port> out(char const* path, unsigned index) const { return node(path)->outputs()[index]; }
    AddRefWrapper<Port> portAt(char const* path) const
    {
        return container.findPortFromPath(path, Container::eSearchAnyIO, Container::eSearchAllPorts);
    }
    std::string text() const { return top->saveToString(nullptr).toChar(); }
    /// Everything that can be seen, with what text leaves out.
    std::string picture() const
    {
        std::string lines = text();
        describe(*top, lines);
        return lines;
    }

private:
    AddRefWrapper<Node> add(Compound& parent, char const* name, std::initializer_list<char const*> inputs,
                            std::initializer_list<char const*> outputs)
    {
        AddRefWrapper<Node> const made = TestNode::create(&container, name, "thing");
        for (char const* const input : inputs)
            made->createNodePort(eInput, input, type, PortProperties(eNoPortFlags, {}, StringArray("1")));
        for (char const* const output : outputs)
            made->createNodePort(eOutput, output, type, PortProperties());
        parent.nodes().add(made);
        return made;
    }

    void build()
    {
        container.setTopNode(topNode);
        add(*top, "hub", {"in"}, {"out", "spare"});
        add(*top, "mix", {"x", "y", "many"}, {"r"});
        AddRefWrapper<Compound> const group = top->createNewCompound("group");
        for (char const* const name : {"p", "s", "t"})
            group->createCompoundPort(eInput, name, type, PortProperties(eNoPortFlags, {}, StringArray("2")));
        for (char const* const name : {"s", "q"})
            group->createCompoundPort(eOutput, name, type, PortProperties());
        AddRefWrapper<Node> const input = group->createIONode(eInputIO);
        add(*group, "left", {"a", "b"}, {"c", "d"});
        AddRefWrapper<Compound> const deep = group->createNewCompound("deep");
        deep->createCompoundPort(eInput, "i", type, PortProperties());
        add(*deep, "core", {"a"}, {"b"});
        AddRefWrapper<Node> const output = group->createIONode(eOutputIO);
        group->createIONode(eInputIO)->setName("second input");
        add(*top, "sink", {"first", "second"}, {"end"});
        top->createNewCompound("ref")->setIsReferenced(true);
        buildConnections(*group, *deep);
        buildExtras(*group);
    }

    static void link(AddRefWrapper<Port> const& from, AddRefWrapper<Port> const& to) { to->addConnection(from, false); }

    void buildConnections(Compound& group, Compound& deep)
    {
        in("/mix", 2)->setFlag(eFanIn);
        for (char const* const member : {"m1", "m2"})
            link(out("/hub", 0), in("/mix", 2)->children()->addPort(member, type, eNoPortFlags));
        link(out("/hub", 0), in("/sink", 1)); // hub.out lists them in another order than the graph's
        link(out("/hub", 0), in("/mix", 0));
        link(out("/hub", 0), in("/group", 1));
        link(out("/hub", 1), in("/group", 1));
        link(out("/hub", 1), in("/sink", 0));
        link(out("/hub", 1), in("/group", 1)); // once more: whether that makes sense is the owner's business
        link(out("/hub", 0), in("/group", 0));
        link(out("/group", 0), in("/sink", 0));
        link(out("/group", 0), in("/mix", 1));
        link(out("/group", 1), in("/hub", 0));
        link(group.innerInputs()[0u], in("/group/left", 1));
        link(group.innerInputs()[0u], in("/group/left", 0));
        link(group.innerInputs()[1u], in("/group/deep", 0));
        link(group.innerInputs()[2u], group.innerOutputs()[1u]);
        link(out("/group/left", 1), group.innerOutputs()[0u]);
        link(deep.innerInputs()[0u], in("/group/deep/core", 0));
        link(out("/group/left", 0), in("/group/deep", 0));
    }

    void buildExtras(Compound& group)
    {
        out("/hub", 0)->setPortMetaDataValue("UIWidget", "slider");
        in("/mix", 0)->setPortMetaDataValue("key", "value");
        in("/mix", 1)->setPortDefaultValues(StringArray("one;two"));
        group.innerInputs()[0u]->setPortDefaultValues(StringArray("3"));
        group.innerInputs()[1u]->setFlag(eUnconnectable);
        in("/group", 2)->setFlag(eExposed);
        in("/group", 0)->setPortMetaDataValue("UIWidget", "dial");
        for (char const* const path : {"/mix.x", "/hub.spare", "/group.p", "/group/left.d", "/group/deep/core.a"})
            portAt(path)->setWatchPoint();
        portAt("/hub.spare")->getWatchPoint()->enable(false);
        portAt("/mix.x")->getWatchPoint()->setMetadataValue("probe", "1");
        group.innerInputs()[0u]->setWatchPoint();
        node("/group/output")->createNodePort(eOutput, "its own", type, PortProperties());
        out("/group/output", 0)->setWatchPoint();
        link(out("/group/output", 0), in("/group/left", 0));
        node("/mix")->setMetadataValue("coords", "1 2");
        node("/group")->setMetadataValue("note", "outside");
        group.setMetadataValue("kind", "inside");
        node("/mix")->stateFlags().set(eMutedState, true);
        node("/group/left")->stateFlags().set(eCollapsedState, true);
        node("/group/left")->addMessage("left", "a warning", eWarning);
        top->createCompoundAnnotation(Annotation::eBackdrop, "back")->setMetadataValue("text", "hello");
        top->createCompoundAnnotation(Annotation::eStickyNote, "note");
        group.createCompoundAnnotation(Annotation::eStickyNote, "in front of a backdrop");
        group.createCompoundAnnotation(Annotation::eBackdrop, "back")->setMetadataValue("color", "1 0 0");
    }

    static std::string addressOf(Port const& port)
    {
        return std::string(port.getFullPathName().getName()) + (port.getPortIOType() == eInput ? " in" : " out")
               + (port.isCompoundInternalPort() ? " inside" : "");
    }

    static void describe(PortList const& list, std::string& lines)
    {
        for (AddRefWrapper<Port> const& port : list) {
            lines.append(addressOf(*port)).append(" flags ").append(std::to_string(port->getFlags()));
            if (StringArray values; port->getPortDefaultValues(values))
                lines.append(" = ").append(values.serialize(eSerializeLossless).toChar());
            if (AddRefWrapper<WatchPoint> const watchPoint = port->getWatchPoint()) {
                lines.append(watchPoint->enabled() ? " watched " : " watched, off ");
                lines.append(watchPoint->getPropertyList().serialize(eSerializeLossless).toChar());
            }
            for (AddRefWrapper<Port> const& other : port->connectedTo())
                lines.append(" - ").append(addressOf(*other));
            lines.append("\n");
            if (AddRefWrapper<PortList> const children = port->children())
                describe(*children, lines);
        }
    }

    static void describe(Compound const& compound, std::string& lines)
    {
        describe(compound.innerInputs(), lines);
        describe(compound.innerOutputs(), lines);
        for (AddRefWrapper<Annotation> const& annotation : compound.annotations())
            lines.append(annotation->getName()).append("\n");
        for (AddRefWrapper<Node> const& node : compound.nodes()) {
            lines.append(node->getFullPathName().getName()).append(" flags ");
            lines.append(std::to_string(node->getFlags())).append(" states");
            for (NodeStateFlag const state : node->stateFlags())
                lines.append(" ").append(std::to_string(state));
            lines.append(" ").append(node->getMessagesByType(eAnyMessage).toChar()).append("\n");
            describe(node->inputs(), lines);
            describe(node->outputs(), lines);
            if (AddRefWrapper<Compound> const inside = node->getAsCompound())
                describe(*inside, lines);
        }
    }
};

} // namespace tav_test
