#include <Zyl2/Mox2/Model.h>

#include "Expectations.h"
#include "SavedModel.h"
#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
using ModelTests::SavedModel;
using ModelTests::SavedNode;
using ModelTests::SavedVariable;

/// A family of arrays, and what a file has to say of them.
template <typename T>
struct Column
{
    using Element = T;
    static constexpr unsigned int width = 1;
    static constexpr DatasetType type = DatasetType::ElementIds;
    static constexpr unsigned int variableType = 16;
    static std::string defaultName() { return "Element IDs"; }
    static Array1d<T> values() { return Array1d<T>{5, 6, 7, 8, 9, 10}; }
};

template <typename T>
struct Table
{
    using Element = T;
    static constexpr unsigned int width = 3;
    static constexpr DatasetType type = DatasetType::Displacement;
    static constexpr unsigned int variableType = 13;
    static std::string defaultName() { return "Displacement"; }
    static Array2d<T> values() { return Array2d<T>(2, 3, {5, 6, 7, 8, 9, 10}); }
};

struct SeveralIds
{
    static Array1d<unsigned int> of(unsigned int first, unsigned int second)
    {
        return Array1d<unsigned int>{first, second};
    }
    static constexpr bool several = true;
};

struct OneId
{
    static unsigned int of(unsigned int first, unsigned int /*second*/) { return first; }
    static constexpr bool several = false;
};

Step stepOf(std::string const& name, int number)
{
    Step step(name);
    step.attributes.set("Number", number);
    return step;
}

struct SeveralSteps
{
    static StepList steps()
    {
        StepList list(2);
        list.set(0, stepOf("t1", 1));
        list.set(1, stepOf("t2", 2));
        return list;
    }
    static constexpr bool several = true;
};

struct OneStep
{
    static Step steps() { return stepOf("t1", 1); }
    static constexpr bool several = false;
};

template <typename ValuesT, typename IdsT, typename StepsT>
struct Form
{
    using Values = ValuesT;
    using Ids = IdsT;
    using Steps = StepsT;
};

template <typename FormT>
class ModelArrayPropertyTest : public testing::Test
{
protected:
    using Values = typename FormT::Values;
    using Element = typename Values::Element;

    ModelArrayPropertyTest()
    {
        attributes_.set("Unit", "mm");
        model_.saveTo(folder_.File("a.mox"));
        model_.addNode(NodeType::RootGroup, "Root");
        first_ = model_.addNode(NodeType::Shape, "First");
        model_.setCurrentNodeId(1);
        second_ = model_.addNode(NodeType::Shape, "Second");
    }

    void addUnnamed()
    {
        model_.addArrayProperty(Values::type, Values::values(), FormT::Ids::of(first_, second_),
                                FormT::Steps::steps(), attributes_);
    }

    void addNamed()
    {
        model_.addArrayProperty("Own", Values::type, Values::values(),
                                FormT::Ids::of(first_, second_), FormT::Steps::steps(),
                                attributes_);
    }

    void expectRefusedBeforeSaving()
    {
        Model unsaved;
        Support::expectThrown<Zyl2::Exception::InvalidObjectState>(
            [&] {
                unsaved.addArrayProperty(Values::type, Values::values(), FormT::Ids::of(1, 2),
                                         FormT::Steps::steps(), attributes_);
            },
            ModelTests::fileNotOpen);
        Support::expectThrown<Zyl2::Exception::InvalidObjectState>(
            [&] {
                unsaved.addArrayProperty("Own", Values::type, Values::values(),
                                         FormT::Ids::of(1, 2), FormT::Steps::steps(), attributes_);
            },
            ModelTests::fileNotOpen);
    }

    void expectSaved(std::string const& name)
    {
        model_.close();
        SavedModel const saved(folder_.File("a.mox"));
        std::size_t const steps = FormT::Steps::several ? 2 : 1;
        ASSERT_EQ(saved.node(first_).variables.size(), steps);
        ASSERT_EQ(saved.node(second_).variables.size(), FormT::Ids::several ? steps : 0);
        expectData(saved, saved.node(first_).variables[0], name + "\x1Et1");
        if (FormT::Steps::several)
            expectLink(saved.node(first_).variables[1], name + "\x1Et2");
        if (FormT::Ids::several)
            expectLink(saved.node(second_).variables[0], name + "\x1Et1");
        if (FormT::Ids::several && FormT::Steps::several)
            expectLink(saved.node(second_).variables[1], name + "\x1Et2");
        EXPECT_EQ(saved.bytes("Heavy Data").size(), 24U);
    }

private:
    static void expectType(SavedVariable const& variable, std::string const& name)
    {
        EXPECT_EQ(variable.name, name);
        EXPECT_EQ(variable.variableType, Values::variableType);
        EXPECT_EQ(variable.elementCode, (std::is_same_v<Element, float>) ? 1U : 5U);
    }

