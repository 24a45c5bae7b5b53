#ifndef EXCHANGE_FIELD_H
#define EXCHANGE_FIELD_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Exchange {

enum class Location
{
    Nodes,
    Elements
};

/// Values on all nodes or all elements of one part, row after row. A row that has no value is NaN.
///
/// One component is a scalar, three are a vector, six a symmetric tensor in the order xx, yy, zz,
/// xy, yz, zx. Any other number becomes a scalar for each component.
struct Field
{
    std::string name;
    /// Which of the source's parts it is on.
    std::size_t part = 0;
    Location location = Location::Nodes;
    /// Whether these are the coordinates that the part's nodes have in this step.
    bool movesNodes = false;
    std::size_t components = 1;
    /// What the components are called, when the source says so; else empty.
    std::vector<std::string> componentNames;
    /// Floats when the source has floats, so that nothing is lost or warned about.
    std::variant<std::vector<float>, std::vector<double>, std::vector<std::int64_t>> values;
};

} // namespace Exchange

#endif
