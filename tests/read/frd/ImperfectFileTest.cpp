// What finished runs of solvers leave and is wrong, but can be told apart.

#include "TestFiles.h"

#include <read/frd/Error.h>
#include <read/frd/PartRows.h>

#include <gtest/gtest.h>

namespace {

using namespace TestFiles;
using Frd::Reader;
using Texts = std::vector<std::string>;

/// A file read to its end.
class ReadFile
{
public:
    explicit ReadFile(std::string const& content) : reader_(folder_.write("in.frd", content))
    {
        Frd::ResultBlock block;
        while (reader_.next(block))
            blocks_.push_back(block);
    }

    Reader const& reader() const { return reader_; }
    std::vector<Frd::ResultBlock> const& blocks() const { return blocks_; }

private:
    Folder folder_;
    Reader reader_;
    std::vector<Frd::ResultBlock> blocks_;
};

TEST(ImperfectFile, LinesThatABlockDoesNotAnnounceAreKept)
{
    std::string const announcing4 = "    2C                             4 ";
    ReadFile const nodes(replaced(triangleFile(), announcing4, replaced(announcing4, "4", "3")));
    EXPECT_EQ(nodes.reader().mesh().nodes().size(), 4U);
    EXPECT_EQ(nodes.reader().warnings(),
              (Texts{"A block announces 3 nodes and holds 4; all were kept."}));

    std::string const announcing1 = "    3C                             1 ";
    ReadFile const elements(replaced(triangleFile(), announcing1, replaced(announcing1, "1", "0")));
    EXPECT_EQ(elements.reader().mesh().elements().size(), 1U);
    EXPECT_EQ(elements.reader().warnings(),
              (Texts{"A block announces 0 elements and holds 1; all were kept."}));

    ReadFile const results(replaced(triangleFile(), "E-01           2 ", "E-01           1 "));
    EXPECT_EQ(results.blocks().at(0).values.size(), 6U);
    EXPECT_EQ(results.reader().warnings(),
              (Texts{"A block announces 1 nodes and holds 2; all were kept."}));
}

TEST(ImperfectFile, BinaryElementsThatABlockDoesNotAnnounceAreKept)
{
    std::string const announcing2 = "    3C                             2 ";
    for (char const* fewer : {"0", "1"}) {
        ReadFile const file(
            replaced(binaryFile(true), announcing2, replaced(announcing2, "2", fewer)));
        ASSERT_EQ(file.reader().mesh().elements().size(), 2U);
        EXPECT_EQ(file.reader().mesh().elements()[1].id, 8U);
        EXPECT_EQ(file.blocks().at(0).values, (std::vector<double>{1, 2, 3, 4, 5, -6.5}));
        EXPECT_EQ(file.reader().warnings(), (Texts{std::string("A block announces ") + fewer +
                                                   " elements and holds 2; all were kept."}));
    }
}

TEST(ImperfectFile, LinesNeedNotBeCounted)
{
    ReadFile const file(replaced(replaced(triangleFile(), "    2C                             4",
                                          "    2C                              "),
                                 "    3C                             1",
                                 "    3C                              "));
    EXPECT_EQ(file.reader().mesh().nodes().size(), 4U);
    EXPECT_EQ(file.reader().mesh().elements().size(), 1U);
    EXPECT_EQ(file.reader().warnings(), Texts());
    EXPECT_EQ(complaintAbout(replaced(binaryFile(true), "    2C                             3",
                                      "    2C                              ")),
              "line 2: The number of records is missing.");
}

TEST(ImperfectFile, TheFirstRecordMayStandTwice)
{
    ReadFile const blank(replaced(triangleFile(), "    1C\n", "    1C\n    1CBEAM\n"));
    EXPECT_EQ(blank.reader().header().modelName, "BEAM");
    EXPECT_EQ(blank.reader().warnings(), (Texts{"line 2: The 1C record stands here once more."}));

    ReadFile const other(replaced(triangleFile(), "    1C\n", "    1CROD\n    1CBEAM\n"));
    EXPECT_EQ(other.reader().header().modelName, "ROD");
    EXPECT_EQ(other.reader().warnings(),
              (Texts{"line 2: The 1C record stands here once more; its name \"BEAM\" was left "
                     "out."}));

    EXPECT_EQ(complaintAbout(replaced(triangleFile(), " 9999", "    1C\n 9999")),
              "line 21: The record \"    1C\" is unknown.");
}

TEST(ImperfectFile, AMaterialMayBeNamedInPlaceOfItsNumber)
{
    ReadFile const file(replaced(triangleFile(), "    7    7    2", "    7    7WATER"));
    auto const parts = partRowsOf(file.reader().mesh(), file.reader().header());
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].name, "Group 7 Material WATER 2D");
    EXPECT_EQ(parts[0].material, -1);
}

