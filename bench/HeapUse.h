#pragma once

#include <cstddef>

namespace bench {

/// Counts what the heap gives out and gets back while it lives; one at a time. Blocks from before count
/// when they are freed. It costs a few nanoseconds a block, and next to nothing while there is none.
///
/// With the GNU library it counts every block; elsewhere those of operator new, and on Windows those alone
/// of the program itself.
class HeapWatch {
public:
    HeapWatch() noexcept;
    ~HeapWatch();
    HeapWatch(HeapWatch const&) = delete;
    HeapWatch& operator=(HeapWatch const&) = delete;

    /// The bytes that are in use now more than at the beginning, with what the allocator adds to each block.
    std::ptrdiff_t inUse() const noexcept;
    /// The most that it was so far.
    std::ptrdiff_t peak() const noexcept;
};

} // namespace bench
