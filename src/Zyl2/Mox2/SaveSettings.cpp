#include "Zyl2/Mox2/SaveSettings.h"

#include "Zyl2/Exception/Raise.h"

#include <charconv>
#include <cstdlib>
#include <string>
#include <string_view>

namespace Zyl2 {
namespace Mox2 {

namespace {

namespace SaverSites = Exception::Sites::Saver;

constexpr char const* encoderVariable = "MOXWRITER_ENCODER";
constexpr char const* threadsVariable = "MOXWRITER_THREADS";
constexpr char const* recoverableVariable = "MOXWRITER_RECOVERABLE";
constexpr unsigned int mostThreads = 1024;
/// A block is full at such a length; what is put into it last may be as long again.
constexpr std::uint64_t largestBlock = 4294967294;

/// Empty for a variable that is not set.
std::string_view environment(char const* variable)
{
    char const* const text = std::getenv(variable);
    return text == nullptr ? std::string_view() : std::string_view(text);
}

/// Empty for what the enumeration does not have.
std::string_view nameOf(Encoder encoder)
{
    switch (encoder) {
    case Encoder::Default:
    case Encoder::Zlib:
        return "zlib";
    case Encoder::Libdeflate:
        return "libdeflate";
    case Encoder::Isal:
        return "isal";
    }
    return {};
}

[[noreturn]] void refuseEncoder(std::string const& request)
{
    Exception::raise(
        SaverSites::NoSuchEncoder,
        Exception::sentence(request, ", and this library has ", Zyl2Wvf::NamesOfEncoders()));
}

Zyl2Wvf::BlockEncoder const& encoderOfEnvironment()
{
    std::string_view const name = environment(encoderVariable);
    if (name.empty())
        return Zyl2Wvf::ZlibEncoder;
    Zyl2Wvf::BlockEncoder const* const found = Zyl2Wvf::FindEncoder(name);
    if (found == nullptr)
        refuseEncoder(Exception::sentence(encoderVariable, " asks for \"", name, "\""));
    return *found;
}

Zyl2Wvf::BlockEncoder const& chosenEncoder(Encoder encoder)
{
    if (encoder == Encoder::Default)
        return encoderOfEnvironment();
    std::string_view const name = nameOf(encoder);
    Zyl2Wvf::BlockEncoder const* const found = Zyl2Wvf::FindEncoder(name);
    if (found == nullptr)
        refuseEncoder(name.empty()
                          ? Exception::sentence("the host asks for an encoder that has no name: ",
                                                static_cast<int>(encoder))
                          : Exception::sentence("the host asks for \"", name, "\""));
    return *found;
}

[[noreturn]] void refuseThreads(std::string const& request)
{
    Exception::raise(SaverSites::TooManyThreads,
                     Exception::sentence(request, ", and a model starts 0 to ", mostThreads));
}

unsigned int threadsOfEnvironment()
{
    std::string_view const text = environment(threadsVariable);
    unsigned int threads = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), threads);
    bool const isNumber = error == std::errc() && end == text.data() + text.size();
    if (!text.empty() && (!isNumber || threads > mostThreads))
        refuseThreads(Exception::sentence(threadsVariable, " asks for \"", text, "\" threads"));
    return threads;
}

unsigned int chosenThreads(int threads)
{
    if (threads < 0)
        return threadsOfEnvironment();
    if (static_cast<unsigned int>(threads) > mostThreads)
        refuseThreads(Exception::sentence("the host asks for ", threads, " threads"));
    return static_cast<unsigned int>(threads);
}

std::optional<std::uint32_t> chosenBlockSize(std::uint64_t bytes)
{
    if (bytes == 0)
        return std::nullopt;
    if (bytes > largestBlock)
        Exception::raise(SaverSites::BlockTooLarge,
                         Exception::sentence("the host asks for blocks of ", bytes,
                                             " bytes, and a block has at most ", largestBlock));
    return static_cast<std::uint32_t>(bytes);
}

[[noreturn]] void refuseRecoverable(std::string const& request)
{
    Exception::raise(
        SaverSites::NeitherYesNorNo,
        Exception::sentence(request, ", and a run is recoverable with 1, and not with 0"));
}

bool chosenRecoverable(int recoverable)
{
    if (recoverable >= 0)
        return recoverable != 0;
    std::string_view const text = environment(recoverableVariable);
    if (!text.empty() && text != "0" && text != "1")
        refuseRecoverable(Exception::sentence(recoverableVariable, " is \"", text, "\""));
    return text == "1";
}

} // namespace

SaveSettings::SaveSettings(SaverOptions const& options)
    : encoder(chosenEncoder(options.encoder)), threads(chosenThreads(options.threads)),
      blockSize(chosenBlockSize(options.blockSize)),
      isRecoverable(chosenRecoverable(options.recoverable))
{}

} // namespace Mox2
} // namespace Zyl2