    static void expectData(SavedModel const& saved, SavedVariable const& variable,
                           std::string const& name)
    {
        expectType(variable, name);
        EXPECT_FALSE(variable.linked);
        EXPECT_EQ(variable.width, Values::width);
        EXPECT_EQ(saved.values<Element>(variable), (std::vector<Element>{5, 6, 7, 8, 9, 10}));
        std::map<std::string, std::string> const attributes{{"Number", "i 1"}, {"Unit", "s mm"}};
        EXPECT_EQ(variable.attributes, attributes);
    }

    void expectLink(SavedVariable const& variable, std::string const& name) const
    {
        expectType(variable, name);
        EXPECT_TRUE(variable.linked);
        EXPECT_EQ(variable.linkedNode, first_);
        EXPECT_EQ(variable.linkedVariable, 0U);
        EXPECT_TRUE(variable.attributes.empty());
    }

    Support::TemporaryFolder folder_;
    Attributes attributes_;
    Model model_;
    unsigned int first_ = 0;
    unsigned int second_ = 0;
};

template <typename ValuesT>
using FormsOf =
    testing::Types<Form<ValuesT, SeveralIds, SeveralSteps>, Form<ValuesT, SeveralIds, OneStep>,
                   Form<ValuesT, OneId, SeveralSteps>, Form<ValuesT, OneId, OneStep>>;

TYPED_TEST_SUITE_P(ModelArrayPropertyTest);

TYPED_TEST_P(ModelArrayPropertyTest, WithoutANameIsSavedUnderThatOfItsType)
{
    this->addUnnamed();
    this->expectSaved(TypeParam::Values::defaultName());
}

TYPED_TEST_P(ModelArrayPropertyTest, WithANameIsSavedUnderIt)
{
    this->addNamed();
    this->expectSaved("Own");
}

TYPED_TEST_P(ModelArrayPropertyTest, BeforeTheModelIsSavedIsRefused)
{
    this->expectRefusedBeforeSaving();
}

REGISTER_TYPED_TEST_SUITE_P(ModelArrayPropertyTest, WithoutANameIsSavedUnderThatOfItsType,
                            WithANameIsSavedUnderIt, BeforeTheModelIsSavedIsRefused);

INSTANTIATE_TYPED_TEST_SUITE_P(FloatColumn, ModelArrayPropertyTest, FormsOf<Column<float>>, );
INSTANTIATE_TYPED_TEST_SUITE_P(UnsignedColumn, ModelArrayPropertyTest,
                               FormsOf<Column<unsigned int>>, );
INSTANTIATE_TYPED_TEST_SUITE_P(FloatTable, ModelArrayPropertyTest, FormsOf<Table<float>>, );
INSTANTIATE_TYPED_TEST_SUITE_P(UnsignedTable, ModelArrayPropertyTest,
                               FormsOf<Table<unsigned int>>, );

/// Saves a model of one shape.
class SingleShape
{
public:
    SingleShape()
    {
        model.saveTo(folder_.File("a.mox"));
        model.addNode(NodeType::RootGroup, "Root");
        shape = model.addNode(NodeType::Shape, "Shape");
    }

    SavedModel saved()
    {
        model.close();
        return SavedModel(folder_.File("a.mox"));
    }

    /// Everything that the file says but for the time of its making.
    std::vector<std::string> content()
    {
        SavedModel const file = saved();
        std::vector<std::string> blocks;
        for (char const* name : {"Mox Tree", "Light Data", "Heavy Data", "Attributes"})
            blocks.push_back(file.bytes(name));
        return blocks;
    }

    Model model;
    unsigned int shape = 0;

private:
    Support::TemporaryFolder folder_;
};

/// What the file says of one call of `addArrayProperty` on a shape.
template <typename... Arguments>
std::vector<std::string> contentAfter(Arguments const&... arguments)
{
    SingleShape single;
    single.model.addArrayProperty(arguments...);
    return single.content();
}

// The shape that is added first has the number 2, its geometry 3.
constexpr unsigned int shape = 3;
Array1d<float> const column{1, 2, 3};

