// Stream "Global Information":
//
//   uint32  number of writing records, at least 1
//   ...     the writing records
//   uint32  number of result attributes
//   ...     the result attributes, 96 bytes each
//
// Writing record:
//
//   0  4    size of the record
//   4  7    version: string "0.1"
//   11 ...  seven strings: first text, second text, format version ("1.3"), time, host, user, text

#include "moxread/GlobalInformation.h"

#include "moxread/FormatError.h"
#include "moxread/Record.h"
#include "moxread/Text.h"

namespace MoxRead {

namespace {

constexpr std::size_t leastWritingRecordSize = 39;

std::string readFormatVersion(KeyStream& stream)
{
    std::uint64_t const start = stream.position();
    std::string version = stream.readString();
    if (version != "1.3") {
        throw FormatError(stream.placeOf(start) + ": format version is " + quoted(version) +
                          R"(, not "1.3")");
    }
    return version;
}

WritingRecord readWritingRecord(KeyStream& stream)
{
    Record const record(stream, "0.1");
    WritingRecord writing;
    writing.text1 = stream.readString();
    writing.text2 = stream.readString();
    writing.formatVersion = readFormatVersion(stream);
    writing.time = stream.readString();
    writing.host = stream.readString();
    writing.user = stream.readString();
    writing.text = stream.readString();
    record.finish();
    return writing;
}

std::vector<WritingRecord> readWritingRecords(KeyStream& stream)
{
    std::uint32_t const count = stream.readCount(leastWritingRecordSize, "writing record count");
    if (count == 0)
        throw FormatError(stream.placeOf(0) + ": there is no writing record");
    std::vector<WritingRecord> records;
    for (std::uint32_t i = 0; i < count; ++i) {
        records.push_back(inContext([&] { return "writing record " + std::to_string(i + 1); },
                                    [&] { return readWritingRecord(stream); }));
    }
    return records;
}

std::vector<ResultAttributes> readResultAttributes(KeyStream& stream)
{
    std::uint32_t const count =
        stream.readCount(sizeof(ResultAttributes), "result attributes count");
    std::vector<ResultAttributes> all;
    for (std::uint32_t i = 0; i < count; ++i) {
        ResultAttributes one = {};
        stream.readBytes(one.data(), one.size());
        all.push_back(one);
    }
    return all;
}

} // namespace

GlobalInformation GlobalInformation::read(KeyStream& stream)
{
    GlobalInformation information;
    information.writings = readWritingRecords(stream);
    information.resultAttributes = readResultAttributes(stream);
    stream.expectEnd();
    return information;
}

} // namespace MoxRead
