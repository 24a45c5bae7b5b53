#include <Zyl2/Mpi/RankFailure.h>

#include <string>

namespace Zyl2 {
namespace Mpi {

RankFailure::RankFailure(int rank, int code, char const* sentence)
    // NOLINTNEXTLINE(bugprone-throw-keyword-missing): initialises the base, and throws nothing.
    : Exception::Exception(("Rank " + std::to_string(rank) + ": " + sentence).c_str()), rank_(rank),
      code_(code)
{}

RankFailure::~RankFailure() noexcept = default;

int RankFailure::errorCode() const noexcept
{
    return code_;
}

} // namespace Mpi
} // namespace Zyl2
