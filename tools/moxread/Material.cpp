// Material record, 84 bytes:
//
//    0   4  size: 84
//    4   7  version: string "0.3"
//   11  16  diffuse colour: red, green, blue, alpha, four floats
//   27  16  specular colour
//   43  16  emissive colour
//   59  16  ambient colour
//   75   4  transparency, float
//   79   4  shininess, float
//   83   1  flag: 1

#include "moxread/Material.h"

#include "moxread/FormatError.h"
#include "moxread/Record.h"

namespace MoxRead {

namespace {

Color readColor(KeyStream& stream)
{
    Color color = {};
    for (float& component : color)
        component = stream.readFloat();
    return color;
}

} // namespace

Material Material::read(KeyStream& stream)
{
    Record const record(stream, "0.3");
    Material material;
    material.diffuse = readColor(stream);
    material.specular = readColor(stream);
    material.emissive = readColor(stream);
    material.ambient = readColor(stream);
    material.transparency = stream.readFloat();
    material.shininess = stream.readFloat();
    std::uint64_t const start = stream.position();
    material.flag = stream.readFlag();
    if (!material.flag)
        throw FormatError(stream.placeOf(start) + ": the flag of a material is 0, not 1");
    record.finish();
    return material;
}

} // namespace MoxRead
