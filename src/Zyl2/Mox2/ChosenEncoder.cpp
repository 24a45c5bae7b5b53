#include "Zyl2/Mox2/ChosenEncoder.h"

#include "Zyl2/Exception/Raise.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace Zyl2 {
namespace Mox2 {

namespace {

constexpr char const* variable = "MOXWRITER_ENCODER";

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

[[noreturn]] void refuse(std::string const& request)
{
    Exception::raise(
        Exception::Sites::Saver::NoSuchEncoder,
        Exception::sentence(request, ", and this library has ", Zyl2Wvf::NamesOfEncoders()));
}

Zyl2Wvf::BlockEncoder const& encoderOfEnvironment()
{
    char const* const text = std::getenv(variable);
    if (text == nullptr || *text == '\0')
        return Zyl2Wvf::ZlibEncoder();
    Zyl2Wvf::BlockEncoder const* const found = Zyl2Wvf::FindEncoder(text);
    if (found == nullptr)
        refuse(std::string(variable) + " asks for \"" + text + '"');
    return *found;
}

} // namespace

Zyl2Wvf::BlockEncoder const& chosenEncoder(Encoder encoder)
{
    if (encoder == Encoder::Default)
        return encoderOfEnvironment();
    std::string_view const name = nameOf(encoder);
    Zyl2Wvf::BlockEncoder const* const found = Zyl2Wvf::FindEncoder(name);
    if (found == nullptr)
        refuse("the host asks for " + (name.empty() ? "an encoder that has no name: " +
                                                          std::to_string(static_cast<int>(encoder))
                                                    : '"' + std::string(name) + '"'));
    return *found;
}

} // namespace Mox2
} // namespace Zyl2
