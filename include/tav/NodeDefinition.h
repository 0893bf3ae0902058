#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Metadata.h>
#include <tav/NiceNamable.h>
#include <tav/ReferenceCounted.h>
#include <tav/String.h>

namespace TAV_marlo_v1 {

class NodeLibrary;

/// One creatable node type of a node library.
class TAV_API NodeDefinition : public NiceNamable, public ReferenceCounted, public Metadata {
public:
    static AddRefWrapper<NodeDefinition> createNew(char const* name, char const* niceName);

    /// Not owned; null for a free definition, and once the library died or removed it.
    NodeLibrary* parent() const noexcept { return m_parent; }
    void setParent(NodeLibrary* library) noexcept { m_parent = library; }
    String category() const { return m_category; }
    void setCategory(String const& category) { m_category = category; }

protected:
    NodeDefinition(char const* name, char const* niceName);
    ~NodeDefinition() override;

private:
    NodeLibrary* m_parent = nullptr;
    String m_category;
};

} // namespace TAV_marlo_v1
