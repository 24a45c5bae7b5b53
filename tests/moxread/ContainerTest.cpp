#include "moxread/Container.h"

#include "Bytes.h"
#include "TestFile.h"

#include <gtest/gtest.h>

using namespace MoxReadTest;
using MoxRead::Container;

namespace {

std::string contentOf(Container const& container, std::string const& key)
{
    std::vector<std::uint8_t> const bytes = container.streamBytes(key);
    return {bytes.begin(), bytes.end()};
}

} // namespace

TEST(Container, AKeyIsTheConcatenationOfItsInflatedBlocks)
{
    TemporaryFile const temporary(assemble(slotsFor({{"Heavy Data", 1, deflated("one ")},
                                                     {"Mox Tree", 0, "other"},
                                                     {"Heavy Data", 33, deflated("two ")},
                                                     {"Heavy Data", 0, "three"}})));
    Container const container(temporary.path());
    EXPECT_EQ(contentOf(container, "Heavy Data"), "one two three");
    EXPECT_EQ(contentOf(container, "Mox Tree"), "other");
    EXPECT_EQ(contentOf(container, "Resources"), "");
    EXPECT_EQ(container.slotsOf("Heavy Data").size(), 3U);
}
