#pragma once

#include <cstddef>

namespace TAV_marlo_v1::detail {

/// Memory for the small records of which a graph has millions: ports, names, values, lists. Blocks of one size lie
/// side by side in pages, without a head of their own, and a page goes back when its last block does. For a graph of
/// a million nodes this spares an eighth of its memory and most of the time that the general allocator spends on
/// merging neighbours when nodes are removed. As with all counts of the library, nothing is synchronised.
///
/// @param size what giveBlock() is told again; above 256 bytes the general allocator serves
void* takeBlock(std::size_t size);
void giveBlock(void* block, std::size_t size) noexcept;

/// For tests of what happens where memory ends: called before each block is given out, and may throw
/// std::bad_alloc. Null otherwise.
extern void (*onTakeBlock)();

/// Base of classes whose objects live in such blocks. They are deleted as what they are, or have a virtual destructor.
struct InSmallBlock {
    static void* operator new(std::size_t size) { return takeBlock(size); }
    static void operator delete(void* block, std::size_t size) noexcept { giveBlock(block, size); }
};

} // namespace TAV_marlo_v1::detail
