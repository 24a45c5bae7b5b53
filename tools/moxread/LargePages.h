#ifndef MOXREAD_LARGEPAGES_H
#define MOXREAD_LARGEPAGES_H

#include <cstddef>

namespace MoxRead {

/// Wishes for large pages behind memory that nobody has touched yet: to touch a block's memory for
/// the first time takes as long as to inflate into it, unless its pages are large. The system need
/// not grant it.
void wishForLargePages(void* bytes, std::size_t size) noexcept;

} // namespace MoxRead

#endif
