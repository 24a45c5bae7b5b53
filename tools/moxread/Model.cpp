#include "moxread/Model.h"

#include "moxread/FormatError.h"
#include "moxread/KeyStream.h"
#include "moxread/TreeLoader.h"
#include "moxread/VariableCheck.h"

#include <algorithm>
#include <tuple>

namespace MoxRead {

namespace {

GlobalInformation readGlobalInformation(Container const& container)
{
    KeyStream stream(container, "Global Information");
    return GlobalInformation::read(stream);
}

// Where and how a variable's values lie in the heavy data.
auto pieceOf(Variable const* variable)
{
    return std::make_tuple(variable->dataPosition, variable->valueCount, variable->width,
                           variable->elementCode());
}

bool liesBefore(Variable const* left, Variable const* right)
{
    return pieceOf(left) < pieceOf(right);
}

// Ends the threads that read ahead when a reading function returns or throws.
class ReadingAhead
{
public:
    explicit ReadingAhead(Model& model) : model_(model) {}
    ~ReadingAhead() { model_.expect({}); }
    ReadingAhead(ReadingAhead const&) = delete;
    ReadingAhead& operator=(ReadingAhead const&) = delete;

private:
    Model& model_;
};

} // namespace

Model::Model(std::string const& path, ReadOptions const& options)
    : hasValues_(!options.isOutline),
      files_(PartitionIndex::isIndex(path) ? std::make_unique<PartitionFiles>(path, options)
                                           : nullptr),
      container_(std::make_unique<Container>(files_ ? files_->firstPath() : path, options)),
      nodes_(files_ ? files_->takeNodes() : TreeLoader(*container_).load()),
      globalInformation_(readGlobalInformation(*container_)), heavy_(*container_)
{
    if (files_ == nullptr) {
        checkViewPoints();
        VariableCheck const check(nodes_, heavy_);
        check.run();
        if (hasValues_)
            check.checkExtents();
    }
    findTargets();
}

Container const& Model::container() const noexcept
{
    return *container_;
}

std::vector<std::string> Model::remarks() const
{
    return files_ ? files_->remarks() : std::vector<std::string>();
}

std::size_t Model::blockCount() const
{
    return files_ ? files_->blockCount() : container_->blockCount();
}

std::uint64_t Model::bytes() const
{
    return files_ ? files_->bytes() : container_->file().size();
}

GlobalInformation const& Model::globalInformation() const noexcept
{
    return globalInformation_;
}

std::vector<Node> const& Model::nodes() const noexcept
{
    return nodes_;
}

Node const& Model::node(std::uint32_t id) const
{
    return nodes_.at(std::size_t{id} - 1);
}

Node const* Model::find(std::vector<std::string> const& names) const
{
    Node const* found = nullptr;
    std::uint32_t candidate = 1;
    for (std::string const& name : names) {
        while (candidate != 0 && node(candidate).name != name)
            candidate = node(candidate).nextSibling;
        if (candidate == 0)
            return nullptr;
        found = &node(candidate);
        candidate = found->firstChild;
    }
    return found;
}

Variable const* Model::variable(std::uint32_t nodeId, std::string const& name) const
{
    Geometry const* const geometry = node(nodeId).geometry();
    if (geometry == nullptr)
        return nullptr;
    auto const found =
        std::find_if(geometry->variables.begin(), geometry->variables.end(),
                     [&](Variable const& candidate) { return candidate.name == name; });
    return found == geometry->variables.end() ? nullptr : &*found;
}

Variable const& Model::variable(VariableReference const& reference) const
{
    return std::get<Geometry>(node(reference.nodeId).content).variables.at(reference.index);
}

Variable const& Model::resolve(Variable const& variable) const
{
    if (!variable.linked)
        return variable;
    Variable const& next = this->variable(variable.link);
    return next.linked ? *targets_.at(&next) : next;
}

Dataset Model::read(Variable const& variable)
{
    Dataset dataset;
    readInto(dataset, variable);
    return dataset;
}

void Model::readInto(Dataset& dataset, Variable const& variable)
{
    Variable const& stored = resolve(variable);
    if (files_ != nullptr)
        dataset = files_->read(stored);
    else
        dataset.take(stored, heavy_.bytesAt(stored.dataPosition));
}

void Model::read(Variables variables, DatasetVisitor const& visit)
{
    std::stable_sort(variables.begin(), variables.end(), liesBefore);
    expect(variables);
    ReadingAhead const ahead(*this);
    Dataset dataset;
    for (auto first = variables.begin(); first != variables.end();) {
        auto const last = std::find_if(first, variables.end(), [&](Variable const* variable) {
            return pieceOf(variable) != pieceOf(*first);
        });
        readInto(dataset, **first);
        visit(Variables(first, last), dataset);
        first = last;
    }
}

void Model::expect(Variables const& variables)
{
    std::vector<std::uint64_t> positions;
    positions.reserve(variables.size());
    for (Variable const* variable : variables)
        positions.push_back(resolve(*variable).dataPosition);
    if (files_ != nullptr)
        files_->expect(positions);
    else
        heavy_.expect(positions);
}

void Model::readAll(DatasetVisitor const& visit)
{
    read(storedVariables(), visit);
}

void Model::checkValues(ProgressVisitor const& tell) const
{
    if (files_ != nullptr)
        return files_->checkValues(tell);
    heavy_.check(tell);
}

std::size_t Model::heavyBlock(Variable const& variable) const
{
    Variable const& stored = resolve(variable);
    return files_ ? files_->heavyBlock(stored) : heavy_.blockAt(stored.dataPosition);
}

std::size_t Model::variableCount() const
{
    std::size_t count = 0;
    for (Node const& node : nodes_)
        count += node.geometry() == nullptr ? 0 : node.geometry()->variables.size();
    return count;
}

std::uint64_t Model::heavyLength() const
{
    return files_ ? files_->heavyLength() : heavy_.length();
}

std::uint64_t Model::unusedHeavyLength() const
{
    std::uint64_t unused = 0;
    std::uint64_t end = 0;
    for (Variable const* stored : storedVariables()) {
        if (stored->dataPosition > end)
            unused += stored->dataPosition - end;
        end = std::max(end, stored->dataPosition + stored->byteCount());
    }
    return unused + (heavyLength() - end);
}

// In the order of their positions.
Model::Variables Model::storedVariables() const
{
    Variables result;
    for (Node const& node : nodes_) {
        if (node.geometry() == nullptr)
            continue;
        for (Variable const& variable : node.geometry()->variables)
            if (!variable.linked)
                result.push_back(&variable);
    }
    std::stable_sort(result.begin(), result.end(), liesBefore);
    return result;
}

void Model::findTargets()
{
    for (Node const& node : nodes_) {
        if (node.geometry() == nullptr)
            continue;
        for (Variable const& variable : node.geometry()->variables)
            findTarget(variable);
    }
}

// Links may form one chain of all variables; each of its ends is found in one walk, and for all
// that the walk passes.
void Model::findTarget(Variable const& variable)
{
    std::vector<Variable const*> passed;
    Variable const* current = &variable;
    while (current->linked) {
        auto const known = targets_.find(current);
        if (known == targets_.end())
            passed.push_back(current);
        current = known == targets_.end() ? &this->variable(current->link) : known->second;
    }
    for (Variable const* link : passed)
        targets_.emplace(link, current);
}

// The key is reserved; nothing is known that could stand there.
void Model::checkViewPoints() const
{
    KeyStream(*container_, "View Points").expectEnd();
}

} // namespace MoxRead
