#include "Zyl2/Mox/Shape.h"

namespace Zyl2Mox {

Shape::Shape(std::string const& name) : Node(name) {}

std::string Shape::GetType() const
{
    return "Shape";
}

std::string Shape::GetVersion() const
{
    return "0.2";
}

void Shape::Load(std::string const& /*path*/) {}

void Shape::Save() {}

Material& Shape::GetMaterial()
{
    if (material_ == nullptr)
        material_ = std::make_unique<Material>();
    return *material_;
}

Material const& Shape::GetMaterial() const
{
    static Material const unchanged;
    return material_ == nullptr ? unchanged : *material_;
}

} // namespace Zyl2Mox