TEST(ModelArrayProperty, TheFormsWithAndWithoutANameDifferInItAlone)
{
    auto const unnamed = contentAfter(DatasetType::NodeIds, column, shape, Step("t1"));
    EXPECT_EQ(contentAfter("Node Ids", DatasetType::NodeIds, column, shape, Step("t1")), unnamed);
    EXPECT_NE(contentAfter("Own", DatasetType::NodeIds, column, shape, Step("t1")), unnamed);
}

TEST(ModelArrayProperty, OneIdIsAsGoodAsAnArrayOfThatId)
{
    auto const one = contentAfter(DatasetType::NodeIds, column, shape, Step("t1"));
    EXPECT_EQ(contentAfter(DatasetType::NodeIds, column, Array1d<unsigned int>{shape}, Step("t1")),
              one);
    EXPECT_NE(contentAfter(DatasetType::NodeIds, column, Array1d<unsigned int>{1}, Step("t1")),
              one);
}

TEST(ModelArrayProperty, OneStepIsAsGoodAsAListOfThatStep)
{
    StepList steps(1);
    steps.set(0, stepOf("t1", 7));
    auto const one = contentAfter(DatasetType::NodeIds, column, shape, stepOf("t1", 7));
    EXPECT_EQ(contentAfter(DatasetType::NodeIds, column, shape, steps), one);
    EXPECT_NE(contentAfter(DatasetType::NodeIds, column, shape, stepOf("t1", 8)), one);
}

TEST(ModelArrayProperty, CoordinatesOfAStepAreRegisteredUnderBothNames)
{
    SingleShape single;
    single.model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(1, 3, {1, 2, 3}),
                                  single.shape, Step("t1"));
    auto const variables = single.saved().node(shape).variables;
    ASSERT_EQ(variables.size(), 1U);
    EXPECT_EQ(variables[0].name, "Coordinates\x1Et1");
}

TEST(ModelArrayProperty, AnIdMayBeGivenAsASignedInteger)
{
    int const id = shape;
    Attributes attributes;
    attributes.set("Unit", "mm");
    EXPECT_EQ(contentAfter(DatasetType::NodeIds, column, id, Step("t1"), attributes),
              contentAfter(DatasetType::NodeIds, column, shape, Step("t1"), attributes));
    EXPECT_EQ(contentAfter("Own", DatasetType::NodeIds, column, id, StepList(1), attributes),
              contentAfter("Own", DatasetType::NodeIds, column, shape, StepList(1), attributes));
}

TEST(ModelArrayProperty, HasNoAttributesUnlessTheyAreGiven)
{
    EXPECT_EQ(contentAfter(DatasetType::NodeIds, column, shape, Step("t1")),
              contentAfter(DatasetType::NodeIds, column, shape, Step("t1"), Attributes()));
}

TEST(ModelArrayProperty, OfAnyOfTheThirtyOneTypesIsSavedWithItsWidthAndVariableType)
{
    std::vector<unsigned int> const widths{1, 1, 1, 1, 1, 1, 1, 1, 1, 3, 1, 3, 6, 6, 1, 3,
                                           6, 6, 1, 3, 6, 6, 1, 1, 3, 6, 6, 1, 1, 3, 6};
    std::vector<unsigned int> const variableTypes{4,  5,  6,  9,  9,  9,  4,  5,  6,  1,  12,
                                                  13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23,
                                                  24, 25, 26, 27, 28, 12, 16, 13, 14};
    ASSERT_EQ(widths.size(), 31U);
    ASSERT_EQ(variableTypes.size(), 31U);
    SingleShape single;
    for (unsigned int type = 0; type < 31; ++type)
        single.model.addArrayProperty(std::to_string(type), static_cast<DatasetType>(type),
                                      Array2d<float>(2, widths[type], static_cast<float>(type)),
                                      single.shape, Step());
    SavedModel const saved = single.saved();
    auto const& variables = saved.node(shape).variables;
    ASSERT_EQ(variables.size(), 31U);
    for (unsigned int type = 0; type < 31; ++type) {
        SavedVariable const& variable = variables[type];
        EXPECT_EQ(variable.name, std::to_string(type));
        EXPECT_EQ(variable.width, widths[type]);
        EXPECT_EQ(variable.variableType, variableTypes[type]);
        EXPECT_EQ(saved.values<float>(variable),
                  std::vector<float>(2UL * widths[type], static_cast<float>(type)));
    }
}

} // namespace
