#include "Handle.h"
#include "OtherModels.h"
#include "Text.h"

#include <Zyl2/Mox2/ArrayView.h>
#include <Zyl2/Mox2/DatasetType.h>
#include <Zyl2/Mox2/IdsView.h>
#include <Zyl2/Mox2/NodeType.h>
#include <Zyl2/Mox2/StepList.h>

#include "Zyl2/Mox2/Adder/ArrayCounts.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string>

using Bindings::ModelCalls;
using Zyl2::C::contentOf;
using Zyl2::C::contentOr;
using Zyl2::C::guarded;
using Zyl2::C::refuse;
using Zyl2::C::separatorFrom;
using Zyl2::C::textFrom;
using Zyl2::C::textsFrom;
using Zyl2::Exception::sentence;

namespace Mox2 = Zyl2::Mox2;
using Mox2::ArrayView;
using Mox2::Attributes;
using Mox2::DatasetType;
using Mox2::Model;
using Mox2::NodeType;

static_assert(MOX_INVALID_ID == Model::INVALID_ID);

static_assert(MOX_FLAGGED_ROOT_GROUP == static_cast<int>(NodeType::FlaggedRootGroup));
static_assert(MOX_ROOT_GROUP == static_cast<int>(NodeType::RootGroup));
static_assert(MOX_GROUP == static_cast<int>(NodeType::Group));
static_assert(MOX_SHAPE == static_cast<int>(NodeType::Shape));

static_assert(MOX_FLOAT32 == static_cast<int>(ArrayView::Element::Float32));
static_assert(MOX_FLOAT64 == static_cast<int>(ArrayView::Element::Float64));
static_assert(MOX_INT32 == static_cast<int>(ArrayView::Element::Int32));
static_assert(MOX_UINT32 == static_cast<int>(ArrayView::Element::UInt32));
static_assert(MOX_INT64 == static_cast<int>(ArrayView::Element::Int64));
static_assert(MOX_UINT64 == static_cast<int>(ArrayView::Element::UInt64));

static_assert(MOX_CONNECTIVITY1 == static_cast<int>(DatasetType::Connectivity1));
static_assert(MOX_CONNECTIVITY2 == static_cast<int>(DatasetType::Connectivity2));
static_assert(MOX_CONNECTIVITY3 == static_cast<int>(DatasetType::Connectivity3));
static_assert(MOX_POLYLENGTH1 == static_cast<int>(DatasetType::Polylength1));
static_assert(MOX_POLYLENGTH2 == static_cast<int>(DatasetType::Polylength2));
static_assert(MOX_POLYLENGTH3 == static_cast<int>(DatasetType::Polylength3));
static_assert(MOX_PART_ELEMENTS1 == static_cast<int>(DatasetType::PartElements1));
static_assert(MOX_PART_ELEMENTS2 == static_cast<int>(DatasetType::PartElements2));
static_assert(MOX_PART_ELEMENTS3 == static_cast<int>(DatasetType::PartElements3));
static_assert(MOX_COORDINATES == static_cast<int>(DatasetType::Coordinates));
static_assert(MOX_RESULT10 == static_cast<int>(DatasetType::Result10));
static_assert(MOX_RESULT11 == static_cast<int>(DatasetType::Result11));
static_assert(MOX_RESULT12 == static_cast<int>(DatasetType::Result12));
static_assert(MOX_RESULT13 == static_cast<int>(DatasetType::Result13));
static_assert(MOX_RESULT14 == static_cast<int>(DatasetType::Result14));
static_assert(MOX_RESULT15 == static_cast<int>(DatasetType::Result15));
static_assert(MOX_RESULT16 == static_cast<int>(DatasetType::Result16));
static_assert(MOX_RESULT17 == static_cast<int>(DatasetType::Result17));
static_assert(MOX_RESULT18 == static_cast<int>(DatasetType::Result18));
static_assert(MOX_RESULT19 == static_cast<int>(DatasetType::Result19));
static_assert(MOX_RESULT20 == static_cast<int>(DatasetType::Result20));
static_assert(MOX_RESULT21 == static_cast<int>(DatasetType::Result21));
static_assert(MOX_RESULT22 == static_cast<int>(DatasetType::Result22));
static_assert(MOX_RESULT23 == static_cast<int>(DatasetType::Result23));
static_assert(MOX_RESULT24 == static_cast<int>(DatasetType::Result24));
static_assert(MOX_RESULT25 == static_cast<int>(DatasetType::Result25));
static_assert(MOX_RESULT26 == static_cast<int>(DatasetType::Result26));
static_assert(MOX_NODE_IDS == static_cast<int>(DatasetType::NodeIds));
static_assert(MOX_ELEMENT_IDS == static_cast<int>(DatasetType::ElementIds));
static_assert(MOX_DISPLACEMENT == static_cast<int>(DatasetType::Displacement));
static_assert(MOX_DISPLACEMENT6 == static_cast<int>(DatasetType::Displacement6));
static_assert(static_cast<int>(MOX_NODE_SCALAR) == static_cast<int>(DatasetType::NodeScalar));
static_assert(static_cast<int>(MOX_NODE_VECTOR) == static_cast<int>(DatasetType::NodeVector));
static_assert(static_cast<int>(MOX_NODE_VECTOR6) == static_cast<int>(DatasetType::NodeVector6));
static_assert(static_cast<int>(MOX_NODE_TENSOR) == static_cast<int>(DatasetType::NodeTensor));
static_assert(static_cast<int>(MOX_ELEMENT_SCALAR) == static_cast<int>(DatasetType::ElementScalar));
static_assert(static_cast<int>(MOX_ELEMENT_VECTOR) == static_cast<int>(DatasetType::ElementVector));
static_assert(static_cast<int>(MOX_ELEMENT_TENSOR) == static_cast<int>(DatasetType::ElementTensor));

