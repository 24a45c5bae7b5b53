#include "MemorySource.h"

#include <exchange/Error.h>
#include <exchange/ShapePartition.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Exchange;
using Rows = std::vector<std::size_t>;
using Names = std::vector<std::string>;

Rows rowsOf(RowSelection const& selection)
{
    Rows rows;
    for (std::size_t i = 0; i < selection.size(); ++i)
        rows.push_back(selection[i]);
    return rows;
}

Names namesOf(std::vector<Shape> const& shapes)
{
    Names names;
    for (Shape const& shape : shapes)
        names.push_back(shape.name);
    return names;
}

void addElement(Part& part, std::string const& type, std::vector<std::uint32_t> const& nodes)
{
    if (part.offsets.empty())
        part.offsets = {0};
    part.types.push_back(ElementType::find(type));
    part.connectivity.insert(part.connectivity.end(), nodes.begin(), nodes.end());
    part.offsets.push_back(part.connectivity.size());
}

Part partWithNodes(std::size_t count)
{
    Part part;
    part.name = "Part";
    part.coordinates.resize(3 * count);
    return part;
}

TEST(ShapePartition, APartOfOneDimensionIsOneShapeWithoutAnyCopyOfRows)
{
    std::vector<Shape> const shapes = partition(twoTriangles("Plate"));
    ASSERT_EQ(namesOf(shapes), (Names{"Plate"}));
    EXPECT_EQ(shapes[0].dimension, 2);
    EXPECT_EQ(shapes[0].type, nullptr);
    EXPECT_TRUE(shapes[0].nodes.isAll());
    EXPECT_TRUE(shapes[0].elements.isAll());
    EXPECT_EQ(rowsOf(shapes[0].elements), (Rows{0, 1}));
}

TEST(ShapePartition, DimensionsAreShapesOfTheirOwnWithTheNodesTheyNeed)
{
    Part part = partWithNodes(5);
    addElement(part, "Tetrahedron", {0, 1, 2, 4});
    addElement(part, "Line", {4, 3});
    addElement(part, "Triangle", {0, 1, 2});
    addElement(part, "Point", {3});
    std::vector<Shape> const shapes = partition(part);
    ASSERT_EQ(namesOf(shapes), (Names{"Part 1D", "Part 2D", "Part 3D"}));
    EXPECT_EQ(rowsOf(shapes[0].elements), (Rows{1, 3}));
    EXPECT_EQ(rowsOf(shapes[0].nodes), (Rows{3, 4}));
    EXPECT_EQ(rowsOf(shapes[1].nodes), (Rows{0, 1, 2}));
    EXPECT_EQ(rowsOf(shapes[2].nodes), (Rows{0, 1, 2, 4}));
}

TEST(ShapePartition, TypesThatTheirNodesDontTellAreShapesOfTheirOwn)
{
    Part part = partWithNodes(5);
    addElement(part, "Polygon", {0, 1, 2, 3, 4});
    addElement(part, "Triangle", {0, 1, 2});
    addElement(part, "Polygon", {0, 1, 2});
    std::vector<Shape> const shapes = partition(part);
    ASSERT_EQ(namesOf(shapes), (Names{"Part", "Part Polygon"}));
    EXPECT_EQ(shapes[0].type, nullptr);
    EXPECT_EQ(shapes[1].type, ElementType::find("Polygon"));
    EXPECT_EQ(shapes[1].dimension, 2);
    EXPECT_EQ(rowsOf(shapes[1].elements), (Rows{0, 2}));
}

TEST(ShapePartition, NodesThatNoElementUsesAreAShape)
{
    Part part = partWithNodes(4);
    addElement(part, "Line", {3, 1});
    std::vector<Shape> const shapes = partition(part);
    ASSERT_EQ(namesOf(shapes), (Names{"Part", "Part nodes without elements"}));
    EXPECT_EQ(rowsOf(shapes[0].nodes), (Rows{1, 3}));
    EXPECT_EQ(rowsOf(shapes[1].nodes), (Rows{0, 2}));
    EXPECT_EQ(shapes[1].elements.size(), 0U);
}

TEST(ShapePartition, APartWithoutElementsOrNodesIsAShape)
{
    std::vector<Shape> const shapes = partition(partWithNodes(2));
    ASSERT_EQ(namesOf(shapes), (Names{"Part"}));
    EXPECT_TRUE(shapes[0].nodes.isAll());
    EXPECT_EQ(shapes[0].nodes.size(), 2U);
    EXPECT_EQ(namesOf(partition(partWithNodes(0))), (Names{"Part"}));
}

class DamagedPart : public ::testing::Test
{
protected:
    std::string complaint() const
    {
        try {
            partition(part_);
        } catch (Error const& error) {
            return error.what();
        }
        return {};
    }

    Part part_ = twoTriangles("Plate");
};

TEST_F(DamagedPart, ElementsThatReferToMissingNodesAreRefused)
{
    part_.connectivity[4] = 4;
    EXPECT_EQ(complaint(),
              "The part 'Plate' is damaged: an element refers to a node that is not there.");
}

TEST_F(DamagedPart, ElementsWithTheWrongNumberOfNodesAreRefused)
{
    part_.offsets[1] = 2;
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: an element has a wrong number of nodes.");
}

TEST_F(DamagedPart, OffsetsThatGoBackAreRefused)
{
    part_.offsets[1] = 7;
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: an element has a wrong number of nodes.");
    part_.types.assign(2, ElementType::find("Polygon"));
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: an element has less than no nodes.");
}

TEST_F(DamagedPart, ArraysThatEndTooEarlyAreRefused)
{
    part_.connectivity.pop_back();
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: the nodes of its elements are missing.");
    part_ = twoTriangles("Plate");
    part_.coordinates.pop_back();
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: a coordinate is missing.");
    part_ = twoTriangles("Plate");
    part_.elementIds = {1};
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: not every element has a number.");
    part_ = twoTriangles("Plate");
    part_.nodeIds = {1};
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: not every node has a number.");
}

TEST_F(DamagedPart, SetsOfWhatIsNotThereAreRefused)
{
    part_.elementSets = {{"Set", {2}}};
    EXPECT_EQ(complaint(), "The part 'Plate' is damaged: a set refers to what is not there.");
}

} // namespace
