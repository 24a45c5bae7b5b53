#include "Inputs.h"

// CMakeLists.txt defines FUZZ_INPUT as the function of Inputs.h that the fuzzer is for.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Fuzz::FUZZ_INPUT(data, size);
    return 0;
}
