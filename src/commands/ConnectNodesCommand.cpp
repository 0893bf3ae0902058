#include <tav/ConnectNodesCommand.h>

#include "commands/CommandAccess.h"
#include "commands/ConnectionRecord.h"

#include <tav/NodeList.h>

namespace TAV_marlo_v1 {

struct ConnectNodesCommand::Impl {
    struct Pair {
        detail::NodeAddress from, to;
        detail::ConnectionRecord connection;
        bool isDone = false; // the last run got as far as to connect
    };

    bool connect(Pair& pair);

    detail::CommandScope scope;
    std::vector<Pair> pairs;
};

ConnectNodesCommand::ConnectNodesCommand()
    : m_impl(std::make_unique<Impl>())
{
}

ConnectNodesCommand::ConnectNodesCommand(ConnectNodesCommand&& other) noexcept = default;

ConnectNodesCommand::~ConnectNodesCommand() = default;

bool ConnectNodesCommand::connect(AddRefWrapper<Node> const& from, AddRefWrapper<Node> const& to)
{
    if (!m_impl || !from || !to || from == to || from->testFlag(eOutputIO) || to->testFlag(eInputIO)
        || from->getParentCompound() != to->getParentCompound())
        return false;
    m_impl->pairs.push_back({detail::NodeAddress(*from), detail::NodeAddress(*to), {}, false});
    m_impl->scope.setContainerOnce(from->getContainer());
    return true;
}

bool ConnectNodesCommand::connect(NodeList const& nodes)
{
    if (nodes.size() < 2)
        return false;
    bool isWhole = true;
    for (unsigned i = 0; i + 1 < nodes.size(); ++i)
        isWhole = connect(nodes[i], nodes[i + 1]) && isWhole;
    return isWhole;
}

bool ConnectNodesCommand::doit()
{
    if (!m_impl || m_impl->pairs.empty() || !m_impl->scope.container())
        return false;
    auto const bracket = m_impl->scope.openBracket();
    for (Impl::Pair& pair : m_impl->pairs)
        pair.isDone = false;
    bool isWhole = true;
    for (Impl::Pair& pair : m_impl->pairs)
        isWhole = m_impl->connect(pair) && isWhole;
    return isWhole;
}

bool ConnectNodesCommand::Impl::connect(Pair& pair)
{
    AddRefWrapper<Node> const from = pair.from.find(scope.scene());
    AddRefWrapper<Node> const to = pair.to.find(scope.scene());
    if (!from || !to)
        return false;
    AddRefWrapper<Port> const output = from->getDefaultPort(eOutput, eConnectable);
    AddRefWrapper<Port> const input = to->getDefaultPort(eInput, eConnectable);
    if (!pair.connection.record(scope.container(), output, input, detail::ConnectionOperation::eConnect,
                                /*copyMetaData=*/false))
        return false;
    pair.isDone = true;
    return pair.connection.perform();
}

bool ConnectNodesCommand::redo()
{
    return doit();
}

bool ConnectNodesCommand::undo()
{
    return CommandAccess::undo(*this, nullptr);
}

bool CommandAccess::undo(ConnectNodesCommand& command, detail::Renamings const* renamings)
{
    if (!command.m_impl || command.m_impl->pairs.empty() || !command.m_impl->scope.container())
        return false;
    auto const bracket = command.m_impl->scope.openBracket();
    std::vector<ConnectNodesCommand::Impl::Pair>& pairs = command.m_impl->pairs;
    bool isWhole = true;
    for (auto pair = pairs.rbegin(); pair != pairs.rend(); ++pair)
        isWhole = pair->isDone && pair->connection.undo(renamings) && isWhole;
    return isWhole;
}

} // namespace TAV_marlo_v1
