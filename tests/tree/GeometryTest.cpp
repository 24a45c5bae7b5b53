#include "Zyl2/Mox/Geometry.h"

#include "container/Bytes.h"
#include "support/Encoding.h"
#include "support/Environment.h"
#include "support/KeyContent.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Support::Count;
using Support::Hex;
using Support::KeyContent;
using Support::NoAttributes;
using Support::OneByte;
using Support::Text;
using Zyl2Mox::ArrayDescription;
using Zyl2Mox::ElementCode;
using Zyl2Mox::Geometry;
using Zyl2Util::AttributeList;
using Zyl2Util::AttributeValue;
using Zyl2Wvf::WvFile;

/// A geometry that says it is of another version.
class VersionedGeometry : public Geometry
{
public:
    VersionedGeometry(std::string const& name, std::string version)
        : Geometry(name), version_(std::move(version))
    {}

    std::string GetVersion() const override { return version_; }

private:
    std::string version_;
};

Geometry::VarStruct& Add(Geometry& geometry, std::string const& name, std::uint32_t type)
{
    Geometry::VarStruct& variable = geometry.GetVariable(geometry.FindOrAddVariable(name));
    variable.type = static_cast<Geometry::VariableType>(type);
    return variable;
}

/// A variable with data: two rows of three floats.
Geometry::VarStruct& AddData(Geometry& geometry, std::string const& name, std::uint32_t type,
                             std::uint64_t position)
{
    Geometry::VarStruct& variable = Add(geometry, name, type);
    variable.array.kind = ElementCode::Float;
    variable.array.valueCount = 6;
    variable.array.width = 3;
    geometry.GetDatasets()[name] = position;
    return variable;
}

void Write(WvFile& file, Geometry const& geometry)
{
    geometry.WriteWv(file, "Light", "Heavy", "Attributes");
}

std::string WrittenLight(Geometry const& geometry)
{
    WvFile file;
    Write(file, geometry);
    return KeyContent(file.GetIndex(), "Light");
}

AttributeList Processed(AttributeList const& attributes)
{
    Geometry::VarStruct variable;
    Geometry::ProcessAttributes(variable, attributes);
    return variable.attributes;
}

TEST(Geometry, ClearingTheDatasetsLeavesTheVariables)
{
    Geometry geometry("g");
    AddData(geometry, "x", 1, 0);
    geometry.ClearDatasets();
    EXPECT_TRUE(geometry.GetDatasets().empty());
    EXPECT_EQ(geometry.GetVariables().size(), 1U);
}

TEST(Geometry, ANewOneHasNoDatasetsToClear)
{
    Geometry geometry("g");
    geometry.ClearDatasets();
    EXPECT_TRUE(geometry.GetDatasets().empty());
    EXPECT_TRUE(geometry.GetVariables().empty());
}

TEST(Geometry, VariablesStandInTheOrderOfTheirFirstUse)
{
    Geometry geometry("g");
    EXPECT_EQ(geometry.FindOrAddVariable("b"), 0U);
    EXPECT_EQ(geometry.FindOrAddVariable("a"), 1U);
    EXPECT_EQ(geometry.FindOrAddVariable(std::string("a\0", 2)), 2U);
    EXPECT_EQ(geometry.FindOrAddVariable(""), 3U);
    EXPECT_EQ(geometry.FindOrAddVariable("a"), 1U);
    EXPECT_EQ(geometry.FindOrAddVariable("b"), 0U);
    ASSERT_EQ(geometry.GetVariables().size(), 4U);
    EXPECT_EQ(geometry.GetVariables()[0].name, "b");
    EXPECT_EQ(geometry.GetVariables()[1].name, "a");
}

TEST(Geometry, AnAttributeWhoseKeyBeginsWithLinkNeverReachesAVariable)
{
    AttributeList const kept = Processed({{"Link.", AttributeValue::FromInteger(1)},
                                          {"Link.Step", AttributeValue::FromInteger(2)},
                                          {"Link", AttributeValue::FromInteger(3)},
                                          {"link.a", AttributeValue::FromInteger(4)},
                                          {"aLink.", AttributeValue::FromInteger(5)}});
    ASSERT_EQ(kept.size(), 3U);
    EXPECT_EQ(kept.at("Link").GetInteger(), 3U);
    EXPECT_EQ(kept.at("link.a").GetInteger(), 4U);
    EXPECT_EQ(kept.at("aLink.").GetInteger(), 5U);
}

TEST(Geometry, AttributesOfTheSourceOfTheDataNeverReachAVariable)
{
    AttributeList attributes;
    for (char const* key : {"Complex", "Contents", "DataSource", "DataType", "Structure"})
        attributes[key] = AttributeValue::FromText("x");
    EXPECT_TRUE(Processed(attributes).empty());
    AttributeList similar;
    for (char const* key : {"Complexity", "contents", "DataTyp", "DataTypes", "Structure ", ""})
        similar[key] = AttributeValue::FromText("x");
    EXPECT_EQ(Processed(similar).size(), similar.size());
}

