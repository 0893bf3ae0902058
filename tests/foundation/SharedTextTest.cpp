#include "foundation/SharedText.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace TAV_marlo_v1::detail {

TEST(SharedText, EqualTextsAreOneObjectThatGoesWithItsLastHolder)
{
    {
        SharedTextRef const text("shared text");
        SharedTextRef const same(std::string_view("shared text, cut").substr(0, 11));
        EXPECT_EQ(text, same);
        EXPECT_NE(text, SharedTextRef("shared texts"));
        EXPECT_STREQ(same.chars(), "shared text");
        EXPECT_EQ(same->hash(), SharedText::hashOf("shared text"));
        EXPECT_EQ(SharedText::find("shared text"), text.get());
    }
    EXPECT_EQ(SharedText::find("shared text"), nullptr);
}

TEST(SharedText, TheEmptyTextIsOneAndPermanent)
{
    SharedTextRef const none;
    EXPECT_EQ(none, SharedTextRef(""));
    EXPECT_EQ(none, SharedTextRef(static_cast<char const*>(nullptr)));
    EXPECT_EQ(none.get(), SharedText::find(""));
    EXPECT_EQ(none->hash(), SharedText::hashOf(""));
    EXPECT_STREQ(none.chars(), "");
    SharedText::empty().release();
    EXPECT_STREQ(SharedText::empty().chars(), "");
    SharedText::empty().addRef();
}

TEST(SharedText, AMovedFromHolderIsEmptyAndKeepsNothing)
{
    SharedTextRef text("moved text");
    SharedTextRef taken(std::move(text));
    EXPECT_TRUE(text.empty());
    text = std::move(taken);
    taken = text;
    SharedTextRef& alias = taken;
    taken = alias;
    taken = std::move(alias);
    EXPECT_EQ(taken.view(), "moved text");
    taken = text = SharedTextRef();
    EXPECT_EQ(SharedText::find("moved text"), nullptr);
}

TEST(SharedText, ManyAreFoundWhileThePoolGrowsAndShrinks)
{
    auto const nameOf = [](int i) { return "text " + std::to_string(i); };
    constexpr int kMany = 20000;
    std::vector<SharedTextRef> texts;
    for (int i = 0; i < kMany; ++i)
        texts.emplace_back(nameOf(i));
    for (int left = kMany; left > 0; left /= 4) {
        texts.resize(static_cast<std::size_t>(left));
        for (int i = 0; i < left; i += 7)
            EXPECT_EQ(SharedText::find(nameOf(i)), texts[static_cast<std::size_t>(i)].get());
        EXPECT_EQ(SharedText::find(nameOf(left)), nullptr);
    }
}

} // namespace TAV_marlo_v1::detail
