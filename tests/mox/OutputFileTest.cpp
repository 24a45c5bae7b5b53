#include "OutputFile.h"

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

} // namespace
