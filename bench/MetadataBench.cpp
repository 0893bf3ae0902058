// Many metadata entries on one node.

#include "NamedThings.h"

#include <tav/StringArray.h>

namespace bench {

namespace {

class Entries {
public:
    Entries()
        : m_node(Node::createNew(&m_document, "node"))
    {
        m_document.top().nodes().add(m_node);
    }
    bool add(char const* key) { return m_node->setMetadataValue(key, "1"); }
    bool find(char const* key) const
    {
        TAV_marlo_v1::StringArray values;
        return m_node->getMetadata(key, values) && values.size() == 1;
    }
    bool rename(char const*, char const*) { return false; } // keys stay what they are
    bool remove(char const* key) { return m_node->removeMetadata(key); }
    unsigned size() const
    {
        TAV_marlo_v1::StringArray keys;
        m_node->getMetadatas(keys);
        return keys.size();
    }

private:
    SampleDocument m_document;
    AddRefWrapper<Node> m_node;
};

constexpr Sizes kSizes{10, 10000};

RowEntry const setEntry(
    "metadata: set", [](Row& row) { timeStep<Entries>(row, Step::Add); }, kSizes);
RowEntry const getEntry(
    "metadata: get", [](Row& row) { timeStep<Entries>(row, Step::Find); }, kSizes);
RowEntry const removeEntry(
    "metadata: remove", [](Row& row) { timeStep<Entries>(row, Step::Remove); }, kSizes);

} // namespace

} // namespace bench
