// Files as they are written by hand: the text of the format, value by value.

#include "GmshFile.h"

#include <support/Folder.h>

#include <exchange/Error.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using namespace GmshTest;
using Offsets = std::vector<std::uint64_t>;

class GmshSource : public testing::Test
{
protected:
    Opened open(std::string const& content, bool skipUnknown = false)
    {
        return Opened(folder_.write("in.msh", content), skipUnknown);
    }

    Support::Folder const folder_;
};

std::string const format2 = "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n";
std::string const format4 = "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n";

/// Nodes 10, 20, 5 and 7 of which 7 is used by no element.
std::string const nodes2 = "$Nodes\n4\n10 0 0 0\n20 1 0.1 0\n5 0 1 2.5\n7 9 9 9\n$EndNodes\n";
/// The same in version 4, where every node is on an entity.
std::string const mesh4 =
    "$Entities\n0 0 1 0\n4 0 0 0 9 9 9 0 0\n$EndEntities\n"
    "$Nodes\n1 4 5 20\n2 4 0 4\n10\n20\n5\n7\n0 0 0\n1 0.1 0\n0 1 2.5\n9 9 9\n$EndNodes\n"
    "$Elements\n1 1 33 33\n2 4 2 1\n33 10 20 5\n$EndElements\n";
std::string const triangle2 = "$Elements\n1\n33 2 2 0 4 10 20 5\n$EndElements\n";

std::string nodeData(std::string const& name, double time, int step, int components,
                     std::string const& rows, int count)
{
    return "$NodeData\n1\n\"" + name + "\"\n1\n" + std::to_string(time) + "\n3\n" +
           std::to_string(step) + "\n" + std::to_string(components) + "\n" + std::to_string(count) +
           "\n" + rows + "$EndNodeData\n";
}

std::string elementData(std::string const& name, int components, std::string const& rows, int count)
{
    return "$ElementData\n1\n\"" + name + "\"\n1\n0\n3\n0\n" + std::to_string(components) + "\n" +
           std::to_string(count) + "\n" + rows + "$EndElementData\n";
}

TEST_F(GmshSource, EntitiesAreParts)
{
    for (std::string const& content : {format2 + nodes2 + triangle2, format4 + mesh4}) {
        Opened const opened = open(content);
        Exchange::Part const& surface = opened.parts.at(0);
        EXPECT_EQ(surface.name, "Surface 4");
        EXPECT_EQ(surface.nodeIds, (Ids{5, 10, 20}));
        EXPECT_EQ(surface.coordinates, (Values{0, 1, 2.5, 0, 0, 0, 1, 0.1, 0}));
        EXPECT_EQ(surface.connectivity, (Rows{1, 2, 0}));
        EXPECT_EQ(surface.offsets, (Offsets{0, 3}));
        EXPECT_EQ(surface.elementIds, Ids{33});
        EXPECT_EQ(surface.types.at(0)->name, "Triangle");
        EXPECT_EQ(opened.steps.size(), 0u);
    }
}

TEST_F(GmshSource, NodesThatNoElementUsesAreAPart)
{
    Opened const opened = open(format4 + mesh4);
    EXPECT_EQ(opened.partNames(), (Names{"Surface 4", "Nodes without elements"}));
    EXPECT_EQ(opened.parts.at(1).nodeIds, Ids{7});
    EXPECT_EQ(opened.parts.at(1).coordinates, (Values{9, 9, 9}));
    EXPECT_EQ(opened.warnings(), Names{});
}

TEST_F(GmshSource, NodesThatGmshDropsAreTold)
{
    Opened const opened = open(format2 + nodes2 + triangle2);
    EXPECT_EQ(opened.partNames(), Names{"Surface 4"});
    EXPECT_EQ(opened.warnings(),
              Names{"Nodes that no element uses (1) were left out, because Gmsh drops them."});
}

