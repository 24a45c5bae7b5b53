#ifndef TESTS_MOX_OUTCOME_H
#define TESTS_MOX_OUTCOME_H

#include <string>

namespace MoxReadTest {

/// What a command returned and wrote.
struct Outcome
{
    int status = 0;
    std::string out;
    std::string err;
};

} // namespace MoxReadTest

#endif
