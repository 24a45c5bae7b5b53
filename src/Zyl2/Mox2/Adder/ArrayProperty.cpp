#include "Zyl2/Mox2/Adder/ArrayProperty.h"

#include "Zyl2/Log/Statement.h"
#include "Zyl2/Mox/NumericArray.h"
#include "Zyl2/Mox2/Adder/ArrayCounts.h"
#include "Zyl2/Mox2/Helper/Attributes.h"
#include "Zyl2/Util/StridedValues.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

namespace {

/// Stands between the dataset's name and the step's.
constexpr char RecordSeparator = '\x1E';

template <typename T>
Zyl2Mox::ElementCode elementCode()
{
    return std::is_same_v<T, float> ? Zyl2Mox::ElementCode::Float
                                    : Zyl2Mox::ElementCode::UnsignedInt;
}

template <typename ArrayT>
Zyl2Mox::NumericArray describe(Data::StoredArray<ArrayT> const& array, std::uint8_t width)
{
    auto const values =
        static_cast<std::size_t>(array.rows()) * static_cast<std::size_t>(array.cols());
    using Scalar = typename ArrayT::Scalar;
    return {array.data(), values * sizeof(Scalar), width, elementCode<Scalar>()};
}

Zyl2Util::StridedValues stridedFrom(ArrayView const& view)
{
    return {static_cast<unsigned char const*>(view.data()),
            view.rows(),
            view.columns(),
            view.rowStride(),
            view.columnStride(),
            static_cast<Zyl2Util::StridedValues::Element>(view.element())};
}

Zyl2Mox::NumericArray describe(ArrayView const& view, std::uint8_t width)
{
    auto const element = Zyl2Util::AreStoredAsFloats(stridedFrom(view))
                             ? Zyl2Mox::ElementCode::Float
                             : Zyl2Mox::ElementCode::UnsignedInt;
    return {view.data(), view.rows() * view.columns() * sizeof(float), width, element};
}

Zyl2Mox::NumericArray describe(Recovery::RecoveredArray const& array, std::uint8_t width)
{
    auto const values =
        static_cast<std::size_t>(array.rows()) * static_cast<std::size_t>(array.columns());
    return {array.data(), values * sizeof(float), width, array.element()};
}

std::int64_t columnsOf(Recovery::RecoveredArray const& array)
{
    return array.columns();
}

std::int64_t rowsOf(Recovery::RecoveredArray const& array)
{
    return array.rows();
}

template <typename ArrayT>
std::int64_t columnsOf(Data::StoredArray<ArrayT> const& array)
{
    return array.cols();
}

/// A count that the signed type can't hold becomes its largest value, and is refused as large.
std::int64_t counted(std::size_t count)
{
    constexpr std::size_t Largest = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(std::min(count, Largest));
}

std::int64_t columnsOf(ArrayView const& view)
{
    return counted(view.columns());
}

template <typename ArrayT>
std::int64_t rowsOf(Data::StoredArray<ArrayT> const& array)
{
    return array.rows();
}

std::int64_t rowsOf(ArrayView const& view)
{
    return counted(view.rows());
}

Zyl2Mox::Tree::VariableId unpacked(std::uint64_t index)
{
    return {static_cast<unsigned int>(index), static_cast<unsigned int>(index >> 32U)};
}

} // namespace

