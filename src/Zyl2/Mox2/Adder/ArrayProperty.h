#ifndef ZYL2_MOX2_ADDER_ARRAYPROPERTY_H
#define ZYL2_MOX2_ADDER_ARRAYPROPERTY_H

#include <Zyl2/Mox2/ArrayPieces.h>

#include "Zyl2/Base/Modifier.h"
#include "Zyl2/Mox2/ArrayProperty.h"
#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/GetComponentArray.h"
#include "Zyl2/Mox2/StepData.h"
#include "Zyl2/Util/AttributeList.h"
#include "Zyl2/Util/Misfit.h"
#include "Zyl2/Util/StridedValues.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

/// Writes the values of a dataset once and registers them on every pair of a node and a step; all
/// registrations after the first are links to it.
template <typename DatasetT, typename ComponentsT, typename StepListT>
class ArrayProperty : public Base::Modifier<Database>
{
public:
    /// Without values, ids and steps.
    ArrayProperty() = default;

    /// \throws InvalidObjectState "File not open."; "File not opened in write mode"
    /// \throws UnderflowError, OverflowError counts that the format doesn't have; see
    ///         `checkArrayCounts`
    ///         and values of a view that have no place among the stored ones
    /// \throws InvalidArguments the width is not that of the dataset's type; an attribute of a
    ///         type that can't be stored; a view of nothing
    /// \throws KeyNotFound no record of an id
    void update(Database& database) override;

    DatasetT dataset;
    ComponentsT components;
    StepListT steps;
    /// Where the values of a view come from that only says how many there are; null otherwise.
    ArrayPieces* pieces = nullptr;

private:
    void checkWidth() const;
    std::uint64_t write(Zyl2Mox::Tree& tree) const;
    [[noreturn]] void refuse(Zyl2Util::Misfit const& misfit) const;
    std::uint64_t writePieces(Zyl2Mox::Tree& tree) const;
    Zyl2Util::StridedValues nextPiece(std::size_t missing) const;
    std::string title() const;
    void registerDataset(Zyl2Mox::Tree& tree, std::uint64_t position) const;
    Zyl2Util::AttributeList mergedAttributes(Zyl2Util::AttributeList const& datasetAttributes,
                                             StepData const& step) const;
    std::string registeredName(StepData const& step) const;
};

/// The adder for the values of a public array.
template <typename PublicArrayT>
using ArrayPropertyOf =
    ArrayProperty<DatasetOf<PublicArrayT>, ComponentArray, std::vector<StepData>>;

extern template class ArrayProperty<DatasetOf<Array1d<float>>, ComponentArray,
                                    std::vector<StepData>>;
extern template class ArrayProperty<DatasetOf<Array1d<unsigned int>>, ComponentArray,
                                    std::vector<StepData>>;
extern template class ArrayProperty<DatasetOf<Array2d<float>>, ComponentArray,
                                    std::vector<StepData>>;
extern template class ArrayProperty<DatasetOf<Array2d<unsigned int>>, ComponentArray,
                                    std::vector<StepData>>;
extern template class ArrayProperty<ViewedDataset, ComponentArray, std::vector<StepData>>;
extern template class ArrayProperty<RecoveredDataset, ComponentArray, std::vector<StepData>>;

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2

#endif
