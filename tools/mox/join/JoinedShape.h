#ifndef MOX_JOIN_JOINEDSHAPE_H
#define MOX_JOIN_JOINEDSHAPE_H

#include "JoinedRows.h"
#include "RowMap.h"

#include "moxread/Model.h"

#include <Zyl2/Mox2/Model.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Mox::Join {

struct Options
{
    /// Difference up to which values of one node or element are the same; unless given, a millionth
    /// of the largest value of the dataset, and none for integers.
    std::optional<double> tolerance;
    std::function<void(std::string const& warning)> warn;
};

/// The pieces of one shape, to be written as one. One dataset at a time is in memory.
class JoinedShape
{
public:
    /// \param pieces geometries, at least one
    JoinedShape(MoxRead::Model& model, std::vector<MoxRead::Node const*> pieces,
                Options const& options);

    /// Whether the pieces can become one: all nodes have ids, and all elements tell how many nodes
    /// they have.
    bool canBeJoined() const { return canBeJoined_; }

    /// \param shape id of the shape in the model that is written
    void write(Zyl2::Mox2::Model& to, unsigned int shape);

private:
    using Variable = MoxRead::Variable;

    /// A dataset of the joined shape: the variable of each piece, null where there is none.
    struct Dataset
    {
        std::string name;
        std::vector<Variable const*> ofPiece;

        Variable const& first() const;
    };

    void findDatasets();
    void mapRows();
    Variable const* find(std::size_t piece, char const* name) const;
    bool haveAll(char const* name, char const* other) const;
    bool areNumbers(char const* name) const;
    std::vector<std::vector<std::uint32_t>> wordsOf(char const* name);
    std::vector<std::size_t> rowsOf(char const* name) const;

    RowMap const* rowsFor(Dataset const& dataset) const;
    bool fits(Dataset const& dataset, RowMap const& map) const;
    std::vector<std::uint32_t> joined(Dataset const& dataset, RowMap const& map);
    std::vector<std::uint32_t> joinedConnectivity(Dataset const& dataset);
    std::vector<std::uint32_t> behindEachOther(Dataset const& dataset);
    void compare(Dataset const& dataset, JoinedRows const& rows);
    std::vector<std::uint64_t>
    startsOfElements(std::vector<std::vector<std::uint32_t>> const& lengths) const;
    std::vector<std::uint32_t> nodesOfPiece(Dataset const& dataset, std::size_t piece,
                                            std::vector<std::uint32_t> const& lengths);
    void requireAlike(Dataset const& dataset) const;
    void tellOfOtherAttributes(Dataset const& dataset) const;
    void add(Zyl2::Mox2::Model& to, unsigned int shape, Dataset const& dataset,
             std::vector<std::uint32_t> const& words) const;
    std::string titleOf(Dataset const& dataset) const;

    MoxRead::Model& model_;
    std::vector<MoxRead::Node const*> pieces_;
    Options const& options_;
    std::vector<Dataset> datasets_;
    bool canBeJoined_ = true;
    RowMap nodes_;
    RowMap elements_;
    /// By row of the joined shape: the piece that an element is taken from.
    std::vector<std::uint32_t> ownerOfElement_;
};

} // namespace Mox::Join

#endif
