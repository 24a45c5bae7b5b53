#include "Zyl2/Mox2/Component/PathSplitter.h"

namespace Zyl2 {
namespace Mox2 {
namespace Component {

PathSplitter::PathSplitter(std::string const& path, char const* separator)
    : path_(path), tokenizer_(path_, boost::char_separator<char>(separator))
{}

PathSplitter::~PathSplitter() = default;

} // namespace Component
} // namespace Mox2
} // namespace Zyl2
