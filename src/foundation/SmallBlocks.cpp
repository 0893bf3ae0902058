#include "foundation/SmallBlocks.h"

#include <array>
#include <cstdint>
#include <new>

// The sanitizers watch each block of the general allocator, and would not see into a page.
#if defined(__SANITIZE_ADDRESS__)
#    define TAV_WATCHED_BLOCKS 1
#elif defined(__has_feature)
#    if __has_feature(address_sanitizer)
#        define TAV_WATCHED_BLOCKS 1
#    endif
#endif

namespace TAV_marlo_v1::detail {

namespace {

constexpr std::size_t kUnit = 8; // sizes are rounded up to a multiple of it
constexpr std::size_t kLargest = 256;
constexpr std::size_t kPageSize = 16384; // and its alignment, so that a block leads to its page

struct FreeBlock {
    FreeBlock* next;
};

/// Head of a page; the blocks follow.
struct Page {
    Page* next = nullptr; // both in the list of pages with free blocks
    Page* previous = nullptr;
    FreeBlock* free = nullptr;   // those that came back
    std::uint32_t untouched = 0; // offset of the first block that was never given out
    std::uint32_t used = 0;

    static Page& of(void* block) noexcept
    {
        return *reinterpret_cast<Page*>(reinterpret_cast<std::uintptr_t>(block) & ~std::uintptr_t(kPageSize - 1));
    }
};
static_assert(sizeof(Page) % kUnit == 0);

/// The blocks of one size.
class Pool {
public:
    void* take(std::uint32_t size)
    {
        if (!m_first)
            addPage();
        Page& page = *m_first;
        void* block = page.free;
        if (page.free) {
            page.free = page.free->next;
        } else {
            block = reinterpret_cast<char*>(&page) + page.untouched;
            page.untouched += size;
        }
        ++page.used;
        if (!hasRoom(page, size))
            unlink(page);
        return block;
    }

    void give(void* block, std::uint32_t size) noexcept
    {
        Page& page = Page::of(block);
        if (!hasRoom(page, size))
            link(page);
        page.free = new (block) FreeBlock{page.free};
        if (--page.used == 0 && page.next) // the last page with room stays, or a single block would cost one each time
            removePage(page);
    }

private:
    static bool hasRoom(Page const& page, std::uint32_t size) noexcept
    {
        return page.free || page.untouched + size <= kPageSize;
    }

    void addPage()
    {
        Page* const page = new (::operator new(kPageSize, std::align_val_t(kPageSize))) Page;
        page->untouched = sizeof(Page);
        link(*page);
    }

    void removePage(Page& page) noexcept
    {
        unlink(page);
        ::operator delete(static_cast<void*>(&page), std::align_val_t(kPageSize));
    }

    void link(Page& page) noexcept
    {
        page.previous = nullptr;
        page.next = m_first;
        if (m_first)
            m_first->previous = &page;
        m_first = &page;
    }

    void unlink(Page& page) noexcept
    {
        (page.previous ? page.previous->next : m_first) = page.next;
        if (page.next)
            page.next->previous = page.previous;
    }

    Page* m_first = nullptr;
};

// Constant-initialised and never destroyed: static objects of any module may hold blocks.
constinit std::array<Pool, kLargest / kUnit> pools{};

std::size_t unitsOf(std::size_t size) noexcept
{
    return size == 0 ? 1 : (size + kUnit - 1) / kUnit;
}

bool isSmall([[maybe_unused]] std::size_t size) noexcept
{
#if defined(TAV_WATCHED_BLOCKS)
    return false;
#else
    return size <= kLargest;
#endif
}

} // namespace

void (*onTakeBlock)() = nullptr;

void* takeBlock(std::size_t size)
{
    if (onTakeBlock)
        onTakeBlock();
    if (!isSmall(size))
        return ::operator new(size);
    std::size_t const units = unitsOf(size);
    return pools[units - 1].take(static_cast<std::uint32_t>(units * kUnit));
}

void giveBlock(void* block, std::size_t size) noexcept
{
    if (!isSmall(size))
        return ::operator delete(block);
    std::size_t const units = unitsOf(size);
    pools[units - 1].give(block, static_cast<std::uint32_t>(units * kUnit));
}

} // namespace TAV_marlo_v1::detail
