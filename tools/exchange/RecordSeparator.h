#ifndef EXCHANGE_RECORDSEPARATOR_H
#define EXCHANGE_RECORDSEPARATOR_H

#include "Report.h"

#include <string>

namespace Exchange {

/// The name without the byte that stands between the names of dataset and step.
std::string withoutRecordSeparator(std::string const& name, Report& report);

} // namespace Exchange

#endif