TEST(Geometry, TheCategoryVibrationSetsTheFlagAndIsKept)
{
    Geometry::VarStruct variable;
    Geometry::ProcessAttributes(variable, {{"Category", AttributeValue::FromText("Vibration")}});
    EXPECT_TRUE(variable.vibration);
    ASSERT_EQ(variable.attributes.count("Category"), 1U);
    EXPECT_EQ(variable.attributes.at("Category").GetText(), "Vibration");
}

TEST(Geometry, AnyOtherCategoryClearsTheVibrationFlag)
{
    for (AttributeList const& attributes :
         {AttributeList{}, AttributeList{{"Category", AttributeValue::FromText("vibration")}},
          AttributeList{{"Category", AttributeValue::FromText("Vibrations")}},
          AttributeList{{"Category", AttributeValue::FromText("")}},
          AttributeList{{"Category", AttributeValue::FromInteger(2)}},
          AttributeList{{"category", AttributeValue::FromText("Vibration")}}}) {
        Geometry::VarStruct variable;
        variable.vibration = true;
        Geometry::ProcessAttributes(variable, attributes);
        EXPECT_FALSE(variable.vibration);
    }
}

TEST(Geometry, LaterAttributesAreAddedToEarlierOnesAndOverwriteThoseOfTheSameKey)
{
    Geometry::VarStruct variable;
    Geometry::ProcessAttributes(
        variable, {{"a", AttributeValue::FromInteger(1)}, {"b", AttributeValue::FromInteger(2)}});
    Geometry::ProcessAttributes(variable, {{"b", AttributeValue::FromFloat(3.0F)}});
    ASSERT_EQ(variable.attributes.size(), 2U);
    EXPECT_EQ(variable.attributes.at("a").GetInteger(), 1U);
    EXPECT_EQ(variable.attributes.at("b").GetFloat(), 3.0F);
}

TEST(Geometry, TheHeaderOfAVariableWithDataOfItsOwn)
{
    Geometry geometry("g");
    AddData(geometry, "Coordinates", 1, 0x0102030405060708U);
    EXPECT_EQ(WrittenLight(geometry), Hex("01 00 00 00 "
                                          "0B 00 00 00 43 6F 6F 72 64 69 6E 61 74 65 73 "
                                          "01 00 00 01 "
                                          "00 "
                                          "06 00 00 00 "
                                          "03 "
                                          "00 00 "
                                          "00 00 00 00 00 00 00 00 "
                                          "00 "
                                          "08 07 06 05 04 03 02 01 "
                                          "00 "));
}

TEST(Geometry, TheHeaderOfALinkedVariableNamesTheOneThatItSharesDataWith)
{
    Geometry geometry("g");
    Geometry::VarStruct& variable = AddData(geometry, "u", 0x1C, 77);
    variable.linked = true;
    variable.linkedNode = 0x01020304;
    variable.linkedVariable = 5;
    EXPECT_EQ(WrittenLight(geometry), Hex("01 00 00 00 "
                                          "01 00 00 00 75 "
                                          "1C 00 00 01 "
                                          "01 "
                                          "04 03 02 01 "
                                          "05 00 00 00 "
                                          "00 "));
}

TEST(Geometry, TheVibrationFlagIsTheLastByteOfEveryHeader)
{
    Geometry geometry("g");
    AddData(geometry, "u", 12, 0).vibration = true;
    Geometry::VarStruct& linked = Add(geometry, "v", 12);
    linked.linked = true;
    linked.vibration = true;
    EXPECT_EQ(WrittenLight(geometry),
              Hex("02 00 00 00 "
                  "01 00 00 00 75 0C 00 00 01 00 06 00 00 00 03 00 00 00 00 00 00 00 00 00 00 00 "
                  "00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 76 0C 00 00 00 01 00 00 00 00 00 00 00 00 01 "));
}

TEST(Geometry, FlagsAndFloatsOfTheArrayStandBetweenWidthAndPosition)
{
    Geometry geometry("g");
    ArrayDescription& array = AddData(geometry, "", 4, 1).array;
    array.kind = ElementCode::UnsignedInt;
    array.flags = {false, true};
    array.floats = {1.0F, -2.0F};
    array.lastFlag = true;
    EXPECT_EQ(WrittenLight(geometry), Hex("01 00 00 00 "
                                          "00 00 00 00 "
                                          "04 00 00 05 "
                                          "00 "
                                          "06 00 00 00 "
                                          "03 "
                                          "00 01 "
                                          "00 00 80 3F 00 00 00 C0 "
                                          "01 "
                                          "01 00 00 00 00 00 00 00 "
                                          "00 "));
}

