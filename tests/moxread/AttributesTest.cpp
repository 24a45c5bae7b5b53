#include "moxread/Attributes.h"

#include "Bytes.h"
#include "TestFile.h"

#include <gtest/gtest.h>

using namespace MoxReadTest;
using MoxRead::Attributes;
using MoxRead::AttributeValue;

TEST(Attributes, EachTagTakesTheNextValueOfItsVector)
{
    std::string const bytes = Bytes()
                                  .u32(5)
                                  .text("a")
                                  .text("b")
                                  .text("c")
                                  .text("d")
                                  .text("e")
                                  .raw(std::string("\x05\x00\x00\x00\x02\x00\x03\x01\x02", 9))
                                  .u32(1)
                                  .u32(4294967295U)
                                  .u32(1)
                                  .f32(0.25F)
                                  .u32(1)
                                  .f64(1e300)
                                  .u32(2)
                                  .text("first")
                                  .text("")
                                  .str();
    TemporaryFile const temporary(assemble(slotsFor({{"Attributes", 0, bytes}})));
    MoxRead::Container const container(temporary.path());
    MoxRead::KeyStream stream(container, "Attributes");
    Attributes const expected = {{"a", std::string("first")},
                                 {"b", AttributeValue(4294967295U)},
                                 {"c", 1e300},
                                 {"d", 0.25F},
                                 {"e", std::string()}};
    EXPECT_EQ(MoxRead::readAttributes(stream), expected);
    EXPECT_EQ(stream.remaining(), 0U);
}
