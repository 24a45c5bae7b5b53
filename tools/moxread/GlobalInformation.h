#ifndef MOXREAD_GLOBALINFORMATION_H
#define MOXREAD_GLOBALINFORMATION_H

#include "moxread/Export.h"
#include "moxread/KeyStream.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace MoxRead {

/// Tells of one writing of the file.
struct WritingRecord
{
    std::string text1;
    std::string text2;
    std::string formatVersion;
    std::string time;
    std::string host;
    std::string user;
    std::string text;
};

using ResultAttributes = std::array<std::uint8_t, 96>;

/// What is said about the file as a whole.
struct MOXREAD_EXPORT GlobalInformation
{
    std::vector<WritingRecord> writings;
    std::vector<ResultAttributes> resultAttributes;

    /// Reads and checks the whole stream.
    static GlobalInformation read(KeyStream& stream);
};

} // namespace MoxRead

#endif
