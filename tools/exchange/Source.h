#ifndef EXCHANGE_SOURCE_H
#define EXCHANGE_SOURCE_H

#include "Attribute.h"
#include "Field.h"
#include "Part.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Exchange {

/// One time step, load step or mode. Without a name, its fields belong to no step: so it is where a
/// source knows no time.
struct StepInfo
{
    std::string name;
    std::optional<double> time;
    AttributeList attributes;
};

/// A result file of another format, open for reading one step at a time.
///
/// All failures are `Exchange::Error`: one sentence that says what is wrong with the file, without
/// the file's name.
class Source
{
public:
    using FieldVisitor = std::function<void(Field const&)>;

    Source() = default;
    virtual ~Source() = default;
    Source(Source const&) = delete;
    Source& operator=(Source const&) = delete;

    /// Attributes of the model's root: titles, who wrote the file, and the like.
    virtual AttributeList attributes() const = 0;

    /// Nodes and elements. Reads them when asked; the writer asks once and releases them part by
    /// part.
    virtual std::vector<Part> readParts() = 0;

    virtual std::size_t stepCount() const = 0;
    virtual StepInfo step(std::size_t index) const = 0;

    /// Hands over the fields of one step, one after the other; no two are in memory at a time,
    /// where the format allows. Called once for each step, in ascending order.
    virtual void readStep(std::size_t index, FieldVisitor const& visit) = 0;
};

} // namespace Exchange

#endif
