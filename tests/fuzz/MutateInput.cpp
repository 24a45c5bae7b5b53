// How the fuzzer of model files changes its inputs: by what a model file consists of.

#include "MutateModelFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

std::string blindlyMutated(std::string bytes, std::size_t greatestSize)
{
    std::size_t const size = std::min(bytes.size(), greatestSize);
    bytes.resize(std::max<std::size_t>(greatestSize, 1));
    auto* const data = reinterpret_cast<std::uint8_t*>(bytes.data());
    bytes.resize(LLVMFuzzerMutate(data, size, bytes.size()));
    return bytes;
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t greatestSize, unsigned int seed)
{
    std::string const file(data, data + size);
    std::string const mutated = Fuzz::mutatedModelFile(file, greatestSize, seed, blindlyMutated);
    std::copy(mutated.begin(), mutated.end(), data);
    return mutated.size();
}