namespace {

/// Makes a call of a model, which remembers how it failed.
template <typename Action>
mox_status callOf(mox_model* model, Action action) noexcept
{
    auto* const content = Zyl2::C::findContent(model);
    return guarded(content == nullptr ? nullptr : &content->error,
                   [&] { action(*contentOf(model).model); });
}

/// The same for calls that add: where many ranks hold the model, each of them learns of what one
/// was refused, even if it was refused here.
template <typename Action>
mox_status addTo(mox_model* model, Action action) noexcept
{
    mox_status const status = callOf(model, action);
    auto* const content = Zyl2::C::findContent(model);
    if (status != MOX_OK && content != nullptr)
        content->model->fail(content->error.text(), status);
    return status;
}

Attributes const& attributesFrom(mox_attributes const* attributes)
{
    return contentOr(attributes, Model::emptyAttributes());
}

template <typename T>
void give(T* result, T value)
{
    if (result != nullptr)
        *result = value;
}

void demandPlaceFor(uint32_t const* id)
{
    if (id == nullptr)
        refuse("nothing to return the id in");
}

void give(uint32_t* results, Mox2::Array1d<unsigned int> const& ids)
{
    if (results != nullptr)
        std::copy_n(ids.data(), ids.size(), results);
}

ArrayView viewFrom(mox_array const* values)
{
    if (values == nullptr)
        refuse("the array is null");
    if (values->element < MOX_FLOAT32 || values->element > MOX_UINT64)
        refuse(sentence(values->element, " is no type of elements"));
    return {values->data,       static_cast<ArrayView::Element>(values->element),
            values->rows,       values->columns,
            values->row_stride, values->column_stride};
}

Mox2::IdsView idsFrom(uint32_t const* ids, size_t count)
{
    constexpr size_t mostIds = 0x7FFFFFFF;
    if (count > mostIds) {
        constexpr size_t largest = std::numeric_limits<std::int64_t>::max();
        Mox2::Adder::checkArrayCounts(0, 0, static_cast<std::int64_t>(std::min(count, largest)));
    }
    if (ids == nullptr && count != 0)
        refuse(sentence(count, " ids, but a null pointer"));
    return {ids, count};
}

Mox2::StepList stepsFrom(mox_steps const* steps)
{
    static std::vector<Mox2::Step> const noStep(1);
    auto const& given = contentOr(steps, noStep);
    Mox2::StepList result(given.size());
    for (std::size_t index = 0; index < given.size(); ++index)
        result.set(index, given[index]);
    return result;
}

} // namespace

namespace Zyl2 {
namespace C {

mox_status createModel(mox_model** model, char const* path, std::size_t pathLength,
                       mox_options const* options, ModelMaker& maker) noexcept
{
    bool isMaking = false;
    mox_status const status = create(model, [&] {
        std::string const text = textFrom(path, pathLength, "path");
        Mox2::SaverOptions const given = contentOr(options, Mox2::SaverOptions());
        isMaking = true;
        return std::make_unique<ModelContent>(maker.make(text, given));
    });
    if (!isMaking)
        maker.giveUp();
    return status;
}

mox_status callModel(mox_model* model, void (*call)(ModelCalls& model, void* context),
                     void* context) noexcept
{
    return callOf(model, [=](ModelCalls& content) { call(content, context); });
}

} // namespace C
} // namespace Zyl2

mox_status mox_model_create(mox_model** model)
{
    return Zyl2::C::create(model);
}

mox_status mox_model_destroy(mox_model* model)
{
    if (model == nullptr)
        return MOX_OK;
    mox_status const closed = mox_model_close(model);
    if (closed != MOX_INVALID_HANDLE)
        Zyl2::C::destroy(model);
    return closed;
}

char const* mox_model_error(mox_model const* model)
{
    auto const* const content = Zyl2::C::findContent(model);
    return content == nullptr ? mox_last_error() : content->error.text();
}

mox_status mox_model_save_to(mox_model* model, char const* path, size_t path_length,
                             mox_options const* options)
{
    return callOf(model, [=](ModelCalls& content) {
        content.saveTo(textFrom(path, path_length, "path"),
                       contentOr(options, Mox2::SaverOptions()));
    });
}

