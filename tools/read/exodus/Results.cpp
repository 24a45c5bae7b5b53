#include "Results.h"

#include "common/UniqueNames.h"

#include <type_traits>

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

Results::Results(Database const& database, Exchange::Report& report)
    : report_(report), database_(database), times_(asDoubles(database_.times())),
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
}

Exchange::StepInfo Results::step(std::size_t index) const
{
    Exchange::StepInfo info;
    info.name = "Step " + std::to_string(index + 1);
    info.time = times_[index];
    Reals const values = database_.globalVariables(index, globalNames_.size());
    for (std::size_t i = 0; i < globalNames_.size(); ++i)
        info.attributes.emplace_back(globalNames_[i], report_.narrow(realAt(values, i)));
    return info;
}

void Results::readStep(std::size_t index, MeshRows const& rows, FieldVisitor const& visit) const
{
    for (VariableGroup const& group : nodeGroups_)
        readNodeFields(index, group, rows, visit);
    for (std::size_t block = 0; block < rows.blocks.size(); ++block)
        readElementFields(index, block, rows.blocks[block], visit);
}

void Results::readNodeFields(std::size_t step, VariableGroup const& group, MeshRows const& rows,
                             FieldVisitor const& visit) const
{
    std::vector<Exchange::Field> fields;
    for (std::size_t p = 0; p < rows.partCount(); ++p)
        fields.push_back(emptyField(group, p, Exchange::Location::Nodes));
    for (std::size_t c = 0; c < group.components.size(); ++c) {
        if (group.components[c] == nodeVariableCount_)
            continue;
        Reals const values =
            database_.variable(step, EX_NODAL, group.components[c], 1, database_.nodeCount());
        for (Exchange::Field& field : fields) {
            std::vector<std::uint32_t> const& nodes = rows.nodesOfPart(field.part);
            if (c == 0)
                makeRoom(field, values, nodes.size());
            fill(field, c, values, &nodes);
        }
    }
    for (Exchange::Field& field : fields) {
        if (!rows.nodesOfPart(field.part).empty())
            visit(field);
        field = {};
    }
}

bool Results::isOnBlock(std::size_t variable, std::size_t block) const
{
    return variable == elementVariables_.size() ||
           truthTable_[block * elementVariables_.size() + variable] != 0;
}

bool Results::isOnBlock(VariableGroup const& group, std::size_t block) const
{
    for (std::size_t const variable : group.components)
        if (!isOnBlock(variable, block))
            return false;
    return true;
}

void Results::readElementFields(std::size_t step, std::size_t block, PartRows const& rows,
                                FieldVisitor const& visit) const
{
    if (rows.isLeftOut || rows.elementCount == 0)
        return;
    for (VariableGroup const& group : elementGroups_) {
        if (isOnBlock(group, block)) {
            visit(elementField(step, group, block, rows));
            continue;
        }
        for (std::size_t const variable : group.components)
            if (variable != elementVariables_.size() && isOnBlock(variable, block))
                visit(elementField(step, singleGroup(elementVariables_, variable), block, rows));
    }
}

Exchange::Field Results::elementField(std::size_t step, VariableGroup const& group,
                                      std::size_t block, PartRows const& rows) const
{
    Exchange::Field field = emptyField(group, block, Exchange::Location::Elements);
    for (std::size_t c = 0; c < group.components.size(); ++c) {
        if (group.components[c] == elementVariables_.size())
            continue;
        Reals const values = database_.variable(step, EX_ELEM_BLOCK, group.components[c], rows.id,
                                                rows.elementCount);
        if (c == 0)
            makeRoom(field, values, rows.elementCount);
        fill(field, c, values, nullptr);
    }
    return field;
}

} // namespace Exodus
