#ifndef ZYL2_MOX_NODESETS_H
#define ZYL2_MOX_NODESETS_H

#include "Zyl2/Mox/Node.h"
#include "Zyl2/Wvf/WvFile.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2Mox {

/// Sets of mesh nodes. Nothing in the public interface makes one; the tree can save them.
class NodeSets : public Node
{
public:
    using Entry = std::array<std::uint8_t, 32>;

    explicit NodeSets(std::string const& name);

    std::string GetType() const override;

    std::vector<Entry>& GetEntries() { return entries_; }
    std::vector<Entry> const& GetEntries() const { return entries_; }
    void SetValues(std::uint64_t wide, std::uint32_t narrow);
    std::uint64_t GetWideValue() const { return wide_; }
    std::uint32_t GetNarrowValue() const { return narrow_; }

    /// Appends the entries to the heavy block, 32 bytes each, and marks the block for compression
    /// if asked for.
    void SaveDataBlocks(Zyl2Wvf::WvFile& file, std::string const& heavyBlock, bool compress) const;

private:
    std::vector<Entry> entries_;
    std::uint64_t wide_ = 0;
    std::uint32_t narrow_ = 0;
};

} // namespace Zyl2Mox

#endif
