#include "Zyl2/Mox/WriteAttributesToWvf.h"

#include "container/Bytes.h"
#include "support/Encoding.h"
#include "support/Environment.h"
#include "support/KeyContent.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Support::Hex;
using Support::KeyContent;
using Support::Text;
using Zyl2Util::AttributeList;
using Zyl2Util::AttributeValue;
using Zyl2Wvf::WvFile;

std::string Written(AttributeList const& list)
{
    WvFile file;
    Zyl2Util::WriteAttributesToWvf(file, "Attributes", list);
    return KeyContent(file.GetIndex(), "Attributes");
}

TEST(WriteAttributesToWvf, ValuesGoToTheVectorOfTheirTag)
{
    AttributeList const list{{"a", AttributeValue::FromDouble(1.0)},
                             {"b", AttributeValue::FromInteger(258)},
                             {"c", AttributeValue::FromText("xy")},
                             {"d", AttributeValue::FromFloat(1.0F)},
                             {"e", AttributeValue::FromInteger(4294967295U)}};
    EXPECT_EQ(Written(list),
              Hex("05 00 00 00 "
                  "01 00 00 00 61 01 00 00 00 62 01 00 00 00 63 01 00 00 00 64 01 00 00 00 65 "
                  "05 00 00 00 03 00 02 01 00 "
                  "02 00 00 00 02 01 00 00 FF FF FF FF "
                  "01 00 00 00 00 00 80 3F "
                  "01 00 00 00 00 00 00 00 00 00 F0 3F "
                  "01 00 00 00 02 00 00 00 78 79 "));
}

TEST(WriteAttributesToWvf, NamesStandInTheOrderOfTheirBytes)
{
    AttributeList list;
    for (char const* name : {"b", "B", "a", ""})
        list[name] = AttributeValue::FromText(name);
    std::string const names = Hex("04 00 00 00 ") + Text("") + Text("B") + Text("a") + Text("b");
    EXPECT_EQ(Written(list), names + Hex("04 00 00 00 02 02 02 02 ") + Support::Zeros(12) + names);
}

TEST(WriteAttributesToWvf, ATextOf256BytesIsWrittenWhole)
{
    std::string const longest(256, 'x');
    AttributeList const list{{"a", AttributeValue::FromText(longest + "cut")}};
    EXPECT_EQ(Written(list), Hex("01 00 00 00 01 00 00 00 61 01 00 00 00 02 ") +
                                 Support::Zeros(12) + Hex("01 00 00 00 ") + Text(longest));
}

TEST(WriteAttributesToWvf, EachVectorIsAWriteOfItsOwn)
{
    Support::DefaultBlockSizeSetting const setting("1");
    WvFile file;
    AttributeList const list{{"a", AttributeValue::FromInteger(7)}};
    Zyl2Util::WriteAttributesToWvf(file, "Attributes", list);
    auto const slots = Support::KeySlots(file.GetIndex(), "Attributes");
    ASSERT_EQ(slots.size(), 6U);
    EXPECT_EQ(Support::SlotContent(file.GetIndex(), slots[0]), Hex("01 00 00 00 01 00 00 00 61 "));
    EXPECT_EQ(Support::SlotContent(file.GetIndex(), slots[1]), Hex("01 00 00 00 00 "));
    EXPECT_EQ(Support::SlotContent(file.GetIndex(), slots[2]), Hex("01 00 00 00 07 00 00 00 "));
    for (std::size_t vector = 3; vector < 6; ++vector)
        EXPECT_EQ(Support::SlotContent(file.GetIndex(), slots[vector]), Support::Zeros(4));
}

} // namespace
