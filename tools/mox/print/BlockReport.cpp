#include "BlockReport.h"

#include "moxread/BlockReader.h"

#include <algorithm>

namespace Mox {

namespace {

std::string keyOf(MoxRead::Slot const& slot)
{
    return slot.isIndexBlock() ? "Index Block" : slot.name;
}

} // namespace

void BlockReport::Sum::add(Block const& block)
{
    ++blocks;
    size += block.slot.size;
    content += block.content;
}

double BlockReport::Sum::ratio() const
{
    return static_cast<double>(content) / static_cast<double>(size);
}

BlockReport::BlockReport(MoxRead::Container const& container) : slots_(container.slots().size())
{
    for (MoxRead::Slot const& slot : container.slots())
        if (!slot.isSpare())
            add({slot, keyOf(slot), MoxRead::BlockReader(container.file(), slot).length()});
}

void BlockReport::add(Block const& block)
{
    auto sum = std::find_if(keys_.begin(), keys_.end(),
                            [&](Sum const& candidate) { return candidate.key == block.key; });
    if (sum == keys_.end()) {
        keys_.emplace_back();
        sum = keys_.end() - 1;
        sum->key = block.key;
    }
    sum->add(block);
    total_.add(block);
    blocks_.push_back(block);
}

} // namespace Mox
