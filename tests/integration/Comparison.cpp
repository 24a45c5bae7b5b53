#include "integration/Comparison.h"

#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "moxread/Verify.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace Integration {

namespace {

constexpr std::uint64_t groupSize = 41;
constexpr std::uint64_t countSize = 4;
constexpr std::uint64_t linkSize = 8;
constexpr std::uint64_t descriptionSize = 24;
/// Length of the name, type word, link flag and vibration flag.
constexpr std::uint64_t headerSize = 10;

std::string const& typeText(Kind kind)
{
    static std::array<std::string, 4> const texts{"", "Group", "Shape", "Geometry"};
    return texts.at(static_cast<std::size_t>(kind));
}

std::string const& versionText(Kind kind)
{
    static std::array<std::string, 4> const texts{"", "0.4", "0.2", "0.7"};
    return texts.at(static_cast<std::size_t>(kind));
}

/// The number of bytes that a node has in "Light Data".
std::uint64_t lightSize(ExpectedNode const& node)
{
    if (node.kind == Kind::Group)
        return groupSize;
    if (node.kind != Kind::Geometry)
        return 0;
    std::uint64_t size = countSize;
    for (ExpectedVariable const& variable : node.variables)
        size += headerSize + variable.name.size() + (variable.linked ? linkSize : descriptionSize);
    return size;
}

/// Bits, so that values that are not numbers compare too.
std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

template <std::size_t count>
void expectSameBits(std::array<float, count> const& found, std::array<float, count> const& expected,
                    char const* what)
{
    for (std::size_t index = 0; index < count; ++index)
        EXPECT_EQ(bitsOf(found[index]), bitsOf(expected[index]))
            << what << ' ' << index << ": " << found[index] << ", not " << expected[index];
}

void expectSameBits(float found, float expected, char const* what)
{
    expectSameBits(std::array<float, 1>{found}, std::array<float, 1>{expected}, what);
}

void expectValue(MoxRead::AttributeValue const& found, MoxRead::AttributeValue const& expected)
{
    ASSERT_EQ(found.index(), expected.index());
    if (auto const* const number = std::get_if<float>(&expected))
        expectSameBits(std::get<float>(found), *number, "attribute");
    else
        EXPECT_TRUE(found == expected);
}

void expectAttributes(MoxRead::Attributes const& found, MoxRead::Attributes const& expected)
{
    ASSERT_EQ(found.size(), expected.size());
    auto attribute = found.begin();
    for (auto const& [name, value] : expected) {
        SCOPED_TRACE("attribute " + name);
        ASSERT_EQ(attribute->first, name);
        expectValue(attribute->second, value);
        ++attribute;
    }
}

void expectGroup(MoxRead::Group const& found, MoxRead::Group const& expected)
{
    expectSameBits(found.translation, expected.translation, "translation");
    expectSameBits(found.rotation, expected.rotation, "rotation");
    expectSameBits(found.scale, expected.scale, "scale");
    EXPECT_EQ(found.flag, expected.flag);
    expectAttributes(found.attributes, expected.attributes);
}

void expectMaterial(MoxRead::Material const& found, MoxRead::Material const& expected)
{
    expectSameBits(found.diffuse, expected.diffuse, "diffuse");
    expectSameBits(found.specular, expected.specular, "specular");
    expectSameBits(found.emissive, expected.emissive, "emissive");
    expectSameBits(found.ambient, expected.ambient, "ambient");
    expectSameBits(found.transparency, expected.transparency, "transparency");
    expectSameBits(found.shininess, expected.shininess, "shininess");
    EXPECT_EQ(found.flag, expected.flag);
}

/// Goes through a file and its expectation side by side.
class Comparison
{
public:
    Comparison(std::string const& path, ExpectedModel const& expected)
        : file_(path), expected_(expected)
    {}

    void run()
    {
        EXPECT_EQ(file_.heavyLength(), expected_.heavyLength());
        ASSERT_EQ(file_.nodes().size(), expected_.nodeCount());
        for (std::uint32_t id = 1; id <= expected_.nodeCount(); ++id) {
            SCOPED_TRACE("node " + std::to_string(id));
            compareNode(file_.node(id), id);
            // What follows a wrong node is wrong with it; one report will do.
            if (testing::Test::HasFailure())
                return;
        }
    }

private:
    void compareNode(MoxRead::Node const& found, std::uint32_t id)
    {
        ExpectedNode const& expected = expected_.node(id);
        EXPECT_EQ(found.id, id);
        EXPECT_EQ(found.name, expected.name);
        EXPECT_EQ(found.type, typeText(expected.kind));
        EXPECT_EQ(found.version, versionText(expected.kind));
        EXPECT_EQ(found.lightPosition, lightPosition_);
        lightPosition_ += lightSize(expected);
        compareFamily(found, id);
        comparePayload(found, expected);
    }

