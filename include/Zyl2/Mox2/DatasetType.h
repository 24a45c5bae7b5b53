#ifndef ZYL2_MOX2_DATASETTYPE_H
#define ZYL2_MOX2_DATASETTYPE_H

namespace Zyl2 {
namespace Mox2 {

/// What an array property holds. The type fixes how many values a row has (the width) and how a
/// reader lays them out; the name says what they are. Types with a default name may be added
/// without one.
///
/// Results have two names: a number, and, where it is known whether their rows are nodes or
/// elements, one that says so (`NodeScalar` is `Result10`). A result on nodes has one row for each
/// row of the coordinates, one on elements one for each element.
enum class DatasetType : unsigned int
{
    /// "Connectivity", width 1: rows of the coordinates, for elements of one dimension.
    Connectivity1 = 0,
    /// "Connectivity", width 1, for elements of two dimensions.
    Connectivity2 = 1,
    /// "Connectivity", width 1, for elements of three dimensions.
    Connectivity3 = 2,
    /// "Polylength", width 1: nodes per element, for elements of one dimension.
    Polylength1 = 3,
    /// "Polylength", width 1, for elements of two dimensions.
    Polylength2 = 4,
    /// "Polylength", width 1, for elements of three dimensions.
    Polylength3 = 5,
    /// "Part Elements", width 1, for elements of one dimension.
    PartElements1 = 6,
    /// "Part Elements", width 1, for elements of two dimensions.
    PartElements2 = 7,
    /// "Part Elements", width 1, for elements of three dimensions.
    PartElements3 = 8,
    /// "Coordinates", width 3.
    Coordinates = 9,
    /// No default name, width 1.
    Result10 = 10,
    /// No default name, width 3.
    Result11 = 11,
    /// No default name, width 6.
    Result12 = 12,
    /// No default name, width 6.
    Result13 = 13,
    /// No default name, width 1.
    Result14 = 14,
    /// No default name, width 3.
    Result15 = 15,
    /// No default name, width 6.
    Result16 = 16,
    /// No default name, width 6.
    Result17 = 17,
    /// No default name, width 1.
    Result18 = 18,
    /// No default name, width 3.
    Result19 = 19,
    /// No default name, width 6.
    Result20 = 20,
    /// No default name, width 6.
    Result21 = 21,
    /// No default name, width 1.
    Result22 = 22,
    /// No default name, width 1.
    Result23 = 23,
    /// No default name, width 3.
    Result24 = 24,
    /// No default name, width 6.
    Result25 = 25,
    /// No default name, width 6.
    Result26 = 26,
    /// "Node Ids", width 1; laid out as `Result10`.
    NodeIds = 27,
    /// "Element IDs", width 1; laid out as `Result14`.
    ElementIds = 28,
    /// "Displacement", width 3; laid out as `Result11`.
    Displacement = 29,
    /// "Displacement", width 6; laid out as `Result12`.
    Displacement6 = 30,

    /// On nodes, width 1, such as a temperature. No default name, as with all that follow.
    NodeScalar = Result10,
    /// On nodes, width 3: x, y, z, such as a velocity.
    NodeVector = Result11,
    /// On nodes, width 6: translations along x, y, z, then rotations about them.
    NodeVector6 = Result12,
    /// On nodes, width 6: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
    NodeTensor = Result13,
    /// On elements, width 1, such as a damage.
    ElementScalar = Result14,
    /// On elements, width 3: x, y, z.
    ElementVector = Result15,
    /// On elements, width 6: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
    ElementTensor = Result17
};

} // namespace Mox2
} // namespace Zyl2

#endif