mox_status mox_model_save_to_wide(mox_model* model, wchar_t const* path, size_t path_length,
                                  mox_options const* options)
{
    return callOf(model, [=](ModelCalls& content) {
        content.saveTo(textFrom(path, path_length, "path"),
                       contentOr(options, Mox2::SaverOptions()));
    });
}

mox_status mox_model_add_node(mox_model* model, mox_node_type type, char const* name,
                              size_t name_length, mox_attributes const* attributes, uint32_t* id)
{
    return addTo(model, [=](ModelCalls& content) {
        give(id, content.addNode(static_cast<NodeType>(type), textFrom(name, name_length, "name"),
                                 attributesFrom(attributes)));
    });
}

mox_status mox_model_set_node_data(mox_model* model, uint32_t id, mox_properties const* properties,
                                   mox_attributes const* attributes)
{
    return addTo(model, [=](ModelCalls& content) {
        content.setNodeData(id, contentOr(properties, Mox2::NodeProperties()),
                            attributesFrom(attributes));
    });
}

mox_status mox_model_get_node_id(mox_model* model, char const* path, size_t path_length,
                                 char const* separator, size_t separator_length, uint32_t* id)
{
    return callOf(model, [=](ModelCalls& content) {
        demandPlaceFor(id);
        *id = content.getNodeId(textFrom(path, path_length, "path"),
                                separatorFrom(separator, separator_length));
    });
}

mox_status mox_model_get_node_id_by_names(mox_model* model, char const* const* names,
                                          size_t const* name_lengths, size_t name_count,
                                          uint32_t* id)
{
    return callOf(model, [=](ModelCalls& content) {
        demandPlaceFor(id);
        *id = content.getNodeId(textsFrom(names, name_lengths, name_count, "name"));
    });
}

mox_status mox_model_set_current_node_id(mox_model* model, uint32_t id)
{
    return callOf(model, [=](ModelCalls& content) { content.setCurrentNodeId(id); });
}

mox_status mox_model_move_to_parent_node(mox_model* model, uint32_t* parent)
{
    return callOf(model, [=](ModelCalls& content) { give(parent, content.moveToParentNode()); });
}

mox_status mox_model_add_components(mox_model* model, char const* const* paths,
                                    size_t const* path_lengths, size_t path_count,
                                    char const* separator, size_t separator_length, uint32_t* ids)
{
    return addTo(model, [=](ModelCalls& content) {
        give(ids, content.addAssemblyComponents(textsFrom(paths, path_lengths, path_count, "path"),
                                                separatorFrom(separator, separator_length)));
    });
}

mox_status mox_model_add_component_map(mox_model* model, char const* const* paths,
                                       size_t const* path_lengths,
                                       mox_attributes const* const* attributes, size_t path_count,
                                       char const* separator, size_t separator_length,
                                       uint32_t* ids, size_t* id_count)
{
    return addTo(model, [=](ModelCalls& content) {
        auto const texts = textsFrom(paths, path_lengths, path_count, "path");
        std::map<std::string, Attributes> components;
        for (size_t index = 0; index < path_count; ++index)
            components[texts[index]] =
                attributesFrom(attributes == nullptr ? nullptr : attributes[index]);
        auto const added =
            content.addAssemblyComponents(components, separatorFrom(separator, separator_length));
        give(ids, added);
        give(id_count, size_t{added.size()});
    });
}

mox_status mox_model_add_array(mox_model* model, char const* name, size_t name_length,
                               mox_dataset_type type, mox_array const* values, uint32_t const* ids,
                               size_t id_count, mox_steps const* steps,
                               mox_attributes const* attributes)
{
    return addTo(model, [=](ModelCalls& content) {
        auto const datasetType = static_cast<DatasetType>(type);
        ArrayView const view = viewFrom(values);
        Mox2::IdsView const nodes = idsFrom(ids, id_count);
        Mox2::StepList const stepList = stepsFrom(steps);
        Attributes const& given = attributesFrom(attributes);
        if (name == nullptr)
            return content.addArray(nullptr, datasetType, view, nodes, stepList, given);
        std::string const text = textFrom(name, name_length, "name");
        content.addArray(&text, datasetType, view, nodes, stepList, given);
    });
}

mox_status mox_model_close(mox_model* model)
{
    return callOf(model, [](ModelCalls& content) { content.close(); });
}

mox_status mox_model_checkpoint(mox_model* model, int* on_disk)
{
    return callOf(model, [=](ModelCalls& content) {
        bool const isOnDisk = content.checkpoint();
        if (on_disk != nullptr)
            *on_disk = isOnDisk ? 1 : 0;
    });
}

mox_status mox_model_waited_seconds(mox_model* model, double* seconds)
{
    return callOf(model, [=](ModelCalls const& content) {
        if (seconds != nullptr)
            *seconds = content.waitedSeconds();
    });
}

// Declared where it is of use: in moxwriter_mpi.h, which needs MPI.
extern "C" MOX_API mox_status mox_model_fail(mox_model* model, mox_status status,
                                             char const* sentence)
{
    return callOf(model, [=](ModelCalls& content) {
        if (sentence == nullptr)
            refuse("the sentence is null");
        content.fail(sentence, status);
    });
}