    void compareFamily(MoxRead::Node const& found, std::uint32_t id)
    {
        ExpectedNode const& expected = expected_.node(id);
        std::vector<std::uint32_t> const& children = expected.children;
        EXPECT_EQ(found.parent, expected.parent);
        EXPECT_EQ(found.firstChild, children.empty() ? 0 : children.front());
        EXPECT_EQ(found.lastChild, children.empty() ? 0 : children.back());
        EXPECT_EQ(found.previousSibling, sibling(id, -1));
        EXPECT_EQ(found.nextSibling, sibling(id, 1));
    }

    std::uint32_t sibling(std::uint32_t id, std::ptrdiff_t offset) const
    {
        std::uint32_t const parent = expected_.node(id).parent;
        if (parent == 0)
            return 0;
        std::vector<std::uint32_t> const& children = expected_.node(parent).children;
        std::ptrdiff_t place = offset;
        while (children[static_cast<std::size_t>(place - offset)] != id)
            ++place;
        bool const exists = place >= 0 && place < static_cast<std::ptrdiff_t>(children.size());
        return exists ? children[static_cast<std::size_t>(place)] : 0;
    }

    void comparePayload(MoxRead::Node const& found, ExpectedNode const& expected)
    {
        ASSERT_EQ(found.group() != nullptr, expected.kind == Kind::Group);
        ASSERT_EQ(found.shape() != nullptr, expected.kind == Kind::Shape);
        ASSERT_EQ(found.geometry() != nullptr, expected.kind == Kind::Geometry);
        if (expected.kind == Kind::Group)
            expectGroup(*found.group(), expected.group);
        if (expected.kind == Kind::Shape)
            expectMaterial(found.shape()->material, expected.material);
        if (expected.kind == Kind::Geometry)
            compareVariables(found.geometry()->variables, expected.variables);
    }

    void compareVariables(std::vector<MoxRead::Variable> const& found,
                          std::vector<ExpectedVariable> const& expected)
    {
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t index = 0; index < found.size(); ++index) {
            SCOPED_TRACE("variable " + std::to_string(index));
            compareVariable(found[index], expected[index]);
        }
    }

    void compareVariable(MoxRead::Variable const& found, ExpectedVariable const& expected)
    {
        EXPECT_EQ(found.name, expected.name);
        EXPECT_EQ(found.variableType(), expected.variableType);
        EXPECT_EQ(found.elementCode(), expected.values->element == Element::Float ? 1U : 5U);
        EXPECT_EQ(found.vibration, expected.vibration);
        expectAttributes(found.attributes, expected.attributes);
        ASSERT_EQ(found.linked, expected.linked);
        if (expected.linked)
            compareLink(found.link, expected.link);
        else
            compareDescription(found, expected);
        compareValues(found, *expected_.resolved(expected).values);
    }

    static void compareLink(MoxRead::VariableReference const& found,
                            MoxRead::VariableReference const& expected)
    {
        EXPECT_EQ(found.nodeId, expected.nodeId);
        EXPECT_EQ(found.index, expected.index);
    }

    static void compareDescription(MoxRead::Variable const& found, ExpectedVariable const& expected)
    {
        EXPECT_EQ(found.valueCount, expected.values->words.size());
        EXPECT_EQ(found.width, expected.values->width);
        EXPECT_EQ(found.rows(), expected.values->rows());
        EXPECT_EQ(found.dataPosition, expected.position);
    }

    void compareValues(MoxRead::Variable const& found, Values const& expected)
    {
        MoxRead::Dataset const dataset = file_.read(found);
        EXPECT_EQ(dataset.width, expected.width);
        EXPECT_EQ(dataset.elementType == MoxRead::ElementType::Float,
                  expected.element == Element::Float);
        EXPECT_TRUE(dataset.words == expected.words);
    }

    MoxRead::Model file_;
    ExpectedModel const& expected_;
    std::uint64_t lightPosition_ = 0;
};

} // namespace

void expectFile(std::string const& path, ExpectedModel const& expected)
{
    try {
        expectSound(path);
        Comparison(path, expected).run();
    } catch (MoxRead::FormatError const& error) {
        ADD_FAILURE() << error.what();
    }
}

void expectSound(std::string const& path)
{
    try {
        MoxRead::Summary const summary = MoxRead::verify(path);
        EXPECT_GT(summary.blocks, 0U);
        EXPECT_GT(summary.bytes, 2800U);
    } catch (MoxRead::FormatError const& error) {
        ADD_FAILURE() << error.what();
    }
}

} // namespace Integration
