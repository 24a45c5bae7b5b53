#ifndef TESTS_INTEGRATION_REFUSAL_H
#define TESTS_INTEGRATION_REFUSAL_H

#include <string>

namespace Integration {

/// The exception with which a call has to fail.
struct Refusal
{
    /// The library's error code; 0 for `std::out_of_range`.
    int code = 0;
    std::string text;
};

inline bool operator==(Refusal const& left, Refusal const& right)
{
    return left.code == right.code && left.text == right.text;
}

} // namespace Integration

#endif
