// What no writer of the same blocks can beat: their bytes copied, deflated by the bare encoders
// with the settings that moxwriter gives them, and a file's bytes written without further ado.
// "extract" takes the blocks out of a model file once, uncompressed, for all of them.

#include "Arguments.h"
#include "Measurement.h"

#include <moxread/BlockReader.h>
#include <moxread/Container.h>

#include <zlib.h>

#ifdef BENCH_LIBDEFLATE
#include <libdeflate.h>
#endif
#ifdef BENCH_ISAL
#include <isa-l/igzip_lib.h>
#endif

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <vector>

using namespace Bench;

namespace {

using Bytes = std::vector<unsigned char>;
using Blocks = std::vector<Bytes>;

// The library's settings.
constexpr int ZlibLevel = 6;
constexpr int LibdeflateLevel = 5;
constexpr int IsalLevel = 1;

void writeBlock(std::ofstream& output, std::vector<std::uint8_t> const& block)
{
    std::uint64_t const size = block.size();
    output.write(reinterpret_cast<char const*>(&size), sizeof size);
    output.write(reinterpret_cast<char const*>(block.data()), static_cast<std::streamsize>(size));
}

void extract(Arguments const& arguments)
{
    MoxRead::Container const container(arguments.text("model"));
    std::ofstream output(arguments.text("blocks"), std::ios::binary);
    output.exceptions(std::ios::failbit | std::ios::badbit);
    for (MoxRead::Slot const& slot : container.slots())
        if (slot.isCompressed())
            writeBlock(output, MoxRead::BlockReader(container.file(), slot).readAll());
}

Blocks readBlocks(std::string const& path)
{
    std::ifstream input(path, std::ios::binary);
    Blocks blocks;
    std::uint64_t size = 0;
    while (input.read(reinterpret_cast<char*>(&size), sizeof size)) {
        blocks.emplace_back(size);
        input.read(reinterpret_cast<char*>(blocks.back().data()),
                   static_cast<std::streamsize>(size));
    }
    if (!input.eof() || blocks.empty())
        throw std::runtime_error("can't read " + path);
    return blocks;
}

std::uint64_t sizeOf(Blocks const& blocks)
{
    std::uint64_t result = 0;
    for (Bytes const& block : blocks)
        result += block.size();
    return result;
}

/// Room for any block; every page of it has been touched.
Bytes roomFor(Blocks const& blocks)
{
    std::size_t largest = 0;
    for (Bytes const& block : blocks)
        largest = std::max(largest, block.size());
    return Bytes(compressBound(largest), 1);
}

/// Runs an encoder, which returns how many bytes it made, on all blocks, in --threads threads.
template <typename Encode>
void measureEncoder(Arguments const& arguments, Encode const& encode)
{
    Blocks const blocks = readBlocks(arguments.text("blocks"));
    std::vector<Bytes> rooms(arguments.numberOr("threads", 1), roomFor(blocks));
    std::atomic<std::size_t> next{0};
    std::atomic<std::uint64_t> written{0};
    auto const work = [&](Bytes& room) {
        for (std::size_t block = next++; block < blocks.size(); block = next++)
            written += encode(blocks[block], room);
    };
    measure(
        sizeOf(blocks),
        [&] {
            std::vector<std::future<void>> others;
            for (std::size_t room = 1; room < rooms.size(); ++room)
                others.push_back(std::async(std::launch::async, work, std::ref(rooms[room])));
            work(rooms[0]);
            for (std::future<void>& other : others)
                other.get();
        },
        [&] { return written.load(); });
}

std::size_t copy(Bytes const& block, Bytes& room)
{
    std::memcpy(room.data(), block.data(), block.size());
    return block.size();
}

void measureMemcpy(Arguments const& arguments)
{
    measureEncoder(arguments, copy);
}

std::size_t deflateByZlib(Bytes const& block, Bytes& room)
{
    uLongf size = room.size();
    if (compress2(room.data(), &size, block.data(), block.size(), ZlibLevel) != Z_OK)
        throw std::runtime_error("zlib failed");
    return size;
}

void measureZlib(Arguments const& arguments)
{
    measureEncoder(arguments, deflateByZlib);
}

#ifdef BENCH_LIBDEFLATE
void measureLibdeflate(Arguments const& arguments)
{
    measureEncoder(arguments, [](Bytes const& block, Bytes& room) {
        std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> const
            compressor(libdeflate_alloc_compressor(LibdeflateLevel), libdeflate_free_compressor);
        std::size_t const size = libdeflate_zlib_compress(compressor.get(), block.data(),
                                                          block.size(), room.data(), room.size());
        if (size == 0)
            throw std::runtime_error("libdeflate failed");
        return size;
    });
}
#endif

#ifdef BENCH_ISAL
std::size_t deflateByIsal(Bytes const& block, Bytes& room)
{
    Bytes workspace(ISAL_DEF_LVL1_REQ + ISAL_DEF_LVL1_TOKEN_SIZE * 96 * IGZIP_K);
    isal_zstream stream;
    isal_deflate_stateless_init(&stream);
    stream.level = IsalLevel;
    stream.level_buf = workspace.data();
    stream.level_buf_size = static_cast<std::uint32_t>(workspace.size());
    stream.gzip_flag = IGZIP_ZLIB;
    stream.end_of_stream = 1;
    stream.next_in = const_cast<unsigned char*>(block.data());
    stream.avail_in = static_cast<std::uint32_t>(block.size());
    stream.next_out = room.data();
    stream.avail_out = static_cast<std::uint32_t>(room.size());
    if (isal_deflate_stateless(&stream) != COMP_OK || stream.avail_in != 0)
        throw std::runtime_error("isal failed");
    return stream.total_out;
}

void measureIsal(Arguments const& arguments)
{
    measureEncoder(arguments, deflateByIsal);
}
#endif

Bytes readFile(std::string const& path)
{
    Bytes result(std::filesystem::file_size(path));
    std::ifstream input(path, std::ios::binary);
    if (!input.read(reinterpret_cast<char*>(result.data()),
                    static_cast<std::streamsize>(result.size())))
        throw std::runtime_error("can't read " + path);
    return result;
}

void writeFile(std::string const& path, Bytes const& bytes)
{
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        throw std::runtime_error("can't open " + path);
    std::size_t const written = std::fwrite(bytes.data(), 1, bytes.size(), file);
    if (std::fclose(file) != 0 || written != bytes.size())
        throw std::runtime_error("can't write " + path);
}

void measureFwrite(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    Bytes const bytes = readFile(arguments.text("model"));
    measureWriting(folder, bytes.size(), [&] { writeFile(folder + "/bytes", bytes); });
}

Workloads workloads()
{
    Workloads result{{"extract", extract},
                     {"memcpy", measureMemcpy},
                     {"zlib", measureZlib},
                     {"fwrite", measureFwrite}};
#ifdef BENCH_LIBDEFLATE
    result["libdeflate"] = measureLibdeflate;
#endif
#ifdef BENCH_ISAL
    result["isal"] = measureIsal;
#endif
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv, workloads());
}
