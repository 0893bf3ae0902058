#pragma once

#include <tav/Export.h>

namespace TAV_marlo_v1 {

/// The text that crosses the interface: owns one NUL-terminated byte string, never null. By
/// convention UTF-8; nothing here depends on the encoding. One pointer wide.
class TAV_API String {
public:
    String();
    /// A null `text` gives the empty text.
    String(char const* text);
    /// The first `size` bytes of `text`, which hold no NUL.
    String(char const* text, unsigned long long size);
    String(String const& other);
    /// Leaves `other` empty.
    String(String&& other) noexcept;
    ~String();

    String& operator=(String const& other);
    String& operator=(String&& other) noexcept;
    String& operator=(char const* text);

    /// The text; lives until the next change of this object.
    char const* toChar() const noexcept;
    /// Number of bytes before the closing NUL.
    unsigned long long size() const noexcept;
    bool empty() const noexcept;

    /// A null `text` appends nothing.
    String& append(char const* text);
    String& append(String const& text);

    bool operator==(String const& other) const noexcept;
    bool operator==(char const* text) const noexcept;
    bool operator!=(String const& other) const noexcept;
    bool operator!=(char const* text) const noexcept;
    /// Byte-wise lexicographic, bytes unsigned: the order in which the library sorts names.
    bool operator<(String const& other) const noexcept;

private:
    friend class TextBuffer;
    struct Impl;
    Impl* m_impl; // never null
};

} // namespace TAV_marlo_v1
