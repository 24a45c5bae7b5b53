#include "Parts.h"

#include "mox/print/FileError.h"

#include "moxread/FormatError.h"

#include <algorithm>
#include <filesystem>

namespace Mox {

using MoxRead::PartitionFile;
using MoxRead::PartitionIndex;

namespace {

bool isSound(PartitionIndex const& index, std::string const& path, std::size_t number,
             std::ostream& err)
{
    std::string const complaint = index.complaintAbout(index.files()[number]);
    if (!complaint.empty())
        err << path << ": " << complaint << '\n';
    return complaint.empty();
}

Part partOf(PartitionIndex const& index, std::size_t number)
{
    return {index.files()[number].path, number, index.files().size()};
}

void requireSameRanks(PartitionIndex const& index, PartitionIndex const& other,
                      std::string const& path)
{
    bool const areSame = std::equal(
        index.files().begin(), index.files().end(), other.files().begin(), other.files().end(),
        [](PartitionFile const& one, PartitionFile const& two) { return one.ranks == two.ranks; });
    if (!areSame)
        throw MoxRead::FormatError("its files are of other ranks than those of " + path);
}

} // namespace

std::string Part::outputFor(std::string const& output) const
{
    std::filesystem::path named(output);
    std::string digits = std::to_string(number);
    digits.insert(0, std::to_string(count - 1).size() - digits.size(), '0');
    return named.replace_extension("." + digits + named.extension().string()).string();
}

int forEachPart(std::string const& index, std::ostream& err,
                std::function<int(Part const&)> const& action)
{
    int worst = 0;
    int const status = runOnFile(index, err, [&] {
        PartitionIndex const parts(index);
        for (std::size_t number = 0; number < parts.files().size(); ++number)
            worst = std::max(
                worst, isSound(parts, index, number, err) ? action(partOf(parts, number)) : 1);
    });
    return std::max(status, worst);
}

int forEachPair(std::string const& left, std::string const& right, std::ostream& err,
                std::function<int(Part const&, Part const&)> const& action)
{
    int worst = 0;
    int const status = runOnFile(left, err, [&] {
        PartitionIndex const ofLeft(left);
        inFile(right, [&] {
            PartitionIndex const ofRight(right);
            requireSameRanks(ofRight, ofLeft, left);
            for (std::size_t number = 0; number < ofLeft.files().size(); ++number) {
                bool const isLeftSound = isSound(ofLeft, left, number, err);
                bool const isRightSound = isSound(ofRight, right, number, err);
                worst =
                    std::max(worst, isLeftSound && isRightSound
                                        ? action(partOf(ofLeft, number), partOf(ofRight, number))
                                        : 1);
            }
        });
    });
    return std::max(status, worst);
}

} // namespace Mox
