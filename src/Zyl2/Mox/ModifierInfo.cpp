// Fields of a writing record, after the frame that VersionedRecord.h draws; all are strings:
//
//     first text of the host
//     second text of the host
//     format version          "1.3"
//     time stamp              local time, such as "Fri Nov 20 15:18:17 2026 UTC"
//     host name
//     login name
//     text given at the writing

#include "Zyl2/Mox/ModifierInfo.h"

#include "Zyl2/Wvf/CopyToBlock.h"
#include "Zyl2/Wvf/VersionedRecord.h"

#include <unistd.h>

#include <array>
#include <ctime>

namespace Zyl2Mox {

namespace {

std::string LocalTimeStamp(std::time_t now)
{
    std::tm local{};
    // The host may have changed its time zone, which localtime_r alone need not notice.
    tzset();
    if (localtime_r(&now, &local) == nullptr)
        return {};
    std::array<char, 120> buffer{};
    return {buffer.data(),
            std::strftime(buffer.data(), buffer.size(), "%a %b %d %H:%M:%S %Y %Z", &local)};
}

std::string HostName()
{
    std::array<char, 80> buffer{};
    if (gethostname(buffer.data(), buffer.size()) != 0)
        return {};
    // A name that fills the buffer may come without terminator.
    buffer.back() = '\0';
    return buffer.data();
}

/// There is no login name in containers and batch jobs; `previous` stays then.
std::string LoginName(std::string const& previous)
{
    std::array<char, 256> buffer{};
    if (getlogin_r(buffer.data(), buffer.size()) != 0)
        return previous;
    return buffer.data();
}

std::array<std::string const*, 7> Fields(ModifierInfo const& info)
{
    return {&info.GetText1(),     &info.GetText2(),    &info.GetFormatVersion(),
            &info.GetTimeStamp(), &info.GetHostName(), &info.GetLoginName(),
            &info.GetText()};
}

} // namespace

std::string ModifierInfo::GetVersion() const
{
    return "0.1";
}

void ModifierInfo::SetTexts(std::string const& text1, std::string const& text2)
{
    text1_ = text1;
    text2_ = text2;
}

std::string ModifierInfo::OwnHostName()
{
    return HostName();
}

std::string ModifierInfo::OwnLoginName()
{
    return LoginName({});
}

void ModifierInfo::Update(std::string const& formatVersion, std::string const& text)
{
    formatVersion_ = formatVersion;
    timeStamp_ =
        LocalTimeStamp(writing_ ? static_cast<std::time_t>(writing_->time) : std::time(nullptr));
    if (flag_ != 0) {
        hostName_ = writing_ ? writing_->hostName : HostName();
        loginName_ = writing_ ? writing_->loginName : LoginName(loginName_);
    }
    text_ = text;
}

std::string RecordVersion(ModifierInfo const& info)
{
    return info.GetVersion();
}

void CopyFieldsToBlock(Zyl2Wvf::Block& block, ModifierInfo const& info)
{
    for (std::string const* field : Fields(info))
        Zyl2Wvf::CopyToBlock(block, *field);
}

std::uint64_t EncodedSize(std::vector<ModifierInfo> const& list)
{
    std::uint64_t size = sizeof(std::uint32_t);
    for (ModifierInfo const& info : list) {
        size += sizeof(std::uint32_t) + Zyl2Wvf::EncodedSize(RecordVersion(info));
        for (std::string const* field : Fields(info))
            size += Zyl2Wvf::EncodedSize(*field);
    }
    return size;
}

void CopyToBlock(Zyl2Wvf::Block& block, std::vector<ModifierInfo> const& list)
{
    Zyl2Wvf::CopyToBlock(block, Zyl2Wvf::EncodedCount(list.size()));
    for (ModifierInfo const& info : list)
        Zyl2Wvf::CopyToBlock_Versioned(block, info);
}

} // namespace Zyl2Mox
