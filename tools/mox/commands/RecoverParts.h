#ifndef MOX_COMMANDS_RECOVERPARTS_H
#define MOX_COMMANDS_RECOVERPARTS_H

#include "RecoverCommand.h"

#include <ostream>

namespace Mox {

/// Recovers each file of an index that can be, as `recoverFile` does, and finishes the index when
/// all are whole. Returns the exit status: 1 when one of them is not.
int recoverParts(RecoverArguments const& arguments, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
