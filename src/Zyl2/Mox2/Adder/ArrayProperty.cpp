#include "Zyl2/Mox2/Adder/ArrayProperty.h"

#include "Zyl2/Mox/NumericArray.h"
#include "Zyl2/Mox2/Adder/ArrayCounts.h"
#include "Zyl2/Mox2/Helper/Attributes.h"

#include <cstddef>
#include <cstdint>
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

template <typename View>
Zyl2Mox::NumericArray describe(View const& array, std::uint8_t width)
{
    auto const values =
        static_cast<std::size_t>(array.rows()) * static_cast<std::size_t>(array.cols());
    using Scalar = typename View::Scalar;
    return {array.data(), values * sizeof(Scalar), width, elementCode<Scalar>()};
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
    checkArrayCounts(dataset.array.rows(), dataset.array.cols(), components.size());
    checkWidth();
    Zyl2Mox::Tree& tree = *database.tree;
    std::uint64_t const position = tree.WriteStreamDataset(
        dataset.array.data(), static_cast<unsigned int>(dataset.array.rows()), dataset.width);
    registerDataset(tree, position);
}

template <typename DatasetT, typename ComponentsT, typename StepListT>
void ArrayProperty<DatasetT, ComponentsT, StepListT>::checkWidth() const
{
    if (dataset.array.cols() != dataset.width)
        Exception::raiseFrom(Exception::Sites::ArrayAdder::OtherWidth, BOOST_CURRENT_FUNCTION);
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
            if (static_cast<unsigned int>(result) == 0)
                continue;
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

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2
