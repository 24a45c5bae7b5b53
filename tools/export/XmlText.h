#ifndef EXPORT_XMLTEXT_H
#define EXPORT_XMLTEXT_H

#include <string>

namespace Export {

/// The text with every byte that is no UTF-8, and every character that XML can't hold, replaced by
/// a question mark: a name in a model is any bytes.
std::string xmlText(std::string const& text);

} // namespace Export

#endif
