#include <tav/NewPortHints.h>
#include <tav/NodeUIHints.h>
#include <tav/PortUIHints.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

/// One hint of a bundle: how a test sets it, and whether it then reads back as set.
template <class Hints>
struct Hint {
    std::function<void(Hints&)> set;
    std::function<bool(Hints const&)> isSet;
};

template <class Hints>
Hint<Hints> text(void (Hints::*set)(char const*), bool (Hints::*get)(String const*&) const noexcept)
{
    return {[set](Hints& hints) { (hints.*set)("text"); },
            [get](Hints const& hints) {
                String const* value = nullptr;
                return (hints.*get)(value) && *value == "text";
            }};
}

template <class Hints, class T>
Hint<Hints> value(T wanted, void (Hints::*set)(T) noexcept, bool (Hints::*get)(T const*&) const noexcept)
{
    return {[=](Hints& hints) { (hints.*set)(wanted); },
            [=](Hints const& hints) {
                T const* found = nullptr;
                return (hints.*get)(found) && *found == wanted;
            }};
}

/// Each hint is unset at first, is set by its own setter and by no other, and counts for equality.
template <class Hints>
void checkEachAlone(std::vector<Hint<Hints>> const& all)
{
    for (Hint<Hints> const& chosen : all) {
        Hints hints;
        chosen.set(hints);
        for (Hint<Hints> const& other : all)
            EXPECT_EQ(other.isSet(hints), &other == &chosen) << &chosen - all.data() << " " << &other - all.data();
        EXPECT_NE(hints, Hints());
        EXPECT_EQ(hints, Hints(hints));
    }
}

} // namespace

TEST(PortUIHints, AreSetOneByOne)
{
    using H = PortUIHints;
    checkEachAlone<H>({text(&H::setNiceName, &H::getNiceName), text(&H::setResolvedDataType, &H::getResolvedDataType),
                       text(&H::setAttributeColor, &H::getAttributeColor),
                       text(&H::setBackgroundColor, &H::getBackgroundColor),
                       text(&H::setConnectionColor, &H::getConnectionColor), text(&H::setIconColor, &H::getIconColor),
                       value(eNoIcon, &H::setIcon, &H::getIcon), value(eCircleShape, &H::setShape, &H::getShape),
                       value(eNoDecoration, &H::setDecoration, &H::getDecoration),
                       value(false, &H::setShowMemberHierarchy, &H::getShowMemberHierarchy)});
    H some(ePortIconHint);
    EXPECT_NE(some, H());
    some.setRequestedHintsFlags(ePortAllHints);
    EXPECT_EQ(some, H());
}

TEST(NodeUIHints, AreSetOneByOne)
{
    using H = NodeUIHints;
    checkEachAlone<H>({text(&H::setNiceName, &H::getNiceName), text(&H::setBackgroundColor, &H::getBackgroundColor),
                       text(&H::setTitleColor, &H::getTitleColor), text(&H::setIcon, &H::getIcon),
                       text(&H::setToolTip, &H::getToolTip), value(eBoxShape, &H::setShape, &H::getShape)});
    EXPECT_NE(H(eNodeShapeHint), H());
}

TEST(NewPortHints, AreSetOneByOne)
{
    using H = NewPortHints;
    PortProperties const properties(eExposed, PropertyList("k={v}", eSerializeLossless), StringArray("1"));
    Hint<H> const propertiesHint = {[&](H& hints) { hints.setPropertiesHint(properties); },
                                    [&](H const& hints) {
                                        PortProperties const* found = nullptr;
                                        return hints.getPropertiesHint(found) && *found == properties;
                                    }};
    checkEachAlone<H>({text(&H::setNameHint, &H::getNameHint), text(&H::setTypeHint, &H::getTypeHint), propertiesHint});
    H hints;
    hints.setNameHint(nullptr);
    String const* name = nullptr;
    EXPECT_TRUE(hints.getNameHint(name) && name->empty());
}

TEST(PortProperties, AllThreePartsCountForEquality)
{
    PropertyList const options("k={v}", eSerializeLossless);
    PortProperties const whole(eExposed, options, StringArray("1"));
    EXPECT_EQ(PortProperties(whole), whole);
    EXPECT_NE(PortProperties(eNoPortFlags, options, StringArray("1")), whole);
    EXPECT_NE(PortProperties(eExposed, PropertyList(), StringArray("1")), whole);
    EXPECT_NE(PortProperties(eExposed, options, OptionalStringArray()), whole);
    EXPECT_EQ(PortProperties(), PortProperties(eNoPortFlags, PropertyList(), OptionalStringArray()));
}

} // namespace TAV_marlo_v1
