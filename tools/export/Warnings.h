#ifndef EXPORT_WARNINGS_H
#define EXPORT_WARNINGS_H

#include <set>
#include <string>
#include <vector>

namespace Export {

/// What could not be carried over: sentences, each of them once.
class Warnings
{
public:
    void add(std::string const& sentence);
    std::vector<std::string> const& sentences() const { return sentences_; }

private:
    std::vector<std::string> sentences_;
    std::set<std::string> known_;
};

} // namespace Export

#endif
