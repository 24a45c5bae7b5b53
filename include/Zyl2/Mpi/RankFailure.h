#ifndef ZYL2_MPI_RANKFAILURE_H
#define ZYL2_MPI_RANKFAILURE_H

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Export.h>

namespace Zyl2 {
namespace Mpi {

/// What one rank failed at, as all ranks are told of it: "Rank 3: Invalid arguments: Displacement
/// needs 3 columns, the array has 2".
class ZYL2_EXPORT RankFailure : public Exception::Exception
{
public:
    /// \param rank     where it began
    /// \param code     error code of what was thrown there
    /// \param sentence terminated text, copied
    RankFailure(int rank, int code, char const* sentence);
    ~RankFailure() noexcept override;

    /// The rank where it began; of several that failed meanwhile, the lowest.
    int rank() const noexcept { return rank_; }
    /// Error code of what was thrown there, such as 7 for `Exception::FileWriteException`; 1 for
    /// what is no failure of the library.
    int errorCode() const noexcept override;

private:
    int rank_;
    int code_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
