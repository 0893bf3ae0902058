#include "HeapUse.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
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

void* given(void* block) noexcept
{
    if (block && g_heap.isWatched) {
        g_heap.inUse += sizeOf(block);
        g_heap.peak = std::max(g_heap.peak, g_heap.inUse);
    }
    return block;
}

void* takenBack(void* block) noexcept
{
    if (block && g_heap.isWatched)
        g_heap.inUse -= sizeOf(block);
    return block;
}

} // namespace

#if defined(__GLIBC__)

// A program may replace these for itself and all its libraries, and operator new stands on them.
extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the GNU library's
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t size) noexcept
{
    return given(__libc_malloc(size));
}
void* calloc(std::size_t count, std::size_t size) noexcept
{
    return given(__libc_calloc(count, size));
}
void* realloc(void* block, std::size_t size) noexcept
{
    // Where it fails the old block stays, which no measurement outlives.
    return given(__libc_realloc(takenBack(block), size));
}
void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return given(__libc_memalign(alignment, size));
}
int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept
{
    *block = given(__libc_memalign(alignment, size));
    return *block ? 0 : ENOMEM;
}
void free(void* block) noexcept
{
    __libc_free(takenBack(block));
}

} // extern "C"

#else

void* operator new(std::size_t size)
{
    if (void* const block = given(std::malloc(size == 0 ? 1 : size)))
        return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return given(std::malloc(size == 0 ? 1 : size));
}
void operator delete(void* block) noexcept
{
    std::free(takenBack(block));
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(takenBack(block));
}

// Blocks of an alignment of their own are cut out of larger ones.
void* operator new(std::size_t size, std::align_val_t alignment)
{
    auto const front = static_cast<std::size_t>(alignment);
    auto* const room = static_cast<char*>(::operator new(size + 2 * front));
    std::size_t const rest = reinterpret_cast<std::uintptr_t>(room) % front;
    char* const block = room + 2 * front - rest; // behind room for the way back
    reinterpret_cast<void**>(block)[-1] = room;
    return block;
}
void operator delete(void* block, std::align_val_t) noexcept
{
    if (block)
        ::operator delete(static_cast<void**>(block)[-1]);
}

#endif

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
