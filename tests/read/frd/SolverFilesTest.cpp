// What the solver itself wrote, against what its decks ask for.

#include "TestFiles.h"

#include <read/frd/ResultLayout.h>

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using namespace TestFiles;
using Frd::AnalysisKind;
using Frd::ResultBlock;
using Names = std::vector<std::string>;

std::vector<ResultBlock> solverBlocks(std::string const& name)
{
    return blocksOf(contentOf(solverFile(name)));
}

Names namesOf(std::vector<ResultBlock> const& blocks)
{
    Names names;
    for (ResultBlock const& block : blocks)
        names.push_back(block.name);
    return names;
}

std::vector<ResultBlock> exampleBlocks(std::string const& name)
{
    return blocksOf(contentOf(exampleFile(name)));
}

/// Text holds six digits.
void expectClose(std::vector<double> const& text, std::vector<double> const& binary)
{
    ASSERT_EQ(text.size(), binary.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        ASSERT_NEAR(text[i], binary[i], 5.1e-6 * std::fabs(text[i]) + 1e-30) << i;
}

TEST(SolverFiles, TheCantileverHasTenIncrementsAndFourModes)
{
    auto const blocks = exampleBlocks("cantilever.frd");
    std::set<std::int32_t> increments;
    std::set<std::int32_t> modes;
    for (ResultBlock const& block : blocks) {
        ASSERT_TRUE(block.step.has_value());
        if (block.kind == AnalysisKind::Static)
            increments.insert(block.step->increment);
        else
            modes.insert(block.mode.value_or(-1));
        EXPECT_EQ(block.step->step, block.kind == AnalysisKind::Static ? 1 : 2);
        EXPECT_EQ(block.nodes.size(), 321U);
    }
    EXPECT_EQ(increments, (std::set<std::int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(modes, (std::set<std::int32_t>{1, 2, 3, 4}));
    EXPECT_EQ(blocks.size(), 10U * 5U + 4U * 3U);
}

TEST(SolverFiles, TextAndBinaryOfTheSameRunHoldTheSameMesh)
{
    Frd::Reader const text(exampleFile("cantilever.frd"));
    Frd::Reader const binary(exampleFile("cantilever_binary.frd"));
    ASSERT_EQ(text.mesh().nodes().size(), 321U);
    ASSERT_EQ(binary.mesh().nodes().size(), 321U);
    for (std::size_t i = 0; i < 321; ++i) {
        EXPECT_EQ(text.mesh().nodes()[i].id, binary.mesh().nodes()[i].id);
        EXPECT_EQ(text.mesh().nodes()[i].coordinates, binary.mesh().nodes()[i].coordinates);
    }
    ASSERT_EQ(text.mesh().elements().size(), 40U);
    ASSERT_EQ(binary.mesh().elements().size(), 40U);
    for (std::size_t i = 0; i < 40; ++i) {
        Frd::Element const& a = text.mesh().elements()[i];
        Frd::Element const& b = binary.mesh().elements()[i];
        EXPECT_EQ(a.id, b.id);
        EXPECT_EQ(a.type, b.type);
        EXPECT_EQ(a.material, b.material);
        for (std::size_t n = 0; n < 20; ++n)
            EXPECT_EQ(text.mesh().nodeOf(a, n), binary.mesh().nodeOf(b, n));
    }
    EXPECT_EQ(text.header().materials, binary.header().materials);
}

TEST(SolverFiles, TextAndBinaryOfTheSameRunHoldTheSameResults)
{
    auto const text = exampleBlocks("cantilever.frd");
    auto const binary = exampleBlocks("cantilever_binary.frd");
    ASSERT_EQ(text.size(), binary.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        EXPECT_EQ(text[i].name, binary[i].name);
        EXPECT_EQ(text[i].value, binary[i].value);
        EXPECT_EQ(text[i].nodes, binary[i].nodes);
        ASSERT_NO_FATAL_FAILURE(expectClose(text[i].values, binary[i].values)) << text[i].name;
    }
}

TEST(SolverFiles, AFrequencyResponseHasImaginaryPartsAmplitudesAndPhases)
{
    auto const blocks = solverBlocks("frequency_response");
    Names const expected = {"DISP",    "STRESS", "ERROR", "DISPI",
                            "STRESSI", "ERRORI", "PDISP", "PSTRESS"};
    auto const names = namesOf(blocks);
    ASSERT_EQ(names.size(), 2 * expected.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(names[i], expected[i % expected.size()]);
    ResultBlock const& stress = blocks[7];
    EXPECT_EQ(stress.storedComponents().size(), 12U);
    EXPECT_EQ(stress.values.size(), 12U * stress.nodes.size());
    EXPECT_EQ(layoutsOf(stress).size(), 12U);
    EXPECT_EQ(layoutsOf(stress)[6].name, "PSTRESS PHAXX");
}

TEST(SolverFiles, AResultOfSomeNodesHoldsThoseOnly)
{
    auto const blocks = solverBlocks("some_nodes");
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].nodes, (std::vector<std::uint32_t>{4, 5}));
    EXPECT_EQ(blocks[0].values.size(), 6U);
}

TEST(SolverFiles, HeatFluxIsAVectorAndTemperatureAScalar)
{
    auto const blocks = solverBlocks("heat");
    EXPECT_EQ(namesOf(blocks), (Names{"NDTEMP", "FLUX", "RFL"}));
    EXPECT_EQ(blocks[0].values[0], 100.0);
    EXPECT_EQ(blocks[0].values[6], 20.0);
    ASSERT_EQ(layoutsOf(blocks[0]).size(), 1U);
    EXPECT_EQ(layoutsOf(blocks[0])[0].components.size(), 1U);
    ASSERT_EQ(layoutsOf(blocks[1]).size(), 1U);
    EXPECT_EQ(layoutsOf(blocks[1])[0].components.size(), 3U);
}

TEST(SolverFiles, ADynamicStepCountsItsIncrementsAndTimes)
{
    auto const blocks = solverBlocks("dynamic");
    for (ResultBlock const& block : blocks) {
        EXPECT_EQ(block.kind, AnalysisKind::TimeStep);
        EXPECT_DOUBLE_EQ(block.value, 1e-6 * block.step.value().increment);
    }
    EXPECT_EQ(blocks.back().step.value().increment, 2);
}

TEST(SolverFiles, BucklingModesShareTheirIncrementButNotTheirStepNumber)
{
    auto const blocks = solverBlocks("buckling");
    ASSERT_EQ(blocks.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(blocks[i].kind, AnalysisKind::UserNamed);
        EXPECT_EQ(blocks[i].step.value().increment, 1);
        EXPECT_EQ(blocks[i].stepNumber, static_cast<std::int32_t>(i + 1));
    }
}

} // namespace
