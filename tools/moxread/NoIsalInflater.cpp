#include "moxread/WholeInflater.h"

namespace MoxRead {

WholeInflater isalInflater() noexcept
{
    return nullptr;
}

} // namespace MoxRead
