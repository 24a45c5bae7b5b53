#include <Zyl2/Exception/Exception.h>

#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>

// NOLINTBEGIN(bugprone-throw-keyword-missing): the kinds' constructors initialise their base.

namespace Zyl2 {
namespace Exception {

Base::~Base() noexcept = default;

char const* Base::what() const noexcept
{
    return nullptr;
}

int Base::errorCode() const noexcept
{
    return 1;
}

Exception::Exception() = default;

Exception::Exception(char const* message) : message_(message) {}

char const* Exception::what() const noexcept
{
    return message_.empty() ? defaultMessage() : message_.c_str();
}

char const* Exception::defaultMessage() const noexcept
{
    return "Unknown Exception";
}

MiscelleneousException::MiscelleneousException() = default;

MiscelleneousException::MiscelleneousException(char const* message) : Exception(message) {}

int MiscelleneousException::errorCode() const noexcept
{
    return 2;
}

char const* MiscelleneousException::defaultMessage() const noexcept
{
    return "Miscelleneous exception";
}

InvalidArguments::InvalidArguments() = default;

InvalidArguments::InvalidArguments(char const* message) : Exception(message) {}

int InvalidArguments::errorCode() const noexcept
{
    return 3;
}

char const* InvalidArguments::defaultMessage() const noexcept
{
    return "Invalid arguments";
}

FileOpenException::FileOpenException() = default;

FileOpenException::FileOpenException(char const* message) : Exception(message) {}

int FileOpenException::errorCode() const noexcept
{
    return 5;
}

char const* FileOpenException::defaultMessage() const noexcept
{
    return "File open exception";
}

FileWriteException::FileWriteException() = default;

FileWriteException::FileWriteException(char const* message) : Exception(message) {}

int FileWriteException::errorCode() const noexcept
{
    return 7;
}

char const* FileWriteException::defaultMessage() const noexcept
{
    return "File write exception";
}

OutOfBounds::OutOfBounds() = default;

OutOfBounds::OutOfBounds(char const* message) : Exception(message) {}

int OutOfBounds::errorCode() const noexcept
{
    return 11;
}

char const* OutOfBounds::defaultMessage() const noexcept
{
    return "Out of bounds error";
}

OverflowError::OverflowError() = default;

OverflowError::OverflowError(char const* message) : Exception(message) {}

int OverflowError::errorCode() const noexcept
{
    return 12;
}

char const* OverflowError::defaultMessage() const noexcept
{
    return "Overflow error";
}

UnderflowError::UnderflowError() = default;

UnderflowError::UnderflowError(char const* message) : Exception(message) {}

int UnderflowError::errorCode() const noexcept
{
    return 13;
}

char const* UnderflowError::defaultMessage() const noexcept
{
    return "Underflow error";
}

KeyNotFound::KeyNotFound() = default;

KeyNotFound::KeyNotFound(char const* message) : Exception(message) {}

int KeyNotFound::errorCode() const noexcept
{
    return 14;
}

char const* KeyNotFound::defaultMessage() const noexcept
{
    return "Key not found";
}

MemoryAllocationException::MemoryAllocationException() = default;

MemoryAllocationException::MemoryAllocationException(char const* message) : Exception(message) {}

int MemoryAllocationException::errorCode() const noexcept
{
    return 16;
}

char const* MemoryAllocationException::defaultMessage() const noexcept
{
    return "Memory allocation error";
}

InvalidObjectState::InvalidObjectState() = default;

InvalidObjectState::InvalidObjectState(char const* message) : Exception(message) {}

int InvalidObjectState::errorCode() const noexcept
{
    return 17;
}

char const* InvalidObjectState::defaultMessage() const noexcept
{
    return "Invalid object state";
}

TemplateSpecializationNotDefined::TemplateSpecializationNotDefined() = default;

TemplateSpecializationNotDefined::TemplateSpecializationNotDefined(char const* message)
    : Exception(message)
{}

int TemplateSpecializationNotDefined::errorCode() const noexcept
{
    return 19;
}

char const* TemplateSpecializationNotDefined::defaultMessage() const noexcept
{
    return "Template specialization not defined";
}

NotYetImplemented::NotYetImplemented() = default;

NotYetImplemented::NotYetImplemented(char const* message) : Exception(message) {}

int NotYetImplemented::errorCode() const noexcept
{
    return 20;
}

char const* NotYetImplemented::defaultMessage() const noexcept
{
    return "Not yet implemented";
}

char const* detail(std::exception const& failure) noexcept
{
    std::string const* const found = boost::get_error_info<Detail>(failure);
    return found == nullptr ? "" : found->c_str();
}

} // namespace Exception
} // namespace Zyl2

// NOLINTEND(bugprone-throw-keyword-missing)
