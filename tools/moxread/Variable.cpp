// Variable header in "Light Data":
//
//   string  name: dataset name, or dataset name + 1E + step name
//   uint32  type word: variable type in the low 24 bits, element code (1 float, 5 uint32) above
//   flag    link
//
//   with link 1:                          with link 0:
//   uint32  id of the target's geometry   uint32  number of values, rows times width
//   uint32  index of the target there     byte    width
//                                         flag    0
//                                         flag    0
//                                         float   0
//                                         float   0
//                                         flag    0
//                                         uint64  position of the values in "Heavy Data"
//
//   flag    vibration
//
// Its attribute list follows the ones read before in "Attributes".

#include "moxread/Variable.h"

#include "moxread/FormatError.h"
#include "moxread/Text.h"

#include <array>

namespace MoxRead {

namespace {

constexpr char stepSeparator = 0x1E;
constexpr unsigned elementCodeShift = 24;
constexpr std::uint32_t variableTypeMask = 0x00FFFFFF;
constexpr std::uint32_t greatestValueCount = 0x7FFFFFFF;
constexpr std::uint32_t valueSize = 4;

// The width that each variable type has; 0 where there is no such type.
constexpr std::array<std::uint8_t, 29> widths = {0, 3, 0, 0, 1, 1, 1, 0, 0, 1, 0, 0, 1, 3, 6,
                                                 6, 1, 3, 6, 6, 1, 3, 6, 6, 1, 1, 3, 6, 6};

std::uint8_t widthOf(std::uint32_t variableType)
{
    return variableType < widths.size() ? widths[variableType] : std::uint8_t{0};
}

void checkTypeWord(Variable const& variable, std::string const& place)
{
    if (widthOf(variable.variableType()) == 0) {
        throw FormatError(place + ": unknown variable type " +
                          std::to_string(variable.variableType()));
    }
    std::uint32_t const code = variable.elementCode();
    if (code != std::uint32_t{1} && code != std::uint32_t{5})
        throw FormatError(place + ": element code is " + std::to_string(code) + ", not 1 or 5");
}

bool isWholeRows(std::uint32_t valueCount, std::uint8_t width)
{
    return width != 0 && valueCount % width == 0;
}

void checkCount(Variable const& variable, std::string const& place)
{
    std::uint8_t const width = widthOf(variable.variableType());
    if (variable.width != width) {
        throw FormatError(place + ": width is " + std::to_string(variable.width) + ", not " +
                          std::to_string(width) + " as variable type " +
                          std::to_string(variable.variableType()) + " has it");
    }
    if (variable.valueCount > greatestValueCount || !isWholeRows(variable.valueCount, width)) {
        throw FormatError(place + ": value count " + std::to_string(variable.valueCount) +
                          " is not a whole number of rows of width " + std::to_string(width));
    }
}

void expectZeroFlag(KeyStream& light)
{
    std::uint64_t const start = light.position();
    if (light.readFlag())
        throw FormatError(light.placeOf(start) + ": a flag of the array is 1, not 0");
}

void expectZeroFloat(KeyStream& light)
{
    std::uint64_t const start = light.position();
    if (light.readUint32() != 0)
        throw FormatError(light.placeOf(start) + ": a number of the array is not 0");
}

void readArray(KeyStream& light, Variable& variable)
{
    std::string const place = light.placeOf(light.position());
    variable.valueCount = light.readUint32();
    variable.width = light.readByte();
    checkCount(variable, place);
    expectZeroFlag(light);
    expectZeroFlag(light);
    expectZeroFloat(light);
    expectZeroFloat(light);
    expectZeroFlag(light);
    variable.dataPosition = light.readUint64();
}

void readHeader(KeyStream& light, Variable& variable)
{
    std::string const place = light.placeOf(light.position());
    variable.typeWord = light.readUint32();
    checkTypeWord(variable, place);
    variable.linked = light.readFlag();
    if (variable.linked) {
        variable.link.nodeId = light.readUint32();
        variable.link.index = light.readUint32();
    } else {
        readArray(light, variable);
    }
    variable.vibration = light.readFlag();
}

} // namespace

std::string Variable::datasetName() const
{
    return name.substr(0, name.find(stepSeparator));
}

std::string Variable::stepName() const
{
    return hasStep() ? name.substr(name.find(stepSeparator) + 1) : std::string();
}

bool Variable::hasStep() const
{
    return name.find(stepSeparator) != std::string::npos;
}

std::uint32_t Variable::variableType() const
{
    return typeWord & variableTypeMask;
}

std::uint32_t Variable::elementCode() const
{
    return typeWord >> elementCodeShift;
}

ElementType Variable::elementType() const
{
    return static_cast<ElementType>(elementCode());
}

std::uint32_t Variable::rows() const
{
    return width == 0 ? 0 : valueCount / width;
}

std::uint64_t Variable::byteCount() const
{
    return std::uint64_t{valueCount} * valueSize;
}

Variable Variable::read(KeyStream& light, KeyStream& attributes)
{
    Variable variable;
    variable.name = light.readString();
    inContext([&] { return quoted(variable.name); },
              [&] {
                  readHeader(light, variable);
                  variable.attributes = readAttributes(attributes);
              });
    return variable;
}

} // namespace MoxRead
