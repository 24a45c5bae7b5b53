#include "mox/commands/JoinCommand.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"
#include "support/Wanted.h"

#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace Mox {

namespace {

using Zyl2::Mox2::ArrayView;
using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::Step;

/// What a rank has of a bar: lines between nodes.
struct Piece
{
    std::vector<unsigned int> nodes;
    std::vector<unsigned int> elements;
    std::vector<unsigned int> connectivity;
    std::vector<float> displacement;
    bool hasIds = true;
    std::string solver = "test";
    /// An attribute of the temperature.
    std::string unit = "K";
    /// Numbers at the nodes, such as those of materials.
    std::vector<unsigned int> materials = {};
    float transparency = 0;
};

class JoinCommand : public testing::Test
{
protected:
    void write(std::string const& name, int rank, Piece const& piece)
    {
        Zyl2::Mox2::Model model;
        model.saveTo(folder_.File(name));
        Attributes about;
        about.set("Solver", piece.solver);
        model.addNode(NodeType::RootGroup, "Root", about);
        unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
        Attributes own;
        own.set("Rank", rank);
        own.set("Ranks", 2);
        std::vector<float> coordinates;
        std::vector<float> onElements;
        for (unsigned int const node : piece.nodes)
            coordinates.insert(coordinates.end(), {static_cast<float>(node), 0, 0});
        for (unsigned int const element : piece.elements)
            onElements.push_back(static_cast<float>(element) * 100);
        model.addArrayProperty(DatasetType::Coordinates, ArrayView::table(coordinates, 3), bar,
                               Step(), own);
        if (piece.hasIds)
            model.addArrayProperty(DatasetType::NodeIds, piece.nodes, bar, Step(), own);
        model.addArrayProperty(DatasetType::ElementIds, piece.elements, bar, Step(), own);
        model.addArrayProperty(DatasetType::Connectivity1, piece.connectivity, bar, Step(), own);
        model.addArrayProperty(DatasetType::Polylength1,
                               std::vector<unsigned int>(piece.elements.size(), 2), bar, Step(),
                               own);
        model.addArrayProperty("Strain", DatasetType::Result14, onElements, bar, Step("S"), own);
        own.set("Unit", piece.unit);
        if (!piece.displacement.empty())
            model.addArrayProperty("Temperature", DatasetType::Result10, piece.displacement, bar,
                                   Step("S"), own);
        if (!piece.materials.empty())
            model.addArrayProperty("Material", DatasetType::Result10, piece.materials, bar, Step());
        Zyl2::Mox2::NodeProperties look;
        look.set(Zyl2::Mox2::PropertyType::Transparency, piece.transparency);
        model.setNodeData(bar, look);
        model.close();
    }

