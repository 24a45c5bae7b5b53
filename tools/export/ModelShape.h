#ifndef EXPORT_MODELSHAPE_H
#define EXPORT_MODELSHAPE_H

#include "Transform.h"
#include "moxread/Model.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Export {

/// One shape of a model with what the tree says of it.
struct ModelShape
{
    std::string name;
    /// The groups that it is in, from the root down.
    std::vector<MoxRead::Node const*> groups;
    MoxRead::Geometry const* geometry = nullptr;
    std::optional<MoxRead::Material> material;
    Transform transform;

    /// Its datasets by the name of their step; those that belong to none have an empty one.
    std::map<std::string, MoxRead::Model::Variables> datasets;

    MoxRead::Model::Variables const& datasetsOf(std::string const& step) const;
};

/// In the order of the tree. They refer to the model.
std::vector<ModelShape> shapesOf(MoxRead::Model const& model);

} // namespace Export

#endif
