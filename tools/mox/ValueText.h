#ifndef MOX_VALUETEXT_H
#define MOX_VALUETEXT_H

#include "moxread/Dataset.h"

#include <string>

/// The shortest text from which the number can be recovered exactly.
std::string textOf(float value);
std::string textOf(double value);

/// The numbers of a sequence, separated by blanks.
template <typename Iterator>
std::string textOf(Iterator begin, Iterator end)
{
    std::string text;
    for (Iterator it = begin; it != end; ++it)
        text += (it == begin ? "" : " ") + textOf(*it);
    return text;
}

/// Such as "range 0..2.5", "range 0..2.5 and 3 NaN", "all NaN" or "empty".
std::string rangeText(MoxRead::Dataset const& dataset);

#endif
