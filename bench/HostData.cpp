#include "HostData.h"

#include <array>
#include <cmath>
#include <random>

namespace Bench {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr std::size_t NodesPerCell = 8;

using Vector = std::array<double, 3>;
using Tensor = std::array<double, 6>;

/// Numbers from -1 to 1. The distributions of the standard library differ between its vendors.
class Noise
{
public:
    explicit Noise(std::uint32_t seed) : engine_(seed) {}
    double operator()() { return static_cast<double>(engine_()) * (2.0 / 4294967295.0) - 1.0; }

private:
    std::mt19937 engine_;
};

/// A number from -1 to 1 that belongs to an index, for values without a predecessor.
double noiseOf(std::size_t index)
{
    std::uint64_t bits = (index + 1) * 0x9E3779B97F4A7C15U;
    bits = (bits ^ (bits >> 31U)) * 0xBF58476D1CE4E5B9U;
    bits ^= bits >> 27U;
    return static_cast<double>(bits >> 32U) * (2.0 / 4294967295.0) - 1.0;
}

/// A sine wave through the block with an amplitude and a phase in each direction.
struct Mode
{
    Vector amplitude;
    Vector wave;
    Vector phase;
    double frequency;
    double damping;

    double factor(double time) const
    {
        return std::exp(-damping * time) * std::cos(2 * Pi * frequency * time);
    }
};

constexpr std::array<Mode, 4> modes{
    Mode{{2e-4, 1e-4, 8e-3}, {Pi, 0.3, 0.2}, {0.1, 0.4, 0.0}, 21.5, 0.8},
    Mode{{5e-4, 3e-3, 1e-3}, {2.1 * Pi, 1.1, 0.7}, {0.9, 0.2, 1.3}, 67.0, 1.9},
    Mode{{8e-4, 6e-4, 2e-4}, {1.2, 2.9 * Pi, 1.7}, {0.3, 2.2, 0.8}, 141.0, 4.2},
    Mode{{1e-4, 9e-5, 3e-4}, {3.8 * Pi, 2.3, 3.1 * Pi}, {1.7, 0.6, 2.4}, 265.0, 9.5}};

struct NodeShape
{
    Vector displacement;
    Tensor stress;
};

using NodeShapes = std::array<NodeShape, modes.size()>;

Tensor hookeStress(std::array<Vector, 3> const& gradient)
{
    // Steel, in MPa.
    constexpr double shear = 80769.0;
    constexpr double lame = 121154.0;
    double const volumetric = lame * (gradient[0][0] + gradient[1][1] + gradient[2][2]);
    return {volumetric + 2 * shear * gradient[0][0],   volumetric + 2 * shear * gradient[1][1],
            volumetric + 2 * shear * gradient[2][2],   shear * (gradient[0][1] + gradient[1][0]),
            shear * (gradient[1][2] + gradient[2][1]), shear * (gradient[2][0] + gradient[0][2])};
}

NodeShape shapeAt(Mode const& mode, float const* position)
{
    NodeShape result{};
    std::array<Vector, 3> gradient{};
    double const travel =
        mode.wave[0] * position[0] + mode.wave[1] * position[1] + mode.wave[2] * position[2];
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double const angle = travel + mode.phase[axis];
        result.displacement[axis] = mode.amplitude[axis] * std::sin(angle);
        double const slope = mode.amplitude[axis] * std::cos(angle);
        for (std::size_t other = 0; other < 3; ++other)
            gradient[axis][other] = slope * mode.wave[other];
    }
    result.stress = hookeStress(gradient);
    return result;
}

NodeShapes shapesAt(float const* position)
{
    NodeShapes result{};
    for (std::size_t mode = 0; mode < modes.size(); ++mode)
        result[mode] = shapeAt(modes[mode], position);
    return result;
}

std::array<double, modes.size()> factorsAt(double time)
{
    std::array<double, modes.size()> result{};
    for (std::size_t mode = 0; mode < modes.size(); ++mode)
        result[mode] = modes[mode].factor(time);
    return result;
}

