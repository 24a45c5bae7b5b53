#include "LeftOut.h"

#include <array>
#include <cstdint>
#include <string>

namespace Exodus {

namespace {

struct Object
{
    std::int64_t ex_init_params::*count;
    char const* one;
    char const* many;
};

constexpr std::array<Object, 9> objects = {{
    {&ex_init_params::num_side_sets, "side set", "side sets"},
    {&ex_init_params::num_edge_blk, "edge block", "edge blocks"},
    {&ex_init_params::num_face_blk, "face block", "face blocks"},
    {&ex_init_params::num_edge_sets, "edge set", "edge sets"},
    {&ex_init_params::num_face_sets, "face set", "face sets"},
    {&ex_init_params::num_node_maps, "further node map", "further node maps"},
    {&ex_init_params::num_elem_maps, "further element map", "further element maps"},
    {&ex_init_params::num_edge_maps, "edge map", "edge maps"},
    {&ex_init_params::num_face_maps, "face map", "face maps"},
}};

struct VariableKind
{
    ex_entity_type type;
    char const* name;
};

constexpr std::array<VariableKind, 7> variableKinds = {{
    {EX_NODE_SET, "node sets"},
    {EX_ELEM_SET, "element sets"},
    {EX_SIDE_SET, "side sets"},
    {EX_EDGE_BLOCK, "edge blocks"},
    {EX_EDGE_SET, "edge sets"},
    {EX_FACE_BLOCK, "face blocks"},
    {EX_FACE_SET, "face sets"},
}};

void reportCount(std::int64_t count, std::string const& one, std::string const& many,
                 Exchange::Report& report)
{
    if (count > 0)
        report.warn(std::to_string(count) + " " + (count == 1 ? one + " was" : many + " were") +
                    " left out.");
}

std::int64_t countOf(Database const& database, ex_entity_type type)
{
    ex_init_params const& parameters = database.parameters();
    switch (type) {
    case EX_NODE_SET:
        return parameters.num_node_sets;
    case EX_ELEM_SET:
        return parameters.num_elem_sets;
    case EX_SIDE_SET:
        return parameters.num_side_sets;
    case EX_EDGE_BLOCK:
        return parameters.num_edge_blk;
    case EX_EDGE_SET:
        return parameters.num_edge_sets;
    case EX_FACE_BLOCK:
        return parameters.num_face_blk;
    default:
        return parameters.num_face_sets;
    }
}

void reportVariables(Database const& database, Exchange::Report& report)
{
    for (VariableKind const& kind : variableKinds)
        if (countOf(database, kind.type) > 0)
            reportCount(database.variableCount(kind.type), std::string("variable on ") + kind.name,
                        std::string("variables on ") + kind.name, report);
}

void reportBlockAttributes(Database const& database, Exchange::Report& report)
{
    std::int64_t attributes = 0;
    for (std::int64_t const id : database.ids(EX_ELEM_BLOCK, database.parameters().num_elem_blk))
        attributes += database.block(id).num_attribute;
    reportCount(attributes, "attribute of elements", "attributes of elements", report);
}

void reportDistributionFactors(Database const& database, Exchange::Report& report)
{
    std::int64_t sets = 0;
    for (std::int64_t const id : database.ids(EX_NODE_SET, database.parameters().num_node_sets))
        sets += database.hasDistributionFactors(EX_NODE_SET, id) ? 1 : 0;
    for (std::int64_t const id : database.ids(EX_ELEM_SET, database.parameters().num_elem_sets))
        sets += database.hasDistributionFactors(EX_ELEM_SET, id) ? 1 : 0;
    reportCount(sets, "list of distribution factors of sets",
                "lists of distribution factors of sets", report);
}

/// One property of each kind is the id, which is not left out.
void reportProperties(Database const& database, Exchange::Report& report)
{
    std::int64_t count = 0;
    for (ex_inquiry const question : {EX_INQ_EB_PROP, EX_INQ_NS_PROP, EX_INQ_ELS_PROP})
        if (std::int64_t const properties = database.inquire(question); properties > 1)
            count += properties - 1;
    reportCount(count, "property of blocks and sets", "properties of blocks and sets", report);
}

} // namespace

void reportWhatIsLeftOut(Database const& database, Exchange::Report& report)
{
    for (Object const& object : objects)
        reportCount(database.parameters().*object.count, object.one, object.many, report);
    reportVariables(database, report);
    reportBlockAttributes(database, report);
    reportDistributionFactors(database, report);
    reportProperties(database, report);
    reportCount(database.inquire(EX_INQ_COORD_FRAMES), "coordinate frame", "coordinate frames",
                report);
    reportCount(database.inquire(EX_INQ_NUM_CHILD_GROUPS), "group", "groups", report);
}

} // namespace Exodus
