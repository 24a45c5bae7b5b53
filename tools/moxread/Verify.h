#ifndef MOXREAD_VERIFY_H
#define MOXREAD_VERIFY_H

#include "moxread/Export.h"
#include "moxread/HeavyData.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace MoxRead {

/// How much there is in a file that was found sound.
struct Summary
{
    std::size_t blocks = 0;
    std::size_t nodes = 0;
    std::size_t datasets = 0;
    std::uint64_t bytes = 0;
};

/// Checks every rule of the layout down to the last byte, in a model file or in all files of an
/// index. Raises FormatError at the first that a file breaks.
MOXREAD_EXPORT Summary verify(std::string const& path, ProgressVisitor const& tell = {},
                              ReadOptions const& options = ReadOptions());

} // namespace MoxRead

#endif
