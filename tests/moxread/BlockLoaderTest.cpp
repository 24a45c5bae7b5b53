#include "moxread/BlockLoader.h"

#include "moxread/Adler32.h"
#include "moxread/BlockReader.h"
#include "moxread/Container.h"
#include "moxread/FormatError.h"

#include "Bytes.h"
#include "TestFile.h"
#include "support/Wanted.h"

#include <gtest/gtest.h>

#include <zlib.h>

#include <stdexcept>

using namespace MoxReadTest;
using MoxRead::BlockLoader;
using MoxRead::Buffer;
using MoxRead::Inflater;

namespace {

MoxRead::Slot slotOf(std::size_t size, std::uint8_t transformations = 1)
{
    MoxRead::Slot slot;
    slot.name = "Heavy Data";
    slot.size = static_cast<std::uint32_t>(size);
    slot.transformations = transformations;
    return slot;
}

using Load = std::function<std::string()>;

// The content, or what is wrong.
std::string outcomeOf(Load const& load)
{
    try {
        return "content " + load();
    } catch (MoxRead::FormatError const& error) {
        return error.what();
    }
}

std::string outcomeOfReader(MoxRead::InputFile const& file, MoxRead::Slot const& slot)
{
    return outcomeOf([&] {
        std::vector<std::uint8_t> const content = MoxRead::BlockReader(file, slot).readAll();
        return std::string(content.begin(), content.end());
    });
}

std::string outcomeOfLoader(BlockLoader& loader, MoxRead::Slot const& slot)
{
    return outcomeOf([&] {
        Buffer content;
        loader.load(slot, content);
        return std::string(content.data(), content.data() + content.size());
    });
}

// What the reader says of a block, piece by piece and by zlib, each inflater has to say, too. They
// are used for one block after the other, as they are for those of a file.
class Loaders
{
public:
    /// \param content of the block that others are made of: where it is intact, an inflater other
    ///                than zlib may take a stream that breaks the rules in another way
    Loaders(MoxRead::InputFile const& file, std::string const& content)
        : file_(file), intact_("content " + content)
    {
        for (Inflater const inflater : MoxRead::builtInflaters())
            loaders_.emplace_back(file, MoxRead::wholeInflaterOf(inflater));
    }

    void expectAgreement(MoxRead::Slot const& slot)
    {
        std::string const expected = outcomeOfReader(file_, slot);
        sound_ += expected.rfind("content ", 0) == 0 ? 1 : 0;
        for (BlockLoader& loader : loaders_) {
            std::string const outcome = outcomeOfLoader(loader, slot);
            bool const isLenient = &loader != &loaders_.back() && outcome == intact_;
            ASSERT_TRUE(outcome == expected || isLenient) << outcome << "\n" << expected;
            lenient_ += outcome == expected ? 0 : 1;
        }
    }

    std::size_t soundCount() const { return sound_; }
    std::size_t lenientCount() const { return lenient_; }

private:
    MoxRead::InputFile const& file_;
    std::string intact_;
    std::vector<BlockLoader> loaders_;
    std::size_t sound_ = 0;
    std::size_t lenient_ = 0;
};

// Made by another strategy, the stream has blocks of another kind.
std::string deflatedBy(int level, int strategy, std::string const& content)
{
    z_stream stream = {};
    EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, MAX_WBITS, 8, strategy), Z_OK);
    std::string bytes(content.size() + 100, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return Bytes().u32(content.size()).raw(bytes).str();
}

// Some of it repeats, some doesn't.
std::string mixedContent()
{
    std::string content;
    std::uint32_t noise = 1;
    for (unsigned i = 0; i < 300; ++i) {
        noise = noise * 1664525U + 1013904223U;
        content += static_cast<char>(i % 3 == 0 ? noise >> 24U : 'a' + i % 7);
    }
    return content + content.substr(0, 100);
}

struct Sampled
{
    std::string content;
    std::string block;
};

std::vector<Sampled> blocksOfAllKinds()
{
    std::string const mixed = mixedContent();
    std::string const same(3000, 'x');
    return {{mixed, deflatedBy(0, Z_DEFAULT_STRATEGY, mixed)},
            {mixed, deflatedBy(6, Z_FIXED, mixed)},
            {mixed, deflatedBy(6, Z_DEFAULT_STRATEGY, mixed)},
            {mixed, deflatedBy(6, Z_HUFFMAN_ONLY, mixed)},
            {same, deflatedBy(6, Z_DEFAULT_STRATEGY, same)}};
}

} // namespace

