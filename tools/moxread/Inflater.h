#ifndef MOXREAD_INFLATER_H
#define MOXREAD_INFLATER_H

#include "moxread/Export.h"

#include <string>
#include <vector>

namespace MoxRead {

/// What turns the stream of a block with values into its content. They differ in speed. What one
/// takes has the length and the checksum that are stated; what it refuses is left to zlib.
enum class Inflater
{
    /// The fastest that the reader was built with.
    Fastest,
    Zlib,
    Libdeflate,
    Isal
};

/// Those that the reader was built with, the fastest first. zlib is always there.
MOXREAD_EXPORT std::vector<Inflater> builtInflaters();

/// Such as: libdeflate
MOXREAD_EXPORT std::string nameOf(Inflater inflater);

} // namespace MoxRead

#endif
