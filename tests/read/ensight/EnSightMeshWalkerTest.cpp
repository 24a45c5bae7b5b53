#include "EnSightEncoder.h"

#include <exchange/Error.h>
#include <read/ensight/EnSightMeshWalker.h>

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using Support::Folder;
using VtkRead::EnSightFile;
using VtkRead::EnSightMesh;
using VtkRead::EnSightMeshWalker;
using Format = EnSightFile::Format;
using Elements = std::map<std::string, std::uint64_t>;

class EnSightMeshWalk : public ::testing::TestWithParam<Format>
{
protected:
    EnSightEncoder begin(bool isGold = true) const
    {
        EnSightEncoder file(GetParam(), isGold);
        file.format();
        addHeader(file);
        return file;
    }

    static void addHeader(EnSightEncoder& file)
    {
        file.line("made by a test");
        file.line("in two lines");
        file.line("node id assign");
        file.line("element id off");
    }

    static void beginPart(EnSightEncoder& file, int number)
    {
        file.part(number);
        file.line("A part");
    }

    static void addNodes(EnSightEncoder& file, std::size_t count)
    {
        file.line("coordinates");
        file.integers({static_cast<int>(count)}, 1);
        for (std::size_t axis = 0; axis < 3; ++axis)
            file.reals(std::vector<float>(count, 1));
    }

    EnSightMesh walked(std::string const& content, bool isGold = true) const
    {
        return walkedFile(folder_.write("mesh", content), isGold);
    }

    static EnSightMesh walkedFile(std::filesystem::path const& path, bool isGold)
    {
        EnSightFile file(path, GetParam());
        return EnSightMeshWalker(file, isGold).walk();
    }

    static std::string withoutLastNewline(EnSightEncoder const& file)
    {
        return file.content().substr(0, file.content().size() - (file.isText() ? 1 : 0));
    }

    /// \param from what is behind the last place where a mesh could have ended
    void expectRefusalOfCuts(EnSightEncoder const& file, std::size_t from = 0) const
    {
        EXPECT_EQ(walked(withoutLastNewline(file), file.isGold()),
                  walked(file.content(), file.isGold()));
        std::filesystem::path const path = folder_.path("mesh");
        for (std::size_t length = withoutLastNewline(file).size(); length-- > from;) {
            std::filesystem::resize_file(path, length);
            EXPECT_THROW(walkedFile(path, file.isGold()), Exchange::Error) << length;
        }
    }

    Folder folder_;
};

TEST_P(EnSightMeshWalk, PolyhedraAreCounted)
{
    EnSightEncoder file = begin();
    beginPart(file, 7);
    addNodes(file, 12);
    file.line("nfaced");
    file.integers({1}, 1);
    file.integers({4}, 1);
    file.integers({3, 3, 3, 3}, 1);
    file.integers({1, 2, 3, 1, 2, 12, 2, 3, 12, 3, 1, 12}, 3);
    EnSightMesh const mesh = walked(file.content());
    ASSERT_NE(mesh.find(7), nullptr);
    EXPECT_EQ(mesh.find(7)->nodes, 12U);
    EXPECT_EQ(mesh.find(7)->elements, (Elements{{"nfaced", 1}}));
    expectRefusalOfCuts(file);
}

TEST_P(EnSightMeshWalk, StructuredPartsOfAllKindsAreCounted)
{
    EnSightEncoder file = begin();
    file.line("extents");
    file.realsInLines({0, 2, 0, 1, 0, 1}, 2);
    beginPart(file, 1);
    file.line("block uniform");
    file.integers({3, 2, 1}, 3);
    file.reals({0, 0, 0});
    file.reals({1, 1, 1});
    beginPart(file, 2);
    file.line("block rectilinear");
    file.integers({3, 2, 2}, 3);
    file.reals({0, 1, 2});
    file.reals({0, 1});
    file.reals({0, 1});
    std::size_t const lastPart = file.content().size();
    beginPart(file, 3);
    file.line("block curvilinear iblanked");
    file.integers({2, 2, 2}, 3);
    for (std::size_t axis = 0; axis < 3; ++axis)
        file.reals({0, 0, 0, 0, 1, 1, 1, 1});
    file.integers({1, 1, 1, 1, 1, 1, 1, 0}, 1);
    EnSightMesh const mesh = walked(file.content());
    ASSERT_EQ(mesh.parts.size(), 3U);
    EXPECT_EQ(mesh.parts[0].nodes, 6U);
    EXPECT_EQ(mesh.parts[0].elements, (Elements{{"block", 2}}));
    EXPECT_EQ(mesh.parts[1].elements, (Elements{{"block", 2}}));
    EXPECT_EQ(mesh.parts[2].elements, (Elements{{"block", 1}}));
    expectRefusalOfCuts(file, lastPart + 1);
}

TEST_P(EnSightMeshWalk, MarkedNodesOfTheFormatBeforeGoldAreSkipped)
{
    EnSightEncoder file = begin(false);
    file.part(1);
    file.line("Grid");
    file.line("block iblanked");
    file.integers({4, 3, 1}, 3);
    for (std::size_t axis = 0; axis < 3; ++axis)
        file.reals(std::vector<float>(12, 1));
    file.integers(std::vector<int>(12, 1), 10);
    EXPECT_EQ(walked(file.content(), false).parts[0].elements, (Elements{{"block", 6}}));
    expectRefusalOfCuts(file);
}

TEST_P(EnSightMeshWalk, StepsInOneFileAreWalkedThroughOneByOne)
{
    EnSightEncoder file(GetParam(), true);
    file.format();
    for (int step = 0; step < 2; ++step) {
        file.line("BEGIN TIME STEP");
        addHeader(file);
        beginPart(file, 1);
        addNodes(file, 2);
        file.line("g_bar2");
        file.integers({1}, 1);
        file.integers({1, 2}, 2);
        file.line("END TIME STEP");
    }
    EnSightFile walk(folder_.write("mesh", file.content()), GetParam());
    EnSightMesh const first = EnSightMeshWalker(walk, true).walk();
    EXPECT_TRUE(walk.isSeries());
    EXPECT_EQ(first.parts[0].elements, (Elements{{"g_bar2", 1}}));
    EXPECT_EQ(EnSightMeshWalker(walk, true).walk(), first);
    EXPECT_THROW(EnSightMeshWalker(walk, true).walk(), Exchange::Error);
}

TEST_P(EnSightMeshWalk, PartsWithoutNodesNeedNoElements)
{
    EnSightEncoder file = begin();
    beginPart(file, 1);
    addNodes(file, 0);
    EXPECT_EQ(walked(file.content()).parts[0].nodes, 0U);
}

TEST_P(EnSightMeshWalk, SectionsThatNobodyKnowsAreLeftToTheReader)
{
    for (char const* const section : {"block with_ghost", "hexa9"}) {
        EnSightEncoder file = begin();
        beginPart(file, 1);
        file.line(section);
        EXPECT_THROW(walked(file.content()), EnSightFile::Unknown);
    }
}

TEST_P(EnSightMeshWalk, CountsBeyondTheFileAreRefusedWithoutMemory)
{
    EnSightEncoder file = begin();
    beginPart(file, 1);
    file.line("block");
    file.integers({99999999, 99999999, 99999999}, 3);
    EXPECT_THROW(walked(file.content()), Exchange::Error);
}

INSTANTIATE_TEST_SUITE_P(All, EnSightMeshWalk,
                         ::testing::Values(Format::Text, Format::C, Format::Fortran),
                         [](auto const& one) { return EnSightEncoder::nameOf(one.param); });

} // namespace
