#include "ExodusFile.h"
#include "Opened.h"

#include <support/Folder.h>

#include <exchange/Error.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace ExodusTest;
using Rows = std::vector<std::uint32_t>;
using Offsets = std::vector<std::uint64_t>;

class ExodusMesh : public testing::Test
{
protected:
    Support::Folder const folder_;
    std::filesystem::path const path_ = folder_.path("in.exo");
};

/// Node i at (i, 10 i, 100 i).
void putCoordinates(ExodusFile& file, std::int64_t count)
{
    file.coordinates(counting(count), counting(count, 0, 10), counting(count, 0, 100));
}

TEST_F(ExodusMesh, FilesWithoutBlocksHaveNodesOnly)
{
    {
        ExodusFile file(path_, parameters(2, 0, 0));
        putCoordinates(file, 2);
    }
    Opened const opened(path_);
    ASSERT_EQ(opened.parts.size(), 1u);
    EXPECT_EQ(opened.parts[0].nodeIds, (Ids{1, 2}));
}

TEST_F(ExodusMesh, NumbersAndIdsOf64BitsAreWhole)
{
    std::int64_t const big = 5000000000000;
    {
        ExodusFile::Options options;
        options.mode = EX_NETCDF4 | EX_ALL_INT64_DB;
        ExodusFile file(path_, parameters(2, 1, 1), options);
        putCoordinates(file, 2);
        file.block(big, "BAR", 2, {1, 2});
        file.numbers(EX_NODE_MAP, {big + 1, 3});
        file.numbers(EX_ELEM_MAP, {big + 2});
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.parts[0].name, "Block 5000000000000");
    EXPECT_EQ(opened.parts[0].attributes[0],
              Exchange::Attribute("BlockId", std::string("5000000000000")));
    EXPECT_EQ(opened.parts[0].nodeIds, (Ids{big + 1, 3}));
    EXPECT_EQ(opened.parts[0].elementIds, Ids{big + 2});
}

TEST_F(ExodusMesh, CoordinatesThatTheFileDoesNotHaveAreZero)
{
    {
        ExodusFile file(path_, parameters(3, 1, 1, 2));
        file.coordinates({1, 2, 3}, {4, 5, 6}, {});
        file.block(1, "TRI", 3, {1, 2, 3});
    }
    EXPECT_EQ(Opened(path_).parts[0].coordinates, (Values{1, 4, 0, 2, 5, 0, 3, 6, 0}));
    {
        ExodusFile file(path_, parameters(2, 1, 1, 1));
        file.coordinates({1, 2}, {}, {});
        file.block(1, "BAR", 2, {1, 2});
    }
    EXPECT_EQ(Opened(path_).parts[0].coordinates, (Values{1, 0, 0, 2, 0, 0}));
}

TEST_F(ExodusMesh, CoordinatesOfSinglePrecisionAreExact)
{
    {
        ExodusFile::Options options;
        options.bytesOfReal = 4;
        ExodusFile file(path_, parameters(2, 1, 1), options);
        file.coordinates({0.1, 1e30}, {0, 0}, {0, 0});
        file.block(1, "BAR", 2, {1, 2});
    }
    auto const coordinates = Opened(path_).parts[0].coordinates;
    EXPECT_EQ(coordinates[0], static_cast<double>(0.1F));
    EXPECT_EQ(coordinates[3], static_cast<double>(1e30F));
}

TEST_F(ExodusMesh, NodesOfSecondOrderSolidsAreReordered)
{
    {
        ExodusFile file(path_, parameters(20, 1, 1));
        putCoordinates(file, 20);
        file.block(1, "HEX20", 20, numbersFromOne(20));
    }
    EXPECT_EQ(Opened(path_).parts[0].connectivity,
              (Rows{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 18, 19, 12, 13, 14, 15}));
}

TEST_F(ExodusMesh, PolygonsKeepTheirNodes)
{
    {
        ExodusFile file(path_, parameters(7, 2, 1));
        putCoordinates(file, 7);
        file.polygons(1, {5, 3}, {1, 2, 3, 4, 5, 5, 6, 7});
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.parts[0].types.at(0)->name, "Polygon");
    EXPECT_EQ(opened.parts[0].offsets, (Offsets{0, 5, 8}));
    EXPECT_EQ(opened.parts[0].connectivity, (Rows{0, 1, 2, 3, 4, 4, 5, 6}));
}

