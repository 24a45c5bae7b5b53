#include "large/Figures.h"
#include "large/Numbers.h"
#include "large/Space.h"

#include "container/TemporaryFile.h"
#include "moxread/BlockReader.h"
#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "moxread/Verify.h"
#include "support/Environment.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace Large {

namespace {

using namespace Zyl2::Mox2;

constexpr std::uint64_t gibibyte = 1073741824;
constexpr unsigned long valueSize = 4;

/// The most values that an array can have: a block's length has 32 bits.
constexpr unsigned long mostValues = 1073741823;

/// Every other plane is zeros, so that a block takes half its length in the file.
constexpr std::uint32_t compressibleMask = 0x00FF00FF;

/// One of the arrays that make up a block: a sequence of numbers, and how many of them it has.
struct Part
{
    Numbers numbers;
    unsigned long count;
};

void add(Model& model, unsigned int shape, Part const& part, std::string const& name)
{
    Array1d<unsigned int> values(part.count);
    for (unsigned long place = 0; place < part.count; ++place)
        values[place] = part.numbers.at(place);
    model.addArrayProperty(name, DatasetType::Result10, values, shape, Step());
}

void write(std::string const& path, std::vector<Part> const& parts)
{
    Model model;
    model.saveTo(path);
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    for (std::size_t part = 0; part < parts.size(); ++part)
        add(model, shape, parts[part], "part " + std::to_string(part));
    model.close();
}

/// Reads a block once, from front to end, in pieces: it is too large to be held beside others.
class ComparedBlock
{
public:
    ComparedBlock(MoxRead::Container const& container, std::size_t block)
        : reader_(container.file(), container.slotsOf("Heavy Data").at(block))
    {}

    std::uint32_t length() const { return reader_.length(); }

    /// Compares the next bytes with the part's values as they are stored: the lowest bytes of all
    /// of them first.
    void expect(Part const& part)
    {
        for (unsigned int plane = 0; plane < valueSize; ++plane)
            expectPlane(part, 8 * plane);
    }

private:
    void expectPlane(Part const& part, unsigned int shift)
    {
        unsigned long place = 0;
        while (place < part.count) {
            std::size_t const wanted = std::min<std::size_t>(piece_.size(), part.count - place);
            ASSERT_EQ(reader_.read(piece_.data(), wanted), wanted);
            for (std::size_t index = 0; index < wanted; ++index, ++place)
                if (piece_[index] != (part.numbers.at(place) >> shift & 0xFFU))
                    FAIL() << "value " << place << " differs from bit " << shift << " on";
        }
    }

    MoxRead::BlockReader reader_;
    std::vector<std::uint8_t> piece_ = std::vector<std::uint8_t>(1048576);
};

/// \return what is wrong with the file; nothing when it is sound
std::string verdict(std::string const& path)
{
    try {
        MoxRead::verify(path);
    } catch (MoxRead::FormatError const& error) {
        return error.what();
    }
    return {};
}

class LargeBlockTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_GT(availableSpace(), 5 * gibibyte) << "set TMPDIR to a folder with more room";
    }

    Support::TemporaryFolder folder;
    std::string path = folder.File("large.mox");
};

} // namespace

TEST_F(LargeBlockTest, TakesAnArrayOf4294967292Bytes)
{
    Part const part{Numbers(1, compressibleMask), mostValues};
    Figures figures("array of 4294967292 bytes");
    write(path, {part});
    figures.lap("written", std::filesystem::file_size(path));
    // At first there are the array and its copy in the block, later the block and what compression
    // made of it, which is half as long.
    EXPECT_LT(peakMemory(), 9 * gibibyte);
    EXPECT_EQ(MoxRead::verify(path).datasets, 1U);
    figures.lap("verified", std::filesystem::file_size(path));

    MoxRead::Model const model(path);
    EXPECT_EQ(model.heavyLength(), mostValues * valueSize);
    ComparedBlock block(model.container(), 0);
    ASSERT_EQ(block.length(), mostValues * valueSize);
    block.expect(part);
    figures.lap("compared", model.heavyLength());
}

TEST_F(LargeBlockTest, IsFilledByArraysUpToItsLastBytes)
{
    // One more, 4294967295, would mean that blocks have no limit.
    Support::DefaultBlockSizeSetting const setting("4294967294");
    unsigned long const quarter = gibibyte / valueSize;
    std::vector<Part> parts;
    for (std::uint32_t seed = 1; seed < 4; ++seed)
        parts.push_back({Numbers(seed, compressibleMask), quarter});
    parts.push_back({Numbers(4, compressibleMask), mostValues - 3 * quarter});
    // The block is below its limit, but its length would exceed 32 bits with this value.
    Part const next{Numbers(5), 1};
    std::vector<Part> all = parts;
    all.push_back(next);

    Figures figures("block of 4 arrays");
    write(path, all);
    figures.lap("written", std::filesystem::file_size(path));
    EXPECT_EQ(MoxRead::verify(path).datasets, all.size());
    figures.lap("verified", std::filesystem::file_size(path));

    MoxRead::Model model(path);
    ASSERT_EQ(model.container().slotsOf("Heavy Data").size(), 2U);
    ComparedBlock first(model.container(), 0);
    ASSERT_EQ(first.length(), mostValues * valueSize);
    for (Part const& part : parts)
        first.expect(part);
    figures.lap("compared", first.length());
    MoxRead::Variable const* const behind = model.variable(3, "part 4");
    ASSERT_NE(behind, nullptr);
    EXPECT_EQ(behind->dataPosition, mostValues * valueSize);
    EXPECT_EQ(model.read(*behind).words, std::vector<std::uint32_t>{next.numbers.at(0)});
}

/// What does not compress gets a little longer, and a block's size in the file has 32 bits, too.
TEST_F(LargeBlockTest, ThatOutgrowsItselfWhenCompressedIsRefusedAndLeavesAnIncompleteFile)
{
    Figures figures("incompressible array of 4294967292 bytes");
    EXPECT_THROW(write(path, {{Numbers(1), mostValues}}),
                 Zyl2::Exception::MemoryAllocationException);
    figures.lap("refused", std::filesystem::file_size(path));
    EXPECT_EQ(verdict(path).rfind("incomplete: ", 0), 0U) << verdict(path);
}

} // namespace Large
