#include <exchange/Error.h>
#include <read/ensight/Source.h>

#include "support/Folder.h"
#include "support/SourceContent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using Floats = std::vector<float>;
using Names = std::vector<std::string>;
using Rows = std::vector<std::uint32_t>;

std::string const head = "a test\nof one part\nnode id off\nelement id off\n";
std::string const nodes = "part\n         1\nThe part\ncoordinates\n         4\n"
                          "0\n1\n1\n0\n0\n0\n1\n1\n0\n0\n0\n0\n";
std::string const quadrangle = "quad4\n         1\n         1         2         3         4\n";
std::string const mesh = head + nodes + quadrangle;
std::string const temperature = "T\npart\n         1\ncoordinates\n1\n2\n3\n4\n";

class EnSightSource : public ::testing::Test
{
protected:
    EnSightSource()
    {
        folder_.write("mesh", mesh);
        folder_.write("T", temperature);
    }

    std::filesystem::path writeCase(std::string const& behind = "VARIABLE\nscalar per node: T T\n",
                                    std::string const& geometry = "model: mesh\n") const
    {
        return folder_.write("in.case",
                             "FORMAT\ntype: ensight gold\nGEOMETRY\n" + geometry + behind);
    }

    Support::SourceContent read(std::string const& behind = "VARIABLE\nscalar per node: T T\n",
                                std::string const& geometry = "model: mesh\n",
                                bool skipUnknown = false) const
    {
        return {EnSight::open, writeCase(behind, geometry), skipUnknown};
    }

    /// What is said of a file of that content.
    std::string complaint(std::string const& name, std::string const& content) const
    {
        std::string const before = Support::contentOf(folder_.path(name));
        folder_.write(name, content);
        std::string const message = complaintAboutCase("VARIABLE\nscalar per node: T T\n");
        folder_.write(name, before);
        std::string const path = "'" + folder_.path(name).string() + "'";
        auto const at = message.find(path);
        return at == std::string::npos ? message
                                       : std::string(message).replace(at, path.size(), "'*'");
    }

    std::string complaintAboutCase(std::string const& behind,
                                   std::string const& geometry = "model: mesh\n") const
    {
        try {
            read(behind, geometry);
        } catch (Exchange::Error const& error) {
            return error.what();
        }
        return {};
    }

    Support::Folder folder_;
};

TEST_F(EnSightSource, SaysWhatIsWrongWithAMeshAndWhere)
{
    EXPECT_EQ(complaint("mesh", mesh), "");
    EXPECT_EQ(complaint("mesh", head + nodes),
              "The file '*' ends before its last value, at line 21.");
    EXPECT_EQ(complaint("mesh", head + "part\n         1\nx\ncoordinates\n2147483647\n1\n"),
              "The file '*' ends before its last value, at line 9.");
    EXPECT_EQ(complaint("mesh", mesh + "hexa8\n2147483647\n1\n"),
              "The file '*' ends before its last value, at line 26.");
    EXPECT_EQ(complaint("mesh", mesh + "hexa8\n-1\n"),
              "The file '*' has less than none of something, at line 26.");
    EXPECT_EQ(complaint("mesh", mesh + "hexa9\n"), "The file '*' is not understood, at line 25.");
    EXPECT_EQ(complaint("mesh", mesh + quadrangle),
              "The file '*' has the 'quad4' elements of a part twice, at line 27.");
    EXPECT_EQ(complaint("mesh", mesh + "bar2\n1\n1 5\n"),
              "The file '*' has an element of the node 5, which is not there, at line 27.");
    EXPECT_EQ(complaint("mesh", mesh + "bar2\n1\n1 2 3\n"),
              "The file '*' has more numbers than there are to be, at line 27.");
    EXPECT_EQ(complaint("mesh", mesh + "bar2\n1\n1 x\n"),
              "The file '*' is not understood, at line 27.");
    EXPECT_EQ(complaint("mesh", mesh + "nsided\n1\n0\n"),
              "The file '*' has a polygon or a polyhedron of nothing, at line 27.");
    EXPECT_EQ(complaint("mesh", mesh + nodes), "The file '*' has the part 1 twice, at line 26.");
    EXPECT_EQ(
        complaint("mesh", head + "part\n1\nx\nblock uniform\n2147483647 9 9\n0\n0\n0\n1\n1\n1\n"),
        "The file '*' has a block of more nodes than can be counted, at line 9.");
    std::string const behindSize = "0\n0\n0\n1\n1\n1\n";
    EXPECT_EQ(complaint("mesh", head + "part\n1\nx\nblock uniform\n2 2 2\n" + behindSize +
                                    "part\n2\nx\nblock uniform\n2048 2048 1\n" + behindSize),
              "The file '*' has 4194312 nodes in uniform and rectilinear blocks, more than 4194304 "
              "and than the variables have bytes, at line 20.");
    EXPECT_EQ(complaint("mesh", head + "part\n1\nx\nblock range\n9 9 9\n3 2 1 1 1 1\n"),
              "The file '*' has a block without nodes, at line 10.");
}

