// Files as this reader takes them, byte by byte. Binary records are put together from the images
// of their numbers, as MeshBlockReader.cpp and ResultBlockReader.cpp draw them.

#include "TestFiles.h"

#include <read/frd/Reader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

using namespace TestFiles;
using Frd::AnalysisKind;
using Frd::Reader;
using Frd::ResultBlock;
using Values = std::vector<double>;
using Ids = std::vector<std::uint32_t>;

Ids nodeIds(Frd::Mesh const& mesh)
{
    Ids ids;
    for (Frd::Node const& node : mesh.nodes())
        ids.push_back(node.id);
    return ids;
}

/// The triangle file with its line of parameters, each before the displacement.
std::string withParameters(std::string const& lines)
{
    return replaced(triangleFile(), "  100C", lines + "  100C");
}

ResultBlock onlyBlock(std::string const& content)
{
    auto const blocks = blocksOf(content);
    EXPECT_EQ(blocks.size(), 1U);
    return blocks.at(0);
}

TEST(Reader, HeaderRecordsTellTitleFieldsAndMaterials)
{
    Folder const folder;
    Reader const reader(folder.write("f", replaced(triangleFile(), "    1C\n",
                                                   "    1CBEAM7 \n"
                                                   "    1UA beam of steel\n"
                                                   "    1Usecond line  \n"
                                                   "    1U\n"
                                                   "    1UDATE              20.november.2026  \n"
                                                   "    1UPGM               Solver\n"
                                                   "    1UHOST              \n"
                                                   "    1UUSER\n"
                                                   "    1UMAT    1STEEL   \n"
                                                   "    1UMAT   12COPPER ALLOY\n"
                                                   "    1UMATERIAL TEST\n")));
    Frd::Header const& header = reader.header();
    EXPECT_EQ(header.modelName, "BEAM7");
    EXPECT_EQ(header.titles,
              (std::vector<std::string>{"A beam of steel", "second line", "MATERIAL TEST"}));
    EXPECT_EQ(header.fields, (std::map<std::string, std::string>{{"DATE", "20.november.2026"},
                                                                 {"PGM", "Solver"}}));
    EXPECT_EQ(header.materials,
              (std::map<std::int64_t, std::string>{{1, "STEEL"}, {12, "COPPER ALLOY"}}));
}

TEST(Reader, ShortLinesHaveNumbersOfFiveColumnsAndFifteenNodesOfAnElement)
{
    std::string file = "    1C\n    2C                            20"
                       "                                     0\n";
    for (int id = 99981; id <= 99999 + 1; ++id)
        file += " -1" + std::to_string(id > 99999 ? 7 : id).insert(0, id > 99999 ? 4 : 0, ' ') +
                " 1.00000E+00-1.00000E+00 0.50000E+00\n";
    file += " -3\n    3C                             1                                     0\n"
            " -199998    4    0    1\n"
            " -2999819998299983999849998599986999879998899989999909999199992999939999499995\n"
            " -299996999979999899999    7\n"
            " -3\n"
            "  100CL  101 5.00000E-01           1                     0    1           0\n"
            " -4  NDTEMP      1    1\n"
            " -5  T           1    1    0    0\n"
            " -199999 2.00000E+01\n"
            " -3\n"
            " 9999\n";
    Folder const folder;
    Reader reader(folder.write("f", file));
    EXPECT_EQ(reader.mesh().nodes().size(), 20U);
    Frd::Element const& element = reader.mesh().elements().at(0);
    EXPECT_EQ(element.id, 99998U);
    for (std::uint32_t i = 0; i < 20; ++i)
        EXPECT_EQ(reader.mesh().nodeOf(element, i), i);
    ResultBlock block;
    ASSERT_TRUE(reader.next(block));
    EXPECT_EQ(block.nodes, (Ids{18}));
    EXPECT_EQ(block.values, (Values{20}));
    EXPECT_FALSE(reader.next(block));
}

TEST(Reader, TheHeadOfAResultBlockTellsAllAboutItsStep)
{
    ResultBlock const block = onlyBlock(
        replaced(triangleFile(),
                 "  100CL  101 5.00000E-01           2                     0    1           1",
                 "  100CL  112 1300.398827           2some text            2   12MODAL      1"));
    EXPECT_EQ(block.value, 1300.398827);
    EXPECT_EQ(block.text, "some text");
    EXPECT_EQ(block.kind, AnalysisKind::Frequency);
    EXPECT_EQ(block.stepNumber, 12);
    EXPECT_EQ(block.analysis, "MODAL");
    EXPECT_EQ(block.name, "DISP");
}

TEST(Reader, EveryKindOfAnalysisIsKnown)
{
    for (int kind = 0; kind <= 4; ++kind) {
        std::string const digit = std::to_string(kind);
        ResultBlock const block =
            onlyBlock(replaced(triangleFile(), "           2                     0    1",
                               "           2       "
                               "              " +
                                   digit + "    1"));
        EXPECT_EQ(static_cast<int>(block.kind), kind);
    }
}