    /// \return what is said on the error stream
    /// \param order of the ranks of the first and the second file
    std::string join(Piece const& first, Piece const& second, std::optional<double> tolerance = {},
                     std::pair<int, int> order = {0, 1})
    {
        write("a.0.mox", order.first, first);
        write("a.1.mox", order.second, second);
        Support::WriteFile(folder_.File("a.moxs"),
                           R"({"format": "moxwriter partitioned model", "version": 1,
                               "complete": false, "ranks": 2,
                               "files": [{"name": "a.0.mox", "ranks": [[)" +
                               std::to_string(order.first) + ", " + std::to_string(order.first) +
                               R"(]]}, {"name": "a.1.mox", "ranks": [[)" +
                               std::to_string(order.second) + ", " + std::to_string(order.second) +
                               "]]}]}");
        JoinArguments arguments;
        arguments.index = folder_.File("a.moxs");
        arguments.output = folder_.File("joined.mox");
        arguments.tolerance = tolerance;
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(joinFiles(arguments, out, err), 0) << err.str();
        EXPECT_EQ(out.str(), "");
        return err.str();
    }

    static std::vector<std::uint32_t> words(MoxRead::Model& model, std::uint32_t node,
                                            std::string const& name)
    {
        MoxRead::Variable const* const variable = model.variable(node, name);
        EXPECT_NE(variable, nullptr) << name;
        return variable == nullptr ? std::vector<std::uint32_t>() : model.read(*variable).words;
    }
    static std::vector<float> floats(MoxRead::Model& model, std::string const& name)
    {
        MoxRead::Variable const* const variable = model.variable(3, name);
        EXPECT_NE(variable, nullptr) << name;
        return variable == nullptr ? std::vector<float>() : model.read(*variable).floats();
    }

    MoxRead::Model joined() const { return MoxRead::Model(folder_.File("joined.mox")); }

    Support::TemporaryFolder folder_;
    Piece const first_ = {{10, 20, 30}, {1, 2}, {0, 1, 1, 2}, {1, 2, 3}};
    /// It has the element 2, too.
    Piece const second_ = {{30, 20, 40}, {2, 3}, {1, 0, 0, 2}, {3, 2, 4}};
};

using Words = std::vector<std::uint32_t>;

TEST_F(JoinCommand, MergesNodesAndElementsByTheirIds)
{
    EXPECT_EQ(join(first_, second_), "");
    MoxRead::Model model = joined();
    ASSERT_EQ(model.nodes().size(), 3U);
    EXPECT_EQ(words(model, 3, "Node Ids"), (Words{10, 20, 30, 40}));
    EXPECT_EQ(words(model, 3, "Element IDs"), (Words{1, 2, 3}));
    EXPECT_EQ(words(model, 3, "Connectivity"), (Words{0, 1, 1, 2, 2, 3}));
    EXPECT_EQ(words(model, 3, "Polylength"), (Words{2, 2, 2}));
    EXPECT_EQ(floats(model, "Temperature\x1ES"), (std::vector<float>{1, 2, 3, 4}));
    EXPECT_EQ(floats(model, "Strain\x1ES"), (std::vector<float>{100, 200, 300}));
    EXPECT_EQ(model.variable(3, "Coordinates")->attributes.count("Rank"), 0U);
}

TEST_F(JoinCommand, TellsTheLargestDifferenceOfWhatSeveralRanksHave)
{
    Piece other = second_;
    other.displacement = {3.25F, 1.5F, 4};
    EXPECT_EQ(join(first_, other),
              "mox join: warning: \"Temperature\" step \"S\" of \"Root/Bar\" differs among ranks "
              "in 2 rows, by 0.5 at most: that of the lowest rank is taken\n");
    MoxRead::Model model = joined();
    EXPECT_EQ(floats(model, "Temperature\x1ES"), (std::vector<float>{1, 2, 3, 4}));
    std::remove(folder_.File("joined.mox").c_str());
    std::remove(folder_.File("a.0.mox").c_str());
    std::remove(folder_.File("a.1.mox").c_str());
    EXPECT_EQ(join(first_, other, 0.5), "");
}

TEST_F(JoinCommand, SaysWhichRowsHaveNoValue)
{
    Piece other = second_;
    other.displacement.clear();
    EXPECT_EQ(join(first_, other),
              "mox join: warning: \"Temperature\" step \"S\" of \"Root/Bar\" has no values of 1 "
              "row: there is NaN instead\n");
    MoxRead::Model model = joined();
    std::vector<float> const values = floats(model, "Temperature\x1ES");
    ASSERT_EQ(values.size(), 4U);
    EXPECT_EQ(values[2], 3);
    EXPECT_TRUE(std::isnan(values[3]));
}

TEST_F(JoinCommand, LeavesPiecesWithoutIdsApart)
{
    Piece other = second_;
    other.hasIds = false;
    EXPECT_EQ(join(first_, other),
              "mox join: warning: \"Root/Bar\" stays in pieces: not all of its nodes have ids, or "
              "not all of its elements tell how many nodes they have\n");
    MoxRead::Model model = joined();
    ASSERT_EQ(model.nodes().size(), 5U);
    EXPECT_EQ(words(model, 3, "Connectivity"), first_.connectivity);
    EXPECT_EQ(words(model, 5, "Connectivity"), second_.connectivity);
}

TEST_F(JoinCommand, TellsWhatFilesSayDifferentlyOfTheirGroups)
{
    Piece other = second_;
    other.solver = "another";
    EXPECT_EQ(join(first_, other),
              "mox join: warning: \"a.1.mox\" has another value of the attribute \"Solver\" of the "
              "group \"Root\": that of an earlier file is taken\n");
}

TEST_F(JoinCommand, TakesTheLowestRankWhereverItsFileStands)
{
    Piece other = second_;
    other.displacement = {3.25F, 1.5F, 4};
    EXPECT_NE(join(first_, other, {}, {1, 0}), "");
    MoxRead::Model model = joined();
    EXPECT_EQ(floats(model, "Temperature\x1ES"), (std::vector<float>{1, 1.5F, 3.25F, 4}));
}

/// Ranks that number their elements from 1 each lose those of the others.
TEST_F(JoinCommand, TellsOfElementsOfOneIdBetweenOtherNodes)
{
    Piece other = second_;
    other.connectivity = {1, 2, 0, 2};
    EXPECT_EQ(join(first_, other),
              "mox join: warning: \"Connectivity\" of \"Root/Bar\" has other nodes among ranks for "
              "1 element of the same id: those of the lowest rank are taken\n");
    MoxRead::Model model = joined();
    EXPECT_EQ(words(model, 3, "Connectivity"), (Words{0, 1, 1, 2, 2, 3}));
}

TEST_F(JoinCommand, TakesNoIntegerForAnotherThatIsClose)
{
    Piece first = first_;
    Piece other = second_;
    first.materials = {1, 5000000, 5000000};
    other.materials = {5000000, 5000001, 1};
    EXPECT_EQ(join(first, other),
              "mox join: warning: \"Material\" of \"Root/Bar\" differs among ranks in 1 row, by 1 "
              "at most: that of the lowest rank is taken\n");
}

TEST_F(JoinCommand, TellsOfAttributesAndMaterialsThatAreLost)
{
    Piece other = second_;
    other.unit = "C";
    other.transparency = 0.5F;
    EXPECT_EQ(
        join(first_, other),
        "mox join: warning: \"Root/Bar\" has other materials in other files: that of the first "
        "is taken\n"
        "mox join: warning: \"Temperature\" step \"S\" of \"Root/Bar\" has other attributes "
        "among ranks: those of the lowest rank are taken\n");
}

/// What is named like ids may be something else.
TEST_F(JoinCommand, TakesNoVectorsForIds)
{
    for (char const* const name : {"a.0.mox", "a.1.mox"}) {
        Zyl2::Mox2::Model model;
        model.saveTo(folder_.File(name));
        model.addNode(NodeType::RootGroup, "Root");
        unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
        std::vector<unsigned int> const three = {1, 2, 3};
        model.addArrayProperty(DatasetType::Coordinates,
                               ArrayView::table(std::vector<float>{0, 0, 0}, 3), bar, Step());
        model.addArrayProperty(DatasetType::NodeIds, std::vector<unsigned int>{1}, bar, Step());
        model.addArrayProperty("Element IDs", DatasetType::Result11, ArrayView::table(three, 3),
                               bar, Step());
        model.addArrayProperty(DatasetType::Connectivity1, std::vector<unsigned int>{0}, bar,
                               Step());
        model.addArrayProperty(DatasetType::Polylength1, std::vector<unsigned int>{1}, bar, Step());
        model.close();
    }
    Support::WriteFile(folder_.File("a.moxs"),
                       R"({"format": "moxwriter partitioned model", "version": 1,
                           "complete": false, "ranks": 2,
                           "files": [{"name": "a.0.mox", "ranks": [[0, 0]]},
                                     {"name": "a.1.mox", "ranks": [[1, 1]]}]})");
    JoinArguments arguments;
    arguments.index = folder_.File("a.moxs");
    arguments.output = folder_.File("joined.mox");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(joinFiles(arguments, out, err), 0) << err.str();
    MoxRead::Model model = joined();
    EXPECT_EQ(words(model, 3, "Polylength"), (Words{1, 1}));
    EXPECT_EQ(words(model, 3, "Element IDs"), (Words{1, 2, 3}));
}

TEST_F(JoinCommand, TakesPiecesOfRanksThatHaveNothingThere)
{
    Piece none;
    EXPECT_EQ(join(first_, none), "");
    MoxRead::Model model = joined();
    EXPECT_EQ(words(model, 3, "Node Ids"), (Words{10, 20, 30}));
    EXPECT_EQ(words(model, 3, "Connectivity"), (Words{0, 1, 1, 2}));
}

TEST_F(JoinCommand, GoesThroughGroupsThatAreDeeperThanCallsCanBe)
{
    constexpr int depth = Support::isSanitized ? 10000 : 40000;
    Zyl2::Mox2::Model model;
    model.saveTo(folder_.File("deep.0.mox"));
    model.addNode(NodeType::RootGroup, "Root");
    for (int level = 0; level < depth; ++level)
        model.addNode(NodeType::Group, "Group");
    model.close();
    Support::WriteFile(folder_.File("deep.moxs"),
                       R"({"format": "moxwriter partitioned model", "version": 1,
                           "complete": false, "ranks": 1,
                           "files": [{"name": "deep.0.mox", "ranks": [[0, 0]]}]})");
    JoinArguments arguments;
    arguments.index = folder_.File("deep.moxs");
    arguments.output = folder_.File("joined.mox");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(joinFiles(arguments, out, err), 0) << err.str();
    EXPECT_EQ(joined().nodes().size(), depth + 1U);
}

} // namespace

} // namespace Mox
