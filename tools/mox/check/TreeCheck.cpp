#include "TreeCheck.h"

#include "Kinds.h"

#include "moxread/NodePath.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <unordered_set>
#include <vector>

namespace Mox::Check {

namespace {

// The first number that is not as it should be, or nothing.
template <typename Condition>
std::optional<float> firstOther(std::vector<float> const& numbers, Condition const& condition)
{
    auto const found = std::find_if_not(numbers.begin(), numbers.end(), condition);
    return found == numbers.end() ? std::nullopt : std::optional<float>(*found);
}

template <typename Numbers>
void append(std::vector<float>& all, Numbers const& numbers)
{
    all.insert(all.end(), numbers.begin(), numbers.end());
}

std::string numberText(float number)
{
    std::ostringstream text;
    text << number;
    return text.str();
}

bool isShare(float number)
{
    return number >= 0 && number <= 1;
}

// The pieces of one shape that several ranks hold have its name all of them.
std::string nameWithRank(MoxRead::Model const& model, MoxRead::Node const& node)
{
    MoxRead::Node const* const geometry = MoxRead::geometryOf(model, node);
    if (geometry == nullptr || geometry->geometry()->variables.empty())
        return node.name;
    MoxRead::Attributes const& attributes = geometry->geometry()->variables.front().attributes;
    auto const rank = attributes.find("Rank");
    bool const isPiece = rank != attributes.end() && attributes.count("Ranks") != 0 &&
                         std::holds_alternative<std::uint32_t>(rank->second);
    return isPiece ? node.name + '\0' + std::to_string(std::get<std::uint32_t>(rank->second))
                   : node.name;
}

} // namespace

void TreeCheck::run()
{
    if (model_.node(1).type.empty())
        findings_.add({&Kinds::emptyModel, nullptr, nullptr, "a root", "none"});
    for (MoxRead::Node const& node : model_.nodes()) {
        checkNames(node);
        if (node.group() != nullptr)
            checkTransform(node);
        if (node.shape() != nullptr)
            checkMaterial(node);
    }
}

// Paths lead to the first of such nodes, or to none.
void TreeCheck::checkNames(MoxRead::Node const& parent)
{
    std::unordered_set<std::string> names;
    for (std::uint32_t id = parent.firstChild; id != 0; id = model_.node(id).nextSibling) {
        MoxRead::Node const& child = model_.node(id);
        if (!names.insert(nameWithRank(model_, child)).second)
            findings_.add({&Kinds::sameName, &child, nullptr, "a name of its own",
                           "the name of a node before it"});
    }
}

void TreeCheck::checkTransform(MoxRead::Node const& node)
{
    MoxRead::Group const& group = *node.group();
    std::vector<float> numbers;
    append(numbers, group.translation);
    append(numbers, group.rotation);
    append(numbers, group.scale);
    auto const other = firstOther(numbers, [](float number) { return std::isfinite(number); });
    if (other)
        findings_.add({&Kinds::transform, &node, nullptr, "finite numbers", numberText(*other)});
    if (std::count(group.scale.begin(), group.scale.end(), 0.0F) > 0)
        findings_.add({&Kinds::scaleOfZero, &node, nullptr, "factors other than 0 as scale",
                       "0, which makes all below the group flat"});
}

void TreeCheck::checkMaterial(MoxRead::Node const& node)
{
    MoxRead::Material const& material = node.shape()->material;
    std::vector<float> numbers = {material.transparency};
    for (MoxRead::Color const* color :
         {&material.diffuse, &material.specular, &material.emissive, &material.ambient})
        append(numbers, *color);
    auto const other = firstOther(numbers, isShare);
    if (other)
        findings_.add({&Kinds::material, &node, nullptr, "colours and transparency between 0 and 1",
                       numberText(*other)});
}

} // namespace Mox::Check
