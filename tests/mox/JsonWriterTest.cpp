#include "mox/print/JsonWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

namespace {

using Mox::JsonWriter;

template <typename Write>
std::string written(Write const& write)
{
    std::ostringstream out;
    JsonWriter json(out);
    write(json);
    return out.str();
}

TEST(JsonWriter, NumbersAreAsShortAsTheyCanBeReadBack)
{
    std::vector<float> const floats = {0.1F, 1e-30F, 16777216.F, -0.F};
    EXPECT_EQ(written([&](JsonWriter& json) { json.values(floats); }),
              "[0.1, 1e-30, 16777216, -0]\n");
    std::vector<double> const doubles = {0.1, 1e300};
    EXPECT_EQ(written([&](JsonWriter& json) { json.values(doubles); }), "[0.1, 1e+300]\n");
    std::vector<std::uint64_t> const integers = {0, std::numeric_limits<std::uint64_t>::max()};
    EXPECT_EQ(written([&](JsonWriter& json) { json.values(integers); }),
              "[0, 18446744073709551615]\n");
}

TEST(JsonWriter, NumbersThatJsonDoesNotHaveAreText)
{
    std::vector<float> const floats = {NAN, -NAN, INFINITY, -INFINITY};
    EXPECT_EQ(written([&](JsonWriter& json) { json.values(floats); }),
              "[\"NaN\", \"NaN\", \"Infinity\", \"-Infinity\"]\n");
    std::vector<double> const doubles = {NAN, -INFINITY};
    EXPECT_EQ(written([&](JsonWriter& json) { json.values(doubles); }),
              "[\"NaN\", \"-Infinity\"]\n");
}

TEST(JsonWriter, AnyTextCanBeReadBack)
{
    std::string const name("quote \" backslash \\ line\n tab\t zero \0 end \xC3\xA4", 40);
    std::string const text =
        written([&](JsonWriter& json) { json.beginObject().member(name, name).endObject(); });
    nlohmann::json const read = nlohmann::json::parse(text);
    EXPECT_EQ(read.at(name), name);
}

TEST(JsonWriter, BytesThatAreNoTextAreReplaced)
{
    std::string const text = written([](JsonWriter& json) {
        json.beginObject().member("a\xFF", "\xC3(").member("b", "\xE2\x82").endObject();
    });
    nlohmann::json const read = nlohmann::json::parse(text);
    EXPECT_EQ(read.at("a\xEF\xBF\xBD"), "\xEF\xBF\xBD(");
    EXPECT_EQ(read.at("b"), "\xEF\xBF\xBD");
}

} // namespace
