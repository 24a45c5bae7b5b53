#ifndef FRD_ERROR_H
#define FRD_ERROR_H

#include <stdexcept>

namespace Frd {

/// One sentence about what is wrong with a result file or with writing its model. What concerns a
/// place in the file begins with that place: "line 12: ..." or "byte 4711: ...".
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace Frd

#endif
