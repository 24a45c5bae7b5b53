// Files of runs that were stopped: what is said of them, and what can be had of them.

#include "TestFiles.h"

#include "support/ModelFile.h"

#include <exchange/Error.h>
#include <exchange/Translation.h>
#include <read/frd/Source.h>

#include <gtest/gtest.h>

namespace {

using namespace TestFiles;
using Names = std::vector<std::string>;

/// A block of the triangle's nodes 1 and 2 in an increment of a step.
std::string block(std::string const& name, int increment, int step = 1)
{
    auto const column = [](int number) { return std::string(11, ' ') + std::to_string(number); };
    return "    1PSTEP                         1" + column(increment) + column(step) + "\n" +
           replaced(displacementBlock(), "DISP", name);
}

std::string mesh()
{
    return "    1C\n" + triangleMesh();
}

struct Outcome
{
    std::string complaint;
    Names warnings;
    /// Datasets of the first shape that have a step, the step's name behind a bar.
    Names results;
    std::string incomplete;
};

void readBack(std::filesystem::path const& path, Outcome& outcome)
{
    Support::ModelFile const file(path);
    std::string const shape = file.shapes().at(0);
    for (std::string const& name : file.datasets({shape.substr(shape.find('/') + 1)}))
        if (name.find('|') != std::string::npos)
            outcome.results.push_back(name);
    if (file.rootAttributes().count("Incomplete") != 0)
        outcome.incomplete =
            Support::ModelFile::attribute<std::string>(file.rootAttributes(), "Incomplete");
}

Outcome translateContent(std::string const& content, bool partial = true)
{
    Folder const folder;
    std::string const input = folder.write("in.frd", content).string();
    Exchange::TranslationOptions options;
    options.partial = partial;
    Exchange::Report report;
    Outcome outcome;
    try {
        Exchange::translate(input, Frd::open, folder.path("out.mox"), options, report);
        outcome.warnings = report.warnings();
        readBack(folder.path("out.mox"), outcome);
    } catch (Exchange::Error const& error) {
        outcome.complaint = std::string(error.what()).substr(input.size() + 2);
        EXPECT_EQ(folder.names(), Names{"in.frd"});
    }
    return outcome;
}

std::string refusalOf(std::string const& content)
{
    return translateContent(content, false).complaint;
}

TEST(Partial, TheRefusalSaysHowFarTheFileIsWhole)
{
    std::string const one = mesh() + block("DISP", 1);
    EXPECT_EQ(refusalOf(one),
              "line 21: The file ends without its end record (9999); 1 step is whole, Step 1 "
              "Increment 1, if no more results of it were to come: --partial keeps it.");
    EXPECT_EQ(refusalOf(one + block("DISP", 2)),
              "line 31: The file ends without its end record (9999); 2 steps are whole, up to Step "
              "1 Increment 2: --partial keeps them.");
    EXPECT_EQ(refusalOf(mesh()), "line 11: The file ends without its end record (9999); no step is "
                                 "whole: --partial keeps the mesh.");
    EXPECT_EQ(refusalOf(one + " 99"),
              "line 22: The file ends in the middle of a line; 1 step is whole, Step 1 Increment "
              "1, if no more results of it were to come: --partial keeps it.");
}

TEST(Partial, WithoutAWholeMeshNothingIsKept)
{
    std::string const cut = mesh().substr(0, mesh().size() - 5);
    for (bool const partial : {false, true})
        EXPECT_EQ(
            translateContent(cut, partial).complaint,
            "line 10: The file ends in the middle of a line, and not even its mesh is whole.");
}

TEST(Partial, WholeStepsAreKeptAndTheModelSaysThatItIsIncomplete)
{
    Outcome const outcome =
        translateContent(mesh() + block("DISP", 1) + block("FORC", 1) + block("DISP", 2));
    EXPECT_EQ(outcome.complaint, "");
    EXPECT_EQ(outcome.results,
              (Names{"Displacement|Step 1 Increment 1", "FORC|Step 1 Increment 1"}));
    EXPECT_EQ(outcome.incomplete, "line 41: The file ends without its end record (9999).");
    EXPECT_EQ(outcome.warnings,
              (Names{"line 41: The file ends without its end record (9999); 1 step is whole, Step "
                     "1 Increment 1; what follows was left out."}));
}

TEST(Partial, AStepIsWholeWhenAnotherOneBegan)
{
    std::string const next = block("DISP", 1, 2);
    Outcome const outcome =
        translateContent(mesh() + block("DISP", 1) + next.substr(0, next.size() - 10));
    EXPECT_EQ(outcome.results, (Names{"Displacement|Step 1 Increment 1"}));
}

TEST(Partial, AStepIsNotWholeWhenABlockOfItIsCutOff)
{
    std::string const second = block("FORC", 1);
    for (std::size_t const cut : {1U, 60U, 200U}) {
        Outcome const outcome =
            translateContent(mesh() + block("DISP", 1) + second.substr(0, second.size() - cut));
        EXPECT_EQ(outcome.complaint, "");
        EXPECT_EQ(outcome.results, Names()) << cut;
    }
}

TEST(Partial, ParametersThatAreCutOffMayBeOfTheFirstStep)
{
    std::string const parameters = block("FORC", 1).substr(0, 59);
    EXPECT_EQ(translateContent(mesh() + block("DISP", 1) + parameters).results, Names());
    EXPECT_EQ(translateContent(mesh() + block("DISP", 1) + parameters.substr(0, 20)).results,
              Names());
}

TEST(Partial, AnIncrementWithAllResultsOfTheOneBeforeIsWhole)
{
    std::string const whole =
        mesh() + block("DISP", 1) + block("FORC", 1) + block("DISP", 2) + block("FORC", 2);
    for (std::string const& rest : {std::string(), std::string("    1PSTEP    ")})
        EXPECT_EQ(translateContent(whole + rest).results.size(), 4U);
}

TEST(Partial, AFileCutInItsEndRecordHasAllSteps)
{
    Outcome const outcome = translateContent(mesh() + block("DISP", 1) + " 9999");
    EXPECT_EQ(outcome.results.size(), 1U);
    EXPECT_EQ(outcome.incomplete, "line 22: The file ends in the middle of a line.");
}

TEST(Partial, AWholeFileIsTranslatedAsEver)
{
    Outcome const outcome = translateContent(mesh() + block("DISP", 1) + " 9999\n");
    EXPECT_EQ(outcome.results.size(), 1U);
    EXPECT_EQ(outcome.incomplete, "");
    EXPECT_EQ(outcome.warnings, Names());
}

TEST(Partial, AMalformedFileIsRefusedAllTheSame)
{
    Outcome const outcome = translateContent(mesh() + block("DISP", 1) +
                                             replaced(block("DISP", 2), "2.00000E+00", "x"));
    EXPECT_NE(outcome.complaint, "");
    EXPECT_EQ(outcome.complaint.find("--partial"), std::string::npos) << outcome.complaint;
}

TEST(Partial, BlocksOfADroppedStepMayStandBetweenOthers)
{
    std::string const last = block("FORC", 1);
    Outcome const outcome = translateContent(mesh() + block("DISP", 1) + block("DISP", 2) +
                                             last.substr(0, last.size() - 20));
    EXPECT_EQ(outcome.results, (Names{"Displacement|Step 1 Increment 2"}));
}

TEST(Partial, WhateverIsLeftOfACutFileBecomesAModelOnceItsMeshIsWhole)
{
    for (char const* name : {"he20", "he20_binary", "heat"}) {
        std::string const content = contentOf(solverFile(name));
        std::size_t const results = content.find("    1PSTEP");
        ASSERT_NE(results, std::string::npos);
        for (std::size_t length = results; length < content.size(); length += 97) {
            Outcome const outcome = translateContent(content.substr(0, length));
            EXPECT_EQ(outcome.complaint, "") << name << " cut to " << length;
            EXPECT_NE(outcome.incomplete, "");
        }
    }
}

} // namespace
