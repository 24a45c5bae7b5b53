#ifndef ZYL2_MPI_RANKATTRIBUTES_H
#define ZYL2_MPI_RANKATTRIBUTES_H

namespace Zyl2 {
namespace Mpi {
namespace RankAttributes {

/// The rank that a dataset is of, counted from 0.
constexpr char const* Rank = "Rank";
/// How many ranks there are.
constexpr char const* Ranks = "Ranks";

} // namespace RankAttributes
} // namespace Mpi
} // namespace Zyl2

#endif
