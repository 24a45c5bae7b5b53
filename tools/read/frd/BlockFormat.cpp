#include "BlockFormat.h"

namespace Frd {

BlockFormat::BlockFormat(FileSource const& source, std::int64_t number) : number_(number)
{
    if (number < 0 || number > 3)
        source.fail("The block's format " + std::to_string(number) + " is not one of 0 to 3.");
}

} // namespace Frd
