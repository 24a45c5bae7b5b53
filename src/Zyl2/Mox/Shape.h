#ifndef ZYL2_MOX_SHAPE_H
#define ZYL2_MOX_SHAPE_H

#include "Zyl2/Mox/Material.h"
#include "Zyl2/Mox/Node.h"

#include <memory>
#include <string>

namespace Zyl2Mox {

/// Visible part: carries its material; its data are those of its geometry child.
class Shape : public Node
{
public:
    explicit Shape(std::string const& name);

    std::string GetType() const override;
    std::string GetVersion() const override;
    void Load(std::string const& path) override;
    void Save() override;

    Material& GetMaterial();
    Material const& GetMaterial() const;
    /// Whether the material was ever asked for in order to be changed.
    bool HasOwnMaterial() const { return material_ != nullptr; }

private:
    /// Made when it is to be changed: most of the shapes of a large assembly look alike.
    std::unique_ptr<Material> material_;
};

} // namespace Zyl2Mox

#endif