TEST(ImperfectFile, ValuesAtNodesThatTheMeshDoesNotHaveAreLeftOut)
{
    ReadFile const lines(
        replaced(triangleFile(), "         2 1.00000E+00 2", "         4 1.00000E+00 2"));
    ASSERT_EQ(lines.blocks().size(), 1U);
    EXPECT_EQ(lines.blocks()[0].values, (std::vector<double>{-1, -2, -3}));
    EXPECT_EQ(lines.reader().warnings(),
              (Texts{"The result \"DISP\" has values at node 4, which the mesh does not have; they "
                     "were left out."}));

    std::string const content = binaryFile(false);
    ReadFile const records(replaced(content, bytes(std::int32_t(20)) + bytes(1.0F),
                                    bytes(std::int32_t(-7)) + bytes(1.0F)));
    EXPECT_EQ(records.blocks().at(0).values, (std::vector<double>{4, 5, -6.5}));
    EXPECT_EQ(records.reader().warnings().size(), 1U);
}

TEST(ImperfectFile, ABlockMayHaveNoneOfTheValuesThatItAnnounces)
{
    std::string const content = triangleFile();
    std::size_t const values = content.find(" -1         2 1.00000E+00 2");
    ReadFile const lines(content.substr(0, values) + " -3\n 9999\n");
    ASSERT_EQ(lines.blocks().size(), 1U);
    EXPECT_EQ(lines.blocks()[0].values, std::vector<double>());
    EXPECT_EQ(lines.reader().warnings(),
              (Texts{"The result \"DISP\" announces values at 2 nodes and has none."}));

    std::string const records = binaryFile(false);
    std::size_t const firstRecord = records.size() - std::string(" 9999\n").size() - 2 * 16;
    std::string const head = records.substr(0, firstRecord);
    std::string const block = head.substr(head.find("  100C"));
    ReadFile const binary(head + block + "    1PSTEP                         1           1" +
                          "           1\n" + block + " 9999\n");
    EXPECT_EQ(binary.blocks().size(), 3U);
    EXPECT_EQ(binary.reader().warnings().size(), 1U);
}

TEST(ImperfectFile, TheSameLossIsToldOnce)
{
    std::string const block =
        replaced(displacementBlock(), "         2 1.00000E+00 2", "         4 1.00000E+00 2");
    ReadFile const file("    1C\n" + triangleMesh() + block + block + " 9999\n");
    EXPECT_EQ(file.blocks().size(), 2U);
    EXPECT_EQ(file.reader().warnings().size(), 1U);
}

TEST(ImperfectFile, ABlockNoneOfWhoseNodesAreInTheMeshIsRefused)
{
    EXPECT_EQ(complaintAbout(replaced(
                  replaced(triangleFile(), "         2 1.00000E+00 2", "         4 1.00000E+00 2"),
                  "         1-1.0", "         5-1.0")),
              "line 20: The result \"DISP\" refers to node 4, which does not exist.");
}

} // namespace
