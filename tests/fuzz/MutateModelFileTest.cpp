#include "MutateModelFile.h"

#include "FileParts.h"

#include "moxread/Sample.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using Fuzz::FileParts;
using Fuzz::mutatedModelFile;

constexpr unsigned int seeds = 500;
constexpr std::size_t greatestSize = 5000;

/// Stands in for the blind mutation: the flipped byte shows that it was called.
std::string withFirstByteFlipped(std::string const& bytes, std::size_t /*greatestSize*/)
{
    std::string result = bytes.empty() ? "x" : bytes;
    result[0] = static_cast<char>(~static_cast<unsigned char>(result[0]));
    return result;
}

TEST(MutateModelFile, TheSameSeedGivesTheSameFile)
{
    std::string const file = MoxReadTest::Sample().file();
    for (unsigned int seed = 0; seed < seeds; ++seed)
        EXPECT_TRUE(mutatedModelFile(file, greatestSize, seed, withFirstByteFlipped) ==
                    mutatedModelFile(file, greatestSize, seed, withFirstByteFlipped));
}

TEST(MutateModelFile, ReachesTheContentOfEveryCompressedBlock)
{
    std::string const file = MoxReadTest::Sample().file();
    auto const before = FileParts::of(file);
    std::set<std::size_t> reached;
    for (unsigned int seed = 0; seed < seeds; ++seed) {
        auto const after =
            FileParts::of(mutatedModelFile(file, greatestSize, seed, withFirstByteFlipped));
        for (std::size_t slot = 0; after && slot < 6; ++slot) {
            auto const content = after->parts[slot].content();
            bool const isOtherOfSameLength =
                content && content != before->parts[slot].content() &&
                content->size() == before->parts[slot].content()->size();
            if (isOtherOfSameLength && after->parts[slot].isCompressed())
                reached.insert(slot);
        }
    }
    EXPECT_EQ(reached, (std::set<std::size_t>{0, 1, 2, 3, 4, 5}));
}

TEST(MutateModelFile, NeverExceedsTheGreatestSize)
{
    std::string const file = MoxReadTest::Sample().file();
    for (unsigned int seed = 0; seed < seeds; ++seed)
        EXPECT_LE(mutatedModelFile(file, file.size(), seed, withFirstByteFlipped).size(),
                  file.size());
}

TEST(MutateModelFile, MutatesBlindlyWhatIsNoModelFile)
{
    EXPECT_EQ(mutatedModelFile("\x01", greatestSize, 7, withFirstByteFlipped), "\xFE");
}

} // namespace
