#ifndef MOXREAD_RECORD_H
#define MOXREAD_RECORD_H

#include "moxread/FormatError.h"
#include "moxread/KeyStream.h"

#include <cstdint>
#include <string>

namespace MoxRead {

/// The frame around a record. Made where the record begins, it reads size and version; `finish`,
/// called after the last field, checks the size.
class Record
{
public:
    Record(KeyStream& stream, std::string const& expectedVersion);

    void finish() const;

private:
    KeyStream& stream_;
    std::uint64_t start_;
    std::uint32_t size_;
};

} // namespace MoxRead

#endif
