#include "foundation/SmallBlocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace TAV_marlo_v1::detail {

/// Blocks of every size, filled to the last byte, taken and given back in an order that empties, refills and
/// returns pages: none must ever lie within another.
TEST(SmallBlocks, KeepWhatIsWrittenWhileOthersComeAndGo)
{
    struct Block {
        unsigned char* bytes;
        std::size_t size;
        unsigned char mark;
    };
    std::mt19937 random(5);
    std::vector<Block> blocks;
    for (int step = 0; step < 60000; ++step) {
        bool const growing = (step / 15000) % 2 == 0;
        if (blocks.empty() || random() % 10 < (growing ? 8u : 2u)) {
            std::size_t const size = random() % 3 == 0 ? random() % 300 : 104;
            Block const block{static_cast<unsigned char*>(takeBlock(size)), size, static_cast<unsigned char>(step)};
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(block.bytes) % 8, 0u);
            std::fill_n(block.bytes, size, block.mark);
            blocks.push_back(block);
        } else {
            std::swap(blocks[random() % blocks.size()], blocks.back());
            Block const block = blocks.back();
            blocks.pop_back();
            ASSERT_TRUE(std::all_of(block.bytes, block.bytes + block.size, [&](auto b) { return b == block.mark; }));
            giveBlock(block.bytes, block.size);
        }
    }
    for (Block const& block : blocks) {
        ASSERT_TRUE(std::all_of(block.bytes, block.bytes + block.size, [&](auto b) { return b == block.mark; }));
        giveBlock(block.bytes, block.size);
    }
}

} // namespace TAV_marlo_v1::detail
