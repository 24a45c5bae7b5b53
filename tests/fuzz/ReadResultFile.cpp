#include "Inputs.h"

#include "AllocationMeter.h"
#include "MemoryFile.h"
#include "Violation.h"

#include "container/TemporaryFile.h"
#include "exchange/Translation.h"
#include "moxread/Verify.h"
#include "read/frd/Error.h"
#include "read/frd/Reader.h"
#include "read/frd/Source.h"

#include <cstdio>
#include <string>

namespace Fuzz {

namespace {

/// \return whether the reader accepts the file as one that has nodes
bool canBeRead(std::string const& path)
{
    try {
        Frd::Reader reader(path);
        Frd::ResultBlock block;
        while (reader.next(block))
            require(!block.components.empty(), "a result block has no components");
        return !reader.mesh().nodes().empty();
    } catch (Frd::Error const& error) {
        std::string const message = error.what();
        require(!message.empty() && message.find('\n') == std::string::npos,
                "a complaint is not one line");
        return false;
    }
}

bool canBeReadWithin(std::size_t bound, std::string const& path)
{
    AllocationMeter const meter;
    bool const result = canBeRead(path);
    require(meter.peak() <= bound, "more memory was used than the file accounts for");
    return result;
}

void requireSoundTranslation(std::string const& path)
{
    static Support::TemporaryFolder const folder;
    std::string const model = folder.File("model.mox");
    Exchange::TranslationOptions options;
    options.overwrite = true;
    Exchange::Report report;
    Exchange::translate(path, Frd::open, model, options, report);
    MoxRead::verify(model);
    std::remove(model.c_str());
}

} // namespace

void readResultFile(std::uint8_t const* bytes, std::size_t size)
{
    MemoryFile const file(bytes, size);
    constexpr std::size_t fixedMemory = std::size_t{256} << 10U;
    constexpr std::size_t memoryPerByte = 32;
    if (canBeReadWithin(fixedMemory + memoryPerByte * size, file.path()))
        requireSoundTranslation(file.path());
}

} // namespace Fuzz
