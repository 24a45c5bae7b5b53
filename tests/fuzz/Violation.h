#ifndef TESTS_FUZZ_VIOLATION_H
#define TESTS_FUZZ_VIOLATION_H

#include <stdexcept>

namespace Fuzz {

/// An input that made the code do what it must not do.
class Violation : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};

inline void require(bool holds, char const* what)
{
    if (!holds)
        throw Violation(what);
}

} // namespace Fuzz

#endif
