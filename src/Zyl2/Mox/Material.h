#ifndef ZYL2_MOX_MATERIAL_H
#define ZYL2_MOX_MATERIAL_H

#include "Zyl2/Mox/Node.h"
#include "Zyl2/Wvf/Block.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2Mox {

/// Colour of a shape. Colours are red, green, blue, alpha.
class Material : public Node
{
public:
    using Color = std::array<float, 4>;

    /// The light grey that every new shape has; the name is empty.
    Material();

    std::string GetType() const override;
    std::string GetVersion() const override;
    /// The same as `GetVersion`; what versioned records ask for.
    virtual std::string getVersion() const;

    /// \param values red, green, blue, and a fourth that is ignored
    /// \throws InvalidArguments "invalid array size": neither 3 nor 4
    void SetDiffuseColor(std::vector<float> const& values);
    /// \copydoc SetDiffuseColor
    void SetSpecularColor(std::vector<float> const& values);
    /// \param values red, green, blue
    /// \throws InvalidArguments "invalid array size": not exactly 3
    void SetEmissiveColor(std::vector<float> const& values);
    /// \copydoc SetEmissiveColor
    void SetAmbientColor(std::vector<float> const& values);
    void SetTransparency(float value) { transparency_ = value; }
    /// Makes the ambient colour the diffuse colour times `factor`, alpha included. The factor is
    /// not kept.
    void SetAmbientIntensity(float factor);
    void SetShininess(float value) { shininess_ = value; }

    Color const& GetDiffuseColor() const { return diffuse_; }
    Color const& GetSpecularColor() const { return specular_; }
    Color const& GetEmissiveColor() const { return emissive_; }
    Color const& GetAmbientColor() const { return ambient_; }
    float GetTransparency() const { return transparency_; }
    float GetShininess() const { return shininess_; }
    std::uint32_t GetFlag() const { return flag_; }

private:
    Color diffuse_{0.8F, 0.8F, 0.8F, 1.0F};
    Color specular_{0.0F, 0.0F, 0.0F, 1.0F};
    Color emissive_{0.0F, 0.0F, 0.0F, 1.0F};
    Color ambient_{};
    float transparency_ = 0.0F;
    float shininess_ = 0.2F;
    std::uint32_t flag_ = 1;
};

// A material as a versioned record; see VersionedRecord.h.
std::string RecordVersion(Material const& material);
void CopyFieldsToBlock(Zyl2Wvf::Block& block, Material const& material);

// A material under a key of the index is its versioned record.
std::uint64_t EncodedSize(Material const& material);
void CopyToBlock(Zyl2Wvf::Block& block, Material const& material);

} // namespace Zyl2Mox

#endif
