#ifndef READ_EXODUS_LEFTOUT_H
#define READ_EXODUS_LEFTOUT_H

#include "Database.h"

#include "exchange/Report.h"

namespace Exodus {

/// Tells what the file has and a model gets nothing of.
void reportWhatIsLeftOut(Database const& database, Exchange::Report& report);

} // namespace Exodus

#endif
