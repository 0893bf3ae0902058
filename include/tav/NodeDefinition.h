#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Metadata.h>
#include <tav/NiceNamable.h>
#include <tav/ReferenceCounted.h>
#include <tav/String.h>

namespace TAV_marlo_v1 {

class NodeLibrary;

namespace detail {
template <class Owner>
struct BackLink; // made and released inside the library alone
}

/// One creatable node type of a node library.
class TAV_API NodeDefinition : public NiceNamable, public ReferenceCounted, public Metadata {
public:
    static AddRefWrapper<NodeDefinition> createNew(char const* name, char const* niceName);

    void setName(char const* name) override;

    /// Not owned; null for a free definition, and once the library died or removed it.
    NodeLibrary* parent() const noexcept;
    void setParent(NodeLibrary* library) noexcept;
    String category() const { return m_category; }
    void setCategory(String const& category) { m_category = category; }

protected:
    NodeDefinition(char const* name, char const* niceName);
    ~NodeDefinition() override;

private:
    NodeDefinition(NodeDefinition const&) = delete;
    NodeDefinition& operator=(NodeDefinition const&) = delete;

    friend class NodeLibraryAccess;
    detail::BackLink<NodeLibrary>* m_parent = nullptr; // one reference; the library cuts it when it dies
    String m_category;
    bool m_isFiled = false; // some library looks it up by name
};

} // namespace TAV_marlo_v1
