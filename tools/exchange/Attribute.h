#ifndef EXCHANGE_ATTRIBUTE_H
#define EXCHANGE_ATTRIBUTE_H

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace Exchange {

using AttributeValue = std::variant<int, float, std::string>;
/// Name and value, in the order in which the source has them.
using Attribute = std::pair<std::string, AttributeValue>;
using AttributeList = std::vector<Attribute>;

} // namespace Exchange

#endif
