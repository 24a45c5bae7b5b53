#include "integration/CallSequence.h"

#include "support/Environment.h"
#include "support/Wanted.h"

#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace Integration {

namespace {

class CallSequenceTest : public testing::TestWithParam<std::size_t>
{};

} // namespace

TEST_P(CallSequenceTest, IsAnsweredRefusedAndWrittenAsItHasToBe)
{
    Support::DefaultBlockSizeSetting const setting(blockSizes.at(GetParam()));
    Support::TemporaryFolder const folder;
    std::uint32_t const sequences = Support::wanted("MOXWRITER_SEQUENCES", 2000, 200);
    for (auto seed = static_cast<std::uint32_t>(GetParam() + 1); seed <= sequences;
         seed += static_cast<std::uint32_t>(blockSizes.size())) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::string const path = folder.File(std::to_string(seed));
        Random random(seed);
        runCallSequence(random, path);
        std::remove(path.c_str());
        if (HasFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(BlockSizes, CallSequenceTest, testing::Range<std::size_t>(0, 6),
                         [](auto const& size) { return std::string(blockSizes.at(size.param)); });

} // namespace Integration