TEST(Geometry, TheElementCodeTakesTheHighByteOfTheTypeWord)
{
    for (auto const& [code, type, word] :
         {std::tuple<ElementCode, std::uint32_t, std::string>{ElementCode::None, 9, "09 00 00 00 "},
          {ElementCode::Float, 28, "1C 00 00 01 "},
          {ElementCode::UnsignedInt, 28, "1C 00 00 05 "},
          {ElementCode::UnsignedInt, 0xAB123456U, "56 34 12 05 "},
          {ElementCode::Float, 0xFFFFFFFEU, "FE FF FF 01 "}}) {
        Geometry geometry("g");
        AddData(geometry, "", type, 0).array.kind = code;
        EXPECT_EQ(WrittenLight(geometry).substr(8, 4), Hex(word));
    }
}

TEST(Geometry, ATypeOfAllOnesIsWrittenUnchanged)
{
    Geometry geometry("g");
    AddData(geometry, "", 4294967295U, 0).array.kind = ElementCode::UnsignedInt;
    EXPECT_EQ(WrittenLight(geometry).substr(8, 4), Hex("FF FF FF FF "));
}

TEST(Geometry, AVariableWithoutPositionIsRefused)
{
    Geometry geometry("g");
    Add(geometry, "u", 12);
    Support::expectThrown<Zyl2::Exception::KeyNotFound>(
        [&] { WrittenLight(geometry); },
        {14, "Key not found", "Zyl2Mox::Geometry::WriteWv", "Zyl2/Mox/Geometry"});
}

TEST(Geometry, ALinkedVariableNeedsNoPosition)
{
    Geometry geometry("g");
    Add(geometry, "u", 12).linked = true;
    EXPECT_EQ(WrittenLight(geometry),
              Count(1) + Text("u") + Count(12) + OneByte(1) + Count(0) + Count(0) + OneByte(0));
}

TEST(Geometry, Version06HasPositionsOf32Bits)
{
    for (char const* version : {"0.5", "0.6"}) {
        VersionedGeometry geometry("g", version);
        AddData(geometry, "u", 12, 0x0102030405060708U);
        EXPECT_EQ(WrittenLight(geometry), Hex("01 00 00 00 01 00 00 00 75 0C 00 00 01 00 "
                                              "06 00 00 00 03 00 00 00 00 00 00 00 00 00 00 00 "
                                              "08 07 06 05 00 "));
    }
}

TEST(Geometry, OlderAndUnknownVersionsAreWrittenInTheOlderLayout)
{
    for (char const* version : {"0.4", "0.1", "1.3", "0.8", ""}) {
        VersionedGeometry geometry("g", version);
        AddData(geometry, "u", 12, 0x0102030405060708U).attributes["a"] =
            AttributeValue::FromInteger(1);
        geometry.GetVariable(0).vibration = true;
        WvFile file;
        Write(file, geometry);
        EXPECT_EQ(KeyContent(file.GetIndex(), "Light"),
                  Hex("01 00 00 00 01 00 00 00 75 0C 00 00 00 06 00 00 00 03 08 07 06 05 "))
            << version;
        EXPECT_EQ(KeyContent(file.GetIndex(), "Attributes"), Count(1) + Text("a") + Count(1) +
                                                                 OneByte(0) + Count(1) + Count(1) +
                                                                 Support::Zeros(12))
            << version;
    }
}

TEST(Geometry, TheOlderLayoutRefusesAVariableWithoutPositionToo)
{
    VersionedGeometry geometry("g", "0.4");
    Add(geometry, "u", 12);
    Support::expectThrown<Zyl2::Exception::KeyNotFound>(
        [&] { WrittenLight(geometry); },
        {14, "Key not found", "Zyl2Mox::Geometry::WriteWv_l05", "Zyl2/Mox/Geometry"});
}

TEST(Geometry, EachFieldOfAHeaderIsAWriteOfItsOwn)
{
    Support::DefaultBlockSizeSetting const setting("1");
    Geometry geometry("g");
    AddData(geometry, "u", 12, 0);
    Add(geometry, "v", 12).linked = true;
    WvFile file;
    Write(file, geometry);
    std::vector<std::size_t> sizes;
    for (std::size_t const slot : Support::KeySlots(file.GetIndex(), "Light"))
        sizes.push_back(Support::SlotContent(file.GetIndex(), slot).size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{4,                                  //
                                               5, 4, 1, 4, 1, 1, 1, 4, 4, 1, 8, 1, // data
                                               5, 4, 1, 4, 4, 1}));                // link
}

} // namespace
