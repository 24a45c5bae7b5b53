#include <read/frd/BinaryRecord.h>

#include <gtest/gtest.h>

namespace {

TEST(BinaryRecord, NumbersFollowEachOtherLittleEndFirst)
{
    char const bytes[] = "\x07\x01\x00\x00"
                         "\x00\x00\x20\xC0"
                         "\x00\x00\x00\x00\x00\x00\x04\x40"
                         "\xFF\xFF\xFF\xFF";
    Frd::BinaryRecord record(bytes);
    EXPECT_EQ(record.integer(), 263);
    EXPECT_EQ(record.real(4), -2.5);
    EXPECT_EQ(record.real(8), 2.5);
    EXPECT_EQ(record.integer(), -1);
}

} // namespace