void superpose(NodeShapes const& shapes, std::array<double, modes.size()> const& factors,
               float* displacement, float* stress)
{
    Vector displacementSum{};
    Tensor stressSum{};
    for (std::size_t mode = 0; mode < shapes.size(); ++mode) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            displacementSum[axis] += factors[mode] * shapes[mode].displacement[axis];
        for (std::size_t component = 0; component < 6; ++component)
            stressSum[component] += factors[mode] * shapes[mode].stress[component];
    }
    for (std::size_t axis = 0; axis < 3; ++axis)
        displacement[axis] = static_cast<float>(displacementSum[axis]);
    for (std::size_t component = 0; component < 6; ++component)
        stress[component] = static_cast<float>(stressSum[component]);
}

std::vector<float> blockCoordinates(std::size_t edge)
{
    // A mesher's smoothing leaves no regular grid behind.
    constexpr double displacedBy = 0.05;
    double const spacing = 1.0 / static_cast<double>(edge - 1);
    Noise noise(1);
    std::vector<float> result;
    result.reserve(edge * edge * edge * 3);
    for (std::size_t z = 0; z < edge; ++z)
        for (std::size_t y = 0; y < edge; ++y)
            for (std::size_t x = 0; x < edge; ++x)
                for (std::size_t const index : {x, y, z})
                    result.push_back(static_cast<float>(
                        (static_cast<double>(index) + displacedBy * noise()) * spacing));
    return result;
}

std::vector<std::uint32_t> blockConnectivity(std::size_t edge)
{
    std::vector<std::uint32_t> result;
    result.reserve((edge - 1) * (edge - 1) * (edge - 1) * NodesPerCell);
    std::size_t const layer = edge * edge;
    for (std::size_t z = 0; z + 1 < edge; ++z)
        for (std::size_t y = 0; y + 1 < edge; ++y)
            for (std::size_t x = 0; x + 1 < edge; ++x) {
                std::size_t const corner = z * layer + y * edge + x;
                for (std::size_t const bottom : {corner, corner + layer})
                    for (std::size_t const node :
                         {bottom, bottom + 1, bottom + edge + 1, bottom + edge})
                        result.push_back(static_cast<std::uint32_t>(node));
            }
    return result;
}

std::vector<std::uint32_t> idsFromOne(std::size_t count)
{
    std::vector<std::uint32_t> result(count);
    for (std::size_t index = 0; index < count; ++index)
        result[index] = static_cast<std::uint32_t>(index + 1);
    return result;
}

Mesh blockMesh(std::size_t edge)
{
    Mesh mesh;
    mesh.nodes = edge * edge * edge;
    mesh.cells = (edge - 1) * (edge - 1) * (edge - 1);
    mesh.coordinates = blockCoordinates(edge);
    mesh.connectivity = blockConnectivity(edge);
    mesh.nodesPerCell.assign(mesh.cells, NodesPerCell);
    mesh.nodeIds = idsFromOne(mesh.nodes);
    mesh.cellIds = idsFromOne(mesh.cells);
    return mesh;
}

StepFields emptyStep(std::size_t number, std::size_t nodes)
{
    StepFields step;
    step.name = "Step " + std::to_string(number);
    step.time = 0.0015 * static_cast<double>(number);
    step.displacement.resize(nodes * 3);
    step.stress.resize(nodes * 6);
    return step;
}

template <typename T>
std::uint64_t bytesOf(std::vector<T> const& values)
{
    return values.size() * sizeof(T);
}

