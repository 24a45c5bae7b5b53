#ifndef ZYL2_MOX_TREE_H
#define ZYL2_MOX_TREE_H

#include "Zyl2/Adt/AdtTree.h"
#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/ModifierInfo.h"
#include "Zyl2/Mox/Node.h"
#include "Zyl2/Mox/NumericArray.h"
#include "Zyl2/Mox/ResultAttributes.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox/ShuffledValues.h"
#include "Zyl2/Util/AttributeList.h"
#include "Zyl2/Util/StridedValues.h"
#include "Zyl2/Wvf/WvFile.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zyl2Adt {

/// Nodes are looked up by their names.
template <>
struct LookUpKey<Zyl2Mox::Node*>
{
    static std::string_view Of(Zyl2Mox::Node* const& node)
    {
        return node == nullptr ? std::string_view() : std::string_view(node->GetName());
    }
};

} // namespace Zyl2Adt

namespace Zyl2Mox {

/// Position in the untransformed bytes of a key.
using BlockPositionType = std::uint64_t;

/// Scene tree of one model, and the container file that it is saved into.
class Tree : public Zyl2Adt::Tree<Node*>
{
public:
    /// (node id, variable index)
    using VariableId = std::pair<unsigned int, unsigned int>;

    /// A tree that holds the root, without a node.
    Tree();
    ~Tree();

    /// Makes a node current, and be it none, as it was when a call began that is made again.
    void RestoreCurrentId(unsigned int id) { SetCurrentIdUnchecked(id); }

    /// Gives the root a group. The root becomes current.
    /// \throws InvalidObjectState "Root node properties are already set"
    void SetRootGroup(std::string const& name, Zyl2Util::AttributeList const& attributes);

    /// The same, with the group's flag byte set.
    /// \throws InvalidObjectState "Root node properties are already set"
    void SetRootGroup(std::string const& name, Zyl2Util::AttributeList const& attributes,
                      std::uint8_t flag);

    /// Gives the root a shape, without geometry. The root becomes current.
    /// \throws InvalidObjectState "Root node properties are already set"
    void SetRootShape(std::string const& name);

    /// Adds a node below the current node; it becomes current.
    void AddNode(std::unique_ptr<Node> node);

    /// Moves to the group of that name below the current node; adds it when there is none.
    void MoveToOrAddGroup(std::string const& name);

    /// Moves to the geometry of the shape of that name below the current node; adds what is
    /// missing.
    void MoveToOrAddShape(std::string const& name);

    /// Resolves separator, root name, separator, name, and so on. The root becomes current.
    /// \return the first such node's id; 0 when there is none
    /// \throws std::out_of_range the path ends with the root's name
    unsigned int getNodeId(std::string const& path, std::string const& separator);

    /// Makes `target` share the data of `source`. The target's node becomes current.
    /// \throws KeyNotFound the target's node id was never handed out
    void SetLink(VariableId const& target, VariableId const& source);

    /// Registers a variable on a geometry; a variable of that name is overwritten. The node becomes
    /// current, even when it is none.
    /// \return node id in the low 32 bits, variable index in the high 32 bits; 0 when the node is
    ///         not a geometry
    /// \throws KeyNotFound no record of that id
    std::uint64_t SetAndGetIndex(unsigned int const& nodeId, std::string const& name,
                                 Geometry::VariableType const& type, BlockPositionType position,
                                 NumericArray const& array,
                                 Zyl2Util::AttributeList const& attributes);

    /// Appends `count` rows of `width` values, shuffled, to the heavy data, and saves what is full.
    /// \return position of the values
    /// \tparam T `float` or `unsigned int`
    template <typename T>
    BlockPositionType WriteStreamDataset(T const* data, unsigned int count, unsigned char width);

    /// The same for values that are converted on the way.
    /// \return nothing where `FindMisfit` finds one: then nothing is added
    std::optional<BlockPositionType> WriteStreamDataset(Zyl2Util::StridedValues const& values);

    /// The same for values that come in pieces. When one of them does not come, zeros are in place
    /// of all.
    /// \param rows  of all pieces together
    /// \param width values per row
    /// \param next  gives the next piece, without a misfit and of no more rows than are missing
    BlockPositionType
    WriteStreamDataset(std::size_t rows, std::size_t width,
                       std::function<Zyl2Util::StridedValues(std::size_t missing)> const& next);

    /// The same for values that were shuffled before.
    BlockPositionType WriteStreamDataset(ShuffledValues const& values);

    /// Writes all records and their nodes into the blocks of `file`.
    void SaveTree(Zyl2Wvf::WvFile& file);

    /// Adds a writing record and writes all of them, and the result attributes.
    void SaveGlobalInfo(Zyl2Wvf::WvFile& file, std::string const& text);

    /// Saves everything and closes the file; does nothing without a stream. When something fails
    /// the file is closed all the same.
    void FlushAndClose(Zyl2Wvf::WvFile& file, std::string const& text);

    Zyl2Wvf::WvFile& GetFile() { return file_; }
    /// The record that the next `SaveGlobalInfo` completes.
    ModifierInfo& GetScratchModifierInfo() { return scratchModifierInfo_; }
    std::vector<ModifierInfo>& GetModifierInfos() { return modifierInfos_; }
    std::vector<ResultAttributes>& GetResultAttributes() { return resultAttributes_; }
    void SetFormatVersion(std::string const& version) { formatVersion_ = version; }
    std::string const& GetFormatVersion() const { return formatVersion_; }

private:
    struct RecordKeys;

    template <typename FillT>
    BlockPositionType WriteWholeDataset(char const* function, std::size_t rows, std::size_t width,
                                        FillT const& fill);
    template <typename PutT>
    std::optional<BlockPositionType> WriteDataset(char const* function, std::size_t rows,
                                                  std::size_t width, PutT const& put);
    void LetFullBlocksMakeRoom();
    void AddNodeBelow(Node& node);
    void SetRootNode(std::unique_ptr<Node> node);
    bool RootHasNode() const;
    static void SaveRecord(Zyl2Wvf::Index& index, RecordKeys& keys, NodeType const& record);
    void SaveAll(Zyl2Wvf::WvFile& file, std::string const& text);

    Zyl2Wvf::WvFile file_;
    std::vector<std::unique_ptr<Node>> nodes_;
    // Those that component paths make stand side by side: with millions of them, an allocation of
    // each costs more than all else.
    std::deque<Group> groups_;
    std::deque<Shape> shapes_;
    std::deque<Geometry> geometries_;
    std::string formatVersion_;
    ModifierInfo scratchModifierInfo_;
    std::vector<ModifierInfo> modifierInfos_;
    std::vector<ResultAttributes> resultAttributes_;
};

extern template BlockPositionType Tree::WriteStreamDataset(float const*, unsigned int,
                                                           unsigned char);
extern template BlockPositionType Tree::WriteStreamDataset(unsigned int const*, unsigned int,
                                                           unsigned char);

} // namespace Zyl2Mox

#endif
