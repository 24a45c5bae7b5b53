#include "moxread/FormatError.h"

namespace MoxRead {

FormatError::FormatError(std::string const& message) : std::runtime_error(message) {}

FormatError::FormatError(std::string const& message, bool incomplete)
    : std::runtime_error(message), incomplete_(incomplete)
{}

FormatError FormatError::incomplete(std::string const& message)
{
    return {"incomplete: " + message, true};
}

FormatError FormatError::within(std::string const& place) const
{
    return incomplete_ ? *this : FormatError(place + ": " + what());
}

} // namespace MoxRead
