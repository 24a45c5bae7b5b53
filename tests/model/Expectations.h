#ifndef TESTS_MODEL_EXPECTATIONS_H
#define TESTS_MODEL_EXPECTATIONS_H

#include "support/ThrowSite.h"

#include <string>

namespace ModelTests {

// The checks of the database, which every command starts with.

inline Support::Thrown const notEmpty{17, "Not Empty", "Database::assertEmpty() const",
                                      "Zyl2/Mox2/Database", 90};
inline Support::Thrown const notInitialized{
    17, "Not initialized", "Database::assertNotEmpty() const", "Zyl2/Mox2/Database", 97};
inline Support::Thrown const fileNotOpen{
    17, "File not open.", "Database::assertOpenedForWriting() const", "Zyl2/Mox2/Database", 114};
inline Support::Thrown const notInWriteMode{17, "File not opened in write mode",
                                            "Database::assertOpenedForWriting() const",
                                            "Zyl2/Mox2/Database", 117};

// An attribute that can't be stored.

inline Support::Thrown const unsupportedScalar{3, "Invalid arguments",
                                               "AttributeValueGetter::operator()(const T&) const",
                                               "Zyl2/Mox2/Helper/Attributes", 41};
inline Support::Thrown const unsupportedVector{
    3, "Invalid arguments", "AttributeValueGetter::operator()(const std::vector<T>&) const",
    "Zyl2/Mox2/Helper/Attributes", 48};

// The cursor of the tree.

inline Support::Thrown const currentNodeIsNone{14, "Key not found", "GetCurrentNode",
                                               "Zyl2/Adt/AdtTree", 219};

} // namespace ModelTests

#endif
