#include <tav/Namable.h>
#include <tav/NiceNamable.h>

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {

TEST(NamableName, IsSetCopiedAndComparedByBytes)
{
    Namable name("node");
    Namable const copy(name);
    name.setName(nullptr);
    EXPECT_EQ(name, copy);
    name.setName("Node");
    EXPECT_NE(name, copy);
    EXPECT_STREQ(copy.getName(), "node");
    name = copy;
    name.setName(name.getName() + 2);
    EXPECT_STREQ(name.getName(), "de");
    EXPECT_STREQ(Namable(nullptr).getName(), "");
    EXPECT_EQ(Namable(""), Namable());
}

TEST(NamablePath, ASeparatorTakesThePlaceOfOneAtTheEnd)
{
    struct {
        char const *before, *node, *port;
    } const cases[] = {{"", "a", "a"},          {"x", "x/a", "x.a"}, {"x/", "x/a", "x.a"},        {"x.", "x/a", "x.a"},
                       {"x//", "x//a", "x/.a"}, {"/", "/a", ".a"},   {"/c/n", "/c/n/a", "/c/n.a"}};
    for (auto const& [before, node, port] : cases) {
        Namable path(before);
        path.appendNodeName("a");
        EXPECT_STREQ(path.getName(), node) << before;
        path.setName(before);
        path.appendPortName("a");
        EXPECT_STREQ(path.getName(), port) << before;
    }
}

TEST(NamablePath, NullAppendsNothingAndTextIsAppendedAsItIs)
{
    Namable path("x/");
    path.appendNodeName(nullptr);
    path.appendPortName(nullptr);
    path.appendString(nullptr);
    EXPECT_STREQ(path.getName(), "x/");
    path.appendString(path.getName());
    EXPECT_STREQ(path.getName(), "x/x/");
    path.appendNodeName("");
    EXPECT_STREQ(path.getName(), "x/x/");
}

TEST(NiceName, FallsBackOnTheNameThatADerivedClassGives)
{
    struct Renamed : NiceNamable {
        using NiceNamable::NiceNamable;
        char const* getName() const override { return "derived"; }
    };
    EXPECT_STREQ(Renamed("n", "").getNiceName(), "derived");
    EXPECT_STREQ(Renamed("n", "Nice").getNiceName(), "Nice");
    EXPECT_STREQ(NiceNamable("n", nullptr).getNiceName(), "n");
}

TEST(NiceName, BothTextsCountForEquality)
{
    NiceNamable const named("n", "Nice");
    NiceNamable other(named);
    EXPECT_EQ(other, named);
    other.setNiceName(nullptr);
    other.setName(nullptr);
    EXPECT_EQ(other, named);
    other.setNiceName("");
    EXPECT_NE(other, named);
    EXPECT_NE(NiceNamable("m", "Nice"), named);
}

} // namespace TAV_marlo_v1
