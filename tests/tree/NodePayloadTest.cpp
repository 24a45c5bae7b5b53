#include "Zyl2/Mox/NodePayload.h"

#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/NodeSets.h"
#include "Zyl2/Mox/Shape.h"
#include "container/Bytes.h"
#include "support/Encoding.h"
#include "support/Environment.h"
#include "support/KeyContent.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Support::Count;
using Support::Hex;
using Support::KeyContent;
using Support::OneByte;
using Support::Text;
using Zyl2Mox::Geometry;
using Zyl2Mox::Group;
using Zyl2Mox::Node;
using Zyl2Mox::NodeSets;
using Zyl2Mox::SaveNodePayload;
using Zyl2Mox::Shape;
using Zyl2Util::AttributeList;
using Zyl2Util::AttributeValue;
using Zyl2Wvf::WvFile;

/// A bare node that says it is of another kind.
class Impostor : public Node
{
public:
    explicit Impostor(std::string type) : Node(""), type_(std::move(type)) {}

    std::string GetType() const override { return type_; }

private:
    std::string type_;
};

class NodePayload : public testing::Test
{
protected:
    std::string Content(std::string const& key) { return KeyContent(file.GetIndex(), key); }
    bool IsUntouched(std::string const& key)
    {
        return Support::KeySlots(file.GetIndex(), key).empty();
    }

    WvFile file;
};

using NodePayloadDeathTest = NodePayload;

TEST_F(NodePayload, AGroupWritesTranslationRotationScaleFlagAndAttributes)
{
    Group group("g", {{"a", AttributeValue::FromInteger(7)}});
    group.SetTranslation({1, 2, 3});
    group.SetRotation({4, 5, 6, 7});
    group.SetScale({8, 9, 10});
    group.SetFlag(1);
    SaveNodePayload(file, group);
    EXPECT_EQ(Content("Light Data"), Hex("00 00 80 3F 00 00 00 40 00 00 40 40 "
                                         "00 00 80 40 00 00 A0 40 00 00 C0 40 00 00 E0 40 "
                                         "00 00 00 41 00 00 10 41 00 00 20 41 "
                                         "01 "));
    EXPECT_EQ(Content("Attributes"), Count(1) + Text("a") + Count(1) + OneByte(0) + Count(1) +
                                         Count(7) + Support::Zeros(12));
}

TEST_F(NodePayload, EachFieldOfAGroupIsAWriteOfItsOwn)
{
    Support::DefaultBlockSizeSetting const setting("1");
    SaveNodePayload(file, Group("g", AttributeList()));
    std::vector<std::size_t> sizes;
    for (std::size_t const slot : Support::KeySlots(file.GetIndex(), "Light Data"))
        sizes.push_back(Support::SlotContent(file.GetIndex(), slot).size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{12, 16, 12, 1}));
}

TEST_F(NodePayload, AShapeWritesItsMaterialAndNothingElse)
{
    Shape shape("s");
    shape.GetMaterial().SetShininess(1);
    SaveNodePayload(file, shape);
    std::string const resources = Content("Resources");
    ASSERT_EQ(resources.size(), 84U);
    EXPECT_EQ(resources.substr(0, 11), Count(84) + Text("0.3"));
    EXPECT_EQ(resources.substr(79), Hex("00 00 80 3F 01 "));
    for (char const* key : {"Light Data", "Heavy Data", "Attributes"})
        EXPECT_TRUE(IsUntouched(key)) << key;
}

TEST_F(NodePayload, AShapeThatNobodyChangedWritesTheMaterialOfANewOne)
{
    for (int shape = 0; shape < 2; ++shape)
        SaveNodePayload(file, Shape("s"));
    std::string const material = Hex("54 00 00 00 03 00 00 00 30 2E 33 "
                                     "CD CC 4C 3F CD CC 4C 3F CD CC 4C 3F 00 00 80 3F "
                                     "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
                                     "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
                                     "0B D7 23 3E 0B D7 23 3E 0B D7 23 3E CD CC 4C 3E "
                                     "00 00 00 00 CD CC 4C 3E 01 ");
    EXPECT_EQ(material.size(), 84U);
    EXPECT_EQ(Content("Resources"), material + material);
}

TEST_F(NodePayload, NodeSetsWriteTheirEntriesAndAHeader)
{
    NodeSets nodeSets("sets");
    nodeSets.GetEntries().resize(3);
    nodeSets.GetEntries()[1].fill('b');
    nodeSets.SetValues(0x0102030405060708U, 0x0A0B0C0D);
    SaveNodePayload(file, nodeSets);
    EXPECT_EQ(Content("Heavy Data"),
              Support::Zeros(32) + std::string(32, 'b') + Support::Zeros(32));
    EXPECT_EQ(Content("Light Data"), Hex("10 00 00 00 "
                                         "03 00 00 00 "
                                         "08 07 06 05 04 03 02 01 "
                                         "0D 0C 0B 0A "));
    EXPECT_EQ(file.GetIndex().GetSlots().GetItem(0).name, "Heavy Data");
    EXPECT_EQ(file.GetIndex().GetSlots().GetItem(0).transformations, 0U);
}

TEST_F(NodePayload, EachFieldOfNodeSetsIsAWriteOfItsOwn)
{
    Support::DefaultBlockSizeSetting const setting("1");
    SaveNodePayload(file, NodeSets("sets"));
    std::vector<std::size_t> sizes;
    for (std::size_t const slot : Support::KeySlots(file.GetIndex(), "Light Data"))
        sizes.push_back(Support::SlotContent(file.GetIndex(), slot).size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{4, 4, 8, 4}));
}

TEST_F(NodePayload, AnyOtherKindWritesNothing)
{
    SaveNodePayload(file, Node("n"));
    SaveNodePayload(file, Impostor("group"));
    SaveNodePayload(file, Impostor(""));
    SaveNodePayload(file, Zyl2Mox::Material());
    EXPECT_EQ(file.GetIndex().GetSlots().GetSlotCount(), 0U);
}

TEST_F(NodePayloadDeathTest, ANodeThatIsNotOfTheKindThatItNamesEndsTheProcess)
{
    for (auto const& [kind, line, pointer] :
         {std::tuple<char const*, char const*, char const*>{"Group", "2261", "grp_ptr"},
          {"Shape", "2267", "shape_ptr"},
          {"Geometry", "2274", "geom_ptr"},
          {"NodeSets", "2281", "node_sets_ptr"}})
        EXPECT_DEATH(SaveNodePayload(file, Impostor(kind)),
                     std::string("Zyl2/Mox/Tree:") + line +
                         ": .*SaveTree.*Assertion `0 != " + pointer + "' failed");
}

} // namespace
