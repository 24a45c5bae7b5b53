#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include "SavedModel.h"
#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Zyl2::Mox2;

/// All that was written to the standard streams while it lived.
class CapturedStreams
{
public:
    CapturedStreams()
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }

    static std::string take()
    {
        std::string const out = testing::internal::GetCapturedStdout();
        return out + testing::internal::GetCapturedStderr();
    }
};

void writeModel(std::string const& path)
{
    Model model;
    model.saveTo(path);
    model.addNode(NodeType::RootGroup, "Root");
    unsigned int const shape = model.addNode(NodeType::Shape, "Shape");
    model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{1, 2}, shape, Step());
    model.close();
}

TEST(NothingPrinted, WhileAModelIsWrittenWithTheBuiltInLogSystem)
{
    Support::TemporaryFolder const folder;
    CapturedStreams const streams;
    writeModel(folder.File("a.mox"));
    std::string const printed = streams.take();
    EXPECT_EQ(printed, "");
    EXPECT_EQ(ModelTests::SavedModel(folder.File("a.mox")).nodes().size(), 3U);
}

TEST(NothingPrinted, WhenAModelCannotBeWritten)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("a.mox"), "precious");
    CapturedStreams const streams;
    EXPECT_THROW(writeModel(folder.File("a.mox")), Zyl2::Exception::FileOpenException);
    EXPECT_THROW(writeModel(folder.File("missing/a.mox")), Zyl2::Exception::MiscelleneousException);
    std::string const printed = streams.take();
    EXPECT_EQ(printed, "");
}

} // namespace
