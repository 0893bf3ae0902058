#include "Evaluation.h"

#include "ArithmeticTypes.h"

#include <tav/Node.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>

#include <charconv>
#include <cstring>

using namespace TAV_marlo_v1;

namespace arithmetic {

namespace {

/// The other side of a compound port; empty for the port of a plain node.
AddRefWrapper<Port> otherSideOf(AddRefWrapper<Port> const& port)
{
    AddRefWrapper<Node> const node = port->getParentNode();
    AddRefWrapper<Compound> const compound = node ? node->getAsCompound() : AddRefWrapper<Compound>();
    return compound ? compound->getReversePort(port) : AddRefWrapper<Port>();
}

bool hasOwnValue(Port const& port, double& value)
{
    StringArray values;
    if (!port.getPortDefaultValues(values) || values.empty())
        return false;
    char const* const text = values[0];
    value = std::strcmp(text, "true") == 0 ? 1 : 0;
    std::from_chars(text, text + std::strlen(text), value); // leaves it alone where there is no number
    return true;
}

bool isTruth(Port const& port)
{
    AddRefWrapper<PortDataType> const type = port.getDataType();
    return type && std::strcmp(type->getName(), "bool") == 0;
}

} // namespace

std::string Evaluation::textOf(AddRefWrapper<Port> const& port)
{
    if (!evaluate(port))
        return m_error;
    double const value = m_entries[port.get()].value;
    if (isTruth(*port))
        return value != 0 ? "true" : "false";
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

bool Evaluation::evaluate(PortHandle const& port)
{
    // No recursion: a chain of nodes may be longer than any stack.
    std::vector<PortHandle> path{port};
    while (!path.empty()) {
        PortHandle const current = path.back();
        auto const [entry, isNew] = m_entries.try_emplace(current.get());
        if (entry->second.isDone) {
            path.pop_back();
            continue;
        }
        std::vector<PortHandle> const sources = sourcesOf(current);
        if (!isNew) {
            entry->second.isDone = compute(current, sources, entry->second.value);
            if (!entry->second.isDone)
                return false;
            continue;
        }
        for (PortHandle const& source : sources) {
            auto const known = m_entries.find(source.get());
            if (known == m_entries.end()) {
                path.push_back(source);
            } else if (!known->second.isDone) {
                m_error = std::string("error: it depends on itself at ") + source->getFullPathName().getName();
                return false;
            }
        }
    }
    return true;
}

std::vector<Evaluation::PortHandle> Evaluation::sourcesOf(PortHandle const& port) const
{
    if (port->getPortIOType() == eInput)
        return port->isConnected() ? std::vector<PortHandle>{port->connectedTo()[0u]} : std::vector<PortHandle>();
    if (PortHandle const side = otherSideOf(port))
        return {side};
    AddRefWrapper<Node> const node = port->getParentNode();
    return {node->inputs().begin(), node->inputs().end()};
}

bool Evaluation::compute(PortHandle const& port, std::vector<PortHandle> const& sources, double& value)
{
    bool const isSideOfCompound = port->getPortIOType() == eOutput && otherSideOf(port);
    if (port->getPortIOType() == eInput || isSideOfCompound) {
        // An unconnected port has its own value; so has the inside of a compound port without one outside.
        double outside = 0;
        bool const isGiven =
            !sources.empty() && (!isSideOfCompound || sources[0]->isConnected() || hasOwnValue(*sources[0], outside));
        if (isGiven || !hasOwnValue(*port, value))
            value = sources.empty() ? 0 : m_entries[sources[0].get()].value;
        return true;
    }
    AddRefWrapper<Node> const node = port->getParentNode();
    TypeRow const* const type = findType(node->getNodeTypeName());
    if (!type || sources.size() != type->inputs.size()) {
        m_error = std::string("error: nothing is known of the node ") + node->getFullPathName().getName();
        return false;
    }
    std::vector<double> inputs;
    inputs.reserve(sources.size());
    for (PortHandle const& source : sources)
        inputs.push_back(m_entries[source.get()].value);
    value = type->compute(inputs.data());
    return true;
}

} // namespace arithmetic
