#include "moxread/KeyStream.h"

#include "moxread/FormatError.h"

#include "TestFile.h"

#include <gtest/gtest.h>

using namespace MoxReadTest;
using MoxRead::Container;
using MoxRead::KeyStream;

TEST(KeyStream, ADamagedEmptyBlockAtTheEndIsFound)
{
    std::string damaged = deflated("");
    damaged.back() = 'x';
    TemporaryFile const temporary(
        assemble(slotsFor({{"Light Data", 0, "a"}, {"Light Data", 1, damaged}})));
    Container const container(temporary.path());
    KeyStream stream(container, "Light Data");
    EXPECT_EQ(stream.readByte(), 'a');
    EXPECT_THROW(stream.expectEnd(), MoxRead::FormatError);
}
