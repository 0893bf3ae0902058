// Many ports at one node.

#include "NamedThings.h"

#include <tav/PortDataType.h>
#include <tav/Runtime.h>

namespace bench {

namespace {

class Ports {
public:
    Ports()
        : m_type(m_document.getRuntime()->getPortDataType("float"))
        , m_node(TAV_marlo_v1::Node::createNew(&m_document, "node"))
    {
        m_document.top().nodes().add(m_node);
    }
    bool add(char const* name) { return bool(m_node->inputs().addPort(name, m_type, TAV_marlo_v1::eNoPortFlags)); }
    bool find(char const* name) const { return bool(m_node->inputs()[name]); }
    bool rename(char const* name, char const* newName)
    {
        AddRefWrapper<Port> const port = m_node->inputs()[name];
        port->setName(newName);
        return std::string(newName) == port->getName();
    }
    bool remove(char const* name) { return m_node->inputs().remove(m_node->inputs()[name]); }
    unsigned size() const { return m_node->inputs().size(); }

private:
    SampleDocument m_document;
    AddRefWrapper<TAV_marlo_v1::PortDataType> m_type;
    AddRefWrapper<Node> m_node;
};

constexpr Sizes kSizes{10, 10000};

RowEntry const addEntry(
    "ports: add", [](Row& row) { timeStep<Ports>(row, Step::Add); }, kSizes);
RowEntry const findEntry(
    "ports: find", [](Row& row) { timeStep<Ports>(row, Step::Find); }, kSizes);
RowEntry const renameEntry(
    "ports: rename", [](Row& row) { timeStep<Ports>(row, Step::Rename); }, kSizes);
RowEntry const removeEntry(
    "ports: remove", [](Row& row) { timeStep<Ports>(row, Step::Remove); }, kSizes);

} // namespace

} // namespace bench
