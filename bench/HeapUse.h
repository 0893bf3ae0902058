#pragma once

#include <cstddef>

namespace bench {

/// The bytes that are allocated now. Where the allocator tells, its own overhead is in it; elsewhere it
/// is the sum of what operator new was asked for, which leaves out what does not go through that.
std::size_t heapInUse();

} // namespace bench
