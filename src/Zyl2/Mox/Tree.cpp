// The tree's own block, "Mox Tree":
//
//     number of records, 4
//     records, in ascending id order; NodeRecord.cpp draws them
//
// "Global Information":
//
//     writing records, count and records
//     result attributes, count and 96 bytes each
//
// NodePayload.cpp draws what each kind of node adds to the other blocks.

#include "Zyl2/Mox/Tree.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Mox/BlockNames.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/NodePayload.h"
#include "Zyl2/Mox/NodeRecord.h"
#include "Zyl2/Mox/NodesWithSameName.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox/TargetVersion.h"
#include "Zyl2/Mox/VirtualNodesWithSameName.h"
#include "Zyl2/Util/Assert.h"
#include "Zyl2/Util/Shuffle.h"

#include <cstdlib>
#include <cstring>

namespace Zyl2Mox {

namespace {

namespace TreeSites = Zyl2::Exception::Sites::Tree;
using Transformation = Zyl2Wvf::BlockTransformationType;
using Zyl2::Exception::raise;
constexpr std::size_t ValueSize = 4;

/// Contract: the lines that receivers of log records know these statements by.
namespace LogLines {
constexpr unsigned long WritingDataset = 964;
constexpr unsigned long SavingTree = 2214;
constexpr unsigned long TreeSaved = 2289;
constexpr unsigned long SavingGlobalInformation = 2642;
constexpr unsigned long GlobalInformationSaved = 2652;
} // namespace LogLines

} // namespace

/// The keys that records are saved under, looked up once for millions of records.
struct Tree::RecordKeys
{
    Zyl2Wvf::Index::Key tree{BlockNames::MoxTree};
    Zyl2Wvf::Index::Key lightData{BlockNames::LightData};
};

Tree::Tree()
{
    // Contract: hosts rely on their runs being repeatable once they write a model. From several
    // threads this is harmless: the C library guards its generator, and nothing here draws from it.
    std::srand(0);
}

Tree::~Tree() = default;

void Tree::SetRootGroup(std::string const& name, Zyl2Util::AttributeList const& attributes)
{
    SetCurrentId(RootId);
    if (RootHasNode())
        raise(TreeSites::SecondRootGroup);
    SetRootNode(std::make_unique<Group>(name, attributes));
}

void Tree::SetRootGroup(std::string const& name, Zyl2Util::AttributeList const& attributes,
                        std::uint8_t flag)
{
    SetCurrentId(RootId);
    if (RootHasNode())
        raise(TreeSites::SecondFlaggedRootGroup);
    auto group = std::make_unique<Group>(name, attributes);
    group->SetFlag(flag);
    SetRootNode(std::move(group));
}

void Tree::SetRootShape(std::string const& name)
{
    SetCurrentId(RootId);
    if (RootHasNode())
        raise(TreeSites::SecondRootShape);
    SetRootNode(std::make_unique<Shape>(name));
}

void Tree::AddNode(std::unique_ptr<Node> node)
{
    nodes_.push_back(std::move(node));
    AddNodeBelow(*nodes_.back());
}

void Tree::MoveToOrAddGroup(std::string const& name)
{
    Group probe(name, Zyl2Util::AttributeList());
    if (!FindAndMoveToChild(&probe, NodesWithSameName()))
        AddNodeBelow(groups_.emplace_back(name, Zyl2Util::AttributeList()));
}

void Tree::MoveToOrAddShape(std::string const& name)
{
    Shape shapeProbe(name);
    bool const isNew = !FindAndMoveToChild(&shapeProbe, NodesWithSameName());
    if (isNew)
        AddNodeBelow(shapes_.emplace_back(name));
    Geometry geometryProbe(name);
    // A new shape has no children to look through.
    if (isNew || !FindAndMoveToChild(&geometryProbe, NodesWithSameName()))
        AddNodeBelow(geometries_.emplace_back(name));
}

unsigned int Tree::getNodeId(std::string const& path, std::string const& separator)
{
    SetCurrentId(RootId);
    if (!RootHasNode())
        return 0;
    std::string const prefix = separator + GetReqNode(RootId).value->GetName();
    if (path.compare(0, prefix.size(), prefix) != 0)
        return 0;
    std::size_t position = prefix.size();
    do {
        std::size_t const start = position + separator.size();
        position = path.find(separator, start);
        // The root's name alone leaves nothing to look up: substr refuses that.
        Node probe(path.substr(start, position - start));
        if (!FindAndMoveToChild(&probe, VirtualNodesWithSameName())) {
            SetCurrentId(RootId);
            return 0;
        }
    } while (position != std::string::npos);
    unsigned int const id = GetCurrentId();
    SetCurrentId(RootId);
    return id;
}

void Tree::SetLink(VariableId const& target, VariableId const& source)
{
    SetCurrentId(target.first);
    auto* const geometry = dynamic_cast<Geometry*>(GetCurrentNode().value);
    if (geometry == nullptr)
        Zyl2Util::AssertionFailed(TreeSites::LinkFromNoGeometry);
    Geometry::VarStruct& variable = geometry->GetVariable(target.second);
    variable.linkedNode = source.first;
    variable.linkedVariable = source.second;
    variable.linked = true;
    variable.attributes.clear();
}

std::uint64_t Tree::SetAndGetIndex(unsigned int const& nodeId, std::string const& name,
                                   Geometry::VariableType const& type, BlockPositionType position,
                                   NumericArray const& array,
                                   Zyl2Util::AttributeList const& attributes)
{
    SetCurrentIdUnchecked(nodeId);
    auto* const geometry = dynamic_cast<Geometry*>(GetCurrentNode().value);
    if (geometry == nullptr)
        return 0;
    // What can fail comes first or last: a variable without data could never be saved.
    BlockPositionType& place = geometry->GetDatasets()[name];
    std::uint32_t const index = geometry->FindOrAddVariable(name);
    Geometry::VarStruct& variable = geometry->GetVariable(index);
    place = position;
    variable.type = type;
    variable.array = Describe(array);
    // Data of its own replaces a link: the newest registration holds.
    variable.linked = false;
    variable.linkedNode = 0;
    variable.linkedVariable = 0;
    Geometry::ProcessAttributes(variable, attributes);
    return std::uint64_t(index) << 32U | nodeId;
}

template <typename T>
BlockPositionType Tree::WriteStreamDataset(T const* data, unsigned int count, unsigned char width)
{
    static_assert(sizeof(T) == ValueSize, "datasets hold 4-byte values");
    return WriteWholeDataset(BOOST_CURRENT_FUNCTION, count, width, [&](unsigned char* place) {
        Zyl2Util::ShuffleColumns(data, count, width, place);
    });
}

BlockPositionType
Tree::WriteStreamDataset(std::size_t rows, std::size_t width,
                         std::function<Zyl2Util::StridedValues(std::size_t missing)> const& next)
{
    return WriteWholeDataset(BOOST_CURRENT_FUNCTION, rows, width, [&](unsigned char* place) {
        try {
            for (std::size_t row = 0; row < rows;) {
                Zyl2Util::StridedValues const piece = next(rows - row);
                Zyl2Util::ShufflePiece(piece, row, rows, place);
                row += piece.rows;
            }
        } catch (...) {
            // The place is taken; what lay in memory before is nobody's business.
            std::memset(place, 0, rows * width * ValueSize);
            throw;
        }
    });
}

std::optional<BlockPositionType> Tree::WriteStreamDataset(Zyl2Util::StridedValues const& values)
{
    auto const put = [&](Zyl2Wvf::Index& index, std::size_t size) {
        Zyl2Wvf::Index::Key key(BlockNames::HeavyData);
        std::size_t const blocks = index.GetBlockCount(key);
        LetFullBlocksMakeRoom();
        auto const shuffle = [&](void* place) { return Zyl2Util::ShuffleStrided(values, place); };
        if (!index.PutIf(key, size, shuffle))
            return false;
        // The same blocks are marked as above, but not for values that don't stay.
        index.AddTransformation(key, Transformation::Freeze, blocks);
        index.AddTransformation(key, Transformation::Compress, blocks);
        return true;
    };
    return WriteDataset(BOOST_CURRENT_FUNCTION, values.rows, values.width, put);
}

BlockPositionType Tree::WriteStreamDataset(ShuffledValues const& values)
{
    std::size_t const bytes = values.rows * values.width * ValueSize;
    return WriteWholeDataset(BOOST_CURRENT_FUNCTION, values.rows, values.width,
                             [&](unsigned char* place) { std::memcpy(place, values.data, bytes); });
}

/// \param fill writes the shuffled values to the place that it is given
template <typename FillT>
BlockPositionType Tree::WriteWholeDataset(char const* function, std::size_t rows, std::size_t width,
                                          FillT const& fill)
{
    auto const put = [&](Zyl2Wvf::Index& index, std::size_t size) {
        // Marked before the values are put: only blocks that earlier calls filled are marked here,
        // so that the last one stays open for more.
        file_.AddBlockTransformation(BlockNames::HeavyData, Transformation::Freeze);
        file_.AddBlockTransformation(BlockNames::HeavyData, Transformation::Compress);
        LetFullBlocksMakeRoom();
        fill(index.PutInPlace(BlockNames::HeavyData, size));
        return true;
    };
    return *WriteDataset(function, rows, width, put);
}

/// The values of a dataset then go where those of the full block were.
void Tree::LetFullBlocksMakeRoom()
{
    if (file_.GetStream() != nullptr)
        file_.GetIndex().CompressFullBlocks(BlockNames::HeavyData);
}

/// \param put puts so many bytes under the heavy data's key; returns whether they stay there
template <typename PutT>
std::optional<BlockPositionType> Tree::WriteDataset(char const* function, std::size_t rows,
                                                    std::size_t width, PutT const& put)
{
    std::size_t const values = rows * width;
    Zyl2::Log::write(TreeSites::Source, function, LogLines::WritingDataset,
                     "Writing Dataset of size ", values, " width ",
                     static_cast<unsigned int>(width), " datatype size ", ValueSize);
    Zyl2Wvf::Index& index = file_.GetIndex();
    // What threads failed at is told while nothing is added yet.
    index.SaveCompressed();
    BlockPositionType const position = index.GetBlockPosition(BlockNames::HeavyData);
    if (values == 0)
        return position;
    if (!put(index, values * ValueSize))
        return std::nullopt;
    index.NoteFilled(BlockNames::HeavyData, position, values * ValueSize);
    index.FlushFrozen(file_.GetStream());
    return position;
}

template BlockPositionType Tree::WriteStreamDataset(float const*, unsigned int, unsigned char);
template BlockPositionType Tree::WriteStreamDataset(unsigned int const*, unsigned int,
                                                    unsigned char);

void Tree::SaveTree(Zyl2Wvf::WvFile& file)
{
    Zyl2::Log::write(TreeSites::Source, BOOST_CURRENT_FUNCTION, LogLines::SavingTree,
                     "Saving mox tree ... ");
    file.GetIndex().Put<int>(BlockNames::MoxTree, static_cast<int>(GetNodeCount()));
    RecordKeys keys;
    for (NodeType const& record : GetRecords()) {
        SaveRecord(file.GetIndex(), keys, record);
        if (record.value != nullptr)
            SaveNodePayload(file, *record.value);
    }
    Zyl2::Log::write(TreeSites::Source, BOOST_CURRENT_FUNCTION, LogLines::TreeSaved,
                     "Mox tree saved. ");
}

void Tree::SaveGlobalInfo(Zyl2Wvf::WvFile& file, std::string const& text)
{
    Zyl2::Log::write(TreeSites::Source, BOOST_CURRENT_FUNCTION, LogLines::SavingGlobalInformation,
                     "Saving global information ...");
    scratchModifierInfo_.Update(formatVersion_, text);
    modifierInfos_.push_back(scratchModifierInfo_);
    file.GetIndex().Put(BlockNames::GlobalInformation, modifierInfos_);
    file.GetIndex().Put(BlockNames::GlobalInformation, resultAttributes_);
    file.AddBlockTransformation(BlockNames::GlobalInformation,
                                Zyl2Wvf::BlockTransformationType::Compress);
    Zyl2::Log::write(TreeSites::Source, BOOST_CURRENT_FUNCTION, LogLines::GlobalInformationSaved,
                     "Global information saved.");
}

void Tree::FlushAndClose(Zyl2Wvf::WvFile& file, std::string const& text)
{
    if (file.GetStream() == nullptr)
        return;
    try {
        SaveAll(file, text);
    } catch (...) {
        // Nothing that follows could make the file whole again.
        file.CloseFile();
        throw;
    }
    file.CloseFile();
    // Network file systems tell of a full disk only now.
    if (file.HasFailedToClose())
        raise(TreeSites::CloseFailed);
}

void Tree::AddNodeBelow(Node& node)
{
    AddChild();
    SetCurrentValue(&node);
}

void Tree::SetRootNode(std::unique_ptr<Node> node)
{
    nodes_.push_back(std::move(node));
    SetCurrentValue(nodes_.back().get());
}

bool Tree::RootHasNode() const
{
    return GetReqNode(RootId).value != nullptr;
}

void Tree::SaveRecord(Zyl2Wvf::Index& index, RecordKeys& keys, NodeType const& record)
{
    NodeRecord const image(record, index.GetBlockPosition(keys.lightData));
    // Field by field takes a tenth of the time that a large tree needs in all.
    if (unsigned char* const place = index.PutTogether(keys.tree, image.GetSize()))
        image.CopyTo(place);
    else
        image.PutInto(index, keys.tree);
}

void Tree::SaveAll(Zyl2Wvf::WvFile& file, std::string const& text)
{
    // Each block's place follows from the lengths of all before it, so that none can be saved while
    // the tree goes through them; at full length they would take several hundred bytes a node.
    for (char const* name : {BlockNames::MoxTree, BlockNames::LightData, BlockNames::Attributes,
                             BlockNames::Resources})
        file.GetIndex().CompressFullBlocks(name);
    SaveTree(file);
    SaveGlobalInfo(file, text);
    for (char const* name :
         {BlockNames::HeavyData, BlockNames::MoxTree, BlockNames::LightData, BlockNames::Attributes,
          BlockNames::Resources, BlockNames::GlobalInformation, BlockNames::ViewPoints})
        file.AddBlockTransformation(name, Zyl2Wvf::BlockTransformationType::Compress);
    file.GetIndex().WriteAllBuffersToFileStream(file.GetStream());
}

} // namespace Zyl2Mox