SmallDataset smallDataset(std::size_t number, Noise& noise)
{
    constexpr std::array<std::size_t, 4> widths{1, 3, 6, 1};
    SmallDataset dataset;
    dataset.name = "Curve " + std::to_string(number);
    dataset.width = widths[number % widths.size()];
    auto const wanted = static_cast<std::size_t>(125.0 + 75.0 * noise());
    std::size_t const rows = wanted / dataset.width;
    double const scale = std::pow(10.0, 3.0 * noise());
    double const phase = Pi * noise();
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < dataset.width; ++column) {
            double const along = static_cast<double>(row) / static_cast<double>(rows);
            double const smooth = std::sin(3.0 * along + phase + static_cast<double>(column));
            dataset.values.push_back(static_cast<float>(scale * (smooth + 1e-3 * noise())));
        }
    return dataset;
}

std::vector<std::string> numbered(char const* prefix, std::size_t count)
{
    std::vector<std::string> result;
    result.reserve(count);
    for (std::size_t number = 0; number < count; ++number)
        result.push_back(prefix + std::to_string(number));
    return result;
}

std::uint64_t lengthOf(std::vector<std::string> const& texts)
{
    std::uint64_t result = 0;
    for (std::string const& text : texts)
        result += text.size();
    return result;
}

} // namespace

std::uint64_t TransientResult::bytes() const
{
    std::uint64_t result = bytesOf(mesh.coordinates) + bytesOf(mesh.connectivity) +
                           bytesOf(mesh.nodesPerCell) + bytesOf(mesh.nodeIds) +
                           bytesOf(mesh.cellIds);
    for (StepFields const& step : steps)
        result += bytesOf(step.displacement) + bytesOf(step.stress);
    return result;
}

TransientResult transientResult(std::size_t nodesPerEdge, std::size_t steps)
{
    TransientResult result;
    result.mesh = blockMesh(nodesPerEdge);
    std::vector<std::array<double, modes.size()>> factors;
    for (std::size_t number = 1; number <= steps; ++number) {
        result.steps.push_back(emptyStep(number, result.mesh.nodes));
        factors.push_back(factorsAt(result.steps.back().time));
    }
    for (std::size_t node = 0; node < result.mesh.nodes; ++node) {
        NodeShapes const shapes = shapesAt(&result.mesh.coordinates[node * 3]);
        for (std::size_t step = 0; step < steps; ++step)
            superpose(shapes, factors[step], &result.steps[step].displacement[node * 3],
                      &result.steps[step].stress[node * 6]);
    }
    return result;
}

std::vector<Part> smallParts(std::size_t parts, std::size_t datasetsPerPart)
{
    Noise noise(2);
    std::vector<Part> result(parts);
    for (std::size_t part = 0; part < parts; ++part) {
        result[part].name = "part " + std::to_string(part);
        for (std::size_t number = 0; number < datasetsPerPart; ++number)
            result[part].datasets.push_back(smallDataset(number, noise));
    }
    return result;
}

std::uint64_t bytesOf(std::vector<Part> const& parts)
{
    std::uint64_t result = 0;
    for (Part const& part : parts)
        for (SmallDataset const& dataset : part.datasets)
            result += bytesOf(dataset.values);
    return result;
}

std::vector<std::string> groupNames(std::size_t count)
{
    return numbered("group ", count);
}

std::vector<std::string> shapeNames(std::size_t count)
{
    return numbered("part ", count);
}

std::uint64_t bytesOfPaths(std::vector<std::string> const& groups,
                           std::vector<std::string> const& shapes)
{
    return lengthOf(groups) * shapes.size() + lengthOf(shapes) * groups.size();
}

float largeResultValue(std::size_t row)
{
    // Rows run through a block line by line, layer by layer.
    constexpr std::size_t edge = 406;
    // On a regular grid few values would differ.
    double const moved = 0.05 * noiseOf(row);
    auto const coordinate = [moved](std::size_t index) {
        return (static_cast<double>(index) + moved) / static_cast<double>(edge);
    };
    double const x = coordinate(row % edge);
    double const y = coordinate(row / edge % edge);
    double const z = coordinate(row / (edge * edge));
    return static_cast<float>(293.15 + 180.0 * std::sin(2.3 * x + 0.7 * y) * std::exp(-1.3 * z));
}

} // namespace Bench
