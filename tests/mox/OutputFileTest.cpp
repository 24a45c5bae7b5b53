#include "mox/print/OutputFile.h"

#include "fault/Child.h"
#include "fault/OwnDisk.h"
#include "support/Folder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Mox::OutputFile;
using Support::Folder;

TEST(OutputFile, AStreamThatFailedGivesNoFile)
{
    Folder const folder;
    {
        OutputFile file(folder.path("a").string(), false);
        file.stream().setstate(std::ios::badbit);
        EXPECT_THROW(file.finish(), std::runtime_error);
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{});
}

std::string complaintOnSmallDisk(std::size_t size)
{
    return Fault::inChild([size] {
        Fault::OwnDisk const disk("64k");
        OutputFile file(disk.folder() + "/a", false);
        file.stream() << std::string(size, 'x');
        try {
            file.finish();
        } catch (std::runtime_error const& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    });
}

TEST(OutputFile, AFullDiskIsNamed)
{
    std::string const expected = "The file cannot be written: No space left on device.";
    EXPECT_EQ(complaintOnSmallDisk(1000000), expected);
    EXPECT_EQ(complaintOnSmallDisk(10), "no error");
}

} // namespace
