#ifndef READ_FRD_RESULTBLOCKREADER_H
#define READ_FRD_RESULTBLOCKREADER_H

#include "BlockFormat.h"
#include "ByteStream.h"
#include "Mesh.h"
#include "ResultBlock.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Frd {

/// Reads result blocks.
class ResultBlockReader
{
public:
    ResultBlockReader(ByteStream& stream, Mesh const& mesh) : stream_(stream), mesh_(mesh) {}

    /// Takes over what a 1P record says; it holds for the next result block.
    void takeParameter(std::string const& line);

    /// Reads what follows the 100C record `head`. When that fails, the block has a name if all is
    /// there that tells its step.
    void read(std::string const& head, ResultBlock& block);

    /// Refuses parameters that no result block followed.
    void end() const;

    bool hasParameters() const { return hasPending_; }

private:
    struct BlockHead
    {
        std::uint64_t count;
        BlockFormat format;
    };

    BlockHead parseHead(std::string const& head, ResultBlock& block);
    void giveParameters(ResultBlock& block);
    std::size_t parseName(ResultBlock& block);
    void readComponents(ResultBlock& block);
    Component parseComponent(std::string const& line);
    void readLines(BlockHead const& head, ResultBlock& block);
    void readLineOfNode(BlockHead const& head, std::string const& line, ResultBlock& block);
    void readRecords(BlockHead const& head, ResultBlock& block);
    bool takeNode(std::int64_t nodeId, ResultBlock& block);
    void warnOfStrangers(ResultBlock const& block);
    void warnOfNothing(BlockHead const& head, ResultBlock const& block);
    bool hasLine();

    ByteStream& stream_;
    Mesh const& mesh_;
    ResultBlock pending_{};
    bool hasPending_ = false;
    std::size_t componentCount_ = 0;
    /// For each node of the mesh, the number of the last block that held it.
    std::vector<std::uint64_t> lastBlock_;
    std::uint64_t blockNumber_ = 0;
    /// Nodes of the block that the mesh does not have.
    std::vector<std::int64_t> strangers_;
};

} // namespace Frd

#endif
