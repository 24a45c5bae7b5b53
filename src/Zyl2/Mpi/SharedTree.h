#ifndef ZYL2_MPI_SHAREDTREE_H
#define ZYL2_MPI_SHAREDTREE_H

#include <Zyl2/Mox2/ArrayPieces.h>
#include <Zyl2/Mox2/Model.h>

#include "Zyl2/Mpi/Calls.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Zyl2 {
namespace Mpi {

/// Makes one tree, in the model of a file, of what several ranks add to theirs.
///
/// Between two collective calls the ranks come one after the other. A root, and groups in the same
/// place under the same name, are stored for the first of them, and found again for the others. All
/// else becomes a node for each rank.
class SharedTree
{
public:
    /// \param model   of the file, saved to
    /// \param ranks   how many ranks there are in all files
    SharedTree(Mox2::Model& model, int ranks) : model_(model), ranks_(ranks) {}

    /// Goes on to what a rank has added since the last collective call.
    /// \param rank   among the ranks of all files
    void beginRank(int rank);
    /// Between two collective calls.
    void beginRound() { ++round_; }

    void add(NodeCall const& call);
    void add(NodeDataCall const& call);
    /// Adds values where they are.
    void add(ArrayCall const& call, Mox2::ArrayView const& values);
    void add(ArrayCall const& call, Mox2::ArrayPieces& values);
    /// Stores what the rank says of groups last.
    void endRank();

private:
    /// What is said of a group: an attribute, or a property by its number.
    using Subject = std::pair<unsigned int, std::string>;
    struct Statement
    {
        std::string value;
        int rank = 0;
        unsigned int round = 0;
    };
    using GroupName = std::pair<unsigned int, std::string>;
    struct RankNodes
    {
        /// Ids in the file by those of the rank, from 1.
        std::vector<unsigned int> ids;
        /// How many groups of a name this rank has in a place.
        std::map<GroupName, std::size_t> groups;
    };

    unsigned int idOf(std::uint32_t local) const;
    void setId(std::uint32_t local, unsigned int id);
    unsigned int addRoot(NodeCall const& call);
    unsigned int addGroup(NodeCall const& call, unsigned int parent);
    unsigned int addShape(NodeCall const& call, unsigned int parent);
    void stateAttributes(unsigned int id, NodeCall const& call, bool isNew);
    bool isNews(unsigned int id, std::string const& what, std::string const& value,
                bool isAskedAlways);
    [[noreturn]] void refuse(unsigned int id, std::string const& what, int other) const;
    Mox2::Attributes withRank(ArrayCall const& call) const;
    std::vector<unsigned int> idsOf(ArrayCall const& call) const;

    Mox2::Model& model_;
    int ranks_;
    int rank_ = 0;
    unsigned int round_ = 0;
    std::map<int, RankNodes> nodes_;
    std::map<GroupName, std::vector<unsigned int>> groups_;
    std::map<Subject, Statement> statements_;
    bool hasRoot_ = false;
    NodeCall root_;
    int rootsRank_ = 0;
    /// By id in the file: the name of a group that is shared; nodes of one rank are not here.
    std::map<unsigned int, std::string> shared_;
    /// What the present rank says of shared nodes, until all of it is known.
    std::map<unsigned int, NodeDataCall> pending_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
