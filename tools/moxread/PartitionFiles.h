#ifndef MOXREAD_PARTITIONFILES_H
#define MOXREAD_PARTITIONFILES_H

#include "moxread/Dataset.h"
#include "moxread/Export.h"
#include "moxread/HeavyData.h"
#include "moxread/Node.h"
#include "moxread/PartitionIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace MoxRead {

/// The files that an index names, seen as those of one model: their values lie one file behind the
/// other. One file at a time is open.
class MOXREAD_EXPORT PartitionFiles
{
public:
    /// Reads all but the values of the datasets. Raises FormatError when a file is not as it has to
    /// be.
    PartitionFiles(std::string const& path, ReadOptions const& options);
    ~PartitionFiles();
    PartitionFiles(PartitionFiles const&) = delete;
    PartitionFiles& operator=(PartitionFiles const&) = delete;

    std::string const& firstPath() const { return index_.files().front().path; }
    /// To be called once.
    std::vector<Node> takeNodes() { return std::move(nodes_); }
    std::vector<std::string> const& remarks() const noexcept { return remarks_; }

    /// The values of a variable that is not linked.
    Dataset read(Variable const& stored);
    /// As `HeavyData::expect`.
    void expect(std::vector<std::uint64_t> const& positions);
    /// As `Model::checkValues`.
    void checkValues(ProgressVisitor const& tell) const;

    std::size_t heavyBlock(Variable const& stored) const;
    std::uint64_t heavyLength() const { return heavyLength_; }
    std::size_t blockCount() const { return blockCount_; }
    std::uint64_t bytes() const { return bytes_; }

private:
    /// A file as far as its values need it: its tree is known.
    struct OpenFile
    {
        OpenFile(std::string const& path, ReadOptions const& options)
            : container(path, options), values(container)
        {}

        Container container;
        HeavyData values;
    };

    std::size_t fileOf(std::uint64_t position) const;
    Dataset readFromOpen(Variable const& stored, std::uint64_t position);
    void expectInOpenFile();

    PartitionIndex index_;
    ReadOptions options_;
    std::vector<Node> nodes_;
    std::vector<std::string> remarks_;
    /// For each file, the position of its first value among the values of all files.
    std::vector<std::uint64_t> starts_;
    /// By the position of a dataset.
    std::unordered_map<std::uint64_t, std::size_t> heavyBlocks_;
    std::uint64_t heavyLength_ = 0;
    std::size_t blockCount_ = 0;
    std::uint64_t bytes_ = 0;
    std::unique_ptr<OpenFile> open_;
    std::size_t openFile_ = 0;
    /// By the number of the file, where they are in it. Empty without threads.
    std::unordered_map<std::size_t, std::vector<std::uint64_t>> expected_;
};

} // namespace MoxRead

#endif
