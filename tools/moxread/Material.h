#ifndef MOXREAD_MATERIAL_H
#define MOXREAD_MATERIAL_H

#include "moxread/Export.h"
#include "moxread/KeyStream.h"

#include <array>

namespace MoxRead {

using Color = std::array<float, 4>;

/// How a shape looks.
struct MOXREAD_EXPORT Material
{
    Color diffuse = {};
    Color specular = {};
    Color emissive = {};
    Color ambient = {};
    float transparency = 0;
    float shininess = 0;
    bool flag = false;

    static Material read(KeyStream& stream);
};

} // namespace MoxRead

#endif
