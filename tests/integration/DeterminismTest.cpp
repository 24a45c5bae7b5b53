#include "integration/CheckedModel.h"
#include "support/Environment.h"
#include "support/WritingRecord.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace Integration {

namespace {

using Zyl2::Mox2::DatasetType;

/// The time zone's name is part of the time stamp.
class TimeZone
{
public:
    explicit TimeZone(char const* zone) { setenv("TZ", zone, 1); }
    ~TimeZone() { unsetenv("TZ"); }
    TimeZone(TimeZone const&) = delete;
    TimeZone& operator=(TimeZone const&) = delete;
};

std::string write(std::string const& path, char const* zone)
{
    TimeZone const timeZone(zone);
    CheckedModel model(path);
    model.save();
    model.addComponents({"/root/a/b", "/root/c"});
    AttributeSet attributes;
    attributes.set("Text", "short, though the buffer that holds it is longer");
    model.setNodeData(2, PropertySet(), attributes);
    Random random(1);
    for (int count = 0; count < 5; ++count) {
        ArrayCall call;
        call.type = DatasetType::Displacement;
        call.values = Values::anyBits(random, Element::Float, 3, 500);
        call.ids = {4, 6};
        call.steps[0].name = "step " + std::to_string(count);
        call.steps[0].attributes = attributes;
        model.addArray(call);
    }
    model.closeAndCompare();
    return Support::ReadFile(path);
}

} // namespace

TEST(DeterminismTest, TheSameCallsGiveTheSameBytesButForTheWritingRecord)
{
    Support::DefaultBlockSizeSetting const setting("8000");
    Support::TemporaryFolder const folder;
    std::string const firstPath = folder.File("first.mox");
    std::string const secondPath = folder.File("second.mox");
    std::string const first = write(firstPath, "AAA0");
    std::string const second = write(secondPath, "LONGERNAME-7");
    EXPECT_TRUE(first != second);
    EXPECT_TRUE(Support::withoutWritingRecord(firstPath) ==
                Support::withoutWritingRecord(secondPath));
}

TEST(DeterminismTest, TheTimeStampIsThatOfTheZoneInWhichTheFileIsClosed)
{
    Support::TemporaryFolder const folder;
    for (std::string const& zone : std::vector<std::string>{"AAA0", "BBB-7", "CCC3"}) {
        std::string const path = folder.File(zone + ".mox");
        write(path, zone.c_str());
        MoxRead::Model const file(path);
        std::string const time = file.globalInformation().writings.at(0).time;
        EXPECT_EQ(time.substr(time.size() - 4), ' ' + zone.substr(0, 3));
    }
}

} // namespace Integration
