#ifndef MOXREAD_PARTITIONTREE_H
#define MOXREAD_PARTITIONTREE_H

#include "moxread/Node.h"
#include "moxread/PartitionIndex.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace MoxRead {

/// Raises FormatError when a dataset says that it is of a rank whose pieces are not in the file.
void requireOwn(PartitionIndex const& index, PartitionFile const& file,
                std::vector<Node> const& nodes);

/// Makes one tree of those of the files that an index names. Groups of one name in one place are
/// the same one, of several in a file the first is that of another file's first. All else is there
/// once for each file that has it.
class PartitionTree
{
public:
    explicit PartitionTree(PartitionIndex const& index) : index_(index) {}

    /// Takes a file's nodes over. Raises FormatError when they can't be of this model.
    /// \param heavyStart what the positions of its values become larger by
    void add(PartitionFile const& file, std::vector<Node> nodes, std::uint64_t heavyStart);

    /// The nodes of all files, to be asked for once.
    std::vector<Node> takeNodes();

    /// What groups say differently, a sentence each; what the first file says of them holds.
    std::vector<std::string> const& remarks() const noexcept { return remarks_; }

private:
    using GroupName = std::pair<std::uint32_t, std::string>;

    std::uint32_t idFor(Node const& node, std::uint32_t parent,
                        std::map<GroupName, std::size_t>& seen);
    void merge(Node& known, Node const& other, PartitionFile const& file);

    PartitionIndex const& index_;
    std::vector<Node> nodes_;
    /// The last id that was given; nodes follow when all ids of a file are known.
    std::size_t lastId_ = 0;
    std::map<GroupName, std::vector<std::uint32_t>> groups_;
    std::vector<std::string> remarks_;
};

} // namespace MoxRead

#endif
