#ifndef EXCHANGE_ERROR_H
#define EXCHANGE_ERROR_H

#include <stdexcept>

namespace Exchange {

/// Says in one sentence why a file can't be translated.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace Exchange

#endif
