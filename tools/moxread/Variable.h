#ifndef MOXREAD_VARIABLE_H
#define MOXREAD_VARIABLE_H

#include "moxread/Attributes.h"
#include "moxread/Export.h"
#include "moxread/KeyStream.h"

#include <cstdint>
#include <string>

namespace MoxRead {

enum class ElementType : std::uint8_t
{
    Float = 1,
    Uint32 = 5
};

/// Names a variable: the id of its geometry and its place there, from 0.
struct VariableReference
{
    std::uint32_t nodeId = 0;
    std::uint32_t index = 0;
};

/// A dataset as it is registered on a geometry. A linked one has no description of its own: it
/// shares that of its target.
struct MOXREAD_EXPORT Variable
{
    /// The name as it stands in the file: dataset name, and with a step, byte 0x1E and step name.
    std::string name;
    std::uint32_t typeWord = 0;
    bool linked = false;
    VariableReference link;
    std::uint32_t valueCount = 0;
    std::uint8_t width = 0;
    std::uint64_t dataPosition = 0;
    bool vibration = false;
    Attributes attributes;

    std::string datasetName() const;
    /// Empty when the name has no step.
    std::string stepName() const;
    bool hasStep() const;
    /// How the values are laid out: 1, 4, 5, 6, 9 or 12 to 28.
    std::uint32_t variableType() const;
    /// 1 for float, 5 for uint32.
    std::uint32_t elementCode() const;
    ElementType elementType() const;
    std::uint32_t rows() const;
    std::uint64_t byteCount() const;

    /// Reads and checks the header from one stream and the attributes from another.
    static Variable read(KeyStream& light, KeyStream& attributes);
};

} // namespace MoxRead

#endif
