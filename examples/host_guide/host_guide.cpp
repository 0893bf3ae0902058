// The smallest host: a runtime, a container and an open document. docs/host-guide.md walks through it.
#include <tav/tav.h>

#include <cstdio>

using namespace TAV_marlo_v1;

class GuideRuntime : public Runtime { // 1
public:
    GuideRuntime()
        : Runtime("guide")
    {
        createPortDataType("float", "0")->setKind(eFloatKind);
        setNodeLibrary(NodeLibrary::createNew("guide", "Guide"));
        getNodeLibrary()->addNode("add", "Add");
    }
};

class GuideDocument : public Container { // 2
public:
    explicit GuideDocument(Runtime& runtime)
        : m_runtime(&runtime)
    {
        AddRefWrapper<Node> const top = Node::createNew(this, nullptr);
        m_graph = Compound::createNew(top, "untitled");
        setTopNode(top); // 3
        m_runtime->registerContainer(this);
    }
    ~GuideDocument() override { m_runtime->unregisterContainer(this); }

    StatusStr open(char const* text) { return m_graph->restoreFromString(text); } // 4
    String text() const { return m_graph->saveToString(nullptr); }

    char const* getName() const override { return m_graph->getName(); }
    char const* getFilePath() const override { return ""; }
    void rebuildCompounds() override {}
    bool isReadOnly() const override { return false; }
    Runtime* getRuntime() const override { return m_runtime; }

private:
    Runtime* m_runtime;
    AddRefWrapper<Compound> m_graph;
};

constexpr char kText[] = R"(<tavCompound name="first" type="compound" flag="0"><metadatas/><ports/><child_graph>
    <sub_root><nodes><node><tavNode name="sum" type="add" flag="0"><metadatas/><ports>
        <port name="a" type="float" flag="0" is_input="yes" default_values="1"/>
    </ports></tavNode></node></nodes><connections/></sub_root></child_graph></tavCompound>)";

int main()
{
    GuideRuntime runtime;
    GuideDocument document(runtime);
    StatusStr const status = document.open(kText);
    AddRefWrapper<Node> const node = document.findNodeFromPath("/sum"); // 5
    if (node)
        node->setName("total");
    std::puts(!status ? status.getErrorString() : document.text().toChar());
    return document.findNodeFromPath("/total") ? 0 : 1;
}
