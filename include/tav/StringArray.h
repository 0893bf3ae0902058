#pragma once

#include <tav/Export.h>
#include <tav/ListIterator.h>
#include <tav/String.h>

#include <cstdint>

namespace TAV_marlo_v1 {

/// How StringArray and PropertyList are written as one text.
enum SerializeMode : std::uint32_t {
    eSerializeLossless = 0, ///< carries any bytes and comes back equal
    eSerializePlain = 1     ///< items as they are, for people to read; a separator inside an item is not protected
};

/// What a reader of that text accepts.
enum UnserializeMode : std::uint32_t {
    eUnserializeStrict = 0, ///< exactly what eSerializeLossless writes
    eUnserializeLenient = 1 ///< as typed by a person: blanks around items and around the brackets are dropped
};

/// The three marks of a serialised array. The texts must outlive the call they are given to.
struct SerializationTags {
    char const* open;
    char const* close;
    char const* separator;
};

/// "{", "}" and ",".
TAV_API extern SerializationTags const kDefaultSerializationTags;

/// An ordered array of texts that owns its elements; duplicates are allowed. One pointer wide.
/// A null text given to any operation is ignored.
class TAV_API StringArray {
public:
    StringArray();
    /// An array of that one text.
    StringArray(char const* text);
    StringArray(StringArray const& other);
    StringArray(StringArray&& other) noexcept;
    ~StringArray();

    StringArray& operator=(StringArray const& other);
    StringArray& operator=(StringArray&& other) noexcept;

    unsigned size() const noexcept;
    bool empty() const noexcept;
    void clear();

    /// The text at `index`, which must be below size(); lives until the next change of this array.
    char const* operator[](unsigned index) const noexcept;

    void add(char const* text);
    void add(String const& text);
    /// Appends all of `other`, in order; `other` may be this array.
    void add(StringArray const& other);

    /// Appends `text` unless an equal one is there. @return whether it was appended
    bool addUnique(char const* text);
    /// Removes the first text equal to `text`; the order of the rest stays. @return whether there was one
    bool removeUnique(char const* text);
    bool contains(String const& text) const noexcept;

    bool operator==(StringArray const& other) const noexcept;
    bool operator!=(StringArray const& other) const noexcept;

    /// "{a,b}". Lossless: an item that is empty, has blanks at its ends, holds a tag, a quote or a
    /// backslash, or ends in a character of a tag stands in double quotes with \" and \\.
    String serialize(SerializeMode mode, SerializationTags const& tags = kDefaultSerializationTags) const;

    /// Replaces the contents by those of `text`.
    /// @return false, with nothing changed, for null or damaged text
    bool unserialize(char const* text, UnserializeMode mode, SerializationTags const& tags = kDefaultSerializationTags);

    ListIterator<StringArray> begin() const { return {*this, 0}; }
    ListIterator<StringArray> end() const { return {*this, size()}; }

private:
    struct Impl;
    Impl* m_impl; // never null
};

} // namespace TAV_marlo_v1
