#include "Zyl2/Mox/ModifierInfo.h"

#include "HostIdentity.h"
#include "SystemClock.h"
#include "Zyl2/Wvf/VersionedRecord.h"
#include "container/Bytes.h"
#include "support/Encoding.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

using Support::Content;
using Support::Count;
using Support::HostIdentity;
using Support::SystemClock;
using Support::Text;
using Zyl2Mox::ModifierInfo;

/// The local time zone for as long as it lives.
class TimeZone
{
public:
    explicit TimeZone(char const* zone)
    {
        char const* const previous = std::getenv("TZ");
        if (previous != nullptr)
            previous_ = previous;
        setenv("TZ", zone, 1);
        tzset();
    }
    TimeZone(TimeZone const&) = delete;
    TimeZone& operator=(TimeZone const&) = delete;
    ~TimeZone()
    {
        if (previous_)
            setenv("TZ", previous_->c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

private:
    std::optional<std::string> previous_;
};

/// "Fri Nov 20 15:18:17 2026 XYZ"
std::string Stamp(std::time_t time)
{
    std::tm local{};
    localtime_r(&time, &local);
    std::array<char, 120> text{};
    std::strftime(text.data(), text.size(), "%a %b %d %H:%M:%S %Y %Z", &local);
    return text.data();
}

TEST(ModifierInfo, UpdateFillsInWhatIsKnownAtTheWriting)
{
    HostIdentity const identity("a host", "a user");
    ModifierInfo info;
    info.SetTexts("one", "two");
    std::time_t const before = std::time(nullptr);
    info.Update("1.3", "last");
    std::time_t const after = std::time(nullptr);
    EXPECT_EQ(info.GetText1(), "one");
    EXPECT_EQ(info.GetText2(), "two");
    EXPECT_EQ(info.GetFormatVersion(), "1.3");
    EXPECT_EQ(info.GetHostName(), "a host");
    EXPECT_EQ(info.GetLoginName(), "a user");
    EXPECT_EQ(info.GetText(), "last");
    bool isStampOfThatTime = false;
    for (std::time_t second = before; second <= after; ++second)
        isStampOfThatTime = isStampOfThatTime || info.GetTimeStamp() == Stamp(second);
    EXPECT_TRUE(isStampOfThatTime) << info.GetTimeStamp();
}

TEST(ModifierInfo, TheTimeIsLocalAndNamesItsZone)
{
    TimeZone const zone("ABC-7");
    ModifierInfo info;
    info.Update("1.3", "");
    std::string const& stamp = info.GetTimeStamp();
    ASSERT_EQ(stamp.size(), 28U) << stamp;
    EXPECT_EQ(stamp.substr(24), " ABC");
    std::time_t const now = std::time(nullptr) + std::time_t(7) * 3600;
    std::tm shifted{};
    gmtime_r(&now, &shifted);
    EXPECT_EQ(stamp.substr(20, 4), std::to_string(shifted.tm_year + 1900));
}

TEST(ModifierInfo, AClockThatIsFarOffIsWrittenAsItIs)
{
    TimeZone const zone("UTC0");
    SystemClock const clock(253402300800);
    ModifierInfo info;
    info.Update("1.3", "");
    EXPECT_EQ(info.GetTimeStamp(), "Sat Jan 01 00:00:00 10000 UTC");
}

TEST(ModifierInfo, ATimeThatNoCalendarHoldsIsNoText)
{
    SystemClock const clock(std::numeric_limits<std::time_t>::max());
    ModifierInfo info;
    info.Update("1.3", "text");
    EXPECT_EQ(info.GetTimeStamp(), "");
    EXPECT_EQ(info.GetText(), "text");
}

TEST(ModifierInfo, WithoutTheFlagHostAndUserKeepTheirValues)
{
    ModifierInfo info;
    {
        HostIdentity const identity("old host", "old user");
        info.Update("1.3", "");
    }
    HostIdentity const identity("new host", "new user");
    info.SetFlag(0);
    EXPECT_EQ(info.GetFlag(), 0U);
    info.Update("1.4", "text");
    EXPECT_EQ(info.GetHostName(), "old host");
    EXPECT_EQ(info.GetLoginName(), "old user");
    EXPECT_EQ(info.GetFormatVersion(), "1.4");
    EXPECT_EQ(info.GetText(), "text");
    info.SetFlag(1);
    info.Update("1.4", "text");
    EXPECT_EQ(info.GetHostName(), "new host");
    EXPECT_EQ(info.GetLoginName(), "new user");
}

TEST(ModifierInfo, WithoutALoginThePreviousNameStays)
{
    ModifierInfo info;
    {
        HostIdentity const identity("host", "user");
        info.Update("1.3", "");
    }
    HostIdentity const identity("host", std::nullopt);
    info.Update("1.3", "");
    EXPECT_EQ(info.GetLoginName(), "user");
    ModifierInfo fresh;
    fresh.Update("1.3", "");
    EXPECT_EQ(fresh.GetLoginName(), "");
}

TEST(ModifierInfo, TheHostNameIsEmptyWhenTheSystemKnowsNone)
{
    ModifierInfo info;
    {
        HostIdentity const identity("host", "user");
        info.Update("1.3", "");
    }
    HostIdentity const identity(std::nullopt, "user");
    info.Update("1.3", "");
    EXPECT_EQ(info.GetHostName(), "");
}

TEST(ModifierInfo, AHostNameThatFillsItsBufferIsCut)
{
    HostIdentity const identity(std::string(200, 'h'), "user");
    ModifierInfo info;
    info.Update("1.3", "");
    EXPECT_EQ(info.GetHostName(), std::string(79, 'h'));
}

TEST(ModifierInfo, TheListIsACountAndTheRecords)
{
    ModifierInfo first;
    first.SetTexts("a", "b");
    std::vector<ModifierInfo> const list{first, ModifierInfo()};
    Zyl2Wvf::Block block;
    Zyl2Mox::CopyToBlock(block, list);
    std::string const expected = Count(2) + Count(41) + Text("0.1") + Text("a") + Text("b") +
                                 Support::Zeros(20) + Count(39) + Text("0.1") + Support::Zeros(28);
    EXPECT_EQ(Content(block), expected);
    EXPECT_EQ(Zyl2Mox::EncodedSize(list), expected.size());
}

} // namespace
