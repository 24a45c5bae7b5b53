#ifndef MOX_COMPARE_DIFFERENCE_H
#define MOX_COMPARE_DIFFERENCE_H

#include "ValueDifference.h"
#include "mox/print/JsonWriter.h"

#include <optional>
#include <string>
#include <vector>

namespace Mox {

/// One thing in which two models differ.
struct Difference
{
    /// Such as "node", "attribute" or "values"; the documentation lists them.
    std::string kind;
    /// Path of the node, where the difference is about one.
    std::optional<std::string> path;
    std::optional<std::string> dataset;
    std::optional<std::string> step;
    /// What of it differs, such as "translation", or the name of an attribute.
    std::optional<std::string> property;
    /// The text that each of the models has there; nothing where it has none.
    std::optional<std::string> left;
    std::optional<std::string> right;
    /// How far values differ; set for differences of the kind "values" only.
    std::optional<ValueDifference> values;
    /// Names of the values' columns.
    std::vector<std::string> columns;

    /// One line without its end.
    std::string text() const;
    void write(JsonWriter& json) const;

private:
    std::string subjectText() const;
};

} // namespace Mox

#endif
