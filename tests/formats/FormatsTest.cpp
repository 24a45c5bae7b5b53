#include "Samples.h"

#include "support/Folder.h"

#include <mox/formats/Formats.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Mox::FileProbe;
using Mox::Format;
using Mox::formatOf;

using Support::Folder;

class Formats : public ::testing::Test
{
protected:
    std::string formatOfFile(std::filesystem::path const& path) const
    {
        Format const* const format = formatOf(FileProbe(path));
        return format == nullptr ? "" : format->name;
    }

    std::string formatOfContent(std::string const& content) const
    {
        return formatOfFile(folder_.write("file", content));
    }

    Folder folder_;
};

TEST_F(Formats, AreToldByContent)
{
    for (Sample const& sample : samples()) {
        EXPECT_EQ(formatOfContent(sample.content), sample.format);
        EXPECT_EQ(formatOf(FileProbe(folder_.path("file")))->package, sample.package);
    }
}

TEST_F(Formats, AFileNamedFrdIsOneWhateverItHolds)
{
    EXPECT_EQ(formatOfFile(folder_.write("a.frd", "hello")), "frd");
}

TEST_F(Formats, NamesOfOtherFormatsTellNothing)
{
    EXPECT_EQ(formatOfFile(folder_.write("a.vtu", "hello")), "");
    EXPECT_EQ(formatOfFile(folder_.write("a.msh", "$MeshFormatted\n")), "");
    EXPECT_EQ(formatOfFile(folder_.write("a.case", "FORMAT\n")), "");
}

TEST_F(Formats, OtherFilesOfTheSameContainersAreNotTaken)
{
    EXPECT_EQ(formatOfContent("\x89HDF\r\n\x1a\nsome data"), "");
    EXPECT_EQ(formatOfContent(std::string("CDF\x01\0\0 weather", 14)), "");
    EXPECT_EQ(formatOfContent(""), "");
}

TEST_F(Formats, AWordAcrossTwoChunksIsFound)
{
    std::string content = "\x89HDF\r\n\x1a\n";
    content.resize((1U << 20U) - 5, 'x');
    EXPECT_EQ(formatOfContent(content + "CGNSLibraryVersion"), "CGNS");
}

TEST_F(Formats, ACaseOfOpenFoamIsAFolderOrAFileThatStandsForIt)
{
    std::filesystem::create_directories(folder_.path("case/system"));
    EXPECT_EQ(formatOfFile(folder_.path("case")), "");
    folder_.write("case/system/controlDict", "FoamFile { class dictionary; }");
    EXPECT_EQ(formatOfFile(folder_.path("case")), "OpenFOAM");
    EXPECT_EQ(formatOfFile(folder_.path("case/system/controlDict")), "OpenFOAM");
    EXPECT_EQ(formatOfFile(folder_.write("case/case.foam", "")), "OpenFOAM");
    EXPECT_EQ(formatOfFile(folder_.write("alone.foam", "")), "");
}

} // namespace
