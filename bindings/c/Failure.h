#ifndef BINDINGS_C_FAILURE_H
#define BINDINGS_C_FAILURE_H

#include <moxwriter.h>

#include "Zyl2/Exception/Sentence.h"

#include <exception>
#include <string>

namespace Zyl2 {
namespace C {

/// What `mox_model_error` of one model returns.
class ErrorText
{
public:
    char const* text() const noexcept { return fixed_ != nullptr ? fixed_ : text_.c_str(); }

    /// \param otherwise a text that lives as long as the program, for lack of memory
    void set(char const* text, char const* otherwise) noexcept;

private:
    std::string text_;
    char const* fixed_ = nullptr;
};

/// A handle is none, or not of the type that the call needs.
class InvalidHandle : public std::exception
{
public:
    /// \param what   what the handle should be, such as "model"
    /// \param isNull whether it is a null pointer
    InvalidHandle(char const* what, bool isNull)
        : detail_(isNull ? Exception::sentence("the ", what, " is null")
                         : Exception::sentence("this is no ", what, ", or was destroyed"))
    {}

    char const* what() const noexcept override { return mox_status_text(MOX_INVALID_HANDLE); }
    char const* detail() const noexcept { return detail_.c_str(); }

private:
    std::string detail_;
};

/// Refuses an argument.
/// \param detail such as "the name is null"
/// \throws InvalidArguments with that detail
[[noreturn]] void refuse(std::string const& detail);

/// Remembers the exception that is being handled, for `mox_last_error` and, if there is a model,
/// for `mox_model_error`.
/// \param ofModel may be null
/// \return its status
mox_status remember(ErrorText* ofModel) noexcept;

/// Lets no exception out.
/// \param ofModel may be null
/// \param action  what the call does
template <typename Action>
mox_status guarded(ErrorText* ofModel, Action action) noexcept
{
    try {
        action();
    } catch (...) {
        return remember(ofModel);
    }
    return MOX_OK;
}

template <typename Action>
mox_status guarded(Action action) noexcept
{
    return guarded(nullptr, action);
}

} // namespace C
} // namespace Zyl2

#endif
