#include "HeapUse.h"

#if defined(TAV_HAVE_MALLINFO2)

#    include <malloc.h>

namespace bench {

std::size_t heapInUse()
{
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd; // in the heap, and mapped by itself
}

} // namespace bench

#else

#    include <cstdlib>
#    include <new>

namespace {

std::size_t g_inUse = 0; // the program has one thread

// In front of each block stands its size, as wide as the strictest alignment.
constexpr std::size_t kFront = alignof(std::max_align_t) > sizeof(std::size_t) ? alignof(std::max_align_t)
                                                                               : sizeof(std::size_t);

void* allocate(std::size_t size) noexcept
{
    char* const block = static_cast<char*>(std::malloc(size + kFront));
    if (!block)
        return nullptr;
    *reinterpret_cast<std::size_t*>(block) = size;
    g_inUse += size;
    return block + kFront;
}

void release(void* memory) noexcept
{
    if (!memory)
        return;
    char* const block = static_cast<char*>(memory) - kFront;
    g_inUse -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size)
{
    if (void* const memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return allocate(size);
}
void operator delete(void* memory) noexcept
{
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}

namespace bench {

std::size_t heapInUse()
{
    return g_inUse;
}

} // namespace bench

#endif
