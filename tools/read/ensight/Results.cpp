#include "Results.h"

#include "Topology.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <utility>

namespace EnSight {

namespace {

constexpr float undefined = std::numeric_limits<float>::quiet_NaN();

} // namespace

Results::Results(DataFile& file, Mesh const& mesh, std::size_t firstPart,
                 CaseFile::Variable const& variable)
    : file_(file), mesh_(mesh), firstPart_(firstPart), variable_(variable)
{}

void Results::read(Exchange::Source::FieldVisitor const& visit)
{
    visit_ = &visit;
    bool const hasSharedNodes = !variable_.isPerElement && mesh_.sharedNodeCount > 0;
    if (hasSharedNodes)
        readSharedNodes();
    while (auto const words = file_.nextSection()) {
        if (words->front() == "part")
            readPart(*words);
        else
            readValues(*words);
    }
    finishPart();
    if (parts_.empty() && !hasSharedNodes && partAtEarlyEnd())
        file_.raise("has no values of the variable '" + variable_.name + "'");
}

/// A file has xx, yy, zz, xy, xz, yz; a model has yz before xz.
std::size_t Results::placeOf(std::size_t component) const
{
    static constexpr std::array<std::size_t, 6> ofSymmetric = {0, 1, 2, 3, 5, 4};
    return variable_.components == ofSymmetric.size() ? ofSymmetric[component] : component;
}

void Results::readSharedNodes()
{
    std::size_t const columns = variable_.components;
    std::vector<float> const all = file_.reals(mesh_.sharedNodeCount * columns);
    for (std::size_t i = 0; i < mesh_.parts.size(); ++i) {
        std::vector<float> values;
        values.reserve(mesh_.parts[i].sharedNodes.size() * columns);
        for (std::uint32_t const node : mesh_.parts[i].sharedNodes)
            for (std::size_t column = 0; column < columns; ++column)
                values.push_back(all[node * columns + placeOf(column)]);
        visit(i, std::move(values));
    }
}

void Results::readPart(Words const& words)
{
    finishPart();
    number_ = MeshPart::none;
    if (file_.isGold())
        number_ = static_cast<std::int64_t>(file_.count());
    else if (words.size() == 2 && words[1].find_first_not_of("0123456789") == std::string::npos &&
             words[1].size() < std::numeric_limits<std::int64_t>::digits10)
        number_ = std::stoll(words[1]);
    else
        file_.raiseUnknown();
    auto const known = mesh_.indices.find(number_);
    if (known == mesh_.indices.end())
        raiseLess();
    latestPart_ = known->second;
    part_ = &mesh_.parts[latestPart_];
    if (!parts_.insert(latestPart_).second)
        file_.raise("has values of the part " + std::to_string(number_) + " twice");
}

/// Where the mesh has nothing that could have values, it may have lost its end.
void Results::raiseLess() const
{
    file_.raise("has values of the part " + std::to_string(number_) + ", of which the mesh in '" +
                mesh_.path.string() + "' has less");
}

void Results::readValues(Words const& words)
{
    if (part_ == nullptr)
        file_.raiseUnknown();
    std::string const& type = words.front();
    bool const isOfBlock = type == "block";
    bool const isKnown =
        isOfBlock || (variable_.isPerElement ? topologyOf(type) != nullptr : type == "coordinates");
    if (!isKnown)
        file_.raiseUnknown();
    ElementBlock const* const block = part_->find(type);
    bool const isThere =
        variable_.isPerElement ? block != nullptr : isOfBlock == (part_->find("block") != nullptr);
    if (!isThere)
        raiseLess();
    if (!types_.insert(type).second)
        file_.raise("has values of '" + type + "' twice");
    if (variable_.isPerElement)
        readRows(words, block->first, block->count);
    else
        readRows(words, 0, part_->nodeCount);
}

void Results::readRows(Words const& words, std::size_t first, std::size_t count)
{
    std::size_t const columns = variable_.components;
    std::size_t const all = variable_.isPerElement ? part_->elementCount : part_->nodeCount;
    values_.resize(all * columns, undefined);
    float* const to = values_.data() + first * columns;
    if (!file_.isGold() && words.front() != "block") {
        std::vector<float> const rows = file_.reals(count * columns);
        for (std::size_t i = 0; i < rows.size(); ++i)
            to[i] = rows[i - i % columns + placeOf(i % columns)];
        return;
    }
    bool const isPartial = words.size() > 1 && words[1] == "partial";
    std::optional<float> mark;
    if (words.size() > 1 && words[1] == "undef")
        mark = file_.reals(1).front();
    else if (words.size() > 1 && !isPartial)
        file_.raiseUnknown();
    std::vector<std::uint32_t> const defined =
        isPartial ? readDefinedRows(count) : std::vector<std::uint32_t>();
    for (std::size_t column = 0; column < columns; ++column) {
        std::vector<float> const values = file_.reals(isPartial ? defined.size() : count);
        for (std::size_t i = 0; i < values.size(); ++i)
            to[(isPartial ? defined[i] : i) * columns + placeOf(column)] =
                mark && values[i] == *mark ? undefined : values[i];
    }
}

std::vector<std::uint32_t> Results::readDefinedRows(std::size_t count)
{
    std::vector<std::uint32_t> rows;
    for (std::int32_t const number : file_.integers(file_.count())) {
        if (number < 1 || static_cast<std::size_t>(number) > count)
            file_.raise("has a value of what is not there");
        rows.push_back(static_cast<std::uint32_t>(number - 1));
    }
    return rows;
}

void Results::finishPart()
{
    if (part_ == nullptr)
        return;
    if (types_.empty() && mayHaveValues(*part_))
        file_.raiseEnd();
    for (ElementBlock const& block : part_->blocks)
        if (variable_.isPerElement && block.count > 0 && !isGhost(block.type) &&
            types_.count(block.type) == 0)
            file_.raise("has no values of the '" + block.type + "' elements of the part " +
                        std::to_string(number_));
    if (!types_.empty())
        visit(latestPart_, std::move(values_));
    part_ = nullptr;
    values_.clear();
    types_.clear();
}

/// \param values of all nodes or elements that the file has
void Results::visit(std::size_t part, std::vector<float> values) const
{
    std::size_t const columns = variable_.components;
    Exchange::RowSelection const& kept = mesh_.parts[part].elements;
    if (variable_.isPerElement && !kept.isAll()) {
        for (std::size_t i = 0; i < kept.size(); ++i)
            std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(kept[i] * columns), columns,
                        values.begin() + static_cast<std::ptrdiff_t>(i * columns));
        values.resize(kept.size() * columns);
    }
    if (values.empty())
        return;
    Exchange::Field field;
    field.name = variable_.name;
    field.part = firstPart_ + part;
    field.location =
        variable_.isPerElement ? Exchange::Location::Elements : Exchange::Location::Nodes;
    field.components = columns;
    field.values = std::move(values);
    (*visit_)(field);
}

std::optional<std::int64_t> Results::partAtEarlyEnd() const
{
    std::size_t last = mesh_.parts.size();
    while (last > 0 && !mayHaveValues(mesh_.parts[last - 1]))
        --last;
    if (file_.isSeries() || last == 0 || parts_.count(last - 1) > 0)
        return std::nullopt;
    return number_;
}

bool Results::mayHaveValues(MeshPart const& part) const
{
    if (!variable_.isPerElement)
        return part.nodeCount > 0;
    return std::any_of(part.blocks.begin(), part.blocks.end(), [](ElementBlock const& block) {
        return block.count > 0 && !isGhost(block.type);
    });
}

} // namespace EnSight
