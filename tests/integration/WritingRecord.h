#ifndef TESTS_INTEGRATION_WRITINGRECORD_H
#define TESTS_INTEGRATION_WRITINGRECORD_H

#include <string>

namespace Integration {

/// The bytes of a model file without the block of the writing record and without its size in the
/// index: what two files have in common that were written by the same calls at different times.
std::string bytesWithoutWritingRecord(std::string const& path);

} // namespace Integration

#endif