template <typename DatasetT, typename ComponentsT, typename StepListT>
void ArrayProperty<DatasetT, ComponentsT, StepListT>::update(Database& database)
{
    database.assertOpenedForWriting();
    database.assertNotEmpty();
    if (dataset.array.rows() == 0 || components.size() == 0)
        return;
    checkArrayCounts(rowsOf(dataset.array), columnsOf(dataset.array), components.size());
    checkWidth();
    Zyl2Mox::Tree& tree = *database.tree;
    std::uint64_t const position = pieces == nullptr ? write(tree) : writePieces(tree);
    registerDataset(tree, position);
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
void ArrayProperty<DatasetT, ComponentsT, StepListT>::checkWidth() const
{
    auto const columns = columnsOf(dataset.array);
    if (columns != dataset.width)
        Exception::raiseFrom(Exception::Sites::ArrayAdder::OtherWidth, BOOST_CURRENT_FUNCTION,
                             Exception::sentence(title(), " needs ", dataset.width,
                                                 dataset.width == 1 ? " column" : " columns",
                                                 ", the array has ", columns));
}

/// What an `Array1d` or `Array2d` holds can be stored as it is. Other values are looked at on their
/// way, and taken back where one has no place.
template <typename DatasetT, typename ComponentsT, typename StepListT>
std::uint64_t ArrayProperty<DatasetT, ComponentsT, StepListT>::write(Zyl2Mox::Tree& tree) const
{
    auto const& array = dataset.array;
    if constexpr (std::is_same_v<DatasetT, ViewedDataset>) {
        if (array.data() == nullptr)
            Exception::raiseFrom(
                Exception::Sites::ArrayAdder::NoValues, BOOST_CURRENT_FUNCTION,
                Exception::sentence(title(), ": ", array.rows(), " rows, but a null pointer"));
        auto const position = tree.WriteStreamDataset(stridedFrom(array));
        if (!position)
            refuse(*Zyl2Util::FindMisfit(stridedFrom(array)));
        return *position;
    } else if constexpr (std::is_same_v<DatasetT, RecoveredDataset>) {
        return array.isElsewhere() ? array.position() : tree.WriteStreamDataset(array.values());
    } else {
        return tree.WriteStreamDataset(array.data(), static_cast<unsigned int>(array.rows()),
                                       dataset.width);
    }
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
void ArrayProperty<DatasetT, ComponentsT, StepListT>::refuse(Zyl2Util::Misfit const& misfit) const
{
    Exception::raiseFrom(Exception::Sites::ArrayAdder::ValueDoesNotFit, BOOST_CURRENT_FUNCTION,
                         Exception::sentence(title(), ": row ", misfit.row, ", column ",
                                             misfit.column, " holds ", misfit.value,
                                             ", which is beyond the range of ", misfit.range));
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
std::uint64_t
ArrayProperty<DatasetT, ComponentsT, StepListT>::writePieces(Zyl2Mox::Tree& tree) const
{
    return tree.WriteStreamDataset(static_cast<std::size_t>(dataset.array.rows()), dataset.width,
                                   [this](std::size_t missing) { return nextPiece(missing); });
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
Zyl2Util::StridedValues
ArrayProperty<DatasetT, ComponentsT, StepListT>::nextPiece(std::size_t missing) const
{
    ArrayView const piece = pieces->next();
    if (piece.element() != pieces->element() || piece.columns() != dataset.width ||
        piece.rows() == 0 || piece.rows() > missing)
        Exception::raiseFrom(Exception::Sites::ArrayAdder::OtherPiece, BOOST_CURRENT_FUNCTION,
                             Exception::sentence(title(), ": a piece of ", piece.rows(),
                                                 " rows and ", piece.columns(), " columns, where ",
                                                 missing, " rows are missing"));
    return stridedFrom(piece);
}

/// The dataset as failures speak of it: its type, and its name where that is another one.
template <typename DatasetT, typename ComponentsT, typename StepListT>
std::string ArrayProperty<DatasetT, ComponentsT, StepListT>::title() const
{
    return titleOf(dataset.type, dataset.name);
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
void ArrayProperty<DatasetT, ComponentsT, StepListT>::registerDataset(Zyl2Mox::Tree& tree,
                                                                      std::uint64_t position) const
{
    Zyl2Mox::NumericArray const array = describe(dataset.array, dataset.width);
    auto const variableType = DatasetT::geomTypeFrom(dataset.type);
    auto const datasetAttributes = Helper::Attributes::moxAttributeList(dataset.attributes);
    // Each step is converted once, when it is first registered and not earlier: where a step can't
    // be converted, the registrations of the steps before it stay in place.
    std::vector<std::pair<std::string, Zyl2Util::AttributeList>> variables;
    variables.reserve(steps.size());

    std::uint64_t firstResult = 0;
    for (std::ptrdiff_t component = 0; component < components.size(); ++component) {
        for (std::size_t step = 0; step < steps.size(); ++step) {
            if (step == variables.size())
                variables.emplace_back(registeredName(steps[step]),
                                       mergedAttributes(datasetAttributes, steps[step]));
            auto const& [name, attributes] = variables[step];
            std::uint64_t const result = tree.SetAndGetIndex(
                components[component], name, variableType, position, array, attributes);
            if (static_cast<unsigned int>(result) == 0) {
                if (step == 0)
                    Log::warn("Zyl2/Mox2/Adder/ArrayProperty", BOOST_CURRENT_FUNCTION, __LINE__,
                              title(), " was given to node ", components[component],
                              ", which is no shape and does not get it");
                continue;
            }
            if (firstResult == 0)
                firstResult = result;
            else if (result != firstResult)
                tree.SetLink(unpacked(result), unpacked(firstResult));
        }
    }
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
Zyl2Util::AttributeList ArrayProperty<DatasetT, ComponentsT, StepListT>::mergedAttributes(
    Zyl2Util::AttributeList const& datasetAttributes, StepData const& step) const
{
    auto merged = datasetAttributes;
    for (auto& [name, value] : Helper::Attributes::moxAttributeList(step.attributes))
        merged.emplace(name, value);
    return merged;
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
std::string
ArrayProperty<DatasetT, ComponentsT, StepListT>::registeredName(StepData const& step) const
{
    return step.name.empty() ? dataset.name : dataset.name + RecordSeparator + step.name;
}

template class ArrayProperty<DatasetOf<Array1d<float>>, ComponentArray, std::vector<StepData>>;
template class ArrayProperty<DatasetOf<Array1d<unsigned int>>, ComponentArray,
                             std::vector<StepData>>;
template class ArrayProperty<DatasetOf<Array2d<float>>, ComponentArray, std::vector<StepData>>;
template class ArrayProperty<DatasetOf<Array2d<unsigned int>>, ComponentArray,
                             std::vector<StepData>>;
template class ArrayProperty<ViewedDataset, ComponentArray, std::vector<StepData>>;
template class ArrayProperty<RecoveredDataset, ComponentArray, std::vector<StepData>>;

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2