TEST_F(EnSightSource, SaysWhatIsWrongWithValuesAndWhere)
{
    std::string const part = "T\npart\n         1\n";
    EXPECT_EQ(complaint("T", "T\n"), "The file '*' has no values of the variable 'T', at line 1.");
    EXPECT_EQ(complaint("T", part), "The file '*' ends before its last value, at line 3.");
    EXPECT_EQ(complaint("T", temperature + "5\n"), "The file '*' is not understood, at line 9.");
    EXPECT_EQ(complaint("T", temperature + "coordinates\n1\n2\n3\n4\n"),
              "The file '*' has values of 'coordinates' twice, at line 9.");
    EXPECT_EQ(complaint("T", part + "coordinates partial\n1\n5\n1\n"),
              "The file '*' has a value of what is not there, at line 6.");
    EXPECT_EQ(complaint("T", part + "coordinates\n1e99\n2\n3\n4\n"),
              "The file '*' has a number that is too large, at line 5.");
    EXPECT_EQ(complaint("T", temperature + "part\n2\ncoordinates\n1\n"),
              "The file '*' has values of the part 2, of which the mesh in '" +
                  folder_.path("mesh").string() + "' has less, at line 10.");
}

TEST_F(EnSightSource, SaysWhatIsWrongWithTheCase)
{
    EXPECT_EQ(complaintAboutCase("", ""), "The case names no mesh.");
    EXPECT_EQ(complaintAboutCase("", "model: gone\n"),
              "There is no file '" + folder_.path("gone").string() + "' that can be read.");
    EXPECT_EQ(complaintAboutCase("", "model: mesh*\n"),
              "The case does not say which files 'mesh*' stands for.");
    EXPECT_EQ(complaintAboutCase("VARIABLE\nscalar per node: T\n"),
              "The case does not name the files of 'scalar per node'.");
    EXPECT_EQ(
        complaintAboutCase("TIME\ntime set: 1\nnumber of steps: 9000000000\ntime values: 1\n"),
        "The time set '1' has 1 times for 9000000000 steps.");
    EXPECT_EQ(complaintAboutCase("TIME\ntime set: 1\nnumber of steps: 2\ntime values: 1\n1\n"),
              "The times of the time set '1' do not ascend.");
    EXPECT_EQ(complaintAboutCase("TIME\ntime set: 1\nnumber of steps: x\n"),
              "The case has 'x' where a number is to be.");
    EXPECT_EQ(complaintAboutCase("VARIABLE\nscalar per node: 1 1 T T\nTIME\ntime set: 1\n"
                                 "number of steps: 2\ntime values: 1 2\nFILE\nfile set: 1\n"
                                 "number of steps: 1\n"),
              "The file set '1' has no step 2.");
    EXPECT_EQ(complaintAboutCase("VARIABLE\nscalar per measured node: T T\n"),
              "The case has no mesh for the variable 'T'.");
}

TEST_F(EnSightSource, AMeshThatChangesIsRefused)
{
    folder_.write("mesh0", mesh);
    folder_.write("mesh1", head + nodes + "tria3\n1\n1 2 3\n");
    EXPECT_EQ(complaintAboutCase("TIME\ntime set: 1\nnumber of steps: 2\nfilename numbers: 0 1\n"
                                 "time values: 1 2\n",
                                 "model: 1 mesh*\n"),
              "The mesh changes from step to step, which a model cannot hold: that in '" +
                  folder_.path("mesh1").string() + "' is another one.");
}

