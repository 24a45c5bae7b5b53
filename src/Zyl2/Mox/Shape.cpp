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

} // namespace Zyl2Mox
