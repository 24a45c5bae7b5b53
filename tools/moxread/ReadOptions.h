#ifndef MOXREAD_READOPTIONS_H
#define MOXREAD_READOPTIONS_H

#include "moxread/Inflater.h"

namespace MoxRead {

/// How a file is read. What values are read, and what a bad file is told of, is the same in any
/// case; only may others than zlib take a block that breaks rules of its streams, when its values
/// are intact.
struct ReadOptions
{
    Inflater inflater = Inflater::Fastest;

    /// How many threads may inflate blocks with values ahead of whoever reads them in order.
    /// Without, none is started, and one block and its stream are in memory. With n, n + 2 blocks
    /// and n + 1 streams are at most. Where a thread can't be started, those that there are have to
    /// do.
    unsigned int threads = 0;

    /// Whether the file is an outline: its datasets have positions of values that it lacks. They
    /// are not looked for then, and can't be read.
    bool isOutline = false;
};

} // namespace MoxRead

#endif
