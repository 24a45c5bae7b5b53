#include "Zyl2/Mox/Group.h"

#include "Zyl2/Mox/FloatVector.h"

namespace Zyl2Mox {

namespace {

namespace GroupSites = Zyl2::Exception::Sites::Group;

} // namespace

Group::Group(std::string const& name, Zyl2Util::AttributeList const& attributes)
    : Node(name), attributes_(attributes)
{}

std::string Group::GetType() const
{
    return "Group";
}

std::string Group::GetVersion() const
{
    return "0.4";
}

void Group::Load(std::string const& /*path*/) {}

void Group::Save() {}

void Group::SetTranslation(std::vector<float> const& values)
{
    CheckSize(values, 3, 3, GroupSites::Translation);
    CopyFirst(3, values, translation_);
}

void Group::SetRotation(std::vector<float> const& values)
{
    CheckSize(values, 4, 4, GroupSites::Rotation);
    CopyFirst(4, values, rotation_);
}

void Group::SetScale(std::vector<float> const& values)
{
    CheckSize(values, 3, 3, GroupSites::Scale);
    CopyFirst(3, values, scale_);
}

} // namespace Zyl2Mox
