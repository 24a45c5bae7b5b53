#ifndef ZYL2_ADT_ADTTREE_H
#define ZYL2_ADT_ADTTREE_H

#include "Zyl2/Adt/ChildIndex.h"
#include "Zyl2/Adt/TreeNode.h"
#include "Zyl2/Exception/Raise.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>

namespace Zyl2Adt {

/// What all values that one functor of `Tree::MoveToChild` takes for the same have in common, for
/// payloads of type `T`. Specialised where look-ups must not depend on the number of children.
template <typename T>
struct LookUpKey
{
    static std::string_view Of(T const& /*value*/) { return {}; }
};

/// Tree with a cursor, the current node. Nodes are never removed; ids are handed out in increasing
/// order. The tree doesn't own what `T` points to.
template <typename T>
class Tree
{
public:
    using IdType = std::uint32_t;
    using ValueType = T;
    using NodeType = TreeNode<T>;
    using Records = std::map<IdType, NodeType>;

    /// Adds a child under the current node, without a value, and makes it current.
    /// \return the child's id
    IdType AddChild()
    {
        NodeType& parent = records_[currentId_];
        IdType const id = nextId_;
        NodeType& child = records_.emplace_hint(records_.end(), id, NodeType())->second;
        child.id = id;
        child.parent = currentId_;
        child.previousSibling = parent.lastChild;
        if (parent.lastChild != 0)
            records_[parent.lastChild].nextSibling = id;
        else
            parent.firstChild = id;
        parent.lastChild = id;
        ++nextId_;
        currentId_ = id;
        return id;
    }

    /// Gives the current node its value; values are looked up by `MoveToChild` from then on.
    /// \pre the node has no value
    /// \throws KeyNotFound the current node is none
    void SetCurrentValue(T const& value)
    {
        NodeType& node = GetCurrentNode();
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
            Zyl2::Exception::raise(Zyl2::Exception::KeyNotFound(), AdtSource, 106,
                                   BOOST_CURRENT_FUNCTION);
    }

    /// `MoveToChild` for callers that expect to find nothing.
    /// \return whether a child matched; the cursor stays when none does
    template <typename FunctorType>
    bool FindAndMoveToChild(T const& value, FunctorType functor)
    {
        for (IdType id = children_.GetFirst(currentId_, LookUpKey<T>::Of(value)); id != 0;
             id = children_.GetNext(id)) {
            NodeType const& node = GetReqNode(id);
            if (functor(value, node.value) && node.parent == currentId_) {
                currentId_ = id;
                return true;
            }
        }
        return false;
    }

    /// \throws KeyNotFound the current id has no record
    NodeType& GetCurrentNode()
    {
        auto const found = records_.find(currentId_);
        if (found == records_.end())
            Zyl2::Exception::raise(Zyl2::Exception::KeyNotFound(), AdtSource, 219,
                                   BOOST_CURRENT_FUNCTION);
        return found->second;
    }

    /// \throws KeyNotFound the id has no record
    NodeType const& GetReqNode(IdType const& id) const
    {
        auto const found = records_.find(id);
        if (found == records_.end())
            Zyl2::Exception::raise(Zyl2::Exception::KeyNotFound(), AdtSource, 254,
                                   BOOST_CURRENT_FUNCTION);
        return found->second;
    }

    /// Makes `id` current. Only ids that were never handed out are refused: 0, no node, is not.
    /// \throws KeyNotFound the cursor stays
    void SetCurrentId(IdType id)
    {
        if (id >= nextId_)
            Zyl2::Exception::raise(Zyl2::Exception::KeyNotFound(), AdtSource, 210,
                                   BOOST_CURRENT_FUNCTION);
        currentId_ = id;
    }

    IdType GetCurrentId() const { return currentId_; }
    IdType GetNextId() const { return nextId_; }
    std::size_t GetNodeCount() const { return records_.size(); }
    /// In ascending id order, which is the order of creation.
    Records const& GetRecords() const { return records_; }

protected:
    static constexpr IdType RootId = 1;

    /// A tree that holds the root, without a value; the root is current.
    Tree() { records_[RootId].id = RootId; }
    Tree(Tree const&) = delete;
    Tree& operator=(Tree const&) = delete;
    ~Tree() = default;

    /// Makes `id` current, whatever it is.
    void SetCurrentIdUnchecked(IdType id) { currentId_ = id; }

private:
    static constexpr char const* AdtSource = "Zyl2/Adt/AdtTree";

    Records records_;
    IdType nextId_ = RootId + 1;
    IdType currentId_ = RootId;
    ChildIndex children_;
};

} // namespace Zyl2Adt

#endif
