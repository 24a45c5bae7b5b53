#include "support/Folder.h"

#include <common/PartialFile.h>

#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include <unistd.h>

namespace {

using Common::PartialFile;
using Support::contentOf;
using Support::Folder;
using Names = std::vector<std::string>;

void write(PartialFile const& file, std::string const& content)
{
    std::ofstream(file.path(), std::ios::binary) << content;
}

std::string messageOf(std::function<void()> const& action)
{
    try {
        action();
        return "";
    } catch (std::runtime_error const& error) {
        return error.what();
    }
}

TEST(PartialFile, TheTargetAppearsWhenItIsPublished)
{
    Folder const folder;
    {
        PartialFile file(folder.path("out"), false);
        write(file, "new");
        EXPECT_FALSE(std::filesystem::exists(folder.path("out")));
        file.publish();
    }
    EXPECT_EQ(folder.names(), (Names{"out"}));
    EXPECT_EQ(contentOf(folder.path("out")), "new");
}

TEST(PartialFile, NothingIsLeftOfAnUnpublishedFile)
{
    Folder const folder;
    {
        PartialFile const file(folder.path("out"), false);
        write(file, "new");
        EXPECT_EQ(folder.names().size(), 1U);
    }
    EXPECT_EQ(folder.names(), Names());
}

TEST(PartialFile, AnExistingTargetIsRefused)
{
    Folder const folder;
    folder.write("out", "old");
    EXPECT_EQ(messageOf([&] { PartialFile file(folder.path("out"), false); }), "File exists.");
    EXPECT_EQ(folder.names(), (Names{"out"}));
    EXPECT_EQ(contentOf(folder.path("out")), "old");
}

TEST(PartialFile, ATargetThatAppearsMeanwhileIsRefused)
{
    Folder const folder;
    {
        PartialFile file(folder.path("out"), false);
        write(file, "new");
        folder.write("out", "somebody else's");
        EXPECT_EQ(messageOf([&] { file.publish(); }), "File exists.");
    }
    EXPECT_EQ(folder.names(), (Names{"out"}));
    EXPECT_EQ(contentOf(folder.path("out")), "somebody else's");
}

TEST(PartialFile, AnOverwrittenTargetIsTheOldFileUntilItIsPublished)
{
    Folder const folder;
    folder.write("out", "old");
    {
        PartialFile file(folder.path("out"), true);
        write(file, "new");
        EXPECT_EQ(contentOf(folder.path("out")), "old");
        file.publish();
    }
    EXPECT_EQ(folder.names(), (Names{"out"}));
    EXPECT_EQ(contentOf(folder.path("out")), "new");
}

TEST(PartialFile, AnUnpublishedFileLeavesTheOldOne)
{
    Folder const folder;
    folder.write("out", "old");
    {
        PartialFile const file(folder.path("out"), true);
        write(file, "new");
    }
    EXPECT_EQ(folder.names(), (Names{"out"}));
    EXPECT_EQ(contentOf(folder.path("out")), "old");
}

TEST(PartialFile, AFolderIsNotOverwritten)
{
    Folder const folder;
    std::filesystem::create_directory(folder.path("out"));
    EXPECT_EQ(messageOf([&] { PartialFile file(folder.path("out"), true); }),
              "This is not a regular file and is not overwritten.");
}

TEST(PartialFile, AMissingFolderIsRefused)
{
    Folder const folder;
    EXPECT_EQ(messageOf([&] { PartialFile file(folder.path("none") / "out", false); }),
              "The file cannot be written: No such file or directory.");
}

TEST(PartialFile, TwoMayBeWrittenForTheSameTargetAtOnce)
{
    Folder const folder;
    PartialFile const first(folder.path("out"), false);
    PartialFile const second(folder.path("out"), false);
    EXPECT_NE(first.path(), second.path());
}

TEST(PartialFile, SomebodyElsesFileOfTheTemporaryNameIsLeftAlone)
{
    Folder const folder;
    std::string const taken = "out.partial-" + std::to_string(::getpid()) + "-0";
    folder.write(taken, "other");
    {
        PartialFile file(folder.path("out"), false);
        write(file, "new");
        file.publish();
    }
    EXPECT_EQ(folder.names(), (Names{"out", taken}));
    EXPECT_EQ(contentOf(folder.path(taken)), "other");
}

} // namespace
