#include "Zyl2/Mox/Material.h"

#include "Zyl2/Wvf/VersionedRecord.h"
#include "container/Bytes.h"
#include "support/Encoding.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using Support::Content;
using Support::Count;
using Support::Float;
using Support::Hex;
using Support::OneByte;
using Support::Text;
using Zyl2Mox::Material;

using Color = Material::Color;

/// A material of an older layout.
class OlderMaterial : public Material
{
public:
    explicit OlderMaterial(std::string version) : version_(std::move(version)) {}

    std::string GetVersion() const override { return version_; }

private:
    std::string version_;
};

/// Diffuse, specular, emissive and ambient colour, and transparency of a new material.
std::string NewColors()
{
    return Hex("CD CC 4C 3F CD CC 4C 3F CD CC 4C 3F 00 00 80 3F "
               "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
               "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
               "0B D7 23 3E 0B D7 23 3E 0B D7 23 3E CD CC 4C 3E "
               "00 00 00 00 ");
}

TEST(Material, AFourthValueOfAColourIsIgnored)
{
    Material material;
    material.SetDiffuseColor({0.4F, 0.5F, 0.6F, 0.7F});
    material.SetSpecularColor({0.1F, 0.2F, 0.3F, 0.4F});
    EXPECT_EQ(material.GetDiffuseColor(), (Color{0.4F, 0.5F, 0.6F, 1.0F}));
    EXPECT_EQ(material.GetSpecularColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
}

TEST(Material, AmbientIntensityScalesAllFourDiffuseComponentsAtThatMoment)
{
    Material material;
    material.SetDiffuseColor({0.25F, 0.5F, 0.75F});
    material.SetAmbientIntensity(0.5F);
    EXPECT_EQ(material.GetAmbientColor(), (Color{0.125F, 0.25F, 0.375F, 0.5F}));
    material.SetDiffuseColor({1, 1, 1});
    EXPECT_EQ(material.GetAmbientColor(), (Color{0.125F, 0.25F, 0.375F, 0.5F}));
}

TEST(Material, TheRecordHoldsEveryFieldInOrder)
{
    Material material;
    material.SetDiffuseColor({1, 2, 3});
    material.SetSpecularColor({4, 5, 6});
    material.SetEmissiveColor({7, 8, 9});
    material.SetAmbientColor({10, 11, 12});
    material.SetTransparency(13);
    material.SetShininess(14);
    std::string expected = Count(84) + Text("0.3");
    for (float const value : {1.0F, 2.0F, 3.0F, 1.0F, 4.0F, 5.0F, 6.0F, 1.0F, 7.0F, 8.0F, 9.0F,
                              1.0F, 10.0F, 11.0F, 12.0F, 0.2F, 13.0F, 14.0F})
        expected += Float(value);
    Zyl2Wvf::Block block;
    Zyl2Mox::CopyToBlock(block, material);
    EXPECT_EQ(Content(block), expected + OneByte(1));
}

TEST(Material, OlderLayoutsHaveNeitherFlagNorBefore02Shininess)
{
    Zyl2Wvf::Block block;
    Zyl2Wvf::CopyToBlock_Versioned<Material>(block, OlderMaterial("0.2"));
    Zyl2Wvf::CopyToBlock_Versioned<Material>(block, OlderMaterial("0.1"));
    EXPECT_EQ(Content(block), Count(83) + Text("0.2") + NewColors() + Hex("CD CC 4C 3E ") +
                                  Count(79) + Text("0.1") + NewColors());
}

TEST(Material, ItsSizeIsKnownBeforeItIsWritten)
{
    EXPECT_EQ(Zyl2Mox::EncodedSize(Material()), 84U);
}

} // namespace
