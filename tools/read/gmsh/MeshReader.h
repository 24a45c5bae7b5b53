#ifndef READ_GMSH_MESHREADER_H
#define READ_GMSH_MESHREADER_H

#include "PartRows.h"

#include "exchange/Part.h"
#include "exchange/Report.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Gmsh {

/// Makes parts of the mesh that the library has: one for each physical group, and one for each
/// entity that is in none. Of an entity that is in several groups, the first one is its part; the
/// others are sets of elements of that part.
class MeshReader
{
public:
    explicit MeshReader(Exchange::Report& report);

    MeshRows takeRows() { return std::move(rows_); }
    std::vector<Exchange::Part> takeParts() { return std::move(parts_); }

private:
    using DimensionAndTag = std::pair<int, int>;

    /// A part that comes into being.
    struct Growing
    {
        Exchange::Part part;
        /// Rows among all nodes, in the order of the connectivity.
        std::vector<std::uint32_t> connectivity;
    };

    void readNodes();
    void readElements();
    void addEntity(DimensionAndTag const& entity);
    void addElementsOfType(Growing& growing, int type, std::vector<std::size_t> const& tags,
                           std::vector<std::size_t> const& nodes);
    Growing& growingOf(DimensionAndTag const& entity, std::vector<int> const& groups);
    void reportWhatIsLeftOut(DimensionAndTag const& entity);
    void finishParts();
    void finishNodes(Exchange::Part& part, std::vector<std::uint32_t> rows);
    void addPartOfUnusedNodes();
    void indexElements();

    Exchange::Report& report_;
    MeshRows rows_;
    std::vector<std::size_t> nodeTags_;
    std::vector<double> coordinates_;
    std::vector<Growing> growing_;
    std::map<DimensionAndTag, std::size_t> partOfGroup_;
    std::vector<Exchange::Part> parts_;
};

} // namespace Gmsh

#endif
