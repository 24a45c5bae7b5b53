#include "Source.h"

#include "LeftOut.h"
#include "MeshReader.h"

#include "common/UniqueNames.h"

#include <type_traits>
#include <utility>

namespace Exodus {

namespace {

std::vector<double> asDoubles(Reals const& values)
{
    return std::visit(
        [](auto const& list) { return std::vector<double>(list.begin(), list.end()); }, values);
}

/// Names of the attributes that every step has are not free for global variables.
std::vector<std::string> globalNames(Database const& database)
{
    Common::UniqueNames names;
    for (char const* const taken : {"StepNumber", "Time", "TimeText"})
        names.make(taken);
    std::vector<std::string> made;
    for (std::string const& name : database.variableNames(EX_GLOBAL))
        made.push_back(names.make(name));
    return made;
}

void addQualityRecords(Database const& database, Exchange::AttributeList& attributes)
{
    static constexpr char const* parts[] = {" Code", " Version", " Date", " Time"};
    auto const records = database.qualityRecords();
    for (std::size_t i = 0; i < records.size(); ++i)
        for (std::size_t part = 0; part < records[i].size(); ++part)
            attributes.emplace_back("QA " + std::to_string(i + 1) + parts[part], records[i][part]);
}

void addInformationRecords(Database const& database, Exchange::AttributeList& attributes)
{
    auto const records = database.informationRecords();
    for (std::size_t i = 0; i < records.size(); ++i)
        attributes.emplace_back("Info " + std::to_string(i + 1), records[i]);
}

/// Room for a field, of the type that the values of its first component have.
void makeRoom(Exchange::Field& field, Reals const& like, std::size_t rows)
{
    std::visit(
        [&](auto const& list) {
            field.values = std::decay_t<decltype(list)>(rows * field.components);
        },
        like);
}

/// The component's values on the nodes or elements of the field's part. Without rows, all of them
/// are meant.
void fill(Exchange::Field& field, std::size_t component, Reals const& from,
          std::vector<std::uint32_t> const* rows)
{
    std::visit(
        [&](auto const& list) {
            auto& values = std::get<std::decay_t<decltype(list)>>(field.values);
            std::size_t const count = values.size() / field.components;
            for (std::size_t i = 0; i < count; ++i)
                values[i * field.components + component] = list[rows ? (*rows)[i] : i];
        },
        from);
}

Exchange::Field emptyField(VariableGroup const& group, std::size_t part,
                           Exchange::Location location)
{
    Exchange::Field field;
    field.name = group.name;
    field.part = part;
    field.location = location;
    field.components = group.components.size();
    field.componentNames = group.componentNames;
    return field;
}

} // namespace

Source::Source(std::filesystem::path const& path, Exchange::Report& report)
    : report_(report), database_(path), times_(asDoubles(database_.times())),
      globalNames_(globalNames(database_))
{
    std::vector<std::string> const nodeVariables = database_.variableNames(EX_NODAL);
    nodeVariableCount_ = nodeVariables.size();
    nodeGroups_ = groupsOf(nodeVariables, database_.parameters().num_dim);
    elementVariables_ = database_.variableNames(EX_ELEM_BLOCK);
    elementGroups_ = groupsOf(elementVariables_, database_.parameters().num_dim);
    truthTable_ = database_.truthTable(
        EX_ELEM_BLOCK, static_cast<std::size_t>(database_.parameters().num_elem_blk),
        elementVariables_.size());
    reportWhatIsLeftOut(database_, report_);
}

Exchange::AttributeList Source::attributes() const
{
    Exchange::AttributeList attributes;
    attributes.emplace_back("Title", database_.title());
    addQualityRecords(database_, attributes);
    addInformationRecords(database_, attributes);
    return attributes;
}

std::vector<Exchange::Part> Source::readParts()
{
    MeshReader reader(database_, report_);
    rows_ = reader.takeRows();
    return reader.takeParts();
}

Exchange::StepInfo Source::step(std::size_t index) const
{
    Exchange::StepInfo info;
    info.name = "Step " + std::to_string(index + 1);
    info.time = times_[index];
    Reals const values = database_.globalVariables(index, globalNames_.size());
    for (std::size_t i = 0; i < globalNames_.size(); ++i)
        info.attributes.emplace_back(globalNames_[i], report_.narrow(realAt(values, i)));
    return info;
}

void Source::readStep(std::size_t index, FieldVisitor const& visit)
{
    if (!rows_)
        readParts();
    for (VariableGroup const& group : nodeGroups_)
        readNodeFields(index, group, visit);
    for (std::size_t block = 0; block < rows_->blocks.size(); ++block)
        readElementFields(index, block, visit);
}

void Source::readNodeFields(std::size_t step, VariableGroup const& group, FieldVisitor const& visit)
{
    std::vector<Exchange::Field> fields;
    for (std::size_t p = 0; p < rows_->partCount(); ++p)
        fields.push_back(emptyField(group, p, Exchange::Location::Nodes));
    for (std::size_t c = 0; c < group.components.size(); ++c) {
        if (group.components[c] == nodeVariableCount_)
            continue;
        Reals const values =
            database_.variable(step, EX_NODAL, group.components[c], 1, database_.nodeCount());
        for (Exchange::Field& field : fields) {
            std::vector<std::uint32_t> const& nodes = rows_->nodesOfPart(field.part);
            if (c == 0)
                makeRoom(field, values, nodes.size());
            fill(field, c, values, &nodes);
        }
    }
    for (Exchange::Field& field : fields) {
        if (!rows_->nodesOfPart(field.part).empty())
            visit(field);
        field = {};
    }
}

bool Source::isOnBlock(std::size_t variable, std::size_t block) const
{
    return variable == elementVariables_.size() ||
           truthTable_[block * elementVariables_.size() + variable] != 0;
}

bool Source::isOnBlock(VariableGroup const& group, std::size_t block) const
{
    for (std::size_t const variable : group.components)
        if (!isOnBlock(variable, block))
            return false;
    return true;
}

void Source::readElementFields(std::size_t step, std::size_t block, FieldVisitor const& visit)
{
    if (rows_->blocks[block].isLeftOut || rows_->blocks[block].elementCount == 0)
        return;
    for (VariableGroup const& group : elementGroups_) {
        if (isOnBlock(group, block)) {
            visit(elementField(step, group, block));
            continue;
        }
        for (std::size_t const variable : group.components)
            if (variable != elementVariables_.size() && isOnBlock(variable, block))
                visit(elementField(step, singleGroup(elementVariables_, variable), block));
    }
}

Exchange::Field Source::elementField(std::size_t step, VariableGroup const& group,
                                     std::size_t block) const
{
    PartRows const& where = rows_->blocks[block];
    Exchange::Field field = emptyField(group, block, Exchange::Location::Elements);
    for (std::size_t c = 0; c < group.components.size(); ++c) {
        if (group.components[c] == elementVariables_.size())
            continue;
        Reals const values = database_.variable(step, EX_ELEM_BLOCK, group.components[c], where.id,
                                                where.elementCount);
        if (c == 0)
            makeRoom(field, values, where.elementCount);
        fill(field, c, values, nullptr);
    }
    return field;
}

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    return std::make_unique<Source>(path, report);
}

} // namespace Exodus
