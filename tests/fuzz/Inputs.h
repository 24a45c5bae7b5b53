#ifndef TESTS_FUZZ_INPUTS_H
#define TESTS_FUZZ_INPUTS_H

#include <cstddef>
#include <cstdint>

// What the fuzzers, and the replay of their corpora, do with one input. Each raises Violation when
// the input makes the code do what it must not do.

namespace Fuzz {

/// Takes the bytes as a model file, for `mox verify`, `ls`, `info`, `diff` with itself, and `dump`
/// of its first datasets.
///
/// Each gives a clear verdict: status 0 and nothing on the error stream, or status 1, nothing on
/// the output stream and one line that tells why. What `verify` calls sound none of the others
/// refuses, and it is equal to itself.
///
/// Bound on memory: what is held at once stays below 4 MiB + 32 x (size of the file + size of what
/// its compressed blocks inflate to). The fixed part is room to read and inflate a block in pieces.
/// The factor is about twice what the worst files take that could be thought of: nodes of 44 bytes,
/// which are 232 in memory and make a line of the listing each; attributes of 15 bytes; a complaint
/// about names of control characters, each of which is told as four. No count or length in a file
/// gets memory beyond that.
void readModelFile(std::uint8_t const* bytes, std::size_t size);

/// Takes the bytes as a solver's result file, for the reader of `mox translate`. What the reader
/// accepts is translated, and the model has to be sound.
///
/// Bound on the reader's memory: 256 KiB + 32 x size of the file.
void readResultFile(std::uint8_t const* bytes, std::size_t size);

/// Takes the bytes as a case of EnSight and its data files: each but the first is behind a line
/// `@@@@` with its name. What the reader accepts is translated, and the model has to be sound.
///
/// Bound on the reader's memory: 256 KiB + 64 x size of the files. Blocks whose nodes are counted
/// only (`uniform`, `rectilinear`) may be refused for their memory.
void readEnSightCase(std::uint8_t const* bytes, std::size_t size);

/// Takes the bytes as choices: the size of a block, then calls of a model, valid or not, with their
/// arguments. Every answer, every refusal and the file have to be as expected. What is not gets
/// reported as failures of GoogleTest, too.
void buildModel(std::uint8_t const* bytes, std::size_t size);

/// Takes the bytes as the log of a run that can be recovered, as if each record had its checksum,
/// and all values were zero. It gives a listing and a sound file, or one sentence.
void replayLog(std::uint8_t const* bytes, std::size_t size);

} // namespace Fuzz

#endif
