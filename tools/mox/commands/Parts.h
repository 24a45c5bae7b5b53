#ifndef MOX_COMMANDS_PARTS_H
#define MOX_COMMANDS_PARTS_H

#include "moxread/PartitionIndex.h"

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

namespace Mox {

/// A file of an index, for a command that tells them apart.
struct Part
{
    std::string path;
    /// Place of the file in the index, counted from 0.
    std::size_t number = 0;
    /// How many files the index names.
    std::size_t count = 0;

    /// Where what is made of the part goes: "u.csv" becomes "u.3.csv", with as many digits as the
    /// last one has.
    std::string outputFor(std::string const& output) const;
};

/// Runs an action on each file of an index. A file that something is wrong with gets a line on
/// `err` instead. Returns the greatest exit status of all, at least 1 if something was wrong.
int forEachPart(std::string const& index, std::ostream& err,
                std::function<int(Part const& part)> const& action);

/// The same for two indices whose files are of the same ranks.
int forEachPair(std::string const& left, std::string const& right, std::ostream& err,
                std::function<int(Part const& left, Part const& right)> const& action);

} // namespace Mox

#endif
