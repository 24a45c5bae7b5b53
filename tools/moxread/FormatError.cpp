#include "moxread/FormatError.h"

namespace MoxRead {

FormatError::FormatError(const std::string& message) : std::runtime_error(message) {}

FormatError::FormatError(const std::string& message, bool incomplete)
    : std::runtime_error(message), incomplete_(incomplete)
{}

FormatError FormatError::incomplete(const std::string& message)
{
    return {"incomplete: " + message, true};
}

bool FormatError::isIncomplete() const noexcept
{
    return incomplete_;
}

FormatError FormatError::within(const std::string& place) const
{
    return incomplete_ ? *this : FormatError(place + ": " + what());
}

} // namespace MoxRead
