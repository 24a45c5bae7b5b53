#ifndef EXCHANGE_REPORT_H
#define EXCHANGE_REPORT_H

#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Exchange {

/// What a translation has to tell its user: what was left out, and what values lost.
class Report
{
public:
    /// Whether elements that a model can't hold are left out; else they end the translation.
    bool skipUnknown = false;

    /// Adds a warning, which is one sentence; a sentence that was added before is not repeated.
    void warn(std::string const& sentence);

    /// Elements of a type that a model can't hold: raises `Error`, or counts them for a warning.
    void unknownElements(std::string const& type, std::size_t count);

    /// The value as a float; remembers the largest relative error. What is too large becomes
    /// infinite, NaN stays NaN.
    float narrow(double value)
    {
        if (!(std::fabs(value) <= std::numeric_limits<float>::max()))
            return narrowOutside(value);
        float const narrowed = static_cast<float>(value);
        if (static_cast<double>(narrowed) != value)
            countLoss(value, narrowed);
        return narrowed;
    }

    /// The largest relative error of all values that became floats; 0 when all are exact. Values
    /// beyond the range of normal floats are not among them.
    double largestError() const { return largestError_; }

    /// All warnings, each one sentence: at most one of them says what narrowing cost.
    std::vector<std::string> warnings() const;

private:
    float narrowOutside(double value);
    void countLoss(double value, float narrowed);
    std::string narrowingSentence() const;

    std::map<std::string, std::size_t> unknown_;
    /// In the order in which they came up.
    std::vector<std::string> warnings_;
    std::set<std::string> told_;
    std::size_t narrowed_ = 0;
    std::size_t overflowed_ = 0;
    std::size_t underflowed_ = 0;
    double largestError_ = 0;
};

} // namespace Exchange

#endif
