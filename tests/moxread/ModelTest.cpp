#include "moxread/Model.h"

#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

using namespace MoxReadTest;
using MoxRead::AttributeValue;
using MoxRead::Model;
using MoxRead::Node;
using MoxRead::Variable;

namespace {

Model modelOf(Sample const& sample)
{
    TemporaryFile const temporary(sample.file());
    return Model(temporary.path());
}

} // namespace

TEST(Model, NodesKnowTheirFamilies)
{
    Model const model = modelOf(Sample());
    ASSERT_EQ(model.nodes().size(), 4U);
    Node const& root = model.node(1);
    EXPECT_EQ(root.id, 1U);
    EXPECT_EQ(root.name, "root");
    EXPECT_EQ(root.type, "Group");
    EXPECT_EQ(root.version, "0.4");
    EXPECT_EQ(root.parent, 0U);
    EXPECT_EQ(root.firstChild, 2U);
    EXPECT_EQ(root.lastChild, 4U);
    EXPECT_EQ(model.node(4).previousSibling, 2U);
    EXPECT_EQ(model.node(2).nextSibling, 4U);
    EXPECT_EQ(model.node(4).lightPosition, 159U);
    EXPECT_THROW(model.node(0), std::out_of_range);
    EXPECT_THROW(model.node(5), std::out_of_range);
}

TEST(Model, AGroupHasATransformAFlagAndAttributes)
{
    Model const model = modelOf(Sample());
    MoxRead::Group const* const group = model.node(1).group();
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->translation, (std::array<float, 3>{1, 2, 3}));
    EXPECT_EQ(group->rotation, (std::array<float, 4>{0, 1, 0, 0.5F}));
    EXPECT_EQ(group->scale, (std::array<float, 3>{2, 2, 2}));
    EXPECT_TRUE(group->flag);
    MoxRead::Attributes const expected = {
        {"a", AttributeValue(7U)}, {"b", 1.5F}, {"c", std::string("text")}, {"d", 2.5}};
    EXPECT_EQ(group->attributes, expected);
    EXPECT_EQ(model.node(1).shape(), nullptr);
    EXPECT_EQ(model.node(1).geometry(), nullptr);
}

TEST(Model, ALinkedVariableHasTheValuesOfItsTarget)
{
    Model model = modelOf(Sample());
    Variable const& linked = model.variable({3, 2});
    EXPECT_TRUE(linked.linked);
    EXPECT_EQ(linked.link.nodeId, 3U);
    EXPECT_EQ(linked.link.index, 0U);
    EXPECT_EQ(&model.resolve(linked), &model.variable({3, 0}));
    std::vector<float> const values = model.read(linked).floats();
    ASSERT_EQ(values.size(), 6U);
    EXPECT_EQ(std::vector<float>(values.begin(), values.begin() + 5),
              (std::vector<float>{1, 2, 3, -1, 0.5F}));
    EXPECT_TRUE(std::isnan(values[5]));
}

TEST(Model, ValuesInDifferentBlocksAreReadInAnyOrder)
{
    Sample const sample;
    std::vector<TestBlock> blocks = sample.blocks();
    blocks[0].block = deflated(sample.heavy().substr(0, 24));
    blocks.push_back({"Heavy Data", 1, deflated("")});
    blocks.push_back({"Heavy Data", 0, sample.heavy().substr(24)});
    TemporaryFile const temporary(assemble(slotsFor(blocks)));
    Model model(temporary.path());
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(model.read(model.variable({3, 1})).words,
                  (std::vector<std::uint32_t>{0x04030201, 0x14131211}));
        EXPECT_EQ(model.read(model.variable({3, 0})).words[4], 0x3F000000U);
    }
    EXPECT_EQ(model.heavyLength(), 32U);
    EXPECT_EQ(model.unusedHeavyLength(), 0U);
}

TEST(Model, AllStoredVariablesAreVisitedInTheOrderOfTheFile)
{
    Sample sample;
    std::swap(sample.variables[0], sample.variables[1]);
    std::swap(sample.attributes[1], sample.attributes[2]);
    sample.variables[2].linkIndex = 1;
    Model model = modelOf(sample);
    std::vector<std::string> names;
    model.readAll([&](Model::Variables const& variables, MoxRead::Dataset const& dataset) {
        for (Variable const* variable : variables)
            names.push_back(variable->name + " " + std::to_string(dataset.rows()));
    });
    EXPECT_EQ(names, (std::vector<std::string>{"Coordinates 2", "Ids 2"}));
}

TEST(Model, VariablesOfTheSameValuesAreVisitedTogetherUnlessTheyTakeThemOtherwise)
{
    Sample sample;
    sample.variables[2].linked = 0;
    // Values of its own take 16 bytes more than a link.
    sample.nodes[3].lightPosition += 16;
    sample.variables[2].count = 6;
    sample.variables[2].width = 3;
    Model same = modelOf(sample);
    std::vector<std::size_t> visits;
    auto const count = [&](Model::Variables const& variables, MoxRead::Dataset const& /*dataset*/) {
        visits.push_back(variables.size());
    };
    same.readAll(count);
    EXPECT_EQ(visits, (std::vector<std::size_t>{2, 1}));
    sample.variables[2].elementCode = 5;
    Model other = modelOf(sample);
    visits.clear();
    other.readAll(count);
    EXPECT_EQ(visits, (std::vector<std::size_t>{1, 1, 1}));
}

TEST(Model, ANodeIsFoundByThePathOfItsNames)
{
    Model const model = modelOf(Sample());
    ASSERT_NE(model.find({"root", "rest"}), nullptr);
    EXPECT_EQ(model.find({"root", "rest"})->id, 4U);
    EXPECT_EQ(model.find({"root", "part", "part"})->id, 3U);
    EXPECT_EQ(model.find({"root"})->id, 1U);
    EXPECT_EQ(model.find({"rest"}), nullptr);
    EXPECT_EQ(model.find({"root", "absent"}), nullptr);
    EXPECT_EQ(model.find({}), nullptr);
}

TEST(Model, TheWritingRecordHasSevenTexts)
{
    Model const model = modelOf(Sample());
    ASSERT_EQ(model.globalInformation().writings.size(), 1U);
    MoxRead::WritingRecord const& writing = model.globalInformation().writings[0];
    EXPECT_EQ(writing.text1, "one");
    EXPECT_EQ(writing.text2, "two");
    EXPECT_EQ(writing.formatVersion, "1.3");
    EXPECT_EQ(writing.time, "Thu Nov 20 15:30:00 2025 UTC");
    EXPECT_EQ(writing.host, "host");
    EXPECT_EQ(writing.user, "me");
    EXPECT_EQ(writing.text, "");
    EXPECT_TRUE(model.globalInformation().resultAttributes.empty());
}
