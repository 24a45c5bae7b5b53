#include "support/Folder.h"

#include <export/OutputFiles.h>

#include <gtest/gtest.h>

#include <fstream>

namespace {

using Export::OutputFiles;
using Support::contentOf;
using Support::Folder;

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

void write(fs::path const& path, std::string const& content)
{
    std::ofstream(path) << content;
}

void fill(OutputFiles const& files, std::string const& content)
{
    write(files.file(), content);
    write(files.folder() / "part.vtu", content);
}

void makeOld(Folder const& folder, std::string const& nameInFolder)
{
    folder.write("out.pvd", "old");
    fs::create_directory(folder.path("out"));
    folder.write("out/" + nameInFolder, "old");
}

std::string complaint(fs::path const& target, bool overwrite)
{
    try {
        OutputFiles const files(target, overwrite);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "";
}

TEST(OutputFiles, AppearTogether)
{
    Folder const folder;
    {
        OutputFiles files(folder.path("out.pvd"), false);
        fill(files, "new");
        EXPECT_FALSE(fs::exists(folder.path("out.pvd")));
        EXPECT_FALSE(fs::exists(folder.path("out")));
        files.publish();
    }
    EXPECT_EQ(folder.names(), (Names{"out", "out.pvd"}));
    EXPECT_EQ(contentOf(folder.path("out.pvd")), "new");
    EXPECT_EQ(contentOf(folder.path("out/part.vtu")), "new");
}

TEST(OutputFiles, ReplaceOldOnesOnlyWhenTold)
{
    Folder const folder;
    makeOld(folder, "gone.vtu");
    EXPECT_EQ(complaint(folder.path("out.pvd"), false), "File exists.");
    {
        OutputFiles files(folder.path("out.pvd"), true);
        fill(files, "new");
        files.publish();
    }
    EXPECT_EQ(folder.names(), (Names{"out", "out.pvd"}));
    EXPECT_EQ(contentOf(folder.path("out.pvd")), "new");
    EXPECT_FALSE(fs::exists(folder.path("out/gone.vtu")));
    EXPECT_EQ(contentOf(folder.path("out/part.vtu")), "new");
}

TEST(OutputFiles, LeaveTheOldOnesWhenTheyAreNotPublished)
{
    Folder const folder;
    makeOld(folder, "part.vtu");
    {
        OutputFiles const files(folder.path("out.pvd"), true);
        fill(files, "new");
    }
    EXPECT_EQ(contentOf(folder.path("out.pvd")), "old");
    EXPECT_EQ(contentOf(folder.path("out/part.vtu")), "old");
}

TEST(OutputFiles, AFolderThatHoldsOtherThingsIsNeverReplaced)
{
    Folder const folder;
    makeOld(folder, "thesis.txt");
    EXPECT_EQ(complaint(folder.path("out.pvd"), true),
              "The folder " + folder.path("out").string() +
                  " holds more than .vtu and .vtm files and is not overwritten.");
    EXPECT_EQ(contentOf(folder.path("out/thesis.txt")), "old");
}

TEST(OutputFiles, AFolderAloneIsInTheWayToo)
{
    Folder const folder;
    fs::create_directory(folder.path("out"));
    EXPECT_EQ(complaint(folder.path("out.pvd"), false),
              "The folder beside it exists: " + folder.path("out").string() + ".");
}

TEST(OutputFiles, WhatIsNoFileOrNoFolderIsNotReplaced)
{
    Folder const folder;
    fs::create_directory(folder.path("out.pvd"));
    EXPECT_EQ(complaint(folder.path("out.pvd"), true),
              "This is not a regular file and is not overwritten.");
    folder.write("other", "");
    EXPECT_EQ(complaint(folder.path("other.vtm"), true),
              "The folder " + folder.path("other").string() + " is needed, but this is no folder.");
}

TEST(OutputFiles, WhatAppearedMeanwhileStays)
{
    Folder const folder;
    {
        OutputFiles files(folder.path("out.pvd"), false);
        fill(files, "new");
        folder.write("out.pvd", "other");
        EXPECT_THROW(files.publish(), std::runtime_error);
    }
    EXPECT_EQ(folder.names(), Names{"out.pvd"});
    EXPECT_EQ(contentOf(folder.path("out.pvd")), "other");
}

} // namespace
