#ifndef READ_FRD_READER_H
#define READ_FRD_READER_H

#include "ByteStream.h"
#include "Error.h"
#include "Header.h"
#include "Mesh.h"
#include "ResultBlock.h"
#include "ResultBlockReader.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Frd {

/// Reads a solver's result file (.frd), lines or binary, from front to back.
///
/// The constructor reads header and mesh, which stay in memory; `next` then yields the result
/// blocks one at a time. Whatever is malformed or unknown is an `Error` that says where; a file
/// that ends too early is a `Truncated` one, behind all blocks that are whole. What is wrong but
/// can be told apart is a warning.
///
/// \code
/// Frd::Reader reader("beam.frd");
/// Frd::ResultBlock block;
/// while (reader.next(block))
///     show(reader.mesh(), block);
/// \endcode
class Reader
{
public:
    /// Reads up to the first result block; throws `Error`, also when the mesh is not whole.
    explicit Reader(std::filesystem::path const& path);

    Reader(Reader const&) = delete;
    Reader& operator=(Reader const&) = delete;

    Header const& header() const { return header_; }
    Mesh const& mesh() const { return mesh_; }

    std::uint64_t size() const { return stream_.size(); }
    std::uint64_t bytesRead() const { return stream_.size() - stream_.remaining(); }

    /// Reads the next result block; false when the file came to its proper end. Where the file
    /// ends too early, `block` has a name if that of its step is known.
    bool next(ResultBlock& block);

    /// Whether the file ended right behind a block or in its end record, so that nothing tells that
    /// another block began.
    bool endedBehindBlock() const { return endedBehindBlock_; }

    std::vector<std::string> const& warnings() const { return stream_.warnings(); }

private:
    void readFirstLine();
    /// Reads up to the next 100C or 9999 record, which is then in `line_`, or to where a file with
    /// a whole mesh ends before.
    void readToResult();
    void readRecordsToResult();
    void readRecord();
    void readModelAgain();
    void readUserRecord();
    bool readMaterial(std::string_view text);
    bool readField(std::string_view text);
    void readNodes();
    void readElements();
    void readEnd();

    ByteStream stream_;
    Header header_;
    Mesh mesh_;
    ResultBlockReader results_;
    std::string line_;
    bool hasNodes_ = false;
    bool hasElements_ = false;
    /// Nodes alone are a mesh, too, once results follow.
    bool isMeshWhole_ = false;
    bool isAtEnd_ = false;
    bool endedBehindBlock_ = false;
    /// Why nothing more can be read: the file ended behind the last block that is whole.
    std::optional<Truncated> truncation_;
};

} // namespace Frd

#endif
