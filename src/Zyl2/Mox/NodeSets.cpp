#include "Zyl2/Mox/NodeSets.h"

namespace Zyl2Mox {

NodeSets::NodeSets(std::string const& name) : Node(name) {}

std::string NodeSets::GetType() const
{
    return "NodeSets";
}

void NodeSets::SetValues(std::uint64_t wide, std::uint32_t narrow)
{
    wide_ = wide;
    narrow_ = narrow;
}

void NodeSets::SaveDataBlocks(Zyl2Wvf::WvFile& file, std::string const& heavyBlock,
                              bool compress) const
{
    for (Entry const& entry : entries_)
        file.GetIndex().Put(heavyBlock, entry.data(), entry.size());
    if (compress)
        file.AddBlockTransformation(heavyBlock, Zyl2Wvf::BlockTransformationType::Compress);
}

} // namespace Zyl2Mox