TEST_F(GmshSource, PhysicalGroupsGiveTheNames)
{
    Opened const opened = open(
        format2 + "$PhysicalNames\n1\n2 7 \"left wing/\xC3\xA4\"\n$EndPhysicalNames\n" + nodes2 +
        "$Elements\n4\n1 2 2 7 1 10 20 5\n2 2 2 7 2 20 5 7\n3 1 2 8 3 10 20\n"
        "4 15 2 0 1 10\n$EndElements\n");
    EXPECT_EQ(opened.partNames(), (Names{"Point 1", "Physical Curve 8", "left wing/\xC3\xA4"}));
    EXPECT_EQ(opened.parts[0].types.at(0)->name, "Point");
    EXPECT_EQ(opened.parts[1].connectivity, (Rows{0, 1}));
    EXPECT_EQ(opened.parts[2].elementIds, (Ids{1, 2}));
    EXPECT_EQ(opened.parts[2].nodeIds, (Ids{5, 7, 10, 20}));
    EXPECT_EQ(opened.parts[2].connectivity, (Rows{2, 3, 0, 3, 0, 1}));
    EXPECT_EQ(opened.parts[2].attributes, (Exchange::AttributeList{{"PhysicalTag", 7}}));
}

TEST_F(GmshSource, FurtherGroupsAreSetsOfElements)
{
    Opened const opened = open(
        format4 + "$PhysicalNames\n2\n1 1 \"all\"\n1 2 \"half\"\n$EndPhysicalNames\n"
                  "$Entities\n0 2 0 0\n1 0 0 0 1 0 0 1 1 0\n2 1 0 0 2 0 0 2 1 2 0\n$EndEntities\n"
                  "$Nodes\n1 3 1 3\n1 1 0 3\n1\n2\n3\n0 0 0\n1 0 0\n2 0 0\n$EndNodes\n"
                  "$Elements\n2 2 1 2\n1 1 1 1\n1 1 2\n1 2 1 1\n2 2 3\n$EndElements\n");
    EXPECT_EQ(opened.partNames(), Names{"all"});
    EXPECT_EQ(opened.parts[0].elementIds, (Ids{1, 2}));
    ASSERT_EQ(opened.parts[0].elementSets.size(), 1u);
    EXPECT_EQ(opened.parts[0].elementSets[0].name, "half");
    EXPECT_EQ(opened.parts[0].elementSets[0].rows, Rows{1});
}

TEST_F(GmshSource, ElementsOfSeveralTypesShareAPart)
{
    Opened const opened = open(
        format2 + "$Nodes\n6\n1 0 0 0\n2 1 0 0\n3 1 1 0\n4 0 1 0\n5 2 0 0\n6 2 1 0\n$EndNodes\n"
                  "$Elements\n2\n8 3 2 0 1 1 2 3 4\n9 2 2 0 1 2 5 3\n$EndElements\n");
    ASSERT_EQ(opened.parts.size(), 1u);
    Exchange::Part const& part = opened.parts[0];
    ASSERT_EQ(part.elementCount(), 2u);
    std::size_t const triangle = part.types[0]->name == "Triangle" ? 0 : 1;
    EXPECT_EQ(part.types[triangle]->name, "Triangle");
    EXPECT_EQ(part.elementIds[triangle], 9);
    EXPECT_EQ(part.types[1 - triangle]->name, "Quadrangle");
    EXPECT_EQ(part.elementIds[1 - triangle], 8);
    EXPECT_EQ(part.offsets.back(), 7u);
}

