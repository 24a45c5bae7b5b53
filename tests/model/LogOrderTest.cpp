#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include "container/ContainerReader.h"
#include "container/LogCapture.h"
#include "container/TemporaryFile.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
using Support::LogCapture;
using Support::ReadSlot;
using Texts = std::vector<std::string>;

void append(Texts& texts, Texts const& more)
{
    texts.insert(texts.end(), more.begin(), more.end());
}

/// What has to be said of the writing of a slot, as the finished file has it.
Texts textsOf(std::size_t number, ReadSlot const& slot)
{
    std::string const buffer = std::to_string(number);
    Texts texts{"Writing buffer " + buffer + " to stream."};
    if (slot.size != 0)
        append(texts, {"Buffer length: " + std::to_string(Support::WordAt(slot.content, 0)),
                       "Buffer length after transformations: " + std::to_string(slot.size)});
    append(texts, {"Writing buffer at position: " + std::to_string(slot.offset),
                   "Buffer " + buffer + " written to stream."});
    return texts;
}

class LogOrderTest : public testing::Test
{
protected:
    /// The texts since the last call.
    Texts newTexts()
    {
        Texts const texts = log_.Texts();
        Texts const fresh(texts.begin() + static_cast<std::ptrdiff_t>(seen_), texts.end());
        seen_ = texts.size();
        return fresh;
    }

    unsigned int addShape()
    {
        model_.addNode(NodeType::RootGroup, "Root");
        return model_.addNode(NodeType::Shape, "Shape");
    }

    /// 24 bytes of values.
    void addCoordinates(unsigned int shape)
    {
        model_.addArrayProperty(DatasetType::Coordinates, Array2d<float>(2, 3, 1.0F), shape,
                                Step());
    }

    Support::DefaultBlockSizeSetting setting_{nullptr};
    Support::TemporaryFolder folder_;
    std::string path_ = folder_.File("a.mox");
    LogCapture log_;
    Model model_;

private:
    std::size_t seen_ = 0;
};

TEST_F(LogOrderTest, AModelTellsOfItsSavingFromTheFirstDatasetToTheClosedFile)
{
    model_.saveTo(path_);
    unsigned int const shape = addShape();
    EXPECT_EQ(newTexts(), Texts());
    addCoordinates(shape);
    EXPECT_EQ(newTexts(), (Texts{"Writing Dataset of size 6 width 3 datatype size 4",
                                 "Flushing frozen blocks ... ", "Frozen blocks flushed. "}));
    model_.close();
    Texts expected{"Saving mox tree ... ", "Mox tree saved. ", "Saving global information ...",
                   "Global information saved.", "Writing all buffers to file stream ..."};
    auto const slots = Support::ReadSlots(Support::ReadFile(path_));
    ASSERT_EQ(slots.size(), 20U);
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
        append(expected, textsOf(slot, slots[slot]));
    // The file is closed once; the database and the file object find it so.
    append(expected, {"All buffers to file stream written.", "Closing file ...", "File closed.",
                      "Closing file ...", "Closing file ..."});
    EXPECT_EQ(newTexts(), expected);
}

TEST_F(LogOrderTest, AFullBlockIsToldOfWhenTheNextDatasetComes)
{
    setting_.Set("10");
    model_.saveTo(path_);
    unsigned int const shape = addShape();
    addCoordinates(shape);
    newTexts();
    addCoordinates(shape);
    Texts const texts = newTexts();
    model_.close();
    ReadSlot const first = Support::ReadSlots(Support::ReadFile(path_)).at(0);
    EXPECT_EQ(first.name, "Heavy Data");
    Texts expected{"Writing Dataset of size 6 width 3 datatype size 4",
                   "Flushing frozen blocks ... "};
    append(expected, textsOf(0, first));
    append(expected, {"Frozen blocks flushed. "});
    EXPECT_EQ(texts, expected);
}

TEST_F(LogOrderTest, AllRecordsAreOfSeverityOneAndComeAsPlainStreams)
{
    model_.saveTo(path_);
    addCoordinates(addShape());
    model_.close();
    EXPECT_EQ(log_.recordCalls, 0);
    ASSERT_FALSE(log_.entries.empty());
    for (LogCapture::Entry const& entry : log_.entries)
        EXPECT_EQ(entry.severity, 1) << entry.text;
}

TEST_F(LogOrderTest, TheTreesRecordsSayWhereTheyWereMade)
{
    struct Place
    {
        unsigned long line;
        std::string function;
    };
    std::map<std::string, Place> const places{
        {"Writing Dataset of size 6 width 3 datatype size 4", {964, "WriteStreamDataset"}},
        {"Saving mox tree ... ", {2214, "SaveTree"}},
        {"Mox tree saved. ", {2289, "SaveTree"}},
        {"Saving global information ...", {2642, "SaveGlobalInfo"}},
        {"Global information saved.", {2652, "SaveGlobalInfo"}}};
    model_.saveTo(path_);
    addCoordinates(addShape());
    model_.close();
    std::size_t found = 0;
    for (LogCapture::Entry const& entry : log_.entries) {
        auto const place = places.find(entry.text);
        if (place == places.end()) {
            EXPECT_TRUE(entry.file == "Zyl2/Wvf/Index" || entry.file == "Zyl2/Wvf/WvFile")
                << entry.text;
            continue;
        }
        ++found;
        EXPECT_EQ(entry.file, "Zyl2/Mox/Tree");
        EXPECT_EQ(entry.line, place->second.line);
        EXPECT_NE(entry.function.find(place->second.function), std::string::npos);
    }
    EXPECT_EQ(found, places.size());
}

TEST_F(LogOrderTest, WithoutAFileOnlyTheDatasetAndTheClosingAreToldOf)
{
    model_.saveTo("");
    addCoordinates(addShape());
    model_.close();
    EXPECT_EQ(newTexts(), (Texts{"Writing Dataset of size 6 width 3 datatype size 4",
                                 "Closing file ...", "Closing file ..."}));
}

TEST_F(LogOrderTest, AFailedCloseClosesTheFileAndASecondOneFindsItClosed)
{
    SaverOptions options;
    options.overwrite = true;
    model_.saveTo("/dev/full", options);
    EXPECT_THROW(model_.close(), Zyl2::Exception::FileWriteException);
    Texts const failed = newTexts();
    ASSERT_GE(failed.size(), 2U);
    EXPECT_EQ(Texts(failed.end() - 2, failed.end()), (Texts{"Closing file ...", "File closed."}));
    model_.close();
    EXPECT_EQ(newTexts(), (Texts{"Closing file ...", "Closing file ..."}));
}

} // namespace
