#include "integration/Overwriting.h"
#include "integration/Values.h"
#include "support/Environment.h"
#include "support/FileSizeLimit.h"

#include "container/TemporaryFile.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <string>

namespace Integration {

namespace {

using namespace Zyl2::Mox2;
using Zyl2::Exception::FileWriteException;

/// Adds datasets that hardly compress until one is refused.
/// \return whether one was
bool addUntilRefused(Model& model, unsigned int datasets)
{
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    Random random(1);
    Values const values = Values::anyBits(random, Element::Uint32, 1, 25000);
    Array1d<unsigned int> const array(values.as<unsigned int>());
    for (unsigned int count = 0; count < datasets; ++count) {
        try {
            model.addArrayProperty("dataset " + std::to_string(count), DatasetType::Result10, array,
                                   shape, Step());
        } catch (FileWriteException const&) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(FailingDeviceTest, DatasetsThatFitIntoMemoryFailAtClose)
{
    Support::DefaultBlockSizeSetting const setting(nullptr);
    Model model;
    model.saveTo("/dev/full", overwriting());
    EXPECT_FALSE(addUntilRefused(model, 5));
    EXPECT_THROW(model.close(), FileWriteException);
}

TEST(FailingDeviceTest, DatasetsThatAreSavedAtOnceFailWhenTheyAreAdded)
{
    Support::DefaultBlockSizeSetting const setting("1000");
    Model model;
    model.saveTo("/dev/full", overwriting());
    EXPECT_TRUE(addUntilRefused(model, 50));
    // Who goes on all the same is not told that all went well.
    EXPECT_THROW(model.close(), FileWriteException);
}

TEST(FailingDeviceTest, ADiskThatFillsUpOnTheWayIsReported)
{
    Support::DefaultBlockSizeSetting const setting("1000");
    Support::TemporaryFolder const folder;
    Model model;
    model.saveTo(folder.File("model.mox"));
    Support::FileSizeLimit const limit(500000);
    EXPECT_TRUE(addUntilRefused(model, 50));
    EXPECT_THROW(model.close(), FileWriteException);
}

TEST(FailingDeviceTest, ADiskWithoutRoomForTheLastBytesIsReported)
{
    Support::TemporaryFolder const folder;
    auto const write = [](std::string const& path) {
        Model model;
        model.saveTo(path);
        addUntilRefused(model, 3);
        model.close();
    };
    write(folder.File("whole.mox"));
    std::size_t const size = Support::ReadFile(folder.File("whole.mox")).size();
    // The writing record's size depends on the time of day.
    Support::FileSizeLimit const limit(size - 100);
    EXPECT_THROW(write(folder.File("cut.mox")), FileWriteException);
}

} // namespace Integration
