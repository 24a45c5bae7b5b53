#ifndef TESTS_CONTAINER_INDEXCONTENT_H
#define TESTS_CONTAINER_INDEXCONTENT_H

#include "Zyl2/Wvf/Index.h"

#include "container/Bytes.h"

#include <string>

namespace Support {

/// Names of slots, as they are in a file: of one that no block has, and of the one that names a
/// block of the index.
inline std::string const Spare = Hex("0B 45 6D 70 74 79 20 42 6C 6F 63 6B 20");
inline std::string const IndexBlock = Hex("0B 49 6E 64 65 78 20 42 6C 6F 63 6B 20");

inline void PutBytes(Zyl2Wvf::Index& index, std::string const& key, std::string const& bytes)
{
    void const* const data = bytes.data();
    index.Put(key, data, bytes.size());
}

} // namespace Support

#endif