TEST(BlockLoader, EveryInflaterSaysOfAFlippedBitWhatTheReaderDoes)
{
    for (auto const& [content, block] : blocksOfAllKinds()) {
        TemporaryFile const temporary(block);
        MoxRead::InputFile const file(temporary.path());
        Loaders loaders(file, content);
        loaders.expectAgreement(slotOf(block.size()));
        EXPECT_EQ(loaders.soundCount(), 1U);
        for (std::size_t at = 0; at < block.size(); at += Support::stride(7)) {
            for (unsigned const flip : {1U, 2U, 4U, 8U, 16U, 32U, 64U, 128U, 255U}) {
                auto const byte = static_cast<unsigned char>(block[at]);
                temporary.overwrite(at, static_cast<char>(byte ^ flip));
                SCOPED_TRACE("byte " + std::to_string(at) + " flip " + std::to_string(flip));
                loaders.expectAgreement(slotOf(block.size()));
                ASSERT_FALSE(HasFatalFailure());
            }
            temporary.overwrite(at, block[at]);
        }
        // Codes that no symbol has, in the heads of blocks.
        EXPECT_LE(loaders.lenientCount(), 4U);
    }
}

TEST(BlockLoader, EveryInflaterSaysOfACutOrExtendedBlockWhatTheReaderDoes)
{
    for (auto const& [content, block] : blocksOfAllKinds()) {
        TemporaryFile const temporary(block + std::string("\0x\0\0\0", 5));
        MoxRead::InputFile const file(temporary.path());
        Loaders loaders(file, content);
        for (std::size_t size = 0; size <= block.size() + 5; ++size) {
            SCOPED_TRACE(size);
            loaders.expectAgreement(slotOf(size));
            ASSERT_FALSE(HasFatalFailure());
        }
        EXPECT_EQ(loaders.soundCount(), 1U);
        EXPECT_EQ(loaders.lenientCount(), 0U);
    }
}

TEST(BlockLoader, EveryInflaterSaysOfAWrongLengthWhatTheReaderDoes)
{
    for (auto const& [content, block] : blocksOfAllKinds()) {
        std::string const stream = block.substr(4);
        TemporaryFile const temporary(block);
        MoxRead::InputFile const file(temporary.path());
        Loaders loaders(file, content);
        for (std::size_t const length :
             {0U, 1U, 399U, 400U, 401U, 2999U, 3000U, 3001U, 1U << 21U}) {
            temporary.write(Bytes().u32(length).raw(stream).str());
            SCOPED_TRACE(length);
            loaders.expectAgreement(slotOf(block.size()));
            ASSERT_FALSE(HasFatalFailure());
        }
        EXPECT_EQ(loaders.soundCount(), 1U);
        EXPECT_EQ(loaders.lenientCount(), 0U);
    }
}

TEST(BlockLoader, BlocksOfAnyCompressionAreRead)
{
    std::string noise;
    std::uint32_t number = 1;
    for (unsigned i = 0; i < 700000; ++i)
        noise += static_cast<char>((number = number * 1664525U + 1013904223U) >> 24U);
    for (std::string const& content :
         {std::string(), noise, std::string(20000000, '\0'), noise + std::string(9000000, 'z')}) {
        for (bool const isCompressed : {true, false}) {
            std::string const block = isCompressed ? deflated(content) : content;
            TemporaryFile const temporary(block);
            MoxRead::InputFile const file(temporary.path());
            Loaders loaders(file, content);
            loaders.expectAgreement(slotOf(block.size(), isCompressed ? 1 : 0));
            EXPECT_EQ(loaders.soundCount(), 1U);
        }
    }
}

TEST(BlockLoader, TheChecksumIsThatOfZlib)
{
    std::string bytes;
    std::uint32_t number = 1;
    for (unsigned i = 0; i < 70000; ++i)
        bytes += static_cast<char>(i < 60000 ? 0xFF : (number = number * 69069U + 1U) >> 24U);
    auto const* const data = reinterpret_cast<std::uint8_t const*>(bytes.data());
    for (std::size_t const count : {0U, 1U, 255U, 256U, 257U, 511U, 5552U, 65535U, 70000U}) {
        EXPECT_EQ(MoxRead::adler32Of(data, count),
                  adler32(1, reinterpret_cast<Bytef const*>(data), static_cast<uInt>(count)));
    }
}

TEST(BlockLoader, ZlibIsAlwaysThereAndAnInflaterThatIsNotIsRefused)
{
    std::vector<Inflater> const built = MoxRead::builtInflaters();
    EXPECT_EQ(built.back(), Inflater::Zlib);
    for (Inflater const inflater : {Inflater::Libdeflate, Inflater::Isal}) {
        if (std::find(built.begin(), built.end(), inflater) != built.end())
            continue;
        MoxRead::ReadOptions options;
        options.inflater = inflater;
        try {
            MoxRead::Container("no such file", options);
            FAIL();
        } catch (std::invalid_argument const& error) {
            EXPECT_NE(std::string(error.what()).find(nameOf(inflater) + "; it has "),
                      std::string::npos);
        }
    }
}
