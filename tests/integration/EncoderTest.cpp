#include "support/EnvironmentVariable.h"
#include "support/WritingRecord.h"

#include "container/TemporaryFile.h"
#include "moxread/Verify.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Integration {

namespace {

using namespace Zyl2::Mox2;
using Support::EnvironmentVariable;

constexpr char const* variable = "MOXWRITER_ENCODER";

struct Named
{
    Encoder encoder;
    std::string name;
};

/// The encoders that were found when the library was built.
std::vector<Named> encoders()
{
    std::vector<Named> result;
    for (Named const& named :
         {Named{Encoder::Zlib, "zlib"}, Named{Encoder::Libdeflate, "libdeflate"},
          Named{Encoder::Isal, "isal"}})
        if (std::string(", " FOUND_ENCODERS ",").find(" " + named.name + ",") != std::string::npos)
            result.push_back(named);
    return result;
}

/// A curve, which encoders express in different ways.
Array1d<float> curve()
{
    Array1d<float> values(20000, 0.0F);
    for (std::size_t row = 0; row < values.size(); ++row)
        values[row] = static_cast<float>(row % 100) * 0.37F;
    return values;
}

void write(std::string const& path, Encoder encoder)
{
    Model model;
    SaverOptions options;
    options.encoder = encoder;
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    model.addArrayProperty("curve", DatasetType::Result10, curve(), shape, Step());
    model.close();
}

/// Expects that `saveTo` is refused for that reason, and that no file is there.
void expectRefused(Encoder encoder, std::string const& reason)
{
    Support::TemporaryFolder const folder;
    std::string const path = folder.File("a.mox");
    Model model;
    SaverOptions options;
    options.encoder = encoder;
    try {
        model.saveTo(path, options);
        FAIL() << "not refused";
    } catch (Zyl2::Exception::InvalidArguments const& failure) {
        EXPECT_STREQ(failure.what(), "Invalid arguments");
        EXPECT_EQ(Zyl2::Exception::detail(failure),
                  reason + ", and this library has " FOUND_ENCODERS);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    // The model is still empty.
    options.encoder = Encoder::Zlib;
    EXPECT_NO_THROW(model.saveTo(path, options));
}

class EncoderTest : public testing::Test
{
protected:
    std::string written(Encoder encoder) const
    {
        std::string const path = folder.File("a.mox");
        std::filesystem::remove(path);
        write(path, encoder);
        EXPECT_NO_THROW(MoxRead::verify(path));
        EnvironmentVariable const anyBytes(variable, nullptr);
        return Support::withoutWritingRecord(path);
    }

    /// Name of the encoder that makes such a file. ISA-L's does not always make the same.
    std::string makerOf(std::string const& file) const
    {
        if (file == written(Encoder::Zlib))
            return "zlib";
        for (Named const& named : encoders())
            if (named.encoder == Encoder::Libdeflate && file == written(named.encoder))
                return named.name;
        return "isal";
    }

    EnvironmentVariable const none{variable, nullptr};
    Support::TemporaryFolder folder;
};

} // namespace

TEST_F(EncoderTest, IsZlibWhereNobodyAsksForAnother)
{
    EXPECT_EQ(makerOf(written(Encoder::Default)), "zlib");
    EnvironmentVariable const empty(variable, "");
    EXPECT_EQ(makerOf(written(Encoder::Default)), "zlib");
}

TEST_F(EncoderTest, IsTheHosts)
{
    for (Named const& named : encoders())
        EXPECT_EQ(makerOf(written(named.encoder)), named.name);
}

TEST_F(EncoderTest, IsTheEnvironmentsWhereTheHostLeavesItOpen)
{
    for (Named const& named : encoders()) {
        EnvironmentVariable const setting(variable, named.name.c_str());
        EXPECT_EQ(makerOf(written(Encoder::Default)), named.name);
        EXPECT_EQ(makerOf(written(Encoder::Zlib)), "zlib");
    }
}

TEST_F(EncoderTest, ThatIsNotThereIsRefusedBeforeAnythingIsMade)
{
    {
        EnvironmentVariable const setting(variable, "Zlib");
        expectRefused(Encoder::Default, "MOXWRITER_ENCODER asks for \"Zlib\"");
    }
    expectRefused(static_cast<Encoder>(99), "the host asks for an encoder that has no name: 99");
    std::string const found(", " FOUND_ENCODERS ",");
    if (found.find(" libdeflate,") == std::string::npos)
        expectRefused(Encoder::Libdeflate, "the host asks for \"libdeflate\"");
    if (found.find(" isal,") == std::string::npos)
        expectRefused(Encoder::Isal, "the host asks for \"isal\"");
}

} // namespace Integration
