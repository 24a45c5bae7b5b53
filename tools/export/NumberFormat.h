#ifndef EXPORT_NUMBERFORMAT_H
#define EXPORT_NUMBERFORMAT_H

#include <string>

namespace Export {

/// How numbers between two limits are written beside a scale: a format for printf that tells them
/// apart and is not longer than needed.
std::string numberFormat(double least, double greatest);

/// With three digits that count, such as "0.00125", "12.5" or "1.25e+09".
std::string shortNumber(double value);

} // namespace Export

#endif
