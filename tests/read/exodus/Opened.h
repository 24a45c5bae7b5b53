#ifndef TESTS_READ_EXODUS_OPENED_H
#define TESTS_READ_EXODUS_OPENED_H

#include "support/SourceContent.h"

#include <read/exodus/Source.h>

namespace ExodusTest {

struct Opened : Support::SourceContent
{
    explicit Opened(std::filesystem::path const& path, bool skipUnknown = false)
        : SourceContent(Exodus::open, path, skipUnknown)
    {}
};

} // namespace ExodusTest

#endif