TEST_F(GmshSource, StepsAreThoseOfTheTimes)
{
    Opened const opened =
        open(format4 + mesh4 + nodeData("T", 2.5, 3, 1, "10 1.5\n20 2.5\n5 3.5\n", 3) +
             nodeData("T", 4.5, 7, 1, "10 11.5\n20 12.5\n5 13.5\n7 14.5\n", 4) +
             nodeData("U", 4.5, 0, 3, "10 1 2 3\n20 4 5 6\n5 7 8 9\n", 3));
    ASSERT_EQ(opened.steps.size(), 2u);
    EXPECT_EQ(opened.steps[0].name, "Step 1");
    EXPECT_EQ(opened.steps[0].time, 2.5);
    EXPECT_EQ(opened.steps[1].time, 4.5);
    EXPECT_EQ(opened.values(0, "T", 0), (Values{3.5, 1.5, 2.5}));
    EXPECT_EQ(opened.find(0, "T", 1), nullptr);
    EXPECT_EQ(opened.find(0, "U", 0), nullptr);
    EXPECT_EQ(opened.values(1, "T", 0), (Values{13.5, 11.5, 12.5}));
    EXPECT_EQ(opened.values(1, "T", 1), Values{14.5});
    EXPECT_EQ(opened.find(1, "U", 0)->components, 3u);
    EXPECT_EQ(opened.values(1, "U", 0), (Values{7, 8, 9, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(opened.find(1, "U", 0)->location, Exchange::Location::Nodes);
}

TEST_F(GmshSource, StepsOfTheSameTimeStayApart)
{
    Opened const opened =
        open(format2 + nodes2 + triangle2 + nodeData("mode", 0, 0, 1, "10 1\n", 1) +
             nodeData("mode", 0, 1, 1, "10 2\n", 1) + nodeData("other", 0, 0, 1, "10 3\n", 1));
    ASSERT_EQ(opened.steps.size(), 2u);
    EXPECT_EQ(opened.values(0, "mode", 0)[1], 1);
    EXPECT_EQ(opened.values(0, "other", 0)[1], 3);
    EXPECT_EQ(opened.values(1, "mode", 0)[1], 2);
    EXPECT_EQ(opened.find(1, "other", 0), nullptr);
}

TEST_F(GmshSource, ATimeThatIsNoNumberIsKeptAndComesLast)
{
    double const nan = std::nan("");
    Opened const opened =
        open(format2 + nodes2 + triangle2 + nodeData("T", nan, 0, 1, "10 1\n", 1) +
             nodeData("T", 2.5, 1, 1, "10 2\n", 1) + nodeData("T", nan, 2, 1, "10 3\n", 1) +
             nodeData("U", 2.5, 0, 1, "10 4\n", 1) + nodeData("U", nan, 1, 1, "10 5\n", 1));
    ASSERT_EQ(opened.steps.size(), 3u);
    EXPECT_EQ(opened.steps[0].time, 2.5);
    EXPECT_EQ(opened.values(0, "T", 0)[1], 2);
    EXPECT_EQ(opened.values(0, "U", 0)[1], 4);
    for (std::size_t const step : {1u, 2u})
        EXPECT_TRUE(std::isnan(opened.steps[step].time.value()));
    EXPECT_EQ(opened.values(1, "T", 0)[1], 1);
    EXPECT_EQ(opened.values(1, "U", 0)[1], 5);
    EXPECT_EQ(opened.values(2, "T", 0)[1], 3);
    EXPECT_EQ(opened.find(2, "U", 0), nullptr);
}

TEST_F(GmshSource, NodesWithoutAValueHaveNoNumber)
{
    Opened const opened =
        open(format2 + nodes2 + triangle2 + nodeData("T", 0, 0, 1, "20 2.5\n", 1));
    Values const values = opened.values(0, "T", 0);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_EQ(values[2], 2.5);
}

TEST_F(GmshSource, ValuesOfElementsAreOnTheirParts)
{
    Opened const opened =
        open(format2 + nodes2 +
             "$Elements\n3\n50 2 2 0 1 10 20 5\n40 2 2 0 1 20 5 7\n60 1 2 0 1 10 20\n"
             "$EndElements\n" +
             elementData("S", 9, "40 1 2 3 2 4 5 3 5 6\n60 7 7 7 7 7 7 7 7 7\n", 2));
    EXPECT_EQ(opened.partNames(), (Names{"Curve 1", "Surface 1"}));
    EXPECT_EQ(opened.values(0, "S", 0), Values(9, 7));
    EXPECT_EQ(opened.find(0, "S", 1)->location, Exchange::Location::Elements);
    EXPECT_EQ(opened.find(0, "S", 1)->components, 9u);
    Values const values = opened.values(0, "S", 1);
    ASSERT_EQ(values.size(), 18u);
    Exchange::Part const& surface = opened.parts[1];
    std::size_t const row = surface.elementIds[0] == 40 ? 0 : 1;
    EXPECT_EQ(Values(values.begin() + static_cast<std::ptrdiff_t>(9 * row),
                     values.begin() + static_cast<std::ptrdiff_t>(9 * row + 9)),
              (Values{1, 2, 3, 2, 4, 5, 3, 5, 6}));
    EXPECT_TRUE(std::isnan(values[9 * (1 - row)]));
}

TEST_F(GmshSource, ValuesOnTheNodesOfEachElementAreTold)
{
    Opened const opened = open(format4 + mesh4 +
                               "$ElementNodeData\n1\n\"S\"\n1\n0\n3\n0\n1\n1\n33 3 1 2 3\n"
                               "$EndElementNodeData\n");
    EXPECT_EQ(opened.steps.size(), 0u);
    EXPECT_EQ(opened.warnings(),
              Names{"The values of 'S' on the nodes of each element were left out."});
}

TEST_F(GmshSource, ElementsThatAModelCannotHoldAreTold)
{
    std::string const content = format2 +
                                "$Nodes\n10\n1 0 0 0\n2 3 0 0\n3 0 3 0\n4 1 0 0\n5 2 0 0\n"
                                "6 2 1 0\n7 1 2 0\n8 0 2 0\n9 0 1 0\n10 1 1 0\n"
                                "$EndNodes\n"
                                "$Elements\n2\n1 21 2 0 1 1 2 3 4 5 6 7 8 9 10\n"
                                "2 1 2 0 1 1 2\n$EndElements\n" +
                                elementData("E", 1, "1 5\n2 6\n", 2);
    try {
        open(content);
        FAIL() << "it was taken";
    } catch (Exchange::Error const& error) {
        EXPECT_NE(std::string(error.what()).find("Triangle 10"), std::string::npos) << error.what();
    }
    Opened const opened = open(content, true);
    EXPECT_EQ(opened.parts[0].elementIds, Ids{2});
    EXPECT_EQ(opened.values(0, "E", 0), Values{6});
    ASSERT_EQ(opened.warnings().size(), 2u);
}

std::string meshOfOneLine(std::string const& node, std::string const& element)
{
    return "$Entities\n0 1 0 0\n1 0 0 0 1 0 0 0 0\n$EndEntities\n$Nodes\n1 2 7 " + node +
           "\n1 1 0 2\n" + node + "\n7\n0 0 0\n1 0 0\n$EndNodes\n$Elements\n1 1 " + element + " " +
           element + "\n1 1 1 1\n" + element + " " + node + " 7\n$EndElements\n";
}

TEST_F(GmshSource, BigTagsAreWhole)
{
    Opened const opened = open(format4 + meshOfOneLine("2147483647", "2147483646"));
    EXPECT_EQ(opened.parts.at(0).nodeIds, (Ids{7, 2147483647}));
    EXPECT_EQ(opened.parts[0].connectivity, (Rows{1, 0}));
    EXPECT_EQ(opened.parts[0].elementIds, Ids{2147483646});
}

TEST_F(GmshSource, TagsThatGmshCannotHoldAreRefused)
{
    EXPECT_THROW(open(format4 + meshOfOneLine("8", "4000000000")), Exchange::Error);
}

TEST_F(GmshSource, PeriodicLinksAreTold)
{
    Opened const opened = open(
        format4 + "$Entities\n2 1 0 0\n1 0 0 0 0\n2 1 0 0 0\n1 0 0 0 1 0 0 0 2 1 -2\n$EndEntities\n"
                  "$Nodes\n3 2 1 2\n0 1 0 1\n1\n0 0 0\n0 2 0 1\n2\n1 0 0\n1 1 0 0\n$EndNodes\n"
                  "$Elements\n1 1 1 1\n1 1 1 1\n1 1 2\n$EndElements\n"
                  "$Periodic\n1\n0 2 1\n0\n1\n2 1\n$EndPeriodic\n");
    EXPECT_EQ(opened.warnings(), Names{"The periodic links of the mesh were left out."});
}

TEST_F(GmshSource, FilesBesideItAreNotRun)
{
    auto const trace = folder_.path("trace");
    folder_.write("in.msh.opt", "SystemCall \"touch " + trace.string() + "\";\n");
    Opened const opened = open(format2 + nodes2 + triangle2);
    EXPECT_EQ(opened.parts.size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(trace));
}

TEST_F(GmshSource, EndingOfTheNameDoesNotMatter)
{
    std::string const content = format2 + nodes2 + triangle2;
    for (char const* const name : {"in.geo", "in", "in with spaces \xC3\xA4.stl", "in.msh"})
        EXPECT_EQ(Opened(folder_.write(name, content)).parts.size(), 1u) << name;
}

} // namespace
