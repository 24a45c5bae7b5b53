#include "EnSightEncoder.h"

#include <exchange/Error.h>
#include <read/ensight/EnSightVariableWalker.h>

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using Support::Folder;
using VtkRead::EnSightCase;
using VtkRead::EnSightFile;
using VtkRead::EnSightMesh;
using VtkRead::EnSightVariableWalker;
using Format = EnSightFile::Format;

EnSightCase::Variable const perNode = {"T", 1, false, false, false, {}};
EnSightCase::Variable const perElement = {"E", 1, true, false, false, {}};

EnSightMesh const mesh = {
    true, 0, {{1, 4, {{"bar2", 2}, {"tria3", 1}, {"g_bar2", 3}}}, {2, 6, {{"block", 2}}}}};

class EnSightVariableWalk : public ::testing::TestWithParam<Format>
{
protected:
    EnSightEncoder begin() const
    {
        EnSightEncoder file(GetParam(), true);
        file.line("a variable");
        return file;
    }

    static void addSection(EnSightEncoder& file, std::string const& keyword, std::size_t count)
    {
        file.line(keyword);
        file.reals(std::vector<float>(count, 12));
    }

    static void addGrid(EnSightEncoder& file, std::size_t count)
    {
        file.part(2);
        addSection(file, "block", count);
    }

    /// \return the part that the file ends with too early
    std::optional<std::uint64_t> walk(std::string const& content,
                                      EnSightCase::Variable const& variable) const
    {
        EnSightFile file(folder_.write("variable", content), GetParam());
        EnSightVariableWalker walker(file, mesh, variable);
        walker.walk();
        return walker.partAtEarlyEnd();
    }

    Folder folder_;
};

TEST_P(EnSightVariableWalk, PartsMayBeLeftOut)
{
    EnSightEncoder file = begin();
    addGrid(file, 6);
    EXPECT_EQ(walk(file.content(), perNode), std::nullopt);
    EnSightEncoder beginning = begin();
    beginning.part(1);
    addSection(beginning, "coordinates", 4);
    EXPECT_EQ(walk(beginning.content(), perNode), 1U);
}

TEST_P(EnSightVariableWalk, ValuesMayBeUndefined)
{
    EnSightEncoder file = begin();
    file.part(1);
    file.line("coordinates undef");
    file.reals({-1});
    file.reals({1, 2, -1, -1});
    addGrid(file, 6);
    EXPECT_EQ(walk(file.content(), perNode), std::nullopt);
}

TEST_P(EnSightVariableWalk, SomeValuesMayBeGivenOnly)
{
    EnSightEncoder file = begin();
    file.part(1);
    file.line("coordinates partial");
    file.integers({2}, 1);
    file.integers({1, 3}, 1);
    file.reals({1, 2});
    addGrid(file, 6);
    EXPECT_EQ(walk(file.content(), perNode), std::nullopt);
}

TEST_P(EnSightVariableWalk, GhostsMayHaveValues)
{
    EnSightEncoder file = begin();
    file.part(1);
    addSection(file, "bar2", 2);
    addSection(file, "g_bar2", 3);
    addSection(file, "tria3", 1);
    addGrid(file, 2);
    EXPECT_EQ(walk(file.content(), perElement), std::nullopt);
}

TEST_P(EnSightVariableWalk, ElementsWithoutValuesAreRefused)
{
    EnSightEncoder file = begin();
    file.part(1);
    addSection(file, "bar2", 2);
    std::string const beginning = file.content();
    EXPECT_THROW(walk(beginning, perElement), Exchange::Error);
    addGrid(file, 2);
    EXPECT_THROW(walk(file.content(), perElement), Exchange::Error);
}

TEST_P(EnSightVariableWalk, ValuesOfNothingAreRefused)
{
    EnSightEncoder file = begin();
    file.part(1);
    addSection(file, "bar2", 2);
    addSection(file, "tria3", 1);
    addSection(file, "hexa8", 0);
    std::string const empty = file.content();
    EXPECT_NO_THROW(walk(empty, perElement));
    file.reals(std::vector<float>(30, 0));
    EXPECT_THROW(walk(file.content(), perElement), Exchange::Error);
}

TEST_P(EnSightVariableWalk, ValuesOfPartsThatAreNotThereAreRefused)
{
    EnSightEncoder file = begin();
    addGrid(file, 6);
    file.part(3);
    addSection(file, "coordinates", 30);
    EXPECT_THROW(walk(file.content(), perNode), Exchange::Error);
}

TEST_P(EnSightVariableWalk, SectionsThatNobodyKnowsAreLeftToTheReader)
{
    EnSightEncoder file = begin();
    file.part(1);
    file.line("faces");
    EXPECT_THROW(walk(file.content(), perNode), EnSightFile::Unknown);
}

INSTANTIATE_TEST_SUITE_P(All, EnSightVariableWalk,
                         ::testing::Values(Format::Text, Format::C, Format::Fortran),
                         [](auto const& one) { return EnSightEncoder::nameOf(one.param); });

} // namespace
