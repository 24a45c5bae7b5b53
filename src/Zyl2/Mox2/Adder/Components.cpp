#include "Zyl2/Mox2/Adder/Components.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Mox2/Adder/Node.h"
#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/Component/PathSplitter.h"
#include "Zyl2/Mox2/Component/Traits.h"
#include "Zyl2/Mox2/Helper/Attributes.h"

#include <boost/algorithm/string/predicate.hpp>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

namespace {

namespace ComponentsSites = Exception::Sites::Components;

/// Any character of the separator makes a path absolute, as any of them separates its names.
bool isAbsolute(std::string const& path, std::string const& separator)
{
    return boost::algorithm::starts_with(path, separator) ||
           separator.find(path.front()) != std::string::npos;
}

} // namespace

/// Walks one path after the other through the tree.
template <typename ContainerT, typename IdsT>
class Components<ContainerT, IdsT>::Visitor
{
public:
    Visitor(Zyl2Mox::Tree& tree, std::string const& separator)
        : tree_(tree), separator_(separator), root_(tree.GetReqNode(RootId).value)
    {}

    /// Adds what the path names.
    /// \param id becomes that of the node that the path ends in; stays 0 for a path without names
    void visit(std::string const& path, Attributes const& attributes, unsigned int& id)
    {
        if (path.empty())
            return;
        if (!isAbsolute(path, separator_))
            Exception::raiseFrom(ComponentsSites::RelativePath, BOOST_CURRENT_FUNCTION,
                                 Exception::sentence("path \"", path, "\" does not begin with \"",
                                                     separator_, "\""));
        Component::PathSplitter const names(path, separator_.c_str());
        auto name = names.begin();
        auto const end = names.end();
        if (name == end)
            return;
        addMergeNode(std::string(*name));
        bool const endsInGroup = boost::algorithm::ends_with(path, separator_);
        for (++name; name != end;) {
            std::string const current(*name);
            ++name;
            if (name != end || endsInGroup)
                tree_.MoveToOrAddGroup(current);
            else
                tree_.MoveToOrAddShape(current);
        }
        id = tree_.GetCurrentId();
        // Converting refuses what can't be stored; paths carry no attributes into the tree.
        if (endsInGroup)
            static_cast<void>(Helper::Attributes::moxAttributeList(attributes));
        if (!attributes.map().empty())
            Log::warn("Zyl2/Mox2/Adder/Components", BOOST_CURRENT_FUNCTION, __LINE__, "The path \"",
                      path, "\" was given attributes: paths carry none, they are dropped");
    }

    /// Moves to the root, which a path's first name has to be; gives the tree one if it has none.
    /// \throws NotYetImplemented the root has another name
    void addMergeNode(std::string const& name)
    {
        if (root_ == nullptr) {
            tree_.SetRootGroup(name, Zyl2Util::AttributeList());
            root_ = tree_.GetReqNode(RootId).value;
            return;
        }
        if (root_->GetName() != name)
            Exception::raiseFrom(ComponentsSites::OtherRoot, BOOST_CURRENT_FUNCTION,
                                 Exception::sentence("a path begins with \"", name,
                                                     "\", the root is \"", root_->GetName(), "\""));
        tree_.SetCurrentId(RootId);
    }

private:
    Zyl2Mox::Tree& tree_;
    std::string const& separator_;
    Zyl2Mox::Node const* root_;
};

template <typename ContainerT, typename IdsT>
void Components<ContainerT, IdsT>::update(Database& database)
{
    if (paths.empty())
        return;
    database.assertOpenedForWriting();
    ids.setZero(static_cast<Eigen::Index>(paths.size()));
    database.assertNotEmpty();
    Visitor visitor(*database.tree, separator);
    using Traits = Component::Traits<ContainerT>;
    Eigen::Index index = 0;
    for (auto const& entry : paths)
        visitor.visit(Traits::path(entry), Traits::attributes(entry), ids(index++));
}

template class Components<std::vector<std::string>, ComponentArray>;
template class Components<std::map<std::string, Attributes>, ComponentArray>;

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2