TEST_F(ExodusMesh, NodeSetsAreOnEveryPartThatHasTheirNodes)
{
    ex_init_params sizes = parameters(5, 2, 2);
    sizes.num_node_sets = 3;
    {
        ExodusFile file(path_, sizes);
        putCoordinates(file, 5);
        file.block(1, "BAR", 2, {1, 3});
        file.block(2, "BAR", 2, {3, 4});
        file.set(EX_NODE_SET, 8, {4, 3, 3}, "fixed");
        file.set(EX_NODE_SET, 9, {5});
        file.set(EX_NODE_SET, 10, {}, "none");
    }
    Opened const opened(path_);
    ASSERT_EQ(opened.parts[0].nodeSets.size(), 1u);
    EXPECT_EQ(opened.parts[0].nodeSets[0].name, "fixed");
    EXPECT_EQ(opened.parts[0].nodeSets[0].rows, Rows{1});
    ASSERT_EQ(opened.parts[1].nodeSets.size(), 1u);
    EXPECT_EQ(opened.parts[1].nodeSets[0].rows, (Rows{0, 1}));
    ASSERT_EQ(opened.parts[2].nodeSets.size(), 1u);
    EXPECT_EQ(opened.parts[2].nodeSets[0].name, "9");
    EXPECT_EQ(opened.parts[2].nodeSets[0].rows, Rows{1});
    EXPECT_EQ(opened.warnings(), Names{"The node set 'none' is empty and was left out."});
}

TEST_F(ExodusMesh, ElementSetsAreSplitAmongTheParts)
{
    ex_init_params sizes = parameters(4, 3, 2);
    sizes.num_elem_sets = 2;
    {
        ExodusFile file(path_, sizes);
        putCoordinates(file, 4);
        file.block(1, "BAR", 2, {1, 2});
        file.block(2, "BAR", 2, {2, 3, 3, 4});
        file.set(EX_ELEM_SET, 1, {3, 1}, "loaded");
        file.set(EX_ELEM_SET, 2, {2});
    }
    Opened const opened(path_);
    ASSERT_EQ(opened.parts[0].elementSets.size(), 1u);
    EXPECT_EQ(opened.parts[0].elementSets[0].rows, Rows{0});
    ASSERT_EQ(opened.parts[1].elementSets.size(), 2u);
    EXPECT_EQ(opened.parts[1].elementSets[0].name, "loaded");
    EXPECT_EQ(opened.parts[1].elementSets[0].rows, Rows{1});
    EXPECT_EQ(opened.parts[1].elementSets[1].name, "2");
    EXPECT_EQ(opened.parts[1].elementSets[1].rows, Rows{0});
}

TEST_F(ExodusMesh, NamesAreKeptAsTheyAre)
{
    std::string const longName(200, 'n');
    ExodusFile::Options options;
    options.nameLength = 255;
    {
        ExodusFile file(path_, parameters(4, 2, 2), options);
        putCoordinates(file, 4);
        file.block(1, "BAR", 2, {1, 2}, "a b/c \xC3\xA4\xE2\x82\xAC");
        file.block(2, "BAR", 2, {3, 4}, longName);
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.parts[0].name, "a b/c \xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(opened.parts[1].name, longName);
}

TEST_F(ExodusMesh, ElementsThatAModelCannotHoldEndTheTranslation)
{
    {
        ExodusFile file(path_, parameters(9, 1, 1));
        putCoordinates(file, 9);
        file.block(1, "HEX9", 9, numbersFromOne(9));
    }
    try {
        Opened const opened(path_);
        FAIL() << "it was taken";
    } catch (Exchange::Error const& error) {
        EXPECT_NE(std::string(error.what()).find("HEX9 of 9 nodes"), std::string::npos)
            << error.what();
    }
}

TEST_F(ExodusMesh, ElementsThatAModelCannotHoldAreLeftOutWhenAllowed)
{
    {
        ExodusFile file(path_, parameters(9, 2, 2));
        putCoordinates(file, 9);
        file.block(1, "HEX9", 9, numbersFromOne(9));
        file.block(2, "BAR", 2, {1, 2});
    }
    Opened const opened(path_, true);
    ASSERT_EQ(opened.parts.size(), 3u);
    EXPECT_EQ(opened.parts[0].elementCount(), 0u);
    EXPECT_EQ(opened.parts[1].elementIds, Ids{2});
    EXPECT_EQ(opened.parts[2].nodeIds, (Ids{3, 4, 5, 6, 7, 8, 9}));
    ASSERT_EQ(opened.warnings().size(), 1u);
    EXPECT_NE(opened.warnings()[0].find("HEX9 of 9 nodes"), std::string::npos);
}

TEST_F(ExodusMesh, PolyhedraAreTold)
{
    ex_init_params sizes = parameters(4, 1, 1);
    {
        ExodusFile file(path_, sizes);
        putCoordinates(file, 4);
        file.polyhedra(1, 1, 4);
    }
    EXPECT_THROW(Opened{path_}, Exchange::Error);
    Opened const opened(path_, true);
    EXPECT_EQ(opened.parts[0].elementCount(), 0u);
    EXPECT_EQ(opened.parts[1].nodeIds, (Ids{1, 2, 3, 4}));
    ASSERT_EQ(opened.warnings().size(), 1u);
    EXPECT_NE(opened.warnings()[0].find("nfaced"), std::string::npos);
}

} // namespace
