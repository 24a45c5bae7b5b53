#ifndef MOX_PRINT_BLOCKREPORT_H
#define MOX_PRINT_BLOCKREPORT_H

#include "moxread/Container.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Mox {

/// How much room the blocks of a file take, each by itself, by key and in all.
class BlockReport
{
public:
    struct Block
    {
        MoxRead::Slot slot;
        /// The block's key; of a reserved name, without the control byte and the blank around it.
        std::string key;
        /// Length of the content, as the block states it.
        std::uint64_t content = 0;
    };

    struct Sum
    {
        std::string key;
        std::size_t blocks = 0;
        std::uint64_t size = 0;
        std::uint64_t content = 0;

        void add(Block const& block);
        /// Whether there is a ratio of content and size.
        bool hasRatio() const { return size > 0; }
        double ratio() const;
    };

    /// Looks at the beginning of each block only.
    explicit BlockReport(MoxRead::Container const& container);

    std::vector<Block> const& blocks() const { return blocks_; }
    /// In the order in which the keys appear first.
    std::vector<Sum> const& keys() const { return keys_; }
    Sum const& total() const { return total_; }
    std::size_t slots() const { return slots_; }
    std::size_t spareSlots() const { return slots_ - blocks_.size(); }

private:
    void add(Block const& block);

    std::vector<Block> blocks_;
    std::vector<Sum> keys_;
    Sum total_;
    std::size_t slots_;
};

} // namespace Mox

#endif
