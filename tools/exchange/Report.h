#ifndef EXCHANGE_REPORT_H
#define EXCHANGE_REPORT_H

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace Exchange {

/// What a translation has to tell its user: what was left out, and what values lost.
class Report
{
public:
    /// Whether elements that a model can't hold are left out; else they end the translation.
    bool skipUnknown = false;

    /// One sentence. The same sentence is told once.
    void warn(std::string const& sentence);

    /// Elements of a type that a model can't hold: raises `Error`, or counts them for a warning.
    void unknownElements(std::string const& type, std::size_t count);

    /// The value as a float; remembers the largest relative error. What is too large becomes
    /// infinite, NaN stays NaN.
    float narrow(double value);

    /// All warnings, each one sentence: at most one of them says what narrowing cost.
    void forEachWarning(std::function<void(std::string const&)> const& tell) const;

private:
    std::map<std::string, std::size_t> unknown_;
    std::map<std::string, bool> warnings_;
    std::size_t narrowed_ = 0;
    std::size_t overflowed_ = 0;
    double largestError_ = 0;
};

} // namespace Exchange

#endif
