// Files that Gmsh writes, in all versions, as text and in binary, and cut off.

#include "GmshFile.h"

#include <support/Folder.h>

#include <exchange/Error.h>
#include <read/gmsh/FileEnds.h>

#include <gmsh.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace GmshTest;

struct Format
{
    double version = 4.1;
    bool isBinary = false;
};

std::string textOf(Format const& format)
{
    return "Version" + std::to_string(static_cast<int>(10 * format.version)) +
           (format.isBinary ? "Binary" : "Text");
}

/// Of version 4.0, Gmsh itself writes text only.
std::vector<Format> const formats = {
    {2.2, false}, {2.2, true}, {4.0, false}, {4.1, false}, {4.1, true}};

/// A square of second order in a physical group, with results of two steps.
void write(std::filesystem::path const& path, Format const& format)
{
    Library const library;
    gmsh::option::setNumber("Mesh.MshFileVersion", format.version);
    gmsh::option::setNumber("Mesh.Binary", format.isBinary ? 1 : 0);
    gmsh::option::setNumber("PostProcessing.SaveMesh", 0);
    gmsh::model::add("square");
    gmsh::model::addDiscreteEntity(2, 3);
    std::vector<std::size_t> const tags = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    gmsh::model::mesh::addNodes(2, 3, tags, {0, 0, 0,   1, 0,   0, 1, 1, 0,   0, 1,   0,   0.5, 0,
                                             0, 1, 0.5, 0, 0.5, 1, 0, 0, 0.5, 0, 0.5, 0.5, 0.1});
    gmsh::model::mesh::addElements(2, 3, {10}, {{77}}, {tags});
    gmsh::model::addPhysicalGroup(2, {3}, 5);
    gmsh::model::setPhysicalName(2, 5, "a plate");
    gmsh::write(path.string());
    int const view = gmsh::view::add("T in K");
    for (int step = 0; step < 2; ++step) {
        std::vector<std::vector<double>> values;
        for (std::size_t const tag : tags)
            values.push_back({static_cast<double>(tag) + 0.1 + 100 * step});
        gmsh::view::addModelData(view, step, "square", "NodeData", tags, values, 0.5 * step + 0.25);
    }
    gmsh::view::write(view, path.string(), true);
}

class GmshWrittenFile : public testing::TestWithParam<Format>
{
protected:
    Support::Folder const folder_;
    std::filesystem::path const path_ = folder_.path("in.msh");
};

TEST_P(GmshWrittenFile, IsReadValueByValue)
{
    write(path_, GetParam());
    ASSERT_TRUE(Gmsh::hasBeginning(path_));
    Opened const opened(path_);
    ASSERT_EQ(opened.partNames(), Names{"a plate"});
    EXPECT_EQ(opened.parts[0].nodeIds, (Ids{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(opened.parts[0].connectivity, (Rows{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(opened.parts[0].types.at(0)->name, "Quadrangle 9");
    EXPECT_EQ(opened.parts[0].coordinates,
              (Values{0, 0, 0,   1, 0,   0, 1, 1, 0,   0, 1,   0,   0.5, 0,
                      0, 1, 0.5, 0, 0.5, 1, 0, 0, 0.5, 0, 0.5, 0.5, 0.1}));
    ASSERT_EQ(opened.steps.size(), 2u);
    EXPECT_EQ(opened.steps[0].time, 0.25);
    EXPECT_EQ(opened.steps[1].time, 0.75);
    Values const values = opened.values(1, "T in K", 0);
    ASSERT_EQ(values.size(), 9u);
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(values[i], static_cast<double>(i + 1) + 0.1 + 100) << i;
    EXPECT_EQ(opened.warnings(), Names{});
}

TEST_P(GmshWrittenFile, IsRefusedWhenItIsCutOff)
{
    write(path_, GetParam());
    std::string const whole = Support::contentOf(path_);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    std::vector<std::size_t> taken;
    int refused = 0;
    for (std::size_t length = 0; length < whole.rfind("$End"); length += 37) {
        // Where one section is over and the next hasn't begun, nothing is missing.
        if (whole.find("$End", whole.rfind('\n', length == 0 ? 0 : length - 1)) < length)
            continue;
        try {
            Opened const opened(folder_.write("cut.msh", whole.substr(0, length)));
            taken.push_back(length);
        } catch (Exchange::Error const&) {
            ++refused;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_GT(refused, 10);
    EXPECT_EQ(taken, std::vector<std::size_t>{}) << "of " << whole.size();
}

std::string nameOf(testing::TestParamInfo<Format> const& format)
{
    return textOf(format.param);
}

INSTANTIATE_TEST_SUITE_P(Formats, GmshWrittenFile, testing::ValuesIn(formats), nameOf);

} // namespace
