#pragma once

#include <tav/ListIterator.h>
#include <tav/String.h>
#include <tav/StringArray.h>

namespace TAV_marlo_v1 {

/// A keyed record: an ordered list of (key, values) pairs and an ordered list of named child lists.
/// A key is looked up as the first equal one; look-up does not get slower with the number of pairs.
/// A null key or value is ignored, and the operation answers false. Operations that fill a given
/// array append to it.
class TAV_API PropertyList {
public:
    /// One pair, by value.
    class TAV_API Pair {
    public:
        Pair(char const* key, StringArray const& values);
        char const* key() const noexcept { return m_key.toChar(); }
        StringArray const& values() const noexcept { return m_values; }

    private:
        String m_key;
        StringArray m_values;
    };

    /// The child lists of a list as a range; invalid once that list changes.
    class TAV_API ChildLists {
    public:
        struct Child {
            char const* name;
            PropertyList const* list;
        };
        explicit ChildLists(PropertyList const& owner) noexcept
            : m_owner(&owner)
        {
        }
        unsigned size() const noexcept;
        Child operator[](unsigned index) const;
        ListIterator<ChildLists> begin() const { return {*this, 0}; }
        ListIterator<ChildLists> end() const { return {*this, size()}; }

    private:
        PropertyList const* m_owner;
    };

    PropertyList();
    /// From serialised text; empty when the text is damaged.
    PropertyList(char const* text, SerializeMode mode);
    PropertyList(PropertyList const& other);
    PropertyList(PropertyList&& other) noexcept;
    ~PropertyList();
    PropertyList& operator=(PropertyList const& other);
    PropertyList& operator=(PropertyList&& other) noexcept;
    void swap(PropertyList& other) noexcept;

    bool operator==(PropertyList const& other) const;
    bool operator!=(PropertyList const& other) const { return !(*this == other); }

    // ---- pairs

    /// Appends to the values of a known key, or a new pair at the end.
    bool addStringPair(char const* key, char const* value);
    bool addStringPair(char const* key, StringArray const& values);
    /// Replaces the values of a known key; false, with nothing added, for a key that is not there.
    bool setStringPairValue(char const* key, char const* value);
    bool setStringPairValues(char const* key, StringArray const& values);
    /// The first value, or null when the key is absent or has no value; lives until the next change.
    char const* getStringPairValue(char const* key) const;
    bool getStringPairValues(char const* key, StringArray& values) const;
    bool hasStringPair(char const* key) const;
    bool removeStringPair(char const* key);

    /// `value` is the first value, "" when there is none. False past the end; so for all four.
    bool getStringPairAt(unsigned index, String& key, String& value) const;
    bool getStringPairAt(unsigned index, String& key, StringArray& values) const;
    bool setStringPairAt(unsigned index, char const* key, char const* value);
    bool setStringPairAt(unsigned index, char const* key, StringArray const& values);

    void getStringPairNames(StringArray& keys) const;
    unsigned getNumberOfPairs() const noexcept;
    /// The pair at `index`, empty past the end.
    Pair operator[](unsigned index) const;
    unsigned size() const noexcept { return getNumberOfPairs(); }
    ListIterator<PropertyList> begin() const { return {*this, 0}; }
    ListIterator<PropertyList> end() const { return {*this, size()}; }
    /// Orders the pairs by key, byte-wise; pairs of equal keys keep their order.
    void sortKeys();

    // ---- child lists

    /// Appends an empty child list and returns it; lives until it is removed.
    PropertyList& addChildList(char const* name);
    /// Replaces the first child list of that name, or adds one.
    bool setChildList(char const* name, PropertyList const& list);
    /// The first child list of that name, or null.
    PropertyList* getChildList(char const* name);
    PropertyList const* getChildList(char const* name) const;
    bool getChildListAt(unsigned index, String& name, PropertyList const*& list) const;
    bool removeChildList(char const* name);
    unsigned getNumberOfChildLists() const noexcept;
    ChildLists childLists() const noexcept { return ChildLists(*this); }

    /// Removes pairs and child lists.
    void removeAll();
    /// No pair and no child list.
    bool empty() const noexcept;

    // ---- text

    /// Entries with ";" between them, pairs first: "min={0};items={a,"b;c"};ui[widget={slider}]".
    /// Lossless mode carries any bytes.
    String serialize(SerializeMode mode) const;
    /// Replaces the contents by those of lossless text. eSerializePlain lets blanks stand around texts
    /// and marks.
    /// @return false, with nothing changed, for null or damaged text, or more than 64 levels of child lists
    bool unserialize(char const* text, SerializeMode mode);

private:
    friend class PropertyListAccess;
    struct Impl;
    Impl* m_impl = nullptr; // null while the list is empty and was never filled
};

} // namespace TAV_marlo_v1
