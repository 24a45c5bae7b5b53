#ifndef ZYL2_MOX_MODIFIERINFO_H
#define ZYL2_MOX_MODIFIERINFO_H

#include "Zyl2/Wvf/Block.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zyl2Mox {

/// Describes one writing of the file: by what, in which format, when, where, by whom.
class ModifierInfo
{
public:
    std::string GetVersion() const;

    /// What the host says of itself and its source.
    void SetTexts(std::string const& text1, std::string const& text2);

    /// Whether `Update` fills host and login name in.
    void SetFlag(std::uint8_t flag) { flag_ = flag; }
    std::uint8_t GetFlag() const { return flag_; }

    /// From now on `Update` notes that the writing was done then, there and by that user.
    /// \param time seconds since 1970
    void SetWriting(std::int64_t time, std::string const& hostName, std::string const& loginName)
    {
        writing_ = Writing{time, hostName, loginName};
    }

    /// Names of this host and of the user who is logged in, as `Update` notes them.
    static std::string OwnHostName();
    static std::string OwnLoginName();

    /// Notes format version and text, the time and, if the flag is set, host and login name.
    void Update(std::string const& formatVersion, std::string const& text);

    std::string const& GetText1() const { return text1_; }
    std::string const& GetText2() const { return text2_; }
    std::string const& GetFormatVersion() const { return formatVersion_; }
    std::string const& GetTimeStamp() const { return timeStamp_; }
    std::string const& GetHostName() const { return hostName_; }
    std::string const& GetLoginName() const { return loginName_; }
    std::string const& GetText() const { return text_; }

private:
    struct Writing
    {
        std::int64_t time;
        std::string hostName;
        std::string loginName;
    };

    std::optional<Writing> writing_;
    std::uint8_t flag_ = 1;
    std::string text1_;
    std::string text2_;
    std::string formatVersion_;
    std::string timeStamp_;
    std::string hostName_;
    std::string loginName_;
    std::string text_;
};

// A writing record as a versioned record; see VersionedRecord.h.
std::string RecordVersion(ModifierInfo const& info);
void CopyFieldsToBlock(Zyl2Wvf::Block& block, ModifierInfo const& info);

// The list of writing records: count, 4, and the records.
std::uint64_t EncodedSize(std::vector<ModifierInfo> const& list);
void CopyToBlock(Zyl2Wvf::Block& block, std::vector<ModifierInfo> const& list);

} // namespace Zyl2Mox

#endif
