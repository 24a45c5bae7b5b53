#include "Failure.h"

#include <Zyl2/Exception/Exception.h>

#include <boost/throw_exception.hpp>

#include <array>
#include <cstdio>
#include <new>
#include <stdexcept>

namespace Zyl2 {
namespace C {

namespace {

/// Of a fixed size, so that there is a place for it whatever happens.
thread_local std::array<char, 1024> lastError{};

std::string joined(std::string text, char const* detail)
{
    if (*detail == '\0')
        return text;
    // Some texts are sentences of their own.
    text += !text.empty() && text.back() == '.' ? " " : ": ";
    return text + detail;
}

mox_status remember(ErrorText* ofModel, mox_status status, char const* text,
                    char const* detail = "") noexcept
{
    std::string sentence;
    char const* whole = text;
    try {
        sentence = joined(text, detail);
        whole = sentence.c_str();
    } catch (std::bad_alloc const&) {
        // The text alone will have to do.
    }
    std::snprintf(lastError.data(), lastError.size(), "%s", whole);
    if (ofModel != nullptr)
        ofModel->set(whole, mox_status_text(status));
    return status;
}

mox_status rememberLackOfMemory(ErrorText* ofModel) noexcept
{
    return remember(ofModel, MOX_MEMORY, mox_status_text(MOX_MEMORY));
}

} // namespace

void ErrorText::set(char const* text, char const* otherwise) noexcept
{
    fixed_ = nullptr;
    try {
        text_ = text;
    } catch (std::bad_alloc const&) {
        fixed_ = otherwise;
    }
}

void refuse(std::string const& detail)
{
    Exception::InvalidArguments const failure;
    Exception::attachDetail(failure, detail);
    boost::throw_exception(failure);
}

mox_status remember(ErrorText* ofModel) noexcept
{
    try {
        throw;
    } catch (Exception::Exception const& failure) {
        return remember(ofModel, failure.errorCode(), failure.what(), Exception::detail(failure));
    } catch (InvalidHandle const& failure) {
        return remember(ofModel, MOX_INVALID_HANDLE, failure.what(), failure.detail());
    } catch (std::bad_alloc const&) {
        return rememberLackOfMemory(ofModel);
    } catch (std::length_error const&) {
        return rememberLackOfMemory(ofModel);
    } catch (std::out_of_range const& failure) {
        return remember(ofModel, MOX_OUT_OF_BOUNDS, failure.what());
    } catch (std::exception const& failure) {
        return remember(ofModel, MOX_UNKNOWN, failure.what());
    } catch (...) {
        return remember(ofModel, MOX_UNKNOWN, mox_status_text(MOX_UNKNOWN));
    }
}

} // namespace C
} // namespace Zyl2

char const* mox_last_error()
{
    return Zyl2::C::lastError.data();
}

char const* mox_status_text(mox_status status)
{
    switch (status) {
    case MOX_OK:
        return "Success";
    case MOX_MISCELLANEOUS:
        return "Miscelleneous exception";
    case MOX_INVALID_ARGUMENTS:
        return "Invalid arguments";
    case MOX_FILE_OPEN:
        return "File open exception";
    case MOX_FILE_WRITE:
        return "File write exception";
    case MOX_OUT_OF_BOUNDS:
        return "Out of bounds error";
    case MOX_OVERFLOW:
        return "Overflow error";
    case MOX_UNDERFLOW:
        return "Underflow error";
    case MOX_KEY_NOT_FOUND:
        return "Key not found";
    case MOX_MEMORY:
        return "Memory allocation error";
    case MOX_INVALID_STATE:
        return "Invalid object state";
    case MOX_WRONG_TYPE:
        return "Template specialization not defined";
    case MOX_NOT_IMPLEMENTED:
        return "Not yet implemented";
    case MOX_INVALID_HANDLE:
        return "Invalid handle";
    default:
        return "Unknown Exception";
    }
}
