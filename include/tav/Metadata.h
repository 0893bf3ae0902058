#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/MetadataCallBack.h>
#include <tav/PropertyList.h>
#include <tav/StatusStr.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

/// A store of named metadata entries, each with one or more values, and of named child lists.
/// Null keys and values are ignored, and the operation answers false.
class TAV_API Metadata {
public:
    Metadata() = default;
    Metadata(Metadata const&) = default;
    Metadata& operator=(Metadata const&) = default;

    virtual ~Metadata();
    /// Appends to the values of a known key, or adds an entry.
    virtual bool addMetadata(char const* key, char const* value);
    /// Replaces the values of the key, or adds an entry.
    virtual bool setMetadataValue(char const* key, char const* value);
    virtual bool removeMetadata(char const* key);
    virtual bool hasMetadata(char const* key) const;
    /// Appends the values of the key.
    virtual bool getMetadata(char const* key, StringArray& values) const;
    /// Appends the keys in their order.
    virtual void getMetadatas(StringArray& keys) const;
    /// The whole store; lives as long as this object.
    virtual PropertyList const& getPropertyList() const;
    virtual bool setChildList(char const* name, PropertyList const& list);
    /// Copies the child list into `list`.
    virtual bool getChildList(char const* name, PropertyList& list) const;
    virtual bool hasChildList(char const* name) const;
    virtual bool removeChildList(char const* name);
    /// The store as graph text rooted at "metadatas".
    virtual String saveMetadatasToXML() const;
    /// Replaces the store by that of a "metadatas" text; text that can't be used changes nothing.
    virtual StatusStr createMetadatasFromXML(char const* text);
    /// A callback for the key, if the class offers one. The base class offers none.
    virtual bool metadataCallback(char const* key, MetadataCallBackType type,
                                  AddRefWrapper<MetadataCallBack>& callback);

    /// Replaces the store.
    void setFromPropertyList(PropertyList const& list);

protected:
    /// Called after each change of the store that changed something. The base class does nothing.
    virtual void onMetadataChanged();

private:
    friend class MetadataAccess;
    PropertyList m_store;
};

} // namespace TAV_marlo_v1
