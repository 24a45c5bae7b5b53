#include <Zyl2/Mox2/Model.h>

#include "support/Folder.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <vector>

namespace {

using namespace Zyl2::Mox2;

/// A wrong call, and what is said of it beside the text that it always had.
struct WrongCall
{
    char const* name;
    std::function<void(Model&)> call;
    std::string text;
    std::string detail;
};

Attributes attribute(bool value)
{
    Attributes attributes;
    attributes.set("On", value);
    return attributes;
}

template <typename T>
NodeProperties property(PropertyType type, T const& value)
{
    NodeProperties properties;
    properties.set(type, value);
    return properties;
}

Array2d<float> const table(1, 2, 0.0F);
Array1d<float> const column(1, 0.0F);
auto const noType = static_cast<DatasetType>(31);

std::vector<WrongCall> const wrongCalls{
    {"Width",
     [](Model& model) { model.addArrayProperty(DatasetType::Displacement, table, 3, Step()); },
     "Invalid arguments", "Displacement needs 3 columns, the array has 2"},
    {"WidthOfNamed",
     [](Model& model) { model.addArrayProperty("Heat", DatasetType::Result10, table, 3, Step()); },
     "Invalid arguments", "Result10 \"Heat\" needs 1 column, the array has 2"},
    {"NoDefaultName",
     [](Model& model) { model.addArrayProperty(DatasetType::Result12, table, 3, Step()); },
     "Can't guess result name for specified type", "Result12 has no default name: give one"},
    {"NoDatasetType", [](Model& model) { model.addArrayProperty("", noType, table, 3, Step()); },
     "Can't guess result width for specified type", "31 is no dataset type"},
    {"NoNodeForArray",
     [](Model& model) { model.addArrayProperty(DatasetType::NodeIds, column, 9, Step()); },
     "Key not found", "no node has the id 9; the last one is 3"},
    {"AttributeOfArray",
     [](Model& model) {
         model.addArrayProperty(DatasetType::NodeIds, column, 3, Step(), attribute(true));
     },
     "Invalid arguments", "attribute \"On\" is a bool, which can't be stored"},
    {"AttributeOfNode",
     [](Model& model) {
         model.setCurrentNodeId(1);
         Attributes attributes;
         attributes.set("Curve", std::vector<float>{1});
         model.addNode(NodeType::Group, "Group", attributes);
     },
     "Invalid arguments", "attribute \"Curve\" is a std::vector<float>, which can't be stored"},
    {"NoNodeForData", [](Model& model) { model.setNodeData(9, NodeProperties()); },
     "Out of bounds error", "no node has the id 9; the last one is 3"},
    {"NoNodeForCursor", [](Model& model) { model.setCurrentNodeId(9); }, "Out of bounds error",
     "no node has the id 9; the last one is 3"},
    {"KindOfNode",
     [](Model& model) { model.setNodeData(1, property(PropertyType::Transparency, 0.5F)); },
     "empty node", "Transparency is a float of a shape; node 1 is a group and was given a float"},
    {"TypeOfProperty",
     [](Model& model) { model.setNodeData(3, property(PropertyType::Transparency, 1)); },
     "Template specialization not defined",
     "Transparency is a float of a shape; node 3 is a shape and was given an int"},
    {"SizeOfProperty",
     [](Model& model) {
         model.setNodeData(1, property(PropertyType::Rotation, std::vector<float>{1, 2}));
     },
     "invalid array size",
     "Rotation is 4 floats of a group; node 1 is a group and was given 2 floats"},
    {"NoPropertyType",
     [](Model& model) { model.setNodeData(1, property(static_cast<PropertyType>(77), 1)); },
     "Invalid properties", "77 is no property type"},
    {"SecondRoot", [](Model& model) { model.addNode(NodeType::RootGroup, "Other"); },
     "Invalid node type",
     "node \"Other\" of type 2 below node 3: only groups and shapes can be there"},
    {"RelativePath", [](Model& model) { model.addAssemblyComponents({"Root/a"}); },
     "Relative paths not supported", "path \"Root/a\" does not begin with \"/\""},
    {"OtherRoot", [](Model& model) { model.addAssemblyComponents({"/Car/a"}); },
     "Not yet implemented", "a path begins with \"Car\", the root is \"Root\""},
    {"SavedTwice", [](Model& model) { model.saveTo(""); }, "Not Empty",
     "the model was saved before; close it, then it may be saved anew"},
    {"Closed",
     [](Model& model) {
         model.close();
         model.addNode(NodeType::Group, "Group");
     },
     "File not open.", "saveTo was not called, or the model was closed since"},
    {"RootOfNoType",
     [](Model& model) {
         model.close();
         model.saveTo("");
         model.addNode(static_cast<NodeType>(9), "Root");
     },
     "Invalid node type for root node", "node \"Root\" of type 9 can't be the root"}};

void PrintTo(WrongCall const& wrong, std::ostream* to)
{
    *to << wrong.name;
}

class DetailTest : public testing::TestWithParam<WrongCall>
{};

TEST_P(DetailTest, IsToldBesideTheText)
{
    Model model;
    model.saveTo("");
    model.addNode(NodeType::RootGroup, "Root");
    model.addNode(NodeType::Shape, "Shape");
    try {
        GetParam().call(model);
        FAIL() << "nothing was thrown";
    } catch (Zyl2::Exception::Exception const& failure) {
        EXPECT_EQ(failure.what(), GetParam().text);
        EXPECT_EQ(Zyl2::Exception::detail(failure), GetParam().detail);
        auto const* const detail = boost::get_error_info<Zyl2::Exception::Detail>(failure);
        ASSERT_NE(detail, nullptr);
        EXPECT_EQ(*detail, GetParam().detail);
    }
}

INSTANTIATE_TEST_SUITE_P(Calls, DetailTest, testing::ValuesIn(wrongCalls),
                         [](auto const& call) { return std::string(call.param.name); });

TEST(DetailOfFilesTest, NamesWhatTheSystemSaid)
{
    Support::Folder const folder;
    auto const detailOf = [](std::string const& path) {
        try {
            Model model;
            model.saveTo(path);
        } catch (std::exception const& failure) {
            return std::string(Zyl2::Exception::detail(failure));
        }
        return std::string("nothing was thrown");
    };
    EXPECT_EQ(detailOf(folder.path("none/a.mox").string()), "No such file or directory");
    EXPECT_EQ(detailOf(std::string("a\0b", 3)), "the path holds a zero byte");
    std::string const there = folder.write("there.mox", "x").string();
    EXPECT_EQ(detailOf(there), there + " exists, and overwriting was not asked for");
}

TEST(DetailOfOthersTest, IsEmpty)
{
    EXPECT_STREQ(Zyl2::Exception::detail(std::bad_alloc()), "");
    EXPECT_STREQ(Zyl2::Exception::detail(Zyl2::Exception::InvalidArguments("x")), "");
}

} // namespace
