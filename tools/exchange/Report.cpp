#include "Report.h"

#include "Error.h"
#include "NearestFloat.h"

#include <algorithm>
#include <cstdio>

namespace Exchange {

namespace {

std::string counted(std::size_t count, std::string const& one, std::string const& many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string shortText(double value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.2g", value);
    return text;
}

} // namespace

void Report::warn(std::string const& sentence)
{
    if (told_.insert(sentence).second)
        warnings_.push_back(sentence);
}

void Report::unknownElements(std::string const& type, std::size_t count)
{
    if (count == 0)
        return;
    if (!skipUnknown)
        throw Error("A model cannot hold " +
                    counted(count, "element of the type ", "elements of the type ") + type +
                    "; --skip-unknown leaves them out.");
    unknown_[type] += count;
}

float Report::narrowOutside(double value)
{
    if (std::isfinite(value))
        ++overflowed_;
    return nearestFloat(value);
}

void Report::countLoss(double value, float narrowed)
{
    double const size = std::fabs(value);
    if (size < std::numeric_limits<float>::min()) {
        ++underflowed_;
        return;
    }
    ++narrowed_;
    largestError_ =
        std::max(largestError_, std::fabs(static_cast<double>(narrowed) - value) / size);
}

std::string Report::narrowingSentence() const
{
    std::string sentence;
    auto const add = [&sentence](std::string const& text) {
        sentence += (sentence.empty() ? "" : ", ") + text;
    };
    if (narrowed_ != 0)
        add(counted(narrowed_, "value was", "values were") +
            " rounded to single precision with a relative error of at most " +
            shortText(largestError_));
    if (underflowed_ != 0)
        add(counted(underflowed_, "value", "values") +
            " too small for single precision became 0 or inexact");
    if (overflowed_ != 0)
        add(counted(overflowed_, "value", "values") +
            " too large for single precision became infinite");
    return sentence.empty() ? sentence : sentence + ".";
}

std::vector<std::string> Report::warnings() const
{
    std::vector<std::string> all = warnings_;
    for (auto const& [type, count] : unknown_)
        all.push_back(counted(count, "element of the type ", "elements of the type ") + type +
                      (count == 1 ? " was" : " were") + " left out.");
    std::string const narrowing = narrowingSentence();
    if (!narrowing.empty())
        all.push_back(narrowing);
    return all;
}

} // namespace Exchange
