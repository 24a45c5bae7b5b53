// From the file to the model: read back with the reader under tools/moxread.

#include "ExodusFile.h"

#include <support/Folder.h>
#include <support/ModelFile.h>

#include <exchange/Translation.h>
#include <read/exodus/Source.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace ExodusTest;
using Floats = std::vector<float>;
using Numbers = std::vector<std::uint32_t>;

class ExodusTranslation : public testing::Test
{
protected:
    Support::ModelFile translate()
    {
        Exchange::translate(input_, Exodus::open, output_, {}, report_);
        return Support::ModelFile(output_);
    }

    std::vector<std::string> warnings() const { return report_.warnings(); }

    Support::Folder const folder_;
    std::filesystem::path const input_ = folder_.path("wing.exo");
    std::filesystem::path const output_ = folder_.path("wing.mox");
    Exchange::Report report_;
};

TEST_F(ExodusTranslation, MeshAndResultsArriveValueByValue)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    ex_init_params sizes = parameters(7, 2, 3);
    sizes.num_node_sets = 1;
    {
        ExodusFile::Options options;
        options.bytesOfReal = 4;
        ExodusFile file(input_, sizes, options);
        file.coordinates(counting(7), counting(7, 0, 10), counting(7, 0, 100));
        file.block(5, "TETRA4", 4, {4, 3, 2, 1}, "solid");
        file.block(6, "HEX8", 8, {}, "empty");
        file.block(7, "TRI3", 3, {2, 6, 4});
        file.numbers(EX_NODE_MAP, {10, 20, 30, 40, 50, 60, 70});
        file.numbers(EX_ELEM_MAP, {8, 9});
        file.set(EX_NODE_SET, 3, {1, 6}, "fixed");
        file.variables(EX_NODAL, {"T", "UX", "UY", "UZ"});
        file.variables(EX_ELEM_BLOCK, {"E"});
        file.truthTable(3, 1, {0, 0, 1});
        for (int step = 1; step <= 2; ++step) {
            file.time(step, 0.5 * step);
            file.variable(step, EX_NODAL, 1, 1, {0.1, nan, 0.3, 0.4, 0.5, 0.6, 0.7 * step});
            for (int variable = 2; variable <= 4; ++variable)
                file.variable(step, EX_NODAL, variable, 1, counting(7, 100 * step + 10 * variable));
            file.variable(step, EX_ELEM_BLOCK, 1, 7, {1.5 * step});
        }
    }
    Support::ModelFile model = translate();
    EXPECT_EQ(warnings(), Names{});
    EXPECT_EQ(model.shapes(),
              (Names{"wing/solid", "wing/empty", "wing/Block 7", "wing/Nodes without elements"}));
    EXPECT_EQ(model.floats({"solid"}, "Coordinates"),
              (Floats{0, 0, 0, 1, 10, 100, 2, 20, 200, 3, 30, 300}));
    EXPECT_EQ(model.numbers({"solid"}, "Node Ids"), (Numbers{10, 20, 30, 40}));
    EXPECT_EQ(model.numbers({"solid"}, "Connectivity"), (Numbers{3, 2, 1, 0}));
    EXPECT_EQ(model.numbers({"solid"}, "Polylength"), Numbers{4});
    EXPECT_EQ(model.numbers({"solid"}, "Element IDs"), Numbers{8});
    EXPECT_EQ(model.numbers({"Block 7"}, "Node Ids"), (Numbers{20, 40, 60}));
    EXPECT_EQ(model.numbers({"Block 7"}, "Connectivity"), (Numbers{0, 2, 1}));
    EXPECT_EQ(model.numbers({"Block 7"}, "Element IDs"), Numbers{9});
    EXPECT_EQ(model.numbers({"Nodes without elements"}, "Node Ids"), (Numbers{50, 70}));
    EXPECT_EQ(model.numbers({"Block 7"}, "Node Set fixed"), (Numbers{0, 0, 1}));
    EXPECT_EQ(model.floats({"Nodes without elements"}, "T", "Step 2"), (Floats{0.5F, 1.4F}));
    Floats const withNan = model.floats({"solid"}, "T", "Step 1");
    EXPECT_EQ(withNan[0], 0.1F);
    EXPECT_TRUE(std::isnan(withNan[1]));
    EXPECT_EQ(model.floats({"Block 7"}, "U", "Step 2"),
              (Floats{221, 231, 241, 223, 233, 243, 225, 235, 245}));
    EXPECT_EQ(model.floats({"Block 7"}, "E", "Step 1"), Floats{1.5F});
    EXPECT_EQ(model.find({"solid"}, "E", "Step 1"), nullptr);
}

TEST_F(ExodusTranslation, NarrowingIsTold)
{
    {
        ExodusFile file(input_, parameters(2, 1, 1));
        file.coordinates({0.1, 2}, {0, 0}, {0, 0});
        file.block(1, "BAR", 2, {1, 2});
    }
    Support::ModelFile model = translate();
    EXPECT_EQ(model.floats({"Block 1"}, "Coordinates"), (Floats{0.1F, 0, 0, 2, 0, 0}));
    ASSERT_EQ(warnings().size(), 1u);
    EXPECT_NE(warnings()[0].find("single precision"), std::string::npos);
}

TEST_F(ExodusTranslation, NamesOfAllKindsArrive)
{
    {
        ExodusFile file(input_, parameters(2, 1, 1));
        file.coordinates({1, 2}, {0, 0}, {0, 0});
        file.block(1, "BAR", 2, {1, 2}, "left/right \xC3\xA4");
        file.variables(EX_NODAL, {"a b/c \xE2\x82\xAC", "a b/c \xE2\x82\xAC"});
        file.time(1, 1);
        file.variable(1, EX_NODAL, 1, 1, {1, 2});
        file.variable(1, EX_NODAL, 2, 1, {3, 4});
    }
    Support::ModelFile model = translate();
    ASSERT_EQ(model.shapes().size(), 1u);
    EXPECT_EQ(model.floats({"left/right \xC3\xA4"}, "a b/c \xE2\x82\xAC", "Step 1"),
              (Floats{1, 2}));
    EXPECT_EQ(model.floats({"left/right \xC3\xA4"}, "a b/c \xE2\x82\xAC (2)", "Step 1"),
              (Floats{3, 4}));
}

} // namespace
