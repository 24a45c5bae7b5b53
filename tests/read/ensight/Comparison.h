#ifndef TESTS_READ_ENSIGHT_COMPARISON_H
#define TESTS_READ_ENSIGHT_COMPARISON_H

#include "Model.h"

#include "support/SourceContent.h"

#include <string>

/// Says where a file has been read in another way than it was written; empty where it is the same.
std::string differenceOf(Support::SourceContent const& file, Model const& model);

#endif
