#include "Zyl2/Mox2/Component/PathSplitter.h"

namespace Zyl2 {
namespace Mox2 {
namespace Component {

namespace {

/// For one character, which most separators are, a search for that character is faster.
std::size_t findSeparator(std::string_view text, std::string_view separators)
{
    return separators.size() == 1 ? text.find(separators.front()) : text.find_first_of(separators);
}

} // namespace

PathSplitter::Iterator::Iterator(std::string_view rest, std::string_view separators)
    : rest_(rest), separators_(separators)
{
    ++*this;
}

PathSplitter::Iterator& PathSplitter::Iterator::operator++()
{
    std::size_t const start = rest_.find_first_not_of(separators_);
    if (start == std::string_view::npos) {
        name_ = {};
        return *this;
    }
    rest_.remove_prefix(start);
    name_ = rest_.substr(0, findSeparator(rest_, separators_));
    rest_.remove_prefix(name_.size());
    return *this;
}

PathSplitter::Iterator PathSplitter::Iterator::operator++(int)
{
    Iterator const before = *this;
    ++*this;
    return before;
}

PathSplitter::PathSplitter(std::string const& path, char const* separator)
    : path_(path), separators_(separator)
{}

PathSplitter::~PathSplitter() = default;

} // namespace Component
} // namespace Mox2
} // namespace Zyl2