TEST(Reader, ComponentsThatAViewerComputesHaveNoValues)
{
    ResultBlock const block = onlyBlock(triangleFile());
    ASSERT_EQ(block.components.size(), 4U);
    EXPECT_EQ(block.components[1].name, "D2");
    EXPECT_EQ(block.components[1].entity, Frd::Entity::vector);
    EXPECT_EQ(block.components[1].row, 2);
    EXPECT_TRUE(block.components[1].isStored);
    EXPECT_EQ(block.components[3].name, "ALL");
    EXPECT_FALSE(block.components[3].isStored);
    EXPECT_EQ(block.storedComponents().size(), 3U);
    EXPECT_EQ(block.nodes, (Ids{2, 1}));
    EXPECT_EQ(block.values, (Values{1, 2, 3, -1, -2, -3}));
}

TEST(Reader, ATabInAComponentStandsForThreeBlanks)
{
    ResultBlock const block =
        onlyBlock(replaced(triangleFile(), "    2    0    0    1ALL", "    2\t 0    0    1ALL"));
    ASSERT_EQ(block.components.size(), 4U);
    EXPECT_EQ(block.components[3].row, 0);
    EXPECT_FALSE(block.components[3].isStored);
}

TEST(Reader, ParametersHoldForTheNextBlockOnly)
{
    std::string const second = replaced(displacementBlock(), "DISP", "VELO");
    auto const blocks = blocksOf(
        replaced(withParameters("    1PSTEP                        17           3           2"
                                "          \n"
                                "    1PGK                6.675947E+07\n"
                                "    1PHID                         -1\n"
                                "    1PMODE                         4\n"),
                 " 9999", second + " 9999"));
    ASSERT_EQ(blocks.size(), 2U);
    ASSERT_TRUE(blocks[0].step.has_value());
    EXPECT_EQ(blocks[0].step->increment, 3);
    EXPECT_EQ(blocks[0].step->step, 2);
    EXPECT_EQ(blocks[0].mode, 4);
    EXPECT_EQ(blocks[0].parameters,
              (std::map<std::string, std::string>{{"GK", "6.675947E+07"}, {"HID", "-1"}}));
    EXPECT_FALSE(blocks[1].step.has_value());
    EXPECT_FALSE(blocks[1].mode.has_value());
    EXPECT_TRUE(blocks[1].parameters.empty());
}

TEST(Reader, MoreThanSixValuesGoOnInFurtherLines)
{
    std::string components;
    for (int i = 1; i <= 7; ++i)
        components += " -5  C" + std::to_string(i) + "          1    1    0    0\n";
    ResultBlock const block = onlyBlock(
        "    1C\n" + triangleMesh() +
        "  100CL  101 5.00000E-01           1                     0    1           1\n"
        " -4  MANY        7    1\n" +
        components +
        " -1         9 1.00000E+00 2.00000E+00 3.00000E+00 4.00000E+00 5.00000E+00 6.00000E+00\n"
        " -2          -7.00000E+00\n"
        " -3\n"
        " 9999\n");
    EXPECT_EQ(block.values, (Values{1, 2, 3, 4, 5, 6, -7}));
}

TEST(Reader, ValuesMayBeWrittenAsFortranDoes)
{
    ResultBlock const block =
        onlyBlock(replaced(triangleFile(), " 1.00000E+00 2.00000E+00 3.00000E+00",
                           " 1.00000-100 1.0000E-100         NaN"));
    EXPECT_EQ(block.values[0], 1e-100);
    EXPECT_EQ(block.values[1], 1e-100);
    EXPECT_TRUE(std::isnan(block.values[2]));
}

TEST(Reader, BinaryRecordsMayHoldFloatsOrDoubles)
{
    for (bool const isDouble : {false, true}) {
        Folder const folder;
        Reader reader(folder.write("f", binaryFile(isDouble)));
        EXPECT_EQ(nodeIds(reader.mesh()), (Ids{30, 10, 20}));
        EXPECT_EQ(reader.mesh().nodes()[0].coordinates, (std::array<double, 3>{0, 1, -0.5}));
        ASSERT_EQ(reader.mesh().elements().size(), 2U);
        EXPECT_EQ(reader.mesh().elements()[0].group, 6);
        EXPECT_EQ(reader.mesh().elements()[1].group, -1);
        EXPECT_EQ(reader.mesh().elements()[1].material, 2);
        EXPECT_EQ(reader.mesh().nodeOf(reader.mesh().elements()[1], 0), 1U);
        ResultBlock block;
        ASSERT_TRUE(reader.next(block));
        EXPECT_EQ(block.nodes, (Ids{2, 0}));
        EXPECT_EQ(block.values, (Values{1, 2, 3, 4, 5, -6.5}));
        EXPECT_FALSE(reader.next(block));
    }
}

TEST(Reader, LinesMayEndAsOnWindows)
{
    EXPECT_EQ(onlyBlock(replaced(triangleFile(), "\n", "\r\n")).values,
              (Values{1, 2, 3, -1, -2, -3}));
}

TEST(Reader, BlankLinesMayFollowTheEnd)
{
    EXPECT_EQ(complaintAbout(triangleFile() + "\n   \n"), "");
}

TEST(Reader, AFileMayHoldAMeshAlone)
{
    EXPECT_TRUE(blocksOf("    1C\n" + triangleMesh() + " 9999\n").empty());
}

TEST(Reader, ABlockMayHoldNoNodes)
{
    ResultBlock const block =
        onlyBlock("    1C\n" + triangleMesh() +
                  "  100CL  101 5.00000E-01           0                     0    1           1\n"
                  " -4  NDTEMP      1    1\n"
                  " -5  T           1    1    0    0\n"
                  " -3\n"
                  " 9999\n");
    EXPECT_TRUE(block.nodes.empty());
}

} // namespace
