#ifndef MOX_CHECK_TREECHECK_H
#define MOX_CHECK_TREECHECK_H

#include "Findings.h"

#include "moxread/Model.h"

namespace Mox::Check {

/// Checks the tree: names, transforms and materials.
class TreeCheck
{
public:
    TreeCheck(MoxRead::Model const& model, Findings& findings) : model_(model), findings_(findings)
    {}

    void run();

private:
    void checkNames(MoxRead::Node const& parent);
    void checkTransform(MoxRead::Node const& node);
    void checkMaterial(MoxRead::Node const& node);

    MoxRead::Model const& model_;
    Findings& findings_;
};

} // namespace Mox::Check

#endif
