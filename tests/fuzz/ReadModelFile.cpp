#include "Inputs.h"

#include "AllocationMeter.h"
#include "FileParts.h"
#include "MemoryFile.h"
#include "Violation.h"

#include "LsCommand.h"
#include "VerifyCommand.h"

#include <algorithm>
#include <sstream>
#include <string>

namespace Fuzz {

namespace {

constexpr std::size_t fixedMemory = std::size_t{4} << 20U;
constexpr std::size_t memoryPerByte = 32;

struct Outcome
{
    int status = 0;
    std::string out;
    std::string err;
};

using Command = int (*)(std::string const&, std::ostream&, std::ostream&);

Outcome outcomeOf(Command command, std::string const& path)
{
    std::ostringstream out;
    std::ostringstream err;
    int const status = command(path, out, err);
    return {status, out.str(), err.str()};
}

Outcome outcomeWithin(std::size_t bound, Command command, std::string const& path)
{
    AllocationMeter const meter;
    Outcome outcome = outcomeOf(command, path);
    require(meter.peak() <= bound, "more memory was used than the file accounts for");
    return outcome;
}

void requireVerdict(Outcome const& outcome)
{
    if (outcome.status == 0) {
        require(!outcome.out.empty(), "a sound file got no answer");
        require(outcome.err.empty(), "a sound file got a complaint");
        return;
    }
    require(outcome.status == 1, "the exit status is neither 0 nor 1");
    require(outcome.out.empty(), "a bad file got an answer");
    require(std::count(outcome.err.begin(), outcome.err.end(), '\n') == 1 &&
                outcome.err.back() == '\n',
            "a complaint is not one line");
}

std::size_t memoryBound(std::uint8_t const* bytes, std::size_t size)
{
    auto const file = FileParts::of(std::string(bytes, bytes + size));
    std::size_t const inflated = file ? inflatedSizeOf(*file) : 0;
    return fixedMemory + memoryPerByte * (size + inflated);
}

} // namespace

void readModelFile(std::uint8_t const* bytes, std::size_t size)
{
    MemoryFile const file(bytes, size);
    std::size_t const bound = memoryBound(bytes, size);
    Outcome const verified = outcomeWithin(bound, verifyFile, file.path());
    requireVerdict(verified);
    Outcome const listed = outcomeWithin(bound, listFile, file.path());
    requireVerdict(listed);
    require(verified.status != 0 || listed.status == 0, "a sound file could not be listed");
}

} // namespace Fuzz
