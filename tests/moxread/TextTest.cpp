#include "moxread/Text.h"

#include <gtest/gtest.h>

TEST(Text, ControlBytesQuotesAndBackslashesAreEscaped)
{
    EXPECT_EQ(MoxRead::quoted(std::string("a\0b\n\x1B[1m\x7F", 9)), R"("a\x00b\x0A\x1B[1m\x7F")");
    EXPECT_EQ(MoxRead::quoted(R"(say "a\b")"), R"("say \"a\\b\"")");
    EXPECT_EQ(MoxRead::quoted("Größe"), "\"Größe\"");
}
