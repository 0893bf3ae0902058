#include "HeapUse.h"

#include <cstdlib>
#include <new>

#if defined(__APPLE__)
#    include <malloc/malloc.h>
#else
#    include <malloc.h>
#endif

namespace {

struct {
    bool isWatched = false; // the program has one thread
    std::ptrdiff_t inUse = 0;
    std::ptrdiff_t peak = 0;
} g_heap;

std::ptrdiff_t sizeOf(void* block) noexcept
{
#if defined(_MSC_VER)
    std::size_t const usable = _msize(block);
#elif defined(__APPLE__)
    std::size_t const usable = malloc_size(block);
#else
    std::size_t const usable = malloc_usable_size(block);
#endif
    return static_cast<std::ptrdiff_t>(usable + sizeof(std::size_t)); // in front of which it keeps the size
}

void* allocate(std::size_t size) noexcept
{
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block && g_heap.isWatched) {
        g_heap.inUse += sizeOf(block);
        if (g_heap.inUse > g_heap.peak)
            g_heap.peak = g_heap.inUse;
    }
    return block;
}

void release(void* block) noexcept
{
    if (block && g_heap.isWatched)
        g_heap.inUse -= sizeOf(block);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size)
{
    if (void* const block = allocate(size))
        return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return allocate(size);
}
void operator delete(void* block) noexcept
{
    release(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    release(block);
}

namespace bench {

HeapWatch::HeapWatch() noexcept
{
    g_heap = {true, 0, 0};
}

HeapWatch::~HeapWatch()
{
    g_heap.isWatched = false;
}

std::ptrdiff_t HeapWatch::inUse() const noexcept
{
    return g_heap.inUse;
}

std::ptrdiff_t HeapWatch::peak() const noexcept
{
    return g_heap.peak;
}

} // namespace bench
