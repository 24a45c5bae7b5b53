#ifndef READ_FRD_ERROR_H
#define READ_FRD_ERROR_H

#include "exchange/Error.h"

#include <string>

namespace Frd {

/// One sentence about what is wrong with a result file. What concerns a place in the file begins
/// with that place: "line 12: ..." or "byte 4711: ...".
class Error : public Exchange::Error
{
public:
    using Exchange::Error::Error;
};

/// The same about a file that ends too early, as that of a run which was stopped or still goes on.
class Truncated : public Error
{
public:
    using Error::Error;

    /// The sentence, for more to be said behind it.
    std::string withoutStop() const
    {
        std::string const sentence = what();
        return sentence.substr(0, sentence.find_last_not_of('.') + 1);
    }
};

} // namespace Frd

#endif
