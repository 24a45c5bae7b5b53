#ifndef ZYL2_MOX2_COMPONENT_PATHSPLITTER_H
#define ZYL2_MOX2_COMPONENT_PATHSPLITTER_H

#include <boost/tokenizer.hpp>

#include <string>

namespace Zyl2 {
namespace Mox2 {
namespace Component {

/// Cuts a path into its names.
class PathSplitter
{
public:
    using Tokenizer = boost::tokenizer<boost::char_separator<char>>;

    /// \param separator each of its characters separates names; runs of them count once
    PathSplitter(std::string const& path, char const* separator);
    PathSplitter(PathSplitter const&) = delete;
    PathSplitter& operator=(PathSplitter const&) = delete;
    virtual ~PathSplitter();

    Tokenizer::iterator begin() const { return tokenizer_.begin(); }
    Tokenizer::iterator end() const { return tokenizer_.end(); }

private:
    std::string path_;
    Tokenizer tokenizer_;
};

} // namespace Component
} // namespace Mox2
} // namespace Zyl2

#endif
