#ifndef MOXREAD_BLOCKLOADER_H
#define MOXREAD_BLOCKLOADER_H

#include "moxread/Buffer.h"
#include "moxread/Export.h"
#include "moxread/InputFile.h"
#include "moxread/Slot.h"
#include "moxread/WholeInflater.h"

#include <cstddef>

namespace MoxRead {

class BlockReader;

/// Reads whole blocks, one after the other, as fast as the inflater goes. What it refuses is read
/// by `BlockReader`, which tells what is wrong.
class MOXREAD_EXPORT BlockLoader
{
public:
    BlockLoader(InputFile const& file, WholeInflater inflater) noexcept;

    /// The whole content of a block. Memory grows with what is really there, not with what is
    /// stated. Raises FormatError.
    void load(Slot const& slot, Buffer& content);

private:
    bool inflateAtOnce(Slot const& slot, std::size_t length, Buffer& content);

    InputFile const* file_;
    WholeInflater inflater_;
    Buffer stream_;
};

} // namespace MoxRead

#endif
