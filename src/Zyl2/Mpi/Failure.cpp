#include "Zyl2/Mpi/Failure.h"

#include <Zyl2/Exception/Exception.h>

#include <cstdio>
#include <exception>
#include <new>

namespace Zyl2 {
namespace Mpi {

namespace {

constexpr int UnknownCode = 1;
constexpr int NoMemoryCode = 16;

} // namespace

void Failure::remember() noexcept
{
    if (isThere)
        return;
    std::array<char, 1024> text{};
    try {
        throw;
    } catch (Exception::Exception const& failure) {
        char const* const detail = Exception::detail(failure);
        (void)std::snprintf(text.data(), text.size(), "%s%s%s", failure.what(),
                            *detail == '\0' ? "" : ": ", detail);
        remember(failure.errorCode(), text.data());
    } catch (std::bad_alloc const&) {
        remember(NoMemoryCode, "there is not enough memory");
    } catch (std::exception const& failure) {
        remember(UnknownCode, failure.what());
    } catch (...) {
        remember(UnknownCode, "an exception of unknown type");
    }
}

void Failure::remember(int errorCode, char const* text) noexcept
{
    if (isThere)
        return;
    isThere = true;
    code = errorCode;
    (void)std::snprintf(sentence.data(), sentence.size(), "%s", text);
}

} // namespace Mpi
} // namespace Zyl2
