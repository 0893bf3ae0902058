#include <tav/ErrorState.h>
#include <tav/Namable.h>
#include <tav/OptionalStringArray.h>
#include <tav/PropertyList.h>
#include <tav/StatusStr.h>
#include <tav/String.h>
#include <tav/StringArray.h>

#include "foundation/SharedText.h"
#include "support/FailingAllocations.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

namespace TAV_marlo_v1 {

namespace {

/// Runs `change` on fresh copies of `original` with the first, the second, ... allocation failing
/// until it gets through; after each failure the object must be equal to the original.
template <class T>
void expectAllOrNothing(T const& original, std::function<void(T&)> const& change)
{
    for (long allowed = 0; allowed < 1000; ++allowed) {
        T object(original);
        try {
            tav_test::allocationsLeft = allowed;
            change(object);
            tav_test::allocationsLeft = -1;
            EXPECT_FALSE(object == original) << "nothing was changed";
            return;
        } catch (std::bad_alloc const&) {
            tav_test::allocationsLeft = -1;
            EXPECT_TRUE(object == original) << "after " << allowed << " allocations";
        }
    }
    FAIL() << "never got through";
}

char const* const kLong = "a text that is longer than any room that might be left over";

} // namespace

TEST(AllocationFailure, LeavesStringsAsTheyWere)
{
    String const other(kLong);
    for (auto const& change : std::initializer_list<std::function<void(String&)>>{
             [](String& s) { s.append(kLong); }, [](String& s) { s = kLong; }, [&](String& s) { s = other; },
             [&](String& s) { s.append(other); }})
        expectAllOrNothing<String>("before", change);
}

TEST(AllocationFailure, LeavesArraysAsTheyWere)
{
    StringArray original("a");
    original.add("b");
    StringArray const other(kLong);
    for (auto const& change : std::initializer_list<std::function<void(StringArray&)>>{
             [](StringArray& a) { a.add(kLong); }, [&](StringArray& a) { a.add(other); },
             [&](StringArray& a) { a = other; }, [](StringArray& a) { a.add(a); },
             [](StringArray& a) { a.addUnique(kLong); },
             [](StringArray& a) { a.unserialize("{x,y,a long one that needs room}", eUnserializeStrict); }})
        expectAllOrNothing<StringArray>(original, change);
    expectAllOrNothing<OptionalStringArray>(OptionalStringArray(), [&](OptionalStringArray& o) { o.setValues(other); });
}

TEST(AllocationFailure, LeavesNamesAndThePoolAsTheyWere)
{
    for (auto const& change : std::initializer_list<std::function<void(Namable&)>>{
             [](Namable& n) { n.setName(kLong); }, [](Namable& n) { n.appendNodeName(kLong); },
             [](Namable& n) { n.appendPortName(kLong); }, [](Namable& n) { n.appendString(kLong); }})
        expectAllOrNothing<Namable>("before", change);
    EXPECT_EQ(detail::SharedText::find(kLong), nullptr);
}

TEST(AllocationFailure, LeavesPropertyListsAsTheyWere)
{
    PropertyList const small("k={1};l={2};c[d={3}];e[]", eSerializeLossless);
    PropertyList large(small);
    for (int i = 0; i < 40; ++i)
        large.addStringPair(std::to_string(i).c_str(), "v");
    StringArray const values(kLong);
    using Changes = std::initializer_list<std::function<void(PropertyList&)>>;
    Changes const changes{[](PropertyList& l) { l.addStringPair(kLong, kLong); },
                          [&](PropertyList& l) { l.addStringPair("k", values); },
                          [](PropertyList& l) { l.setStringPairValue("k", kLong); },
                          [](PropertyList& l) { l.setStringPairAt(1, kLong, kLong); },
                          [](PropertyList& l) { l.addChildList(kLong); },
                          [&](PropertyList& l) { l.setChildList("c", large); },
                          [&](PropertyList& l) { l.setChildList("new", small); },
                          [](PropertyList& l) { l = PropertyList(*l.getChildList("c")); },
                          [](PropertyList& l) { l.unserialize("a={b};c[d={e}]", eSerializeLossless); }};
    for (auto const& change : changes) {
        expectAllOrNothing<PropertyList>(small, change);
        expectAllOrNothing<PropertyList>(large, change);
    }
}

TEST(AllocationFailure, LeavesALargeListSearchableAndRemovable)
{
    PropertyList list;
    for (int i = 0; i < 40; ++i)
        list.addStringPair(std::to_string(i).c_str(), "v");
    tav_test::allocationsLeft = 0;
    bool const found = list.hasStringPair("39"); // no memory for an index: the pairs are scanned
    bool const removed = list.removeStringPair("7");
    tav_test::allocationsLeft = -1;
    EXPECT_TRUE(found && removed);
    EXPECT_FALSE(list.hasStringPair("7"));
    EXPECT_TRUE(list.hasStringPair("38"));
}

TEST(AllocationFailure, LeavesStatusesAndErrorStatesAsTheyWere)
{
    StatusStr status("before");
    AddRefWrapper<ErrorState> const state = ErrorState::createNew();
    state->addMessage("s", "t", eInfo);
    StringArray out("kept");
    tav_test::allocationsLeft = 0;
    EXPECT_THROW(status.setErrorString(kLong), std::bad_alloc);
    EXPECT_THROW(state->addMessage(kLong, kLong, eError), std::bad_alloc);
    tav_test::allocationsLeft = 1;
    EXPECT_THROW(state->getMessages(eAnyMessage, out), std::bad_alloc);
    tav_test::allocationsLeft = -1;
    EXPECT_STREQ(status.getErrorString(), "before");
    EXPECT_EQ(state->getMessageCount(eAnyMessage), 1u);
    EXPECT_EQ(out.size(), 1u);
}

} // namespace TAV_marlo_v1
