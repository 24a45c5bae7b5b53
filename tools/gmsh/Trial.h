#ifndef GMSH_TRIAL_H
#define GMSH_TRIAL_H

#include <cstdint>
#include <functional>

namespace Gmsh {

/// Whether the function returns or throws, rather than end its process or take more memory than
/// that: it is called in a child that prints nothing. Damaged files end Gmsh now and then, and a
/// command that is reading one would be gone without a word.
bool survives(std::function<void()> const& function, std::uint64_t bytes);

} // namespace Gmsh

#endif
