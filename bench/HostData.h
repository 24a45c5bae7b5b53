// What a solver would have in memory before it writes: the same for every subject, and the same in
// every run.

#ifndef BENCH_HOSTDATA_H
#define BENCH_HOSTDATA_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Bench {

/// A block of hexahedra whose nodes are moved a little out of the regular grid.
struct Mesh
{
    std::size_t nodes = 0;
    std::size_t cells = 0;
    /// nodes x 3
    std::vector<float> coordinates;
    /// cells x 8, from 0
    std::vector<std::uint32_t> connectivity;
    /// 8 for each cell
    std::vector<std::uint32_t> nodesPerCell;
    std::vector<std::uint32_t> nodeIds;
    std::vector<std::uint32_t> cellIds;
};

/// What a step adds: one row for each node.
struct StepFields
{
    std::string name;
    double time = 0;
    /// nodes x 3
    std::vector<float> displacement;
    /// nodes x 6: xx, yy, zz, xy, yz, zx
    std::vector<float> stress;
};

struct TransientResult
{
    Mesh mesh;
    std::vector<StepFields> steps;

    std::uint64_t bytes() const;
};

/// A vibrating elastic block: some mode shapes, superposed with a frequency and a damping for each,
/// and the stresses that belong to them by Hooke's law. Computed in double precision and rounded,
/// as solvers do, so that the low bits of the mantissas are as good as random.
TransientResult transientResult(std::size_t nodesPerEdge, std::size_t steps);

/// A dataset of 50 to 200 values in rows of 1, 3 or 6.
struct SmallDataset
{
    std::string name;
    std::size_t width = 0;
    std::vector<float> values;

    std::size_t rows() const { return values.size() / width; }
};

struct Part
{
    std::string name;
    std::vector<SmallDataset> datasets;
};

/// Parts with a few curves each: smooth along the part, with measuring noise on top.
std::vector<Part> smallParts(std::size_t parts, std::size_t datasetsPerPart);

std::uint64_t bytesOf(std::vector<Part> const& parts);

std::vector<std::string> groupNames(std::size_t count);
std::vector<std::string> shapeNames(std::size_t count);

/// Bytes of the names that stand in the paths of all shapes in all groups.
std::uint64_t bytesOfPaths(std::vector<std::string> const& groups,
                           std::vector<std::string> const& shapes);

/// The value of one row of a large scalar result.
float largeResultValue(std::size_t row);

} // namespace Bench

#endif
