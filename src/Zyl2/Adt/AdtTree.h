#ifndef ZYL2_ADT_ADTTREE_H
#define ZYL2_ADT_ADTTREE_H

#include "Zyl2/Adt/ChildIndex.h"
#include "Zyl2/Adt/TreeNode.h"
#include "Zyl2/Exception/Raise.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <type_traits>

namespace Zyl2Adt {

/// What a payload of type `T` is looked up by, where look-ups must not depend on the number of
/// children; specialised for such payloads.
template <typename T>
struct LookUpKey
{
    static std::string_view Of(T const& /*value*/) { return {}; }
};

/// Whether a functor of `Tree::MoveToChild` takes only payloads of the same look-up key for the
/// same, and none without value. It says so by a member type `ComparesLookUpKeys`. Others may match
/// by whatever they like, and are asked about one child after the other.
template <typename FunctorType, typename = void>
struct ComparesLookUpKeys : std::false_type
{};
template <typename FunctorType>
struct ComparesLookUpKeys<FunctorType, std::void_t<typename FunctorType::ComparesLookUpKeys>>
    : std::true_type
{};

/// Tree with a cursor, the current node. Nodes are never removed; ids are handed out in increasing
/// order. The tree doesn't own what `T` points to.
template <typename T>
class Tree
{
public:
    using IdType = std::uint32_t;
    using ValueType = T;
    using NodeType = TreeNode<T>;
    using Records = std::deque<NodeType>;

    /// Adds a child under the current node, without a value, and makes it current.
    /// \return the child's id
    /// \throws KeyNotFound the current node is none
    IdType AddChild()
    {
        NodeType& parent = GetCurrentRecord();
        IdType const id = GetNextId();
        // Growing a deque at its end leaves the parent where it is.
        NodeType& child = records_.emplace_back();
        IndexOnlyChild(parent);
        child.id = id;
        child.parent = currentId_;
        child.previousSibling = parent.lastChild;
        if (parent.lastChild != 0)
            RecordOf(parent.lastChild).nextSibling = id;
        else
            parent.firstChild = id;
        parent.lastChild = id;
        currentId_ = id;
        return id;
    }

    /// Gives the current node its value, which `MoveToChild` finds from then on. There is no other
    /// way to give it one.
    /// \pre the node has no value
    /// \throws KeyNotFound the current node is none
    void SetCurrentValue(T const& value)
    {
        NodeType& node = GetCurrentRecord();
        if (value != T() && !IsOnlyChild(node))
            children_.Insert(node.parent, LookUpKey<T>::Of(value), node.id);
        node.value = value;
    }

    /// Makes the first child of the current node current, in id order, that `functor` takes for the
    /// same as `value`.
    /// \throws KeyNotFound no child matches; the cursor stays
    template <typename FunctorType>
    void MoveToChild(T const& value, FunctorType functor)
    {
        if (!FindAndMoveToChild(value, functor))
            Zyl2::Exception::raiseFrom(Zyl2::Exception::Sites::AdtTree::NoSuchChild,
                                       BOOST_CURRENT_FUNCTION);
    }

    /// `MoveToChild` for callers that expect to find nothing.
    /// \return whether a child matched; the cursor stays when none does
    template <typename FunctorType>
    bool FindAndMoveToChild(T const& value, FunctorType functor)
    {
        IdType found = 0;
        if constexpr (ComparesLookUpKeys<FunctorType>::value)
            found = FindByKey(value, functor);
        else
            found = FindAmongAll(value, functor);
        if (found == 0)
            return false;
        currentId_ = found;
        return true;
    }

    /// \throws KeyNotFound the current id has no record
    NodeType const& GetCurrentNode() const
    {
        if (!HasRecord(currentId_))
            RaiseNoCurrentNode();
        return RecordOf(currentId_);
    }

    /// \throws KeyNotFound the id has no record
    NodeType const& GetReqNode(IdType const& id) const
    {
        if (!HasRecord(id))
            Zyl2::Exception::raiseFrom(Zyl2::Exception::Sites::AdtTree::NoSuchNode,
                                       BOOST_CURRENT_FUNCTION);
        return RecordOf(id);
    }

