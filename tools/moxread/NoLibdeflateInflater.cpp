#include "moxread/WholeInflater.h"

namespace MoxRead {

WholeInflater libdeflateInflater() noexcept
{
    return nullptr;
}

} // namespace MoxRead
