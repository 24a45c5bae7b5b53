#include "moxread/VariableCheck.h"

#include "moxread/FormatError.h"
#include "moxread/Text.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <unordered_set>

namespace MoxRead {

namespace {

template <typename Visit>
void forEachVariable(std::vector<Node> const& nodes, Visit const& visit)
{
    for (Node const& node : nodes) {
        if (node.geometry() == nullptr)
            continue;
        std::vector<Variable> const& variables = node.geometry()->variables;
        for (std::uint32_t index = 0; index < variables.size(); ++index)
            visit(VariableReference{node.id, index}, variables[index]);
    }
}

} // namespace

VariableCheck::VariableCheck(std::vector<Node> const& nodes, HeavyData const& heavy)
    : nodes_(nodes), heavy_(heavy)
{}

void VariableCheck::run() const
{
    checkLinks();
    checkCycles();
    checkLinkedAttributes();
}

std::string VariableCheck::describe(VariableReference const& reference) const
{
    return "node " + std::to_string(reference.nodeId) + ": variable " +
           std::to_string(reference.index) + ": " + quoted(target(reference)->name);
}

// Null if there is no such variable.
Variable const* VariableCheck::target(VariableReference const& link) const
{
    if (link.nodeId == 0 || link.nodeId > nodes_.size())
        return nullptr;
    Geometry const* const geometry = nodes_[link.nodeId - 1].geometry();
    if (geometry == nullptr || link.index >= geometry->variables.size())
        return nullptr;
    return &geometry->variables[link.index];
}

void VariableCheck::checkLinks() const
{
    forEachVariable(nodes_, [&](VariableReference const& reference, Variable const& variable) {
        if (variable.linked)
            checkLink(reference, variable);
    });
}

void VariableCheck::checkLink(VariableReference const& reference, Variable const& variable) const
{
    if (target(variable.link) == nullptr) {
        throw FormatError(describe(reference) + ": link to variable " +
                          std::to_string(variable.link.index) + " of node " +
                          std::to_string(variable.link.nodeId) + ", which does not exist");
    }
}

// Every variable is passed once: what lies behind one that an earlier walk has passed is known to
// come to an end.
void VariableCheck::checkCycles() const
{
    std::unordered_set<Variable const*> ended;
    forEachVariable(nodes_, [&](VariableReference const& reference, Variable const& variable) {
        std::unordered_set<Variable const*> walked;
        Variable const* current = &variable;
        while (current->linked && ended.count(current) == 0) {
            if (!walked.insert(current).second)
                throw FormatError(describe(reference) + ": its links run in a circle");
            current = target(current->link);
        }
        ended.insert(walked.begin(), walked.end());
    });
}

void VariableCheck::checkLinkedAttributes() const
{
    forEachVariable(nodes_, [&](VariableReference const& reference, Variable const& variable) {
        if (variable.linked && !variable.attributes.empty())
            throw FormatError(describe(reference) + ": it is linked and has attributes");
    });
}

std::vector<VariableCheck::Extent> VariableCheck::extents() const
{
    std::vector<Extent> result;
    forEachVariable(nodes_, [&](VariableReference const& reference, Variable const& variable) {
        if (variable.linked)
            return;
        if (!heavy_.contains(variable.dataPosition, variable.byteCount()))
            throw FormatError(describe(reference) + ": its " +
                              std::to_string(variable.byteCount()) + " bytes at " +
                              std::to_string(variable.dataPosition) +
                              " are not within one block of the " +
                              std::to_string(heavy_.length()) + " bytes of \"Heavy Data\"");
        result.push_back({variable.dataPosition, variable.byteCount(), reference});
    });
    return result;
}

// A dataset is written in one piece: two of them are the same piece or have no byte in common.
void VariableCheck::checkExtents() const
{
    std::vector<Extent> all = extents();
    std::sort(all.begin(), all.end(), [](Extent const& left, Extent const& right) {
        return std::tie(left.start, left.length) < std::tie(right.start, right.length);
    });
    Extent const* last = nullptr;
    for (Extent const& extent : all) {
        if (extent.length == 0)
            continue;
        bool const same =
            last != nullptr && extent.start == last->start && extent.length == last->length;
        if (last != nullptr && !same && extent.start < last->start + last->length) {
            throw FormatError(describe(extent.variable) + ": its values overlap those of " +
                              describe(last->variable));
        }
        last = &extent;
    }
}

} // namespace MoxRead
