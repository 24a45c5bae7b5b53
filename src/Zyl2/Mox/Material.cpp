// Fields of a material record, after the frame that VersionedRecord.h draws:
//
//     diffuse, specular, emissive, ambient colour, 4 x 16: each red, green, blue, alpha
//     transparency, 4
//     shininess, 4            since the layout after "0.1"
//     flag, 1                 since the layout after "0.2"

#include "Zyl2/Mox/Material.h"

#include "Zyl2/Mox/FloatVector.h"
#include "Zyl2/Wvf/CopyToBlock.h"
#include "Zyl2/Wvf/VersionedRecord.h"

namespace Zyl2Mox {

namespace {

namespace MaterialSites = Zyl2::Exception::Sites::Material;
constexpr float DefaultAmbientIntensity = 0.2F;

} // namespace

Material::Material() : Node(std::string())
{
    SetAmbientIntensity(DefaultAmbientIntensity);
}

std::string Material::GetType() const
{
    return "Material";
}

std::string Material::GetVersion() const
{
    return "0.3";
}

std::string Material::getVersion() const
{
    return GetVersion();
}

void Material::SetDiffuseColor(std::vector<float> const& values)
{
    CheckSize(values, 3, 4, MaterialSites::DiffuseColor);
    CopyFirst(3, values, diffuse_);
}

void Material::SetSpecularColor(std::vector<float> const& values)
{
    CheckSize(values, 3, 4, MaterialSites::SpecularColor);
    CopyFirst(3, values, specular_);
}

void Material::SetEmissiveColor(std::vector<float> const& values)
{
    CheckSize(values, 3, 3, MaterialSites::EmissiveColor);
    CopyFirst(3, values, emissive_);
}

void Material::SetAmbientColor(std::vector<float> const& values)
{
    CheckSize(values, 3, 3, MaterialSites::AmbientColor);
    CopyFirst(3, values, ambient_);
}

void Material::SetAmbientIntensity(float factor)
{
    for (std::size_t component = 0; component < ambient_.size(); ++component)
        ambient_[component] = diffuse_[component] * factor;
}

std::string RecordVersion(Material const& material)
{
    return material.getVersion();
}

void CopyFieldsToBlock(Zyl2Wvf::Block& block, Material const& material)
{
    for (Material::Color const* color : {&material.GetDiffuseColor(), &material.GetSpecularColor(),
                                         &material.GetEmissiveColor(), &material.GetAmbientColor()})
        block.Append(color->data(), sizeof *color);
    Zyl2Wvf::CopyToBlock(block, material.GetTransparency());
    std::string const version = material.getVersion();
    if (version == "0.1")
        return;
    Zyl2Wvf::CopyToBlock(block, material.GetShininess());
    if (version == "0.2")
        return;
    Zyl2Wvf::CopyToBlock(block, static_cast<std::uint8_t>(material.GetFlag()));
}

std::uint64_t EncodedSize(Material const& material)
{
    constexpr std::uint64_t colors = 4 * sizeof(Material::Color);
    constexpr std::uint64_t numbers = 2 * sizeof(float);
    return sizeof(std::uint32_t) + Zyl2Wvf::EncodedSize(RecordVersion(material)) + colors +
           numbers + sizeof(std::uint8_t);
}

void CopyToBlock(Zyl2Wvf::Block& block, Material const& material)
{
    Zyl2Wvf::CopyToBlock_Versioned(block, material);
}

} // namespace Zyl2Mox