TEST_F(EnSightSource, WhatAModelCannotHoldIsToldOf)
{
    folder_.write("mesh", mesh + "nfaced\n1\n1\n3\n1 2 3\n");
    EXPECT_EQ(complaintAboutCase(""), "A model cannot hold 1 element of the type polyhedron; "
                                      "--skip-unknown leaves them out.");
    auto const file = read("MATERIAL\nmaterial set number: 1 x\n", "model: mesh\nmatch: m\n", true);
    EXPECT_EQ(file.warnings(),
              (Names{"'match' of the case's section GEOMETRY was left out.",
                     "'material set number' of the case's section MATERIAL was left out.",
                     "1 element of the type polyhedron was left out."}));
}

TEST_F(EnSightSource, AFileThatEndsBehindAPartIsToldOf)
{
    std::string second = nodes;
    folder_.write("mesh", mesh + second.replace(14, 1, "2") + quadrangle);
    EXPECT_EQ(read().warnings(),
              Names{"The file '" + folder_.path("T").string() +
                    "' has no values of the last parts, or was cut off behind a part."});
}

TEST_F(EnSightSource, ConstantsAndFrequenciesAreAttributesOfSteps)
{
    folder_.write("times", "1 2\n");
    folder_.write("values", "10\n20\n");
    auto const file = read("VARIABLE\nconstant per case file: 1 C values\n"
                           "complex scalar per node: T T T 50.0\nTIME\ntime set: 1\n"
                           "number of steps: 2\ntime values file: times\n");
    ASSERT_EQ(file.steps.size(), 2U);
    EXPECT_EQ(file.steps[1].attributes,
              (Exchange::AttributeList{{"C", 20.F}, {"T frequency", 50.F}}));
    EXPECT_EQ(file.values<float>(1, "T_i", 0), (Floats{1, 2, 3, 4}));
}

TEST_F(EnSightSource, NumbersMayTouchEachOther)
{
    folder_.write("mesh", "a test\nof one line\nnode id given\nelement id given\ncoordinates\n"
                          "       2\n"
                          "12345678-1.00000e+00-2.00000e+00-3.00000e+00\n"
                          "       9 1.00000e+00+2.00000e+00 3.00000e-99\n"
                          "part 1\nThe line\nbar2\n       1\n 765432112345678       9\n");
    folder_.write("in.case", "FORMAT\ntype: ensight\nGEOMETRY\nmodel: mesh\n");
    Support::SourceContent const file(EnSight::open, folder_.path("in.case"), false);
    EXPECT_EQ(file.parts.at(0).coordinates, (std::vector<double>{-1, -2, -3, 1, 2, 0}));
    EXPECT_EQ(file.parts[0].nodeIds, (std::vector<std::int64_t>{12345678, 9}));
    EXPECT_EQ(file.parts[0].elementIds, std::vector<std::int64_t>{7654321});
    EXPECT_EQ(file.parts[0].connectivity, (Rows{0, 1}));
}

/// 65536 nodes look like 256 in the other order of bytes.
TEST_F(EnSightSource, TheOrderOfBytesIsFoundThoughTheFirstCountMisleads)
{
    constexpr std::size_t count = 65536;
    auto const line = [](std::string text) {
        text.resize(80, ' ');
        return text;
    };
    auto const integer = [](unsigned int value) {
        std::string bytes;
        for (unsigned int i = 0; i < 4; ++i)
            bytes += static_cast<char>(value >> (8 * i));
        return bytes;
    };
    std::string content = line("C Binary") + line("a test") + line("of many nodes") +
                          line("node id off") + line("element id off") + line("coordinates") +
                          integer(count) + std::string(count * 12, '\0') + line("part 1") +
                          line("The line") + line("bar2") + integer(1) + integer(1) +
                          integer(count);
    folder_.write("mesh", content);
    folder_.write("in.case", "FORMAT\ntype: ensight\nGEOMETRY\nmodel: mesh\n");
    Support::SourceContent const file(EnSight::open, folder_.path("in.case"), false);
    EXPECT_EQ(file.partNames(), (Names{"The line", "Nodes without elements"}));
    EXPECT_EQ(file.parts.at(0).nodeIds, (std::vector<std::int64_t>{1, count}));
}

} // namespace
