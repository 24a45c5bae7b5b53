#ifndef EXCHANGE_FIELDLAYOUT_H
#define EXCHANGE_FIELDLAYOUT_H

#include "Field.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Exchange {

/// One dataset that a field becomes: which of its components, under which name.
struct FieldLayout
{
    std::string name;
    /// The source's components that become its columns: one, three or six.
    std::vector<std::size_t> components;
};

/// A scalar, a vector and a symmetric tensor become one dataset, so do nine components that are a
/// symmetric matrix in every row; anything else becomes a scalar for each component.
std::vector<FieldLayout> layoutsOf(Field const& field);

} // namespace Exchange

#endif