    /// Makes `id` current. Only ids that were never handed out are refused: 0, no node, is not.
    /// \throws KeyNotFound the cursor stays
    void SetCurrentId(IdType id)
    {
        if (id >= GetNextId())
            Zyl2::Exception::raiseFrom(Zyl2::Exception::Sites::AdtTree::IdNotHandedOut,
                                       BOOST_CURRENT_FUNCTION);
        currentId_ = id;
    }

    IdType GetCurrentId() const { return currentId_; }
    IdType GetNextId() const { return static_cast<IdType>(records_.size()) + RootId; }
    std::size_t GetNodeCount() const { return records_.size(); }
    /// In ascending id order, which is the order of creation.
    Records const& GetRecords() const { return records_; }

protected:
    static constexpr IdType RootId = 1;

    /// A tree that holds the root, without a value; the root is current.
    Tree() { records_.emplace_back().id = RootId; }
    Tree(Tree const&) = delete;
    Tree& operator=(Tree const&) = delete;
    ~Tree() = default;

    /// Makes `id` current, whatever it is.
    void SetCurrentIdUnchecked(IdType id) { currentId_ = id; }

private:
    [[noreturn]] void RaiseNoCurrentNode() const
    {
        Zyl2::Exception::raise(Zyl2::Exception::Sites::AdtTree::NoCurrentNode,
                               Zyl2::Exception::sentence("no node has the id ", currentId_,
                                                         "; the last one is ", records_.size()));
    }

    bool HasRecord(IdType id) const { return id >= RootId && id < GetNextId(); }
    NodeType& RecordOf(IdType id) { return records_[id - RootId]; }
    NodeType const& RecordOf(IdType id) const { return records_[id - RootId]; }

    NodeType& GetCurrentRecord()
    {
        static_cast<void>(GetCurrentNode());
        return RecordOf(currentId_);
    }

    template <typename FunctorType>
    IdType FindByKey(T const& value, FunctorType& functor) const
    {
        std::string_view const key = LookUpKey<T>::Of(value);
        for (IdType id = GetFirstChild(key); id != 0; id = children_.GetNext(id)) {
            NodeType const& node = RecordOf(id);
            if (node.parent == currentId_ && LookUpKey<T>::Of(node.value) == key &&
                functor(value, node.value))
                return id;
        }
        return 0;
    }

    /// Siblings are in the order of their ids.
    template <typename FunctorType>
    IdType FindAmongAll(T const& value, FunctorType& functor) const
    {
        // Below no node there is the root alone.
        IdType id = currentId_ == 0 ? RootId : 0;
        if (HasRecord(currentId_))
            id = RecordOf(currentId_).firstChild;
        while (id != 0 && !functor(value, RecordOf(id).value))
            id = RecordOf(id).nextSibling;
        return id;
    }

    static bool HasValue(NodeType const& node) { return node.value != T(); }

    /// An only child is found through its parent. That spares the index the half of all nodes that
    /// belong to a parent each of their own.
    bool IsOnlyChild(NodeType const& node) const
    {
        if (!HasRecord(node.parent))
            return false;
        NodeType const& parent = RecordOf(node.parent);
        return parent.firstChild == parent.lastChild;
    }

    /// For a parent that is about to get the newest record for another child. Takes that record
    /// back when there is no memory.
    void IndexOnlyChild(NodeType const& parent)
    {
        if (parent.firstChild == 0 || parent.firstChild != parent.lastChild)
            return;
        NodeType const& only = RecordOf(parent.firstChild);
        if (!HasValue(only))
            return;
        try {
            children_.Insert(parent.id, LookUpKey<T>::Of(only.value), only.id);
        } catch (...) {
            records_.pop_back();
            throw;
        }
    }

    /// First of the current node's children that may have that key; 0 when there is none.
    IdType GetFirstChild(std::string_view key) const
    {
        if (!HasRecord(currentId_))
            return children_.GetFirst(currentId_, key);
        NodeType const& parent = RecordOf(currentId_);
        if (parent.firstChild != parent.lastChild)
            return children_.GetFirst(currentId_, key);
        bool const isFindable = parent.firstChild != 0 && HasValue(RecordOf(parent.firstChild));
        return isFindable ? parent.firstChild : 0;
    }

    /// The record of id n stands at n - 1: ids have no gaps.
    Records records_;
    IdType currentId_ = RootId;
    ChildIndex children_;
};

} // namespace Zyl2Adt

#endif
