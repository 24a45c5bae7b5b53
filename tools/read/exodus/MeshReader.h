#ifndef READ_EXODUS_MESHREADER_H
#define READ_EXODUS_MESHREADER_H

#include "Database.h"
#include "PartRows.h"

#include "exchange/Part.h"
#include "exchange/Report.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Exodus {

/// Makes parts of a file's blocks.
class MeshReader
{
public:
    MeshReader(Database const& database, Exchange::Report& report);

    MeshRows takeRows() { return std::move(rows_); }
    std::vector<Exchange::Part> takeParts() { return std::move(parts_); }

private:
    void addBlocks();
    PartRows blockOf(ex_block const& parameters, std::string const& name) const;
    void addPart(PartRows& block, ex_block const& parameters);
    void addElements(Exchange::Part& part, PartRows& block, ex_block const& parameters) const;
    std::vector<std::uint32_t> readNodes(ex_block const& parameters) const;
    std::vector<std::uint64_t> readOffsets(ex_block const& parameters) const;
    void addPartOfUnusedNodes();
    void addCoordinates();
    void addNumbers();
    void addSets();
    void addNodeSet(std::int64_t id, std::string const& name);
    void addElementSet(std::int64_t id, std::string const& name);

    Database const& database_;
    Exchange::Report& report_;
    MeshRows rows_;
    std::vector<Exchange::Part> parts_;
};

} // namespace Exodus

#endif
