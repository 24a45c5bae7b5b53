#ifndef TESTS_FUZZ_MUTATEMODELFILE_H
#define TESTS_FUZZ_MUTATEMODELFILE_H

#include <cstddef>
#include <functional>
#include <string>

namespace Fuzz {

/// Mutates bytes without knowing what they are, into at most `greatestSize` of them.
using BlindMutation = std::function<std::string(std::string const&, std::size_t greatestSize)>;

/// Mutates a model file by what it consists of, so that the change gets past the index and past the
/// checksums of the compressed blocks. A file whose index leads nowhere is mutated blindly. The
/// same seed gives the same file.
std::string mutatedModelFile(std::string const& file, std::size_t greatestSize, unsigned int seed,
                             BlindMutation const& mutateBlindly);

} // namespace Fuzz

#endif
