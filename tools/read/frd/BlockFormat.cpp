#include "BlockFormat.h"

namespace Frd {

BlockFormat::BlockFormat(ByteStream const& stream, std::int64_t number) : number_(number)
{
    if (number < 0 || number > 3)
        stream.fail("The block's format " + std::to_string(number) + " is not one of 0 to 3.");
}

} // namespace Frd
