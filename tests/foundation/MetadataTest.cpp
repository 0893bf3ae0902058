#include <tav/Metadata.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {

namespace {

/// Counts the changes that it is told about.
class CountingMetadata : public Metadata {
public:
    int changes = 0;

protected:
    void onMetadataChanged() override { ++changes; }
};

struct MetadataStore : testing::Test {
    CountingMetadata store;

    void SetUp() override
    {
        store.addMetadata("k", "1");
        store.setChildList("c", PropertyList("in={1}", eSerializeLossless));
        store.changes = 0;
    }
    std::string contents() const { return store.getPropertyList().serialize(eSerializePlain).toChar(); }
};

} // namespace

TEST_F(MetadataStore, EachChangeIsToldOnce)
{
    using Store = CountingMetadata&;
    bool (*const changes[])(Store) = {
        [](Store metadata) { return metadata.addMetadata("k", "2"); },
        [](Store metadata) { return metadata.setMetadataValue("new", "n"); },
        [](Store metadata) { return metadata.setMetadataValue("k", "1"); },
        [](Store metadata) { return metadata.setChildList("d", PropertyList()); },
        [](Store metadata) { return metadata.setChildList("d", PropertyList("x={}", eSerializeLossless)); },
        [](Store metadata) { return metadata.removeChildList("c"); },
        [](Store metadata) { return metadata.removeMetadata("gone"); }};
    store.addMetadata("gone", "");
    store.changes = 0;
    int told = 0;
    for (auto const change : changes) {
        EXPECT_TRUE(change(store));
        EXPECT_EQ(store.changes, ++told);
    }
    EXPECT_EQ(contents(), "k={1};new={n};d[x={}]");
    store.setFromPropertyList(*store.getPropertyList().getChildList("d"));
    EXPECT_EQ(store.changes, ++told);
    EXPECT_EQ(contents(), "x={}");
}

TEST_F(MetadataStore, WhatChangesNothingTellsNothing)
{
    EXPECT_TRUE(store.setMetadataValue("k", "1"));
    EXPECT_TRUE(store.setChildList("c", PropertyList("in={1}", eSerializeLossless)));
    store.setFromPropertyList(PropertyList(store.getPropertyList()));
    EXPECT_FALSE(store.removeMetadata("absent") || store.removeChildList("absent"));
    EXPECT_FALSE(store.addMetadata(nullptr, "1") || store.addMetadata("k", nullptr));
    EXPECT_FALSE(store.setMetadataValue(nullptr, "1") || store.setMetadataValue("k", nullptr));
    EXPECT_FALSE(store.setChildList(nullptr, PropertyList()) || store.removeMetadata(nullptr));
    EXPECT_EQ(store.changes, 0);
    EXPECT_EQ(contents(), "k={1};c[in={1}]");
}

TEST_F(MetadataStore, QueryAppendsToArraysAndCopiesChildLists)
{
    StringArray out("kept");
    EXPECT_TRUE(store.getMetadata("k", out));
    EXPECT_FALSE(store.getMetadata("absent", out));
    store.getMetadatas(out);
    EXPECT_EQ(textsOf(out), Texts({"kept", "1", "k"}));
    EXPECT_TRUE(store.hasMetadata("k"));
    EXPECT_FALSE(store.hasMetadata("c"));
    EXPECT_TRUE(store.hasChildList("c"));

    PropertyList list("old={}", eSerializeLossless);
    EXPECT_FALSE(store.getChildList("k", list));
    EXPECT_STREQ(list.serialize(eSerializePlain).toChar(), "old={}");
    EXPECT_TRUE(store.getChildList("c", list));
    EXPECT_STREQ(list.serialize(eSerializePlain).toChar(), "in={1}");
}

TEST_F(MetadataStore, ReadingReplacesTheStoreAndTellsOnce)
{
    CountingMetadata other;
    other.addMetadata("gone", "1");
    other.changes = 0;
    EXPECT_FALSE(!other.createMetadatasFromXML(store.saveMetadatasToXML().toChar()));
    EXPECT_EQ(other.getPropertyList(), store.getPropertyList());
    EXPECT_EQ(other.changes, 1);
    EXPECT_FALSE(!other.createMetadatasFromXML(store.saveMetadatasToXML().toChar()));
    EXPECT_EQ(other.changes, 1);
}

TEST_F(MetadataStore, TextThatCannotBeUsedChangesNothing)
{
    for (char const* text : {static_cast<char const*>(nullptr), "", "no text of ours", "<metadatas"}) {
        EXPECT_TRUE(!store.createMetadatasFromXML(text));
        EXPECT_EQ(contents(), "k={1};c[in={1}]");
    }
    EXPECT_EQ(store.changes, 0);
}

} // namespace TAV_marlo_v1
