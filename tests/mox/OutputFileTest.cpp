#include "mox/commands/OutputFile.h"

#include "fault/Child.h"
#include "fault/OwnDisk.h"
#include "support/Folder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Support::contentOf;
using Support::Folder;
using Names = std::vector<std::string>;

TEST(OutputFile, AFileThatWasFinishedIsThere)
{
    Folder const folder;
    OutputFile file(folder.path("a").string(), false);
    file.stream() << "content";
    file.finish();
    EXPECT_EQ(contentOf(folder.path("a")), "content");
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(OutputFile, AFileThatWasNotFinishedIsNotThere)
{
    Folder const folder;
    {
        OutputFile file(folder.path("a").string(), false);
        file.stream() << "content";
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST(OutputFile, AnExistingFileIsReplacedOnlyIfToldTo)
{
    Folder const folder;
    folder.write("a", "before");
    EXPECT_THROW(OutputFile(folder.path("a").string(), false), std::runtime_error);
    EXPECT_EQ(contentOf(folder.path("a")), "before");
    OutputFile file(folder.path("a").string(), true);
    file.stream() << "after";
    EXPECT_EQ(contentOf(folder.path("a")), "before");
    file.finish();
    EXPECT_EQ(contentOf(folder.path("a")), "after");
}

TEST(OutputFile, AStreamThatFailedGivesNoFile)
{
    Folder const folder;
    {
        OutputFile file(folder.path("a").string(), false);
        file.stream().setstate(std::ios::badbit);
        EXPECT_THROW(file.finish(), std::runtime_error);
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST(OutputFile, LargeContentIsWrittenInPieces)
{
    Folder const folder;
    OutputFile file(folder.path("a").string(), false);
    std::string const content(1000003, 'x');
    file.stream() << content << 'y' << content;
    file.finish();
    EXPECT_EQ(contentOf(folder.path("a")), content + 'y' + content);
}

TEST(OutputFile, AFullDiskIsNamed)
{
    std::string const answer = Fault::inChild([] {
        Fault::OwnDisk const disk("64k");
        OutputFile file(disk.folder() + "/a", false);
        file.stream() << std::string(1000000, 'x');
        try {
            file.finish();
        } catch (std::runtime_error const& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    });
    EXPECT_EQ(answer, "The file cannot be written: No space left on device.");
}

} // namespace
