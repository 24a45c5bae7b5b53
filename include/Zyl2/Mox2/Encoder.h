#ifndef ZYL2_MOX2_ENCODER_H
#define ZYL2_MOX2_ENCODER_H

namespace Zyl2 {
namespace Mox2 {

/// What compresses the blocks of a file. All of them make zlib streams, which any reader inflates;
/// they differ in time, and a little in size. The library holds those that were found when it was
/// built.
enum class Encoder : int
{
    /// What the environment variable MOXWRITER_ENCODER names ("zlib", "libdeflate" or "isal");
    /// `Zlib` where it is not set, or empty.
    Default = 0,
    /// zlib at level 6. It is always there.
    Zlib = 1,
    /// libdeflate: faster, and files as small as zlib's.
    Libdeflate = 2,
    /// ISA-L: the fastest. Files are somewhat larger, and the same calls may express a block in
    /// another way the next time.
    Isal = 3
};

} // namespace Mox2
} // namespace Zyl2

#endif
