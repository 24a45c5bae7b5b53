#include "Inputs.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Fuzz::readEnSightCase(data, size);
    return 0;
}
