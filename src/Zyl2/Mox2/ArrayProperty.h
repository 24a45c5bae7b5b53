#ifndef ZYL2_MOX2_ARRAYPROPERTY_H
#define ZYL2_MOX2_ARRAYPROPERTY_H

#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/DatasetType.h>

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox2/Array1dImpl.h"
#include "Zyl2/Mox2/Array2dImpl.h"
#include "Zyl2/Mox2/Data/Data.h"
#include "Zyl2/Mox2/DatasetLayout.h"

#include <cstdint>
#include <string>

namespace Zyl2 {
namespace Mox2 {

/// A dataset: an array with attributes, a name, a type and the number of values per row.
template <typename DataT>
class ArrayProperty : public DataT
{
public:
    using typename DataT::ArrayType;

    /// No values, width 1, a type without default name.
    ArrayProperty() = default;

    /// A dataset under its type's default name.
    /// \throws InvalidArguments "Can't guess result name for specified type"; "Can't guess result
    ///         width for specified type"
    ArrayProperty(DatasetType datasetType, ArrayType const& values,
                  Attributes const& valueAttributes)
        : ArrayProperty(nameFrom(datasetType), datasetType, values, valueAttributes)
    {}

    /// A dataset under a name of its own.
    /// \throws InvalidArguments "Can't guess result width for specified type"
    ArrayProperty(std::string const& datasetName, DatasetType datasetType, ArrayType const& values,
                  Attributes const& valueAttributes)
        : DataT(values, valueAttributes), name(datasetName), type(datasetType),
          width(widthFrom(datasetType))
    {}

    /// Default name of a type.
    /// \throws InvalidArguments "Can't guess result name for specified type": there is none
    static std::string nameFrom(DatasetType type)
    {
        DatasetLayout const* const layout = findDatasetLayout(type);
        if (layout == nullptr || layout->name == nullptr)
            Exception::raiseFrom(Exception::Sites::ArrayProperty::NoDefaultName,
                                 BOOST_CURRENT_FUNCTION, lackOfName(type));
        return layout->name;
    }

    /// Values per row of a type.
    /// \throws InvalidArguments "Can't guess result width for specified type": it is no type
    static std::uint8_t widthFrom(DatasetType type)
    {
        DatasetLayout const* const layout = findDatasetLayout(type);
        if (layout == nullptr)
            Exception::raiseFrom(Exception::Sites::ArrayProperty::NoWidth, BOOST_CURRENT_FUNCTION,
                                 lackOfType(type));
        return layout->width;
    }

    /// Variable type of a type.
    /// \throws InvalidArguments "Can't guess result name for specified type": it is no type. The
    ///         text speaks of the name, as `nameFrom` does; hosts may know it so.
    static Zyl2Mox::Geometry::VariableType geomTypeFrom(DatasetType type)
    {
        DatasetLayout const* const layout = findDatasetLayout(type);
        if (layout == nullptr)
            Exception::raiseFrom(Exception::Sites::ArrayProperty::NoVariableType,
                                 BOOST_CURRENT_FUNCTION, lackOfType(type));
        return layout->variableType;
    }

    std::string name;
    DatasetType type = DatasetType::Result10;
    std::uint8_t width = 1;
};

/// The dataset that holds the values of a public array.
template <typename PublicArrayT>
using DatasetOf = ArrayProperty<Data::Data<typename PublicArrayT::Impl::ArrayType, Attributes>>;

/// The dataset of values that the host holds.
using ViewedDataset = ArrayProperty<Data::Data<ArrayView, Attributes>>;

/// The dataset of values that a recovery has found.
using RecoveredDataset = ArrayProperty<Data::Data<Recovery::RecoveredArray, Attributes>>;

} // namespace Mox2
} // namespace Zyl2

#endif
