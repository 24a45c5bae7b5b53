// What a host gives and what does not get into the file as it was given is told to its log system.

#include <Zyl2/Log/StandardErrorLog.h>
#include <Zyl2/Mox2/Model.h>

#include "container/LogCapture.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
namespace Severity = Zyl2::Log::Severity;
using Texts = std::vector<std::string>;

Attributes attributesOf(char const* name, std::string const& value)
{
    Attributes attributes;
    attributes.set(name, value);
    return attributes;
}

class Warnings : public testing::Test
{
protected:
    Warnings()
    {
        model_.saveTo("");
        root_ = model_.addNode(NodeType::RootGroup, "Root");
    }

    /// The warnings since the last call.
    Texts warnings()
    {
        Texts texts;
        for (Support::LogCapture::Entry const& entry : log_.entries)
            if (entry.severity == Severity::Warning)
                texts.push_back(entry.text);
        log_.entries.clear();
        return texts;
    }

    Support::LogCapture log_;
    Model model_;
    unsigned int root_ = 0;
};

TEST_F(Warnings, AttributesThatNoNodeCarries)
{
    Attributes const given = attributesOf("Maker", "A");
    unsigned int const shape = model_.addNode(NodeType::Shape, "Plate", given);
    EXPECT_EQ(
        warnings(),
        Texts{"The shape \"Plate\" was given attributes: shapes carry none, they are dropped"});
    model_.setNodeData(shape, NodeProperties(), given);
    EXPECT_EQ(warnings(),
              Texts{"Node 3 was given attributes: only groups carry them, they are dropped"});
    model_.addAssemblyComponents(std::map<std::string, Attributes>{{"/Root/Side/", given}});
    EXPECT_EQ(warnings(), Texts{"The path \"/Root/Side/\" was given attributes: paths carry none, "
                                "they are dropped"});
    model_.setNodeData(root_, NodeProperties(), given);
    EXPECT_EQ(warnings(), Texts{});
}

TEST_F(Warnings, TextsAndNumbersThatAreCut)
{
    model_.setNodeData(root_, NodeProperties(), attributesOf("A", std::string(257, 'a')));
    EXPECT_EQ(warnings(), Texts{"Attribute \"A\": of a text of 257 bytes the first 256 are kept"});
    model_.setNodeData(root_, NodeProperties(), attributesOf("B", std::string("a\0b", 3)));
    EXPECT_EQ(warnings(), Texts{"Attribute \"B\": of a text of 3 bytes the first 1 are kept"});
    model_.setNodeData(root_, NodeProperties(), attributesOf("C", std::string(256, 'a')));
    EXPECT_EQ(warnings(), Texts{});
    for (long const number : {4294967296L, -2147483649L}) {
        Attributes attributes;
        attributes.set("N", number);
        model_.setNodeData(root_, NodeProperties(), attributes);
        EXPECT_EQ(warnings(), Texts{"Attribute \"N\": of the number " + std::to_string(number) +
                                    " the low 32 bits are kept"});
    }
    for (long const number : {4294967295L, -2147483648L}) {
        Attributes attributes;
        attributes.set("N", number);
        model_.setNodeData(root_, NodeProperties(), attributes);
        EXPECT_EQ(warnings(), Texts{});
    }
}

TEST_F(Warnings, ArraysForWhatIsNoShape)
{
    unsigned int const shape = model_.addNode(NodeType::Shape, "Plate");
    StepList steps(2);
    steps.set(0, Step("1"));
    steps.set(1, Step("2"));
    model_.addArrayProperty("T", DatasetType::NodeScalar, Array1d<float>{1, 2},
                            Array1d<unsigned int>{shape, root_}, steps);
    EXPECT_EQ(warnings(),
              Texts{"Result10 \"T\" was given to node 1, which is no shape and does not "
                    "get it"});
}

TEST_F(Warnings, ShapesInARowThatNest)
{
    model_.addNode(NodeType::Shape, "Plate");
    EXPECT_EQ(warnings(), Texts{});
    model_.addNode(NodeType::Shape, "Frame");
    EXPECT_EQ(warnings(),
              Texts{"The node \"Frame\" is added below node 3, the geometry of a shape: to stand "
                    "beside that shape it needs the shape's group to be current"});
    model_.setCurrentNodeId(root_);
    model_.addNode(NodeType::Shape, "Lid");
    EXPECT_EQ(warnings(), Texts{});
}

TEST(StandardErrorLog, PrintsWhatMattersEnough)
{
    Zyl2::Log::StandardErrorLog warnings;
    Zyl2::Log::StandardErrorLog all(Severity::Debug);
    auto const printed = [](Zyl2::Log::StandardErrorLog& log, Severity::Severity severity) {
        Zyl2::Log::Record<char> record("Zyl2/Some/Source", "f()", 1, severity);
        record << "a text";
        testing::internal::CaptureStderr();
        log += static_cast<std::ostream const&>(record);
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(printed(warnings, Severity::Info), "");
    EXPECT_EQ(printed(warnings, Severity::Warning), "moxwriter: warning: a text\n");
    EXPECT_EQ(printed(warnings, Severity::Error), "moxwriter: error: a text\n");
    EXPECT_EQ(printed(all, Severity::Debug), "moxwriter: debug: a text\n");
    EXPECT_EQ(printed(all, Severity::Info), "moxwriter: info: a text\n");
}

} // namespace
