#include "moxread/PartitionFiles.h"

#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "moxread/PartitionTree.h"
#include "moxread/Text.h"

#include <algorithm>
#include <utility>

namespace MoxRead {

PartitionFiles::PartitionFiles(std::string const& path, ReadOptions const& options)
    : index_(path), options_(options)
{
    index_.requireFiles();
    PartitionTree tree(index_);
    std::size_t heavyBlocks = 0;
    for (PartitionFile const& file : index_.files()) {
        inContext([&] { return quoted(file.name); },
                  [&] {
                      Model const model(file.path, options_);
                      std::size_t last = 0;
                      for (Node const& node : model.nodes()) {
                          if (node.geometry() == nullptr)
                              continue;
                          for (Variable const& variable : node.geometry()->variables) {
                              if (variable.linked)
                                  continue;
                              std::size_t const block = model.heavyBlock(variable);
                              heavyBlocks_[heavyLength_ + variable.dataPosition] =
                                  heavyBlocks + block;
                              last = std::max(last, block + 1);
                          }
                      }
                      heavyBlocks += last;
                      starts_.push_back(heavyLength_);
                      tree.add(file, model.nodes(), heavyLength_);
                      heavyLength_ += model.heavyLength();
                      blockCount_ += model.blockCount();
                      bytes_ += model.bytes();
                  });
    }
    nodes_ = tree.takeNodes();
    remarks_ = tree.remarks();
}

PartitionFiles::~PartitionFiles() = default;

Dataset PartitionFiles::read(Variable const& stored)
{
    std::size_t const file = fileOf(stored.dataPosition);
    if (open_ == nullptr || openFile_ != file) {
        open_.reset();
        open_ = std::make_unique<OpenFile>(index_.files()[file].path, options_);
        openFile_ = file;
        expectInOpenFile();
    }
    return inContext([&] { return quoted(index_.files()[file].name); },
                     [&] { return readFromOpen(stored, stored.dataPosition - starts_[file]); });
}

Dataset PartitionFiles::readFromOpen(Variable const& stored, std::uint64_t position)
{
    if (!open_->values.contains(position, stored.byteCount()))
        throw FormatError("the file was changed while it was read");
    return Dataset::decode(stored, open_->values.bytesAt(position));
}

void PartitionFiles::expect(std::vector<std::uint64_t> const& positions)
{
    expected_.clear();
    if (options_.threads != 0)
        for (std::uint64_t const position : positions) {
            std::size_t const file = fileOf(position);
            expected_[file].push_back(position - starts_[file]);
        }
    if (open_ != nullptr)
        expectInOpenFile();
}

void PartitionFiles::expectInOpenFile()
{
    open_->values.expect(expected_[openFile_]);
}

void PartitionFiles::checkValues(ProgressVisitor const& tell) const
{
    for (std::size_t file = 0; file < starts_.size(); ++file) {
        PartitionFile const& described = index_.files()[file];
        inContext([&] { return quoted(described.name); },
                  [&] {
                      Model const model(described.path, options_);
                      model.checkValues([&](std::uint64_t done, std::uint64_t /*all*/) {
                          if (tell)
                              tell(starts_[file] + done, heavyLength_);
                      });
                  });
    }
}

std::size_t PartitionFiles::heavyBlock(Variable const& stored) const
{
    return heavyBlocks_.at(stored.dataPosition);
}

/// The last file that begins at or before the position and has values: others begin where it does.
std::size_t PartitionFiles::fileOf(std::uint64_t position) const
{
    auto const after = std::upper_bound(starts_.begin(), starts_.end(), position);
    return static_cast<std::size_t>(after - starts_.begin()) - 1;
}

} // namespace MoxRead
