#ifndef EXPORT_ERROR_H
#define EXPORT_ERROR_H

#include <stdexcept>

namespace Export {

/// Says in one sentence what is wrong.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace Export

#endif
