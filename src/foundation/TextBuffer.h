#pragma once

#include <tav/String.h>

#include <cstddef>

namespace TAV_marlo_v1 {

/// Room for a text that may grow to many megabytes and becomes a String without being copied. Its block is stretched
/// in place where the allocator can do that, so that a long text stands in memory once.
class TextBuffer {
public:
    TextBuffer() noexcept = default;
    TextBuffer(TextBuffer const&) = delete;
    TextBuffer& operator=(TextBuffer const&) = delete;
    ~TextBuffer();

    /// Null before the first reserve; moves with each.
    char* data() const noexcept;
    std::size_t capacity() const noexcept;
    /// What was written stays.
    void reserve(std::size_t capacity);

    /// The first `size` bytes, which were written and hold no NUL. The buffer is as new afterwards.
    String take(std::size_t size) noexcept;

private:
    String::Impl* m_block = nullptr;
};

} // namespace TAV_marlo_v1
