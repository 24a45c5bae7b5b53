#ifndef ZYL2_MPI_CALLS_H
#define ZYL2_MPI_CALLS_H

#include <Zyl2/Mox2/ArrayView.h>
#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/DatasetType.h>
#include <Zyl2/Mox2/NodeProperties.h>
#include <Zyl2/Mox2/NodeType.h>
#include <Zyl2/Mox2/StepList.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mpi {

// What a rank has added, with the ids of its own nodes.

struct NodeCall
{
    std::uint32_t id = 0;
    /// 0 for the root.
    std::uint32_t parent = 0;
    Mox2::NodeType type = Mox2::NodeType::Group;
    std::string name;
    /// None for shapes, which have no place for them.
    Mox2::Attributes attributes;
};

struct NodeDataCall
{
    std::uint32_t id = 0;
    Mox2::NodeProperties properties;
    /// None unless the node is a group.
    Mox2::Attributes attributes;
};

struct ArrayCall
{
    bool hasName = false;
    std::string name;
    Mox2::DatasetType type = Mox2::DatasetType::Result10;
    std::vector<std::uint32_t> ids;
    Mox2::StepList steps{0};
    Mox2::Attributes attributes;
    /// `Float32` or `UInt32`, and how many values there are.
    Mox2::ArrayView::Element element = Mox2::ArrayView::Element::Float32;
    std::uint64_t rows = 0;
    std::uint64_t columns = 0;
};

} // namespace Mpi
} // namespace Zyl2

#endif
