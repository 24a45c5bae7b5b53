#ifndef READ_FRD_RESULTBLOCK_H
#define READ_FRD_RESULTBLOCK_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Frd {

/// What a component is part of, by the file's numbers.
namespace Entity {
constexpr std::int64_t scalar = 1;
constexpr std::int64_t vector = 2;
constexpr std::int64_t matrix = 4;
} // namespace Entity

struct Component
{
    std::string name;
    /// One of `Entity`, or another number: amplitudes and phases, for instance.
    std::int64_t entity;
    /// Vector component or matrix row, from 1 on.
    std::int64_t row;
    /// Matrix column, from 1 on.
    std::int64_t column;
    /// False for components that a viewer computes, such as a vector's length.
    bool isStored;
};

/// The kinds of analysis, by the file's numbers.
enum class AnalysisKind
{
    Static = 0,
    TimeStep = 1,
    Frequency = 2,
    LoadStep = 3,
    UserNamed = 4
};

/// The numbers of a 1PSTEP record.
struct StepNumbers
{
    std::int32_t increment;
    std::int32_t step;
};

/// One result of one step: values at nodes.
struct ResultBlock
{
    std::string name;
    /// Time, frequency or load factor.
    double value;
    std::string text;
    AnalysisKind kind;
    /// Running number of the step in the 100C record.
    std::int32_t stepNumber;
    /// Description of the analysis, such as MODAL.
    std::string analysis;

    std::optional<StepNumbers> step;
    std::optional<std::int32_t> mode;
    /// The other parameter records of the block, such as PHID, by name without the leading P.
    std::map<std::string, std::string> parameters;

    std::vector<Component> components;
    /// Indexes into the mesh's nodes, in the file's order.
    std::vector<std::uint32_t> nodes;
    /// The stored components of each node, one node after another.
    std::vector<double> values;
    /// Whether the file holds them as doubles.
    bool holdsDoubles;

    std::vector<Component> storedComponents() const;
};

} // namespace Frd

#endif
