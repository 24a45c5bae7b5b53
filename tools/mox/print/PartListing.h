#ifndef MOX_PRINT_PARTLISTING_H
#define MOX_PRINT_PARTLISTING_H

#include <ostream>
#include <string>

namespace Mox {

/// Prints which files an index names, of which ranks each is, and what is wrong with it.
/// \param path of the index
void listParts(std::string const& path, bool asJson, std::ostream& out);

} // namespace Mox

#endif
