#pragma once

#include <tav/Export.h>

namespace TAV_marlo_v1 {

/// Result of an operation that may fail with words: the empty text is success, any other the
/// message. Test with `if (!status)`, which is true on failure. One pointer wide.
class TAV_API StatusStr {
public:
    /// Success.
    StatusStr();
    /// Failure with that message; null or empty is success.
    StatusStr(char const* text);
    /// printf-style `format` with two `%s`, cut at 1023 bytes. A null `format` is success; with a
    /// null `first` the format itself is the message.
    StatusStr(char const* format, char const* first, char const* second);
    StatusStr(StatusStr const& other);
    StatusStr(StatusStr&& other) noexcept;
    ~StatusStr();

    StatusStr& operator=(StatusStr const& other);
    StatusStr& operator=(StatusStr&& other) noexcept;

    /// True on failure.
    bool operator!() const noexcept;
    /// The message, "" on success; lives until the next change of this object.
    char const* getErrorString() const noexcept;
    void setErrorString(char const* text);
    void clearError();

private:
    struct Impl;
    Impl* m_impl; // never null
};

} // namespace TAV_marlo_v1
