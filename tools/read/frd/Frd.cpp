#include "Frd.h"

#include "ResultSource.h"

namespace Frd {

std::unique_ptr<Exchange::SequentialSource> open(std::filesystem::path const& path,
                                                 Exchange::Report& /*report*/)
{
    return std::make_unique<ResultSource>(path);
}

} // namespace Frd
