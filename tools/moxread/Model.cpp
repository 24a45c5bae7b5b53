#include "moxread/Model.h"

#include "moxread/FormatError.h"
#include "moxread/KeyStream.h"
#include "moxread/TreeLoader.h"
#include "moxread/VariableCheck.h"

#include <algorithm>

namespace MoxRead {

namespace {

GlobalInformation readGlobalInformation(const Container& container)
{
    KeyStream stream(container, "Global Information");
    return GlobalInformation::read(stream);
}

bool liesBefore(const Variable* left, const Variable* right)
{
    return left->dataPosition < right->dataPosition;
}

} // namespace

Model::Model(const std::string& path)
    : container_(std::make_unique<Container>(path)), nodes_(TreeLoader(*container_).load()),
      globalInformation_(readGlobalInformation(*container_)), heavy_(*container_)
{
    checkViewPoints();
    VariableCheck(nodes_, heavy_).run();
}

const Container& Model::container() const noexcept
{
    return *container_;
}

const GlobalInformation& Model::globalInformation() const noexcept
{
    return globalInformation_;
}

const std::vector<Node>& Model::nodes() const noexcept
{
    return nodes_;
}

const Node& Model::node(std::uint32_t id) const
{
    return nodes_.at(std::size_t{id} - 1);
}

const Node* Model::find(const std::vector<std::string>& names) const
{
    const Node* found = nullptr;
    std::uint32_t candidate = 1;
    for (const std::string& name : names) {
        while (candidate != 0 && node(candidate).name != name) {
            candidate = node(candidate).nextSibling;
        }
        if (candidate == 0) {
            return nullptr;
        }
        found = &node(candidate);
        candidate = found->firstChild;
    }
    return found;
}

const Variable* Model::variable(std::uint32_t nodeId, const std::string& name) const
{
    const Geometry* const geometry = node(nodeId).geometry();
    if (geometry == nullptr) {
        return nullptr;
    }
    const auto found =
        std::find_if(geometry->variables.begin(), geometry->variables.end(),
                     [&](const Variable& candidate) { return candidate.name == name; });
    return found == geometry->variables.end() ? nullptr : &*found;
}

const Variable& Model::variable(const VariableReference& reference) const
{
    return std::get<Geometry>(node(reference.nodeId).content).variables.at(reference.index);
}

const Variable& Model::resolve(const Variable& variable) const
{
    const Variable* current = &variable;
    while (current->linked) {
        current = &this->variable(current->link);
    }
    return *current;
}

Dataset Model::read(const Variable& variable)
{
    const Variable& stored = resolve(variable);
    return Dataset::decode(stored, heavy_.bytesAt(stored.dataPosition));
}

void Model::readAll(const DatasetVisitor& visit)
{
    for (const Variable* stored : storedVariables()) {
        visit(*stored, read(*stored));
    }
}

void Model::checkValues() const
{
    heavy_.check();
}

std::size_t Model::variableCount() const
{
    std::size_t count = 0;
    for (const Node& node : nodes_) {
        count += node.geometry() == nullptr ? 0 : node.geometry()->variables.size();
    }
    return count;
}

std::uint64_t Model::heavyLength() const
{
    return heavy_.length();
}

std::uint64_t Model::unusedHeavyLength() const
{
    std::uint64_t unused = 0;
    std::uint64_t end = 0;
    for (const Variable* stored : storedVariables()) {
        if (stored->dataPosition > end) {
            unused += stored->dataPosition - end;
        }
        end = std::max(end, stored->dataPosition + stored->byteCount());
    }
    return unused + (heavy_.length() - end);
}

// In the order of their positions.
std::vector<const Variable*> Model::storedVariables() const
{
    std::vector<const Variable*> result;
    for (const Node& node : nodes_) {
        if (node.geometry() == nullptr) {
            continue;
        }
        for (const Variable& variable : node.geometry()->variables) {
            if (!variable.linked) {
                result.push_back(&variable);
            }
        }
    }
    std::stable_sort(result.begin(), result.end(), liesBefore);
    return result;
}

// The key is reserved; nothing is known that could stand there.
void Model::checkViewPoints() const
{
    KeyStream(*container_, "View Points").expectEnd();
}

} // namespace MoxRead
