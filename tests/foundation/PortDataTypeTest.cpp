#include <tav/PortDataType.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {

TEST(PortDataType, EnumItemsAreFoundByNameAndValue)
{
    AddRefWrapper<PortDataType> const type = PortDataType::createNew("mode", "0");
    type->addEnumItem(nullptr, "0");
    type->addEnumItem("off", nullptr);
    EXPECT_FALSE(type->isEnum());
    type->addEnumItem("off", "0");
    type->addEnumItem("on", "1");
    type->addEnumItem("also on", "1");
    EXPECT_TRUE(type->isEnum());
    StringArray names("kept");
    type->getEnumItemNames(names);
    EXPECT_EQ(textsOf(names), Texts({"kept", "off", "on", "also on"}));
    EXPECT_STREQ(type->getEnumItemName("1").toChar(), "on");
    EXPECT_STREQ(type->getEnumItemValue("also on").toChar(), "1");
    EXPECT_STREQ(type->getEnumItemName("2").toChar(), "");
    EXPECT_STREQ(type->getEnumItemValue(nullptr).toChar(), "");
}

TEST(PortDataType, IsEqualInNameDefaultKindAndItems)
{
    auto const make = [](char const* name, char const* value, PortDataTypeKind kind, char const* item) {
        AddRefWrapper<PortDataType> type = PortDataType::createNew(name, value);
        type->setKind(kind);
        type->addEnumItem(item, "0");
        return type;
    };
    auto const type = make("mode", "0", eEnumKind, "off");
    EXPECT_TRUE(*type == *make("mode", "0", eEnumKind, "off"));
    EXPECT_FALSE(*type == *make("Mode", "0", eEnumKind, "off"));
    EXPECT_FALSE(*type == *make("mode", "1", eEnumKind, "off"));
    EXPECT_FALSE(*type == *make("mode", "0", eIntKind, "off"));
    EXPECT_FALSE(*type == *make("mode", "0", eEnumKind, "on"));
    EXPECT_TRUE(*PortDataType::createNew(nullptr, nullptr) == *PortDataType::createNew("", ""));
}

} // namespace TAV_marlo_v1
