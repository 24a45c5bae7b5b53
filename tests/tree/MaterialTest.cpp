#include "Zyl2/Mox/Material.h"

#include "Zyl2/Wvf/VersionedRecord.h"
#include "container/Bytes.h"
#include "support/Encoding.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace {

using Support::Byte;
using Support::Content;
using Support::Count;
using Support::Float;
using Support::Hex;
using Support::Text;
using Zyl2::Exception::InvalidArguments;
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

std::vector<float> Values(std::size_t count)
{
    return std::vector<float>(count, 0.5F);
}

/// Diffuse, specular, emissive and ambient colour, and transparency of a new material.
std::string NewColors()
{
    return Hex("CD CC 4C 3F CD CC 4C 3F CD CC 4C 3F 00 00 80 3F "
               "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
               "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3F "
               "0B D7 23 3E 0B D7 23 3E 0B D7 23 3E CD CC 4C 3E "
               "00 00 00 00 ");
}

TEST(Material, SaysWhatItIs)
{
    Material const material;
    EXPECT_EQ(material.GetName(), "");
    EXPECT_EQ(material.GetType(), "Material");
    EXPECT_EQ(material.GetVersion(), "0.3");
    EXPECT_EQ(material.getVersion(), "0.3");
}

TEST(Material, BothVersionsAreTheSame)
{
    EXPECT_EQ(OlderMaterial("0.2").getVersion(), "0.2");
}

TEST(Material, ANewMaterialIsLightGrey)
{
    Material const material;
    EXPECT_EQ(material.GetDiffuseColor(), (Color{0.8F, 0.8F, 0.8F, 1.0F}));
    EXPECT_EQ(material.GetSpecularColor(), (Color{0, 0, 0, 1}));
    EXPECT_EQ(material.GetEmissiveColor(), (Color{0, 0, 0, 1}));
    EXPECT_EQ(material.GetTransparency(), 0.0F);
    EXPECT_EQ(material.GetShininess(), 0.2F);
    EXPECT_EQ(material.GetFlag(), 1U);
}

TEST(Material, TheAmbientColourOfANewMaterialIsAFifthOfTheDiffuseOne)
{
    Color const ambient = Material().GetAmbientColor();
    for (std::size_t component = 0; component < 3; ++component)
        EXPECT_FLOAT_EQ(ambient[component], 0.16F);
    EXPECT_FLOAT_EQ(ambient[3], 0.2F);
}

TEST(Material, DiffuseColourTakesThreeOrFourValuesAndKeepsItsAlpha)
{
    Material material;
    material.SetDiffuseColor({0.1F, 0.2F, 0.3F});
    EXPECT_EQ(material.GetDiffuseColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
    material.SetDiffuseColor({0.4F, 0.5F, 0.6F, 0.7F});
    EXPECT_EQ(material.GetDiffuseColor(), (Color{0.4F, 0.5F, 0.6F, 1.0F}));
    for (std::size_t const count : {0U, 2U, 5U})
        Support::expectThrown<InvalidArguments>(
            [&] { material.SetDiffuseColor(Values(count)); },
            {3, "invalid array size", "Material::SetDiffuseColor", "Zyl2/Mox/Material", 74});
    EXPECT_EQ(material.GetDiffuseColor(), (Color{0.4F, 0.5F, 0.6F, 1.0F}));
}

TEST(Material, SpecularColourTakesThreeOrFourValuesAndKeepsItsAlpha)
{
    Material material;
    material.SetSpecularColor({0.1F, 0.2F, 0.3F});
    EXPECT_EQ(material.GetSpecularColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
    material.SetSpecularColor({0.4F, 0.5F, 0.6F, 0.7F});
    EXPECT_EQ(material.GetSpecularColor(), (Color{0.4F, 0.5F, 0.6F, 1.0F}));
    for (std::size_t const count : {0U, 2U, 5U})
        Support::expectThrown<InvalidArguments>(
            [&] { material.SetSpecularColor(Values(count)); },
            {3, "invalid array size", "Material::SetSpecularColor", "Zyl2/Mox/Material", 131});
    EXPECT_EQ(material.GetSpecularColor(), (Color{0.4F, 0.5F, 0.6F, 1.0F}));
}

TEST(Material, EmissiveColourTakesThreeValues)
{
    Material material;
    material.SetEmissiveColor({0.1F, 0.2F, 0.3F});
    EXPECT_EQ(material.GetEmissiveColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
    for (std::size_t const count : {0U, 2U, 4U})
        Support::expectThrown<InvalidArguments>(
            [&] { material.SetEmissiveColor(Values(count)); },
            {3, "invalid array size", "Material::SetEmissiveColor", "Zyl2/Mox/Material", 100});
    EXPECT_EQ(material.GetEmissiveColor(), (Color{0.1F, 0.2F, 0.3F, 1.0F}));
}

TEST(Material, AmbientColourTakesThreeValuesAndKeepsItsAlpha)
{
    Material material;
    material.SetAmbientColor({0.1F, 0.3F, 0.5F});
    EXPECT_EQ(material.GetAmbientColor(), (Color{0.1F, 0.3F, 0.5F, 0.2F}));
    for (std::size_t const count : {0U, 2U, 4U})
        Support::expectThrown<InvalidArguments>(
            [&] { material.SetAmbientColor(Values(count)); },
            {3, "invalid array size", "Material::SetAmbientColor", "Zyl2/Mox/Material", 157});
    EXPECT_EQ(material.GetAmbientColor(), (Color{0.1F, 0.3F, 0.5F, 0.2F}));
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

TEST(Material, TakesTransparencyAndShininess)
{
    Material material;
    material.SetTransparency(0.3F);
    material.SetShininess(0.4F);
    EXPECT_EQ(material.GetTransparency(), 0.3F);
    EXPECT_EQ(material.GetShininess(), 0.4F);
}

TEST(Material, TheRecordBeginsWithItsOwnLengthAndHas73BytesOfFields)
{
    Zyl2Wvf::Block block;
    Zyl2Wvf::CopyToBlock_Versioned(block, Material());
    EXPECT_EQ(block.GetLength(), 4U + Text("0.3").size() + 73U);
    EXPECT_EQ(Content(block),
              Hex("54 00 00 00 03 00 00 00 30 2E 33 ") + NewColors() + Hex("CD CC 4C 3E 01 "));
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
    EXPECT_EQ(Content(block), expected + Byte(1));
}

TEST(Material, TheFlagIsPartOfTheRecordAfterVersion02Only)
{
    Zyl2Wvf::Block block;
    Zyl2Wvf::CopyToBlock_Versioned<Material>(block, OlderMaterial("0.2"));
    EXPECT_EQ(Content(block), Count(83) + Text("0.2") + NewColors() + Hex("CD CC 4C 3E "));
}

TEST(Material, TheShininessIsPartOfTheRecordAfterVersion01Only)
{
    Zyl2Wvf::Block block;
    Zyl2Wvf::CopyToBlock_Versioned<Material>(block, OlderMaterial("0.1"));
    EXPECT_EQ(Content(block), Count(79) + Text("0.1") + NewColors());
}

TEST(Material, SeveralRecordsFollowEachOther)
{
    Zyl2Wvf::Block block;
    Zyl2Mox::CopyToBlock(block, Material());
    std::string const first = Content(block);
    Zyl2Mox::CopyToBlock(block, Material());
    EXPECT_EQ(Content(block), first + first);
}

TEST(Material, ItsSizeIsKnownBeforeItIsWritten)
{
    EXPECT_EQ(Zyl2Mox::EncodedSize(Material()), 84U);
}

} // namespace
