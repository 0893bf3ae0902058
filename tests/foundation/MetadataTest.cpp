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

using MetadataChange = MetadataStore;
using MetadataQuery = MetadataStore;
using MetadataXml = MetadataStore;

} // namespace

TEST_F(MetadataChange, EachIsToldOnce)
{
    EXPECT_TRUE(store.addMetadata("k", "2"));
    EXPECT_EQ(store.changes, 1);
    EXPECT_TRUE(store.setMetadataValue("new", "n"));
    EXPECT_EQ(store.changes, 2);
    EXPECT_TRUE(store.setMetadataValue("k", "1"));
    EXPECT_EQ(store.changes, 3);
    EXPECT_TRUE(store.setChildList("d", PropertyList()));
    EXPECT_EQ(store.changes, 4);
    EXPECT_TRUE(store.setChildList("d", PropertyList("x={}", eSerializeLossless)));
    EXPECT_EQ(store.changes, 5);
    EXPECT_TRUE(store.removeChildList("c"));
    EXPECT_EQ(store.changes, 6);
    EXPECT_EQ(contents(), "k={1};new={n};d[x={}]");
    EXPECT_TRUE(store.removeMetadata("k"));
    EXPECT_EQ(store.changes, 7);
    store.setFromPropertyList(*store.getPropertyList().getChildList("d"));
    EXPECT_EQ(store.changes, 8);
    EXPECT_EQ(contents(), "x={}");
}

TEST_F(MetadataChange, WhatChangesNothingTellsNothing)
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

TEST_F(MetadataQuery, AppendsToArraysAndCopiesChildLists)
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

TEST_F(MetadataQuery, OffersNoCallbackOfItsOwn)
{
    AddRefWrapper<MetadataCallBack> callback;
    EXPECT_FALSE(store.metadataCallback("k", eMetadataChangedCallBack, callback));
    EXPECT_FALSE(callback);
}

TEST_F(MetadataXml, ReadingReplacesTheStoreAndTellsOnce)
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

TEST_F(MetadataXml, TextThatCannotBeUsedChangesNothing)
{
    for (char const* text : {static_cast<char const*>(nullptr), "", "no text of ours", "<metadatas"}) {
        EXPECT_TRUE(!store.createMetadatasFromXML(text));
        EXPECT_EQ(contents(), "k={1};c[in={1}]");
    }
    EXPECT_EQ(store.changes, 0);
}

} // namespace TAV_marlo_v1
