#include <export/XmlText.h>

#include <gtest/gtest.h>

namespace {

using Export::xmlText;

TEST(XmlText, KeepsCharactersOfAllLengths)
{
    for (std::string const text : {"", "a b/c", "Größe", "\xE2\x82\xAC", "\xF0\x9F\x9A\x97", "\t"})
        EXPECT_EQ(xmlText(text), text);
}

TEST(XmlText, ReplacesControlCharacters)
{
    EXPECT_EQ(xmlText(std::string("a\0b", 3)), "a?b");
    EXPECT_EQ(xmlText("\x1B[2J"), "?[2J");
    EXPECT_EQ(xmlText("\xEF\xBF\xBF"), "???");
}

TEST(XmlText, ReplacesBytesThatAreNoUtf8)
{
    EXPECT_EQ(xmlText("Gr\xF6\xDF"
                      "e"),
              "Gr??e");
    EXPECT_EQ(xmlText("\xC3"), "?");
    EXPECT_EQ(xmlText("\xC0\x80"), "??");
    EXPECT_EQ(xmlText("\xED\xA0\x80"), "???");
    EXPECT_EQ(xmlText("\xF4\x90\x80\x80"), "????");
}

} // namespace
