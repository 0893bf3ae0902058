#include "support/FailingAllocations.h"

#include "foundation/SmallBlocks.h"

#include <cstdlib>

long tav_test::allocationsLeft = -1;

namespace {

void countDown()
{
    if (tav_test::allocationsLeft == 0)
        throw std::bad_alloc();
    if (tav_test::allocationsLeft > 0)
        --tav_test::allocationsLeft;
}

// Most small blocks come out of pages that are there already.
[[maybe_unused]] bool const isHooked = (TAV_marlo_v1::detail::onTakeBlock = countDown, true);

void* allocate(std::size_t bytes)
{
    countDown();
    if (void* const block = std::malloc(bytes ? bytes : 1))
        return block;
    throw std::bad_alloc();
}

} // namespace

// For the whole program. The forms that do not throw are there too, since a tool that watches
// allocations has its own of those.
void* operator new(std::size_t bytes)
{
    return allocate(bytes);
}
void* operator new[](std::size_t bytes)
{
    return allocate(bytes);
}
void* operator new(std::size_t bytes, std::nothrow_t const&) noexcept
{
    return tav_test::allocationsLeft == 0 ? nullptr : allocate(bytes);
}
void* operator new[](std::size_t bytes, std::nothrow_t const&) noexcept
{
    return tav_test::allocationsLeft == 0 ? nullptr : allocate(bytes);
}
void operator delete(void* block) noexcept
{
    std::free(block);
}
void operator delete[](void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}
