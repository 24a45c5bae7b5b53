#ifndef READ_FRD_READER_H
#define READ_FRD_READER_H

#include "ByteStream.h"
#include "Header.h"
#include "Mesh.h"
#include "ResultBlock.h"
#include "ResultBlockReader.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace Frd {

/// Reads a solver's result file (.frd), lines or binary, from front to back.
///
/// The constructor reads header and mesh, which stay in memory; `next` then yields the result
/// blocks one at a time. Whatever is truncated, malformed or unknown is an `Error` that says where.
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
    /// Reads up to the first result block; throws `Error`.
    explicit Reader(std::filesystem::path const& path);

    Reader(Reader const&) = delete;
    Reader& operator=(Reader const&) = delete;

    Header const& header() const { return header_; }
    Mesh const& mesh() const { return mesh_; }

    std::uint64_t size() const { return stream_.size(); }
    std::uint64_t bytesRead() const { return stream_.size() - stream_.remaining(); }

    /// Reads the next result block; false when the file came to its proper end.
    bool next(ResultBlock& block);

private:
    void readFirstLine();
    /// Reads up to the next 100C or 9999 record, which is then in `line_`.
    void readToResult();
    void readRecord();
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
    bool isAtEnd_ = false;
};

} // namespace Frd

#endif
