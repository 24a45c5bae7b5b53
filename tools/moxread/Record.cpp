// Record:
//
//   0  4    size of the whole record, these four bytes included
//   4  4+n  version, a string
//   .. ...  the fields of that version

#include "moxread/Record.h"

#include "moxread/Text.h"

namespace MoxRead {

Record::Record(KeyStream& stream, std::string const& expectedVersion)
    : stream_(stream), start_(stream.position()), size_(stream.readUint32())
{
    std::uint64_t const versionStart = stream.position();
    std::string const version = stream.readString();
    if (version != expectedVersion) {
        throw FormatError(stream.placeOf(versionStart) + ": record version is " + quoted(version) +
                          ", not " + quoted(expectedVersion));
    }
}

void Record::finish() const
{
    std::uint64_t const actual = stream_.position() - start_;
    if (size_ != actual) {
        throw FormatError(stream_.placeOf(start_) + ": record size is " + std::to_string(size_) +
                          ", not " + std::to_string(actual));
    }
}

} // namespace MoxRead
