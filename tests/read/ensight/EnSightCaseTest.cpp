#include <read/ensight/EnSightCase.h>

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Support::Folder;
using VtkRead::EnSightCase;
using Names = std::vector<std::string>;
using Counts = std::vector<std::uint64_t>;

class EnSightCases : public ::testing::Test
{
protected:
    EnSightCase caseOf(std::string const& text) const
    {
        return EnSightCase(folder_.write("in.case", text));
    }

    static Names namesOf(std::vector<EnSightCase::DataFile> const& files)
    {
        Names names;
        for (EnSightCase::DataFile const& file : files)
            names.push_back(file.path.filename().string());
        return names;
    }

    Folder folder_;
};

TEST_F(EnSightCases, VariablesTellWhatTheyHold)
{
    EnSightCase const read = caseOf("FORMAT\ntype:\tensight gold\n# a remark\n"
                                    "GEOMETRY\nmodel: \"a.geo\"\nmeasured: particles\n"
                                    "VARIABLE\nscalar per node: T t\nvector per element: V v\n"
                                    "tensor symm per node: S s\ntensor asym per element: A a\n"
                                    "scalar per measured node: M m\n"
                                    "complex vector per node: C re im 50.\n"
                                    "constant per case: Density 3.5\n");
    EXPECT_TRUE(read.isGold());
    EXPECT_EQ(namesOf(read.meshes()), Names{"a.geo"});
    EXPECT_EQ(namesOf(read.measured()), Names{"particles"});
    Names names;
    Names files;
    Counts components;
    for (EnSightCase::Variable const& variable : read.variables()) {
        names.push_back(variable.name);
        files.push_back(namesOf(variable.files).front());
        components.push_back(variable.components);
        EXPECT_EQ(variable.isPerElement, variable.name == "V" || variable.name == "A");
        EXPECT_EQ(variable.isMeasured, variable.name == "M");
    }
    EXPECT_EQ(names, (Names{"T", "V", "S", "A", "M", "C", "C"}));
    EXPECT_EQ(files, (Names{"t", "v", "s", "a", "m", "re", "im"}));
    EXPECT_EQ(components, (Counts{1, 3, 6, 9, 1, 3, 3}));
    EXPECT_EQ(read.constants(), Names{"Density"});
}

TEST_F(EnSightCases, FilesAreNumberedByTheirTimeSet)
{
    for (char const* const name : {"t.008", "t.010", "t.012", "g5", "g70"})
        folder_.write(name, "");
    EnSightCase const read = caseOf("FORMAT\ntype: ensight\nGEOMETRY\nmodel: 2 g*\n"
                                    "VARIABLE\nscalar per node: 1 T t.***\n"
                                    "TIME\ntime set: 1 fine\nnumber of steps: 9000000000\n"
                                    "filename start number: 8\nfilename increment: 2\n"
                                    "time values: 1. 2.\n-3.\n"
                                    "time set: 2\nnumber of steps: 2\nfilename numbers: 5\n70\n");
    EXPECT_FALSE(read.isGold());
    EXPECT_EQ(namesOf(read.meshes()), (Names{"g5", "g70"}));
    ASSERT_EQ(read.variables().size(), 1U);
    EXPECT_EQ(namesOf(read.variables()[0].files), (Names{"t.008", "t.010", "t.012"}));
}

TEST_F(EnSightCases, FilesOfSeveralStepsAreNumberedByTheirFileSet)
{
    EnSightCase const read =
        caseOf("GEOMETRY\nmodel: 1 7 g\n"
               "VARIABLE\nscalar per node: 1 8 T t*\n"
               "TIME\ntime set: 1\nnumber of steps: 5\ntime values: 1 2 3 4 5\n"
               "FILE\nfile set: 7\nnumber of steps: 5\n"
               "file set: 8\nfilename index: 1\nnumber of steps: 3\n"
               "filename index: 2\nnumber of steps: 2\n");
    ASSERT_EQ(namesOf(read.meshes()), Names{"g"});
    EXPECT_EQ(read.meshes()[0].steps, 5U);
    ASSERT_EQ(read.variables().size(), 1U);
    ASSERT_EQ(namesOf(read.variables()[0].files), (Names{"t1", "t2"}));
    EXPECT_EQ(read.variables()[0].files[0].steps, 3U);
    EXPECT_EQ(read.variables()[0].files[1].steps, 2U);
}

TEST_F(EnSightCases, WhatMakesNoSenseIsLeftOut)
{
    EnSightCase const read = caseOf(":\nGEOMETRY\nmodel:\nmodel: 3 g*\n"
                                    "VARIABLE\nscalar per node:\nscalar per node: T\n"
                                    "complex scalar per node: C re im\nmodel: x\n"
                                    "TIME\nnumber of steps: 5\ntime set:\nFILE\nfilename index:\n");
    EXPECT_TRUE(read.meshes().empty());
    EXPECT_TRUE(read.variables().empty());
}

TEST_F(EnSightCases, TheSameFileIsNoOtherStep)
{
    folder_.write("t.3", "");
    EnSightCase const read = caseOf("VARIABLE\nscalar per node: T t.*\nTIME\ntime set: 1\n"
                                    "number of steps: 1000000000000\nfilename start number: 3\n"
                                    "filename increment: 0\n");
    ASSERT_EQ(read.variables().size(), 1U);
    EXPECT_EQ(namesOf(read.variables().front().files), Names{"t.3"});
}

TEST_F(EnSightCases, VariablesHaveValuesAtTheTimesOfTheirTimeSet)
{
    EnSightCase const read = caseOf("VARIABLE\nscalar per node: 1 All a*\n"
                                    "scalar per node: 2 Some s*\nscalar per node: Constant c\n"
                                    "scalar per node: 3 InAFile f*\n"
                                    "TIME\ntime set: 1\nnumber of steps: 3\ntime values: 0.1\n"
                                    "0.2 3e-1\ntime set: 2\nnumber of steps: 1\n"
                                    "time values: 0.2\n"
                                    "time set: 3\nnumber of steps: 1\ntime values file: times\n");
    for (double const time : {0.1, 0.2, 0.3}) {
        EXPECT_TRUE(read.hasValuesAt("All", time));
        EXPECT_EQ(read.hasValuesAt("Some", time), time == 0.2);
        for (std::string const name : {"Constant", "InAFile", "Unknown"})
            EXPECT_TRUE(read.hasValuesAt(name, time));
    }
    EXPECT_FALSE(read.hasValuesAt("All", 0.4));
}

} // namespace
