#ifndef MOX_CHECK_MESHCHECK_H
#define MOX_CHECK_MESHCHECK_H

#include "ElementKind.h"
#include "ElementSize.h"
#include "Findings.h"
#include "ShapeDatasets.h"

#include "moxread/Dataset.h"
#include "moxread/Model.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace Mox::Check {

/// The values of a shape's mesh; null for datasets that it does not have.
struct MeshValues
{
    MoxRead::Dataset const* coordinates = nullptr;
    MoxRead::Dataset const* connectivity = nullptr;
    MoxRead::Dataset const* polylength = nullptr;
    MoxRead::Dataset const* nodeIds = nullptr;
    MoxRead::Dataset const* elementIds = nullptr;
};

/// Checks a shape's elements: that their nodes are there, that they are of known types, and that
/// they have a size; further that ids are unique. To be run once.
class MeshCheck
{
public:
    MeshCheck(MoxRead::Model const& model, ShapeDatasets const& shape, MeshValues const& values,
              Findings& findings);

    void run();

private:
    /// How many elements there are that something is wrong with, and what it is with the first.
    struct Tally
    {
        std::string expected;
        std::string first;
        std::size_t count = 0;
    };

    void checkIds(MoxRead::Variable const* variable, MoxRead::Dataset const* ids);
    bool areElementsReadable() const;
    bool isSumRight();
    bool isTypeKnown();
    void checkElements();
    void checkElement(std::size_t row, std::uint32_t const* nodes, std::uint32_t count);
    bool areNodesThere(std::size_t row, std::uint32_t const* nodes, std::uint32_t count);
    void checkSize(std::size_t row, std::uint32_t const* nodes, std::uint32_t count,
                   ElementKind const& kind);
    void checkUse();
    void count(Kind const& kind, std::size_t row, std::string const& expected,
               std::string const& what);
    std::string nameOf(std::size_t row) const;
    void tellTallies();

    MoxRead::Model const& model_;
    ShapeDatasets const& shape_;
    MeshValues const& values_;
    Findings& findings_;
    ElementKinds kinds_;
    std::vector<bool> used_;
    std::vector<Point> positions_;
    std::map<Kind const*, Tally> tallies_;
};

} // namespace Mox::Check

#endif
