// The yardstick of ports, annotations and metadata: names in their order, and an index of them.

#include "NamedThings.h"

#include <list>
#include <unordered_map>

namespace bench {

namespace {

class BareThings {
public:
    bool add(char const* name)
    {
        m_things.push_back({name, "1"});
        return m_byName.emplace(name, std::prev(m_things.end())).second;
    }
    bool find(char const* name) const { return m_byName.find(name) != m_byName.end(); }
    bool rename(char const* name, char const* newName)
    {
        auto entry = m_byName.extract(name);
        entry.key() = newName;
        entry.mapped()->name = newName;
        return m_byName.insert(std::move(entry)).inserted;
    }
    bool remove(char const* name)
    {
        auto const found = m_byName.find(name);
        m_things.erase(found->second);
        m_byName.erase(found);
        return true;
    }
    unsigned size() const { return static_cast<unsigned>(m_things.size()); }

private:
    struct Thing {
        std::string name, value;
    };
    std::list<Thing> m_things;
    std::unordered_map<std::string, std::list<Thing>::iterator> m_byName;
};

void add(Row& row)
{
    timeStep<BareThings>(row, Step::Add);
}
void find(Row& row)
{
    timeStep<BareThings>(row, Step::Find);
}
void rename(Row& row)
{
    timeStep<BareThings>(row, Step::Rename);
}
void remove(Row& row)
{
    timeStep<BareThings>(row, Step::Remove);
}

// Beside the ports, and the metadata, which have the same sizes.
constexpr Sizes kFew{10, 10000};
RowEntry const addFew("ports: add.bare", add, kFew);
RowEntry const findFew("ports: find.bare", find, kFew);
RowEntry const renameFew("ports: rename.bare", rename, kFew);
RowEntry const removeFew("ports: remove.bare", remove, kFew);

constexpr Sizes kMany{1000, 100000};
RowEntry const addMany("annotations: add.bare", add, kMany);
RowEntry const findMany("annotations: find.bare", find, kMany);
RowEntry const renameMany("annotations: rename.bare", rename, kMany);
RowEntry const removeMany("annotations: remove.bare", remove, kMany);

} // namespace

} // namespace bench
