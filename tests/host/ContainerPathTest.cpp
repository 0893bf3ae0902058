// Path look-ups: whatever getFullPathName() gave is found again.

#include "CountingContainer.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/PortList.h>
#include <tav/PortProperties.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace TAV_marlo_v1;

namespace {

struct ContainerPath : testing::Test {
    CountingContainer container;
    Compound& top = container.compound();

    AddRefWrapper<Node> addNode(Compound& compound, char const* name)
    {
        AddRefWrapper<Node> node = Node::createNew(&container, name);
        compound.nodes().add(node);
        return node;
    }
    AddRefWrapper<Compound> addCompound(Compound& compound, char const* name)
    {
        return Compound::createNew(addNode(compound, name), nullptr);
    }
    static AddRefWrapper<Port> addPort(Node& node, PortIOType ioType, char const* name)
    {
        PortList& list = ioType == eInput ? node.inputs() : node.outputs();
        return list[node.createNodePort(ioType, name, {}, PortProperties())];
    }
    static AddRefWrapper<Port> addCompoundPort(Compound& compound, PortIOType ioType, char const* name)
    {
        compound.createCompoundPort(ioType, name, {}, PortProperties());
        Node& owner = *compound.getAsNode();
        return (ioType == eInput ? owner.inputs() : owner.outputs())[name];
    }
    AddRefWrapper<Port> find(char const* path, Container::ESearchIOType ioType = Container::eSearchAnyIO,
                             Container::ESearchMode mode = Container::eSearchAllPorts) const
    {
        return container.findPortFromPath(path, ioType, mode);
    }
};

TEST_F(ContainerPath, FindsEveryNodeOfAGraphFullOfNamesThatLookLikePaths)
{
    // Every name at every level, in lists short enough to be walked and, with the filling, too long for it.
    char const* const names[] = {"a", "b", "a/b", "a.b", "/", "//a", "a b", "./", "x.", "é/ü.", "1.5", "a/", ""};
    for (bool const longLists : {false, true}) {
        std::vector<AddRefWrapper<Node>> nodes;
        std::vector<AddRefWrapper<Compound>> level{AddRefWrapper<Compound>(&top)};
        for (int depth = 0; depth < 2; ++depth) {
            std::vector<AddRefWrapper<Compound>> next;
            for (auto const& compound : level) {
                for (int i = 0; longLists && i < 80; ++i)
                    addNode(*compound, ("fill" + std::to_string(i)).c_str());
                for (char const* const name : names) {
                    next.push_back(addCompound(*compound, name));
                    nodes.push_back(next.back()->getAsNode());
                    addPort(*nodes.back(), eInput, name)->createChildrenList()->addPort("1", {}, eNoPortFlags);
                }
            }
            level = next;
        }
        for (auto const& node : nodes) {
            Namable const path = node->getFullPathName();
            AddRefWrapper<Node> const found = container.findNodeFromPath(path.getName());
            ASSERT_TRUE(found) << path.getName();
            // Several may share a path; what is found bears it in any case.
            EXPECT_STREQ(found->getFullPathName().getName(), path.getName());
            AddRefWrapper<Port> const child = (*node->inputs()[0u]->children())[0u];
            for (AddRefWrapper<Port> const& port : {node->inputs()[0u], child}) {
                Namable const portPath = port->getFullPathName();
                AddRefWrapper<Port> const foundPort = find(portPath.getName());
                ASSERT_TRUE(foundPort) << portPath.getName();
                EXPECT_STREQ(foundPort->getFullPathName().getName(), portPath.getName());
            }
        }
        while (!top.nodes().empty())
            top.nodes().remove(top.nodes()[0u]);
    }
}

TEST_F(ContainerPath, OfTwoWithOnePathTheFirstInListOrderIsFound)
{
    AddRefWrapper<Node> const flat = addNode(top, "a/x");
    AddRefWrapper<Node> const nested = addNode(*addCompound(top, "a"), "x");
    AddRefWrapper<Port> const first = addPort(*addNode(top, "b/"), eInput, "p");
    AddRefWrapper<Port> const later = addPort(*addNode(top, "b"), eInput, "p");
    EXPECT_EQ(container.findNodeFromPath("/a/x"), flat);
    EXPECT_EQ(first->getFullPathName(), later->getFullPathName());
    EXPECT_EQ(find("/b.p"), first);
    top.nodes().remove(flat);
    top.nodes().remove(top.nodes()["b/"]);
    EXPECT_EQ(find("/b.p"), later);
    EXPECT_EQ(container.findNodeFromPath("/a/x"), nested);
}

TEST_F(ContainerPath, MissesAreEmptyHandles)
{
    addNode(*addCompound(top, "c"), "n");
    EXPECT_EQ(container.findNodeFromPath("/"), container.getTopNode());
    for (char const* const path : {"", "c", "/c/", "/c/n/", "/c/n.", "/c/N", "//c", "/c.n", "/n", ".", "/c/n/m"})
        EXPECT_FALSE(container.findNodeFromPath(path)) << path;
    EXPECT_FALSE(container.findNodeFromPath(nullptr));
    EXPECT_FALSE(find("/c/n.p"));
    EXPECT_FALSE(find(nullptr));
    container.setTopNode({});
    EXPECT_FALSE(container.findNodeFromPath("/"));
}

TEST_F(ContainerPath, AThousandSeparatorsEndSoon)
{
    std::string const slashes(5000, '/');
    AddRefWrapper<Compound> compound(&top);
    for (int depth = 0; depth < 30; ++depth) {
        addNode(*compound, "//");
        compound = addCompound(*compound, "/");
    }
    EXPECT_FALSE(container.findNodeFromPath(slashes.c_str()));
    EXPECT_FALSE(find((slashes + ".p").c_str()));
}

TEST_F(ContainerPath, FindsPortsByDirectionAndDepth)
{
    AddRefWrapper<Node> const node = addNode(top, "n.x");
    AddRefWrapper<Port> const in = addPort(*node, eInput, "p");
    AddRefWrapper<Port> const out = addPort(*node, eOutput, "p");
    AddRefWrapper<Port> const child = in->createChildrenList()->addPort("q.r", {}, eNoPortFlags);
    AddRefWrapper<Port> const dotted = addPort(*node, eInput, "1.5");
    EXPECT_EQ(find("/n.x.p"), in);
    EXPECT_EQ(find("/n.x.p", Container::eSearchInput), in);
    EXPECT_EQ(find("/n.x.p", Container::eSearchOutput), out);
    EXPECT_EQ(find("/n.x.1.5"), dotted);
    ASSERT_STREQ(child->getFullPathName().getName(), "/n.x.p.q.r");
    EXPECT_EQ(find("/n.x.p.q.r", Container::eSearchAnyIO, Container::eSearchChildPorts), child);
    EXPECT_EQ(find("/n.x.p.q.r", Container::eSearchAnyIO, Container::eSearchOwnPorts), nullptr);
}

TEST_F(ContainerPath, FindsBothSidesOfACompoundPort)
{
    AddRefWrapper<Port> const topPort = addCompoundPort(top, eInput, "p");
    AddRefWrapper<Compound> const compound = addCompound(top, "c");
    AddRefWrapper<Port> const outside = addCompoundPort(*compound, eInput, "p");
    AddRefWrapper<Port> const inside = compound->getReversePort(outside);
    EXPECT_EQ(find(".p"), topPort);
    EXPECT_EQ(find("/c.p"), outside);
    EXPECT_EQ(find("/c.p", Container::eSearchOutput), inside);
    EXPECT_EQ(find("/c.p", Container::eSearchOutput, Container::eSearchChildPorts), nullptr);
}

TEST_F(ContainerPath, FindsAnnotationsInTheCompoundInFront)
{
    AddRefWrapper<Compound> const compound = addCompound(top, "c");
    AddRefWrapper<Annotation> const outer = top.createCompoundAnnotation(Annotation::eStickyNote, "c/note");
    AddRefWrapper<Annotation> const inner = compound->createCompoundAnnotation(Annotation::eBackdrop, "note");
    EXPECT_EQ(container.findAnnotationFromPath("/c/note"), outer);
    top.removeAnnotation(outer);
    EXPECT_EQ(container.findAnnotationFromPath("/c/note"), inner);
    EXPECT_FALSE(container.findAnnotationFromPath("/note"));
    EXPECT_FALSE(container.findAnnotationFromPath("/c.note"));
}

TEST_F(ContainerPath, FindsThePairThatCanBeConnected)
{
    AddRefWrapper<Compound> const compound = addCompound(top, "c");
    AddRefWrapper<Port> const input = addCompoundPort(*compound, eInput, "x");
    AddRefWrapper<Port> const output = addCompoundPort(*compound, eOutput, "x");
    AddRefWrapper<Node> const inner = addNode(*compound, "n");
    AddRefWrapper<Node> const outer = addNode(top, "n");
    AddRefWrapper<Port> const innerIn = addPort(*inner, eInput, "p");
    AddRefWrapper<Port> const innerOut = addPort(*inner, eOutput, "p");
    AddRefWrapper<Port> const outerIn = addPort(*outer, eInput, "p");
    AddRefWrapper<Port> const outerOut = addPort(*outer, eOutput, "p");

    struct Row {
        char const* from;
        char const* to;
        AddRefWrapper<Port> output;
        AddRefWrapper<Port> input;
    };
    Row const rows[] = {
        {"/n.p", "/c.x", outerOut, input},
        {"/c.x", "/n.p", output, outerIn},
        {"/c.x", "/c/n.p", compound->getReversePort(input), innerIn},
        {"/c/n.p", "/c.x", innerOut, compound->getReversePort(output)},
        {"/c/n.p", "/n.p", {}, {}},
        {"/n.p", "/missing.p", {}, {}},
        {nullptr, "/n.p", {}, {}},
    };
    for (Row const& row : rows) {
        AddRefWrapper<Port> foundOutput = outerOut;
        AddRefWrapper<Port> foundInput = outerIn;
        EXPECT_EQ(container.findPortsForConnection(row.from, row.to, foundOutput, foundInput),
                  static_cast<bool>(row.output))
            << row.to;
        EXPECT_EQ(foundOutput, row.output) << row.to;
        EXPECT_EQ(foundInput, row.input) << row.to;
    }
}

} // namespace
