// What the kinds of nodes add:
//
//     Group      light data:  translation, 12 | rotation, 16 | scale, 12 | flag, 1
//                attributes:  its list
//     Shape      resources:   its material
//     Geometry   see Geometry.cpp
//     NodeSets   heavy data:  its entries, 32 each
//                light data:  16, 4 | number of entries, 4 | value, 8 | value, 4

#include "Zyl2/Mox/NodePayload.h"

#include "Zyl2/Mox/BlockNames.h"
#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/NodeSets.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox/WriteAttributesToWvf.h"
#include "Zyl2/Util/Assert.h"

#include <algorithm>
#include <vector>

namespace Zyl2Mox {

namespace {

namespace TreeSites = Zyl2::Exception::Sites::Tree;

template <typename Kind>
Kind const& Expect(Node const& node, Zyl2::Exception::AssertionSite const& site)
{
    auto const* const kind = dynamic_cast<Kind const*>(&node);
    if (kind == nullptr)
        Zyl2Util::AssertionFailed(site);
    return *kind;
}

template <typename Values>
void PutBytes(Zyl2Wvf::Index& index, Values const& values)
{
    index.Put(BlockNames::LightData, values.data(), sizeof values);
}

void Save(Zyl2Wvf::WvFile& file, Group const& group)
{
    Zyl2Wvf::Index& index = file.GetIndex();
    PutBytes(index, group.GetTranslation());
    PutBytes(index, group.GetRotation());
    PutBytes(index, group.GetScale());
    Zyl2Util::WriteAttributesToWvf(file, BlockNames::Attributes, group.GetAttributes());
    index.Put<unsigned char>(BlockNames::LightData, group.GetFlag());
}

std::vector<unsigned char> EncodedNewMaterial()
{
    Zyl2Wvf::Block block;
    CopyToBlock(block, Material());
    return {block.GetData(), block.GetData() + block.GetLength()};
}

void Save(Zyl2Wvf::WvFile& file, Shape const& shape)
{
    // Most shapes of a large assembly look alike.
    static std::vector<unsigned char> const newMaterial = EncodedNewMaterial();
    Zyl2Wvf::Index& index = file.GetIndex();
    Zyl2Wvf::Index::Key key(BlockNames::Resources);
    unsigned char* const place =
        shape.HasOwnMaterial() ? nullptr : index.PutTogether(key, newMaterial.size());
    if (place == nullptr)
        index.Put(key, shape.GetMaterial());
    else
        std::copy(newMaterial.begin(), newMaterial.end(), place);
}

void Save(Zyl2Wvf::WvFile& file, NodeSets const& nodeSets)
{
    Zyl2Wvf::Index& index = file.GetIndex();
    nodeSets.SaveDataBlocks(file, BlockNames::HeavyData, false);
    index.Put<unsigned int>(BlockNames::LightData, 16U);
    index.Put<unsigned int>(BlockNames::LightData,
                            Zyl2Wvf::EncodedCount(nodeSets.GetEntries().size()));
    index.Put<unsigned long>(BlockNames::LightData, nodeSets.GetWideValue());
    index.Put<unsigned int>(BlockNames::LightData, nodeSets.GetNarrowValue());
}

} // namespace

void SaveNodePayload(Zyl2Wvf::WvFile& file, Node const& node)
{
    std::string const type = node.GetType();
    if (type == "Group")
        Save(file, Expect<Group>(node, TreeSites::NoGroup));
    else if (type == "Shape")
        Save(file, Expect<Shape>(node, TreeSites::NoShape));
    else if (type == "Geometry")
        Expect<Geometry>(node, TreeSites::NoGeometry)
            .WriteWv(file, BlockNames::LightData, BlockNames::HeavyData, BlockNames::Attributes);
    else if (type == "NodeSets")
        Save(file, Expect<NodeSets>(node, TreeSites::NoNodeSets));
}

} // namespace Zyl2Mox
