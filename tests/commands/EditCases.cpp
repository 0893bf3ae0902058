#include "commands/EditCases.h"

namespace tav_test {

namespace {

template <class Command, class Record>
EditCase make(char const* name, Record record)
{
    return {name, [record](EditableGraph& graph) {
                Command command;
                record(graph, command);
                return editOf(std::move(command));
            }};
}

template <class Record>
EditCase nodes(char const* name, Record record)
{
    return make<NodeCommand>(name, record);
}

template <class Record>
EditCase links(char const* name, Record record)
{
    return make<NewConnectCommand>(name, record);
}

template <class Record>
EditCase nodePorts(char const* name, char const* path, Record record)
{
    return make<ModifyNodePortCommand>(name, [=](EditableGraph& graph, ModifyNodePortCommand& command) {
        command.setParentNode(&graph.container, path);
        record(command);
    });
}

template <class Record>
EditCase compoundPorts(char const* name, Record record)
{
    return make<ModifyCompoundPortCommand>(name, [=](EditableGraph& graph, ModifyCompoundPortCommand& command) {
        command.setParentCompound(&graph.container, "/group");
        record(command);
    });
}

template <class Record>
EditCase annotations(char const* name, Record record)
{
    return make<ModifyCompoundAnnotationCommand>(name,
                                                 [=](EditableGraph& graph, ModifyCompoundAnnotationCommand& command) {
                                                     command.setParentCompound(&graph.container, "/");
                                                     record(command);
                                                 });
}

EditCase group(char const* name, char const* path, std::vector<char const*> items, std::vector<char const*> notes = {})
{
    return make<CreateCompoundCommand>(name, [=](EditableGraph& graph, CreateCompoundCommand& command) {
        command.setParentCompound(&graph.container, path);
        for (char const* const item : items)
            command.addNode(item);
        for (char const* const note : notes)
            command.addAnnotation(note);
    });
}

EditCase paste(char const* name, char const* from, std::vector<char const*> items, char const* into, bool duplicates)
{
    return make<PasteCommand>(name, [=](EditableGraph& graph, PasteCommand& command) {
        CopyPasteCommandBase::setUseLocalClipboard(true);
        CopyCommand copy(graph.compound(from));
        for (char const* const item : items)
            copy.addSourceNode(item);
        copy.addSourceAnnotation("back");
        copy.doit();
        command.setParentCompound(&graph.container, into);
        command.duplicateSourceInputConnections(duplicates);
    });
}

using G = EditableGraph;

/// A node of the library's own class, with what belongs to one; first of the top graph.
void addPlainNode(G& g)
{
    AddRefWrapper<Node> const node = Node::createNew(&g.container, "plain");
    PropertyList options;
    options.addStringPair("widget", "knob");
    node->createNodePort(eInput, "a", g.type, PortProperties(eExposed, options, StringArray("1;\x01")));
    node->createNodePort(eInput, "many", g.type, PortProperties(eFanIn, {}, {}));
    node->createNodePort(eOutput, "out", {}, PortProperties());
    node->setNodeTypeName("no known type");
    node->setMetadataValue("coords", "1 2");
    node->stateFlags().set(eMutedState, true);
    node->addMessage("plain", "beware", eError);
    node->inputs()[0u]->setPortMetaDataValue("min", "0");
    node->inputs()[0u]->setWatchPoint(AddRefWrapper<WatchPoint>(new TestWatchPoint));
    AddRefWrapper<Port> const member = node->inputs()[1u]->children()->addPort("m1", g.type, eNoPortFlags);
    g.top->nodes().insert(node, 0);
    member->addConnection(g.out("/hub", 0), false);
    g.in("/sink", 1)->addConnection(node->outputs()[0u], false);
    node->inputs()[0u]->addConnection(node->outputs()[0u], false);
}

std::vector<EditCase> allCases()
{
    return {
        nodes("create", [](G& g, NodeCommand& c) { c.createNode(g.compound("/group"), "adder", "left"); }),
        nodes("create io", [](G& g, NodeCommand& c) { c.createIONode(g.compound("/group/deep"), eInputIO, nullptr); }),
        nodes("create second io",
              [](G& g, NodeCommand& c) { c.createIONode(g.compound("/group"), eOutputIO, "left"); }),
        nodes("remove hub", [](G& g, NodeCommand& c) { c.removeNode(g.top, "hub"); }),
        nodes("remove fan-in", [](G& g, NodeCommand& c) { c.removeNode(g.top, "mix"); }),
        nodes("remove compound", [](G& g, NodeCommand& c) { c.removeNode(g.top, "group"); }),
        nodes("remove inner", [](G& g, NodeCommand& c) { c.removeNode(g.compound("/group"), "left"); }),
        nodes("remove io", [](G& g, NodeCommand& c) { c.removeNode(g.compound("/group"), "input"); }),
        nodes("remove output io", [](G& g, NodeCommand& c) { c.removeNode(g.compound("/group"), "output"); }),
        nodes("remove idle io", [](G& g, NodeCommand& c) { c.removeNode(g.compound("/group"), "second input"); }),
        nodes("remove plain",
              [](G& g, NodeCommand& c) {
                  addPlainNode(g);
                  c.removeNode(g.top, "plain");
              }),
        nodes("remove all",
              [](G& g, NodeCommand& c) {
                  for (char const* const name : {"sink", "hub", "group", "mix"})
                      c.removeNode(g.top, name);
              }),
        nodes("rename", [](G& g, NodeCommand& c) { c.renameNode(g.top, "group", "mix"); }),
        nodes("remove, create and rename",
              [](G& g, NodeCommand& c) {
                  c.removeNode(g.compound("/group"), "left");
                  c.removeNode(g.top, "mix");
                  c.createNode(g.top, "adder", "hub");
                  c.renameNode(g.top, "group", "renamed");
                  c.renameNode(g.top, "hub", "third");
              }),
        links("connect",
              [](G& g, NewConnectCommand& c) { c.connect(&g.container, g.in("/mix", 1), g.out("/hub", 1), false); }),
        links("connect inside with metadata",
              [](G& g, NewConnectCommand& c) {
                  g.out("/group/left", 0)->setPortMetaDataValue("UIWidget", "knob");
                  g.out("/group/left", 0)->setPortMetaDataValue("metaDataToCopy", "UIWidget");
                  c.connect(&g.container, g.out("/group/left", 0), g.compound("/group")->innerOutputs()[0u], true);
              }),
        links("connect same name",
              [](G& g, NewConnectCommand& c) {
                  c.connect(&g.container, g.compound("/group")->innerInputs()[2u],
                            g.compound("/group")->innerOutputs()[0u], false);
              }),
        links("disconnect",
              [](G& g, NewConnectCommand& c) { c.disconnect(&g.container, g.in("/mix", 0), g.out("/hub", 0)); }),
        links("disconnect all of a hub",
              [](G& g, NewConnectCommand& c) { c.disconnectAll(&g.container, g.out("/hub", 0)); }),
        links(
            "disconnect all inside",
            [](G& g, NewConnectCommand& c) { c.disconnectAll(&g.container, g.compound("/group")->innerInputs()[0u]); }),
        make<ConnectNodesCommand>("chain",
                                  [](G& g, ConnectNodesCommand& c) {
                                      NodeList chain;
                                      for (char const* const path : {"/sink", "/group", "/mix"})
                                          chain.add(g.node(path));
                                      c.connect(chain);
                                  }),
        nodePorts("node port create", "/mix",
                  [](ModifyNodePortCommand& c) {
                      c.createPort(eInput, "x", "float", PortProperties(eFanIn, {}, StringArray("7")));
                      c.createPort(eInput, "many.m1", "float", PortProperties());
                      c.createPort(eOutput, "r.part", "other", PortProperties());
                  }),
        nodePorts("node port delete", "/mix",
                  [](ModifyNodePortCommand& c) {
                      c.deletePort(eInput, "many.m1");
                      c.deletePort(eInput, "x");
                      c.deletePort(eInput, "many");
                  }),
        nodePorts("node port change", "/mix",
                  [](ModifyNodePortCommand& c) {
                      c.renamePort(eInput, "x", "y");
                      c.movePort(eInput, 2, 0);
                      c.setPortDataType(eInput, "y", "other");
                      c.setPortValues(eInput, "y", StringArray("9"));
                      c.setPortMetaDataValue(eInput, "many", "key", "value");
                      c.setPortFlag(eInput, "many", eFanIn, false);
                      c.setPortFlag(eInput, "y", eFanIn, true);
                  }),
        nodePorts("reset", "/mix",
                  [](ModifyNodePortCommand& c) {
                      c.resetPortValues(eInput, "x");
                      c.setPortMetaDataValue(eInput, "x", "key", nullptr);
                  }),
        nodePorts("compound's node port", "/group",
                  [](ModifyNodePortCommand& c) {
                      c.deletePort(eInput, "s");
                      c.renamePort(eOutput, "s", "renamed");
                      c.createPort(eInput, "fresh", "float", PortProperties());
                      c.createPort(eInput, "p.child", "float", PortProperties());
                      c.movePort(eInput, 0, 2);
                  }),
        nodePorts("io node port", "/group/input",
                  [](ModifyNodePortCommand& c) {
                      c.deletePort(eOutput, "p");
                      c.setPortValues(eOutput, "s", StringArray("5"));
                      c.renamePort(eOutput, "t", "u");
                      c.createPort(eOutput, "w", "float", PortProperties());
                  }),
        compoundPorts("compound port",
                      [](ModifyCompoundPortCommand& c) {
                          c.createPort(eOutput, "fresh", "float", PortProperties(eExposed, {}, {}));
                          c.movePort(eOutput, 0, 2);
                          c.setPortValues(eInput, "p", StringArray("6"), true);
                          c.resetPortValues(eInput, "p", false);
                          c.setPortFlag(eInput, "p", eExposed, true);
                          c.setPortDataType(eInput, "t", "");
                          c.deletePort(eInput, "p");
                          c.deletePort(eOutput, "s");
                      }),
        make<MetadataCommand>("metadata",
                              [](G& g, MetadataCommand& c) {
                                  c.setParentNode(&g.container, "/mix");
                                  c.setMetadataValue("key", "value");
                                  c.setMetadataValues("coords", [] {
                                      StringArray two("3");
                                      two.add("4");
                                      return two;
                                  }());
                              }),
        make<MetadataCommand>("compound metadata",
                              [](G& g, MetadataCommand& c) {
                                  c.setParentCompound(&g.container, "/group");
                                  c.setMetadataValue("other", "value");
                                  c.removeMetadata("kind");
                              }),
        make<MetadataCommand>("watch point metadata",
                              [](G& g, MetadataCommand& c) {
                                  c.setParentWatchPoint(&g.container, "/mix.x");
                                  PropertyList list;
                                  list.addStringPair("probe", "2");
                                  c.setFromPropertyList(list);
                              }),
        annotations("annotations",
                    [](ModifyCompoundAnnotationCommand& c) {
                        c.createAnnotation(Annotation::eStickyNote, "note");
                        c.createStickyNoteFromBackdrop("back");
                        c.setAnnotationMetadata("back", "color", StringArray("0 0 1"));
                        c.renameAnnotation("back", "note");
                        c.removeAnnotation("note");
                        c.removeAnnotationMetadata("note2", "text");
                    }),
        make<WatchPointCommand>("watch points",
                                [](G& g, WatchPointCommand& c) {
                                    c.removeWatchPoint(&g.container, g.in("/mix", 0));
                                    c.setWatchPoint(&g.container, g.compound("/group")->innerOutputs()[0u]);
                                    c.enableWatchPoint(&g.container, g.out("/hub", 1), true);
                                }),
        group("group", "/", {"mix", "hub"}, {"note"}),
        group("group with a compound", "/", {"sink", "group", "hub"}),
        group("group inside", "/group", {"left", "deep"}),
        group("group annotations", "/", {}, {"back"}),
        make<ExplodeCompoundCommand>("explode",
                                     [](G& g, ExplodeCompoundCommand& c) {
                                         c.setParentCompound(&g.container, "/");
                                         c.addCompound("group");
                                     }),
        make<ExplodeCompoundCommand>("explode deep",
                                     [](G& g, ExplodeCompoundCommand& c) {
                                         c.setParentCompound(&g.container, "/group");
                                         c.addCompound("deep");
                                     }),
        paste("paste", "/", {"hub", "mix", "group"}, "/", true),
        paste("paste io", "/group", {"input", "left", "output"}, "/group/deep", false),
    };
}

} // namespace

std::vector<EditCase> const& editCases()
{
    static std::vector<EditCase> const cases = allCases();
    return cases;
}

} // namespace tav_test
