#ifndef ZYL2_MOX_GROUP_H
#define ZYL2_MOX_GROUP_H

#include "Zyl2/Mox/Node.h"
#include "Zyl2/Util/AttributeList.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2Mox {

/// Grouping node with a transform and attributes.
class Group : public Node
{
public:
    /// A group that moves, turns and scales nothing.
    Group(std::string const& name, Zyl2Util::AttributeList const& attributes);

    std::string GetType() const override;
    std::string GetVersion() const override;
    void Load(std::string const& path) override;
    void Save() override;

    /// \param values x, y, z
    /// \throws InvalidArguments "invalid array size": not exactly 3
    void SetTranslation(std::vector<float> const& values);
    /// \param values axis x, y, z, and angle
    /// \throws InvalidArguments "invalid array size": not exactly 4
    void SetRotation(std::vector<float> const& values);
    /// \param values factors along x, y, z
    /// \throws InvalidArguments "invalid array size": not exactly 3
    void SetScale(std::vector<float> const& values);
    void SetFlag(std::uint8_t flag) { flag_ = flag; }

    std::array<float, 3> const& GetTranslation() const { return translation_; }
    std::array<float, 4> const& GetRotation() const { return rotation_; }
    std::array<float, 3> const& GetScale() const { return scale_; }
    Zyl2Util::AttributeList const& GetAttributes() const { return attributes_; }
    Zyl2Util::AttributeList& GetAttributes() { return attributes_; }
    std::uint8_t GetFlag() const { return flag_; }

private:
    std::array<float, 3> translation_{0, 0, 0};
    std::array<float, 4> rotation_{0, 0, 1, 0};
    std::array<float, 3> scale_{1, 1, 1};
    Zyl2Util::AttributeList attributes_;
    std::uint8_t flag_ = 0;
};

} // namespace Zyl2Mox

#endif
