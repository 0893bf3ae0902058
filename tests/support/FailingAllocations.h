#pragma once

#include <new>

namespace tav_test {

/// Allocations that still succeed in this program; negative: all do. A program that uses it compiles
/// FailingAllocations.cpp, and holds the library's objects itself, so that they allocate through it too.
extern long allocationsLeft;

/// Runs `change` again and again, each time with a later allocation failing, until it goes through; looks
/// after each failure with `check` whether all is as it was. @return how many allocations could fail
template <class Change, class Check>
long failEachAllocation(Change&& change, Check&& check)
{
    for (long count = 0;; ++count) {
        allocationsLeft = count;
        try {
            change();
            allocationsLeft = -1;
            return count;
        } catch (std::bad_alloc const&) {
            allocationsLeft = -1;
        }
        check();
    }
}

} // namespace tav_test
