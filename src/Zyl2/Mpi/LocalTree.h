#ifndef ZYL2_MPI_LOCALTREE_H
#define ZYL2_MPI_LOCALTREE_H

#include <Zyl2/Mox2/Model.h>

#include "Zyl2/Mpi/Calls.h"

#include <string>
#include <vector>

namespace Zyl2 {
namespace Mpi {

/// The nodes of one rank. They are in a model without a file, so that ids, the current node and
/// every refusal are those of a model of this rank alone.
class LocalTree
{
public:
    LocalTree();

    Mox2::Model& model() { return model_; }

    /// \return the node that was added, with the id that a host gets
    NodeCall addNode(Mox2::NodeType type, std::string const& name,
                     Mox2::Attributes const& attributes);

    /// What `added` are for: paths, and the ids that they end in.
    /// \return the nodes that are new, in the order of their ids
    std::vector<NodeCall> newNodesOf(std::vector<std::string> const& paths,
                                     std::string const& separator,
                                     Mox2::Array1d<unsigned int> const& ids);

    bool isGroup(unsigned int id) const;

    /// Does all that adding these values would do, but for keeping them.
    void addArray(std::string const* name, Mox2::DatasetType type, Mox2::ArrayView const& values,
                  Mox2::IdsView const& components, Mox2::StepList const& steps,
                  Mox2::Attributes const& attributes);

private:
    enum class Kind : char
    {
        Group,
        Shape,
        Geometry
    };

    void note(unsigned int id, Kind kind);
    std::vector<unsigned int> lineFromRoot(unsigned int id);

    Mox2::Model model_;
    /// By id, from 1.
    std::vector<Kind> kinds_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
