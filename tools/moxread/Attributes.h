#ifndef MOXREAD_ATTRIBUTES_H
#define MOXREAD_ATTRIBUTES_H

#include "moxread/Export.h"
#include "moxread/KeyStream.h"

#include <cstdint>
#include <map>
#include <string>
#include <variant>

namespace MoxRead {

/// The index of the alternative is the tag in the file.
using AttributeValue = std::variant<std::uint32_t, float, std::string, double>;
using Attributes = std::map<std::string, AttributeValue>;

/// Reads one attribute list.
MOXREAD_EXPORT Attributes readAttributes(KeyStream& stream);

} // namespace MoxRead

#endif
