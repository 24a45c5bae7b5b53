#include "StorageCheck.h"

#include "Kinds.h"

#include <algorithm>

namespace Mox::Check {

namespace {

constexpr std::uint64_t valueSize = 4;

} // namespace

void StorageCheck::run()
{
    std::vector<Piece> const all = pieces();
    Piece const* before = nullptr;
    std::uint64_t end = 0;
    for (Piece const& piece : all) {
        std::uint64_t const start = piece.variable->dataPosition;
        if (start > end)
            tell(start - end, before);
        end = std::max(end, start + piece.variable->byteCount());
        before = &piece;
    }
    if (model_.heavyLength() > end)
        tell(model_.heavyLength() - end, before);
}

// In the order in which they lie in the file.
std::vector<StorageCheck::Piece> StorageCheck::pieces() const
{
    std::vector<Piece> result;
    for (MoxRead::Node const& node : model_.nodes()) {
        if (node.geometry() == nullptr)
            continue;
        for (MoxRead::Variable const& variable : node.geometry()->variables)
            if (!variable.linked)
                result.push_back({&node, &variable});
    }
    std::stable_sort(result.begin(), result.end(), [](Piece const& left, Piece const& right) {
        return left.variable->dataPosition < right.variable->dataPosition;
    });
    return result;
}

void StorageCheck::tell(std::uint64_t bytes, Piece const* before)
{
    std::string const what =
        countText(bytes / valueSize, "value") + " that belong to no dataset, stored " +
        (before == nullptr ? "before those of any dataset" : "behind this one's");
    findings_.add({&Kinds::lostValues, before == nullptr ? nullptr : before->node,
                   before == nullptr ? nullptr : before->variable,
                   "a shape that takes all values that are given, and keeps them", what});
}

} // namespace Mox::Check
