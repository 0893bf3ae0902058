// Uses what the public headers offer as templates, so that a compiler judges their bodies too.

#include <tav/kit/kit.h>
#include <tav/tav.h>

#include <pel_1_2/PELFileSink.h>

namespace TAV_marlo_v1 {

enum TestFlags : std::uint32_t { eNoTestFlag = 0 };

template class Flaggable<TestFlags>;
template class AddRefWrapper<Node>;
template class AddRefWrapper<Node const>;
template class ListIterator<NodeList>;
template class ListIterator<NodeStateFlags>;
template class ListIterator<PropertyList>;
template class kit::CommandStep<MetadataCommand>;

namespace {

[[maybe_unused]] unsigned walk(NodeLibrary const& library, NodeList const& nodes, PropertyList const& properties)
{
    unsigned found = 0;
    for (AddRefWrapper<NodeDefinition> const& definition : library.nodeDefs())
        found += definition ? 1u : 0u;
    for (AddRefWrapper<Node const> const node : nodes)
        found += node ? 1u : 0u;
    for (PropertyList::ChildLists::Child const child : properties.childLists())
        found += child.list ? 1u : 0u;
    return found;
}

[[maybe_unused]] bool carryOut(kit::UndoStack& stack, Container* container, AddRefWrapper<Port> const& port)
{
    bool const hasCut = stack.perform(ConnectCommand(), "cut",
                                      [&](ConnectCommand& command) { return command.disconnectAll(container, port); });
    return stack.push(NodeCommand(), "edit") && stack.push(MetadataCommand(), "describe", 1) && hasCut;
}

void registerNothing(PluginRegistrar&, PluginInfo&)
{
}
void unregisterNothing(PluginInfo const&)
{
}

} // namespace

} // namespace TAV_marlo_v1

TAV_KIT_PLUGIN(TAV_marlo_v1::registerNothing, TAV_marlo_v1::unregisterNothing)
