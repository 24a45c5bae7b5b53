#include "moxread/NodePath.h"

#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace MoxReadTest;
using MoxRead::Model;
using MoxRead::NodePath;
using MoxRead::PathError;

namespace {

// The sample with other names for its root, its shape and its last group.
Model modelWith(std::string const& root, std::string const& shape, std::string const& group)
{
    Sample sample;
    sample.nodes[0].name = root;
    sample.nodes[1].name = sample.nodes[2].name = shape;
    sample.nodes[3].name = group;
    TemporaryFile const file(sample.file());
    return Model(file.path());
}

std::vector<std::uint32_t> idsOf(std::vector<MoxRead::Node const*> const& nodes)
{
    std::vector<std::uint32_t> ids;
    for (MoxRead::Node const* node : nodes)
        ids.push_back(node->id);
    return ids;
}

template <typename Action>
std::string refusalOf(Action const& action)
{
    try {
        action();
    } catch (PathError const& error) {
        return error.what();
    }
    return "nothing was refused";
}

using Ids = std::vector<std::uint32_t>;

} // namespace

TEST(NodePath, NamesLeadFromTheRootDown)
{
    Model const model = modelWith("root", "part", "rest");
    EXPECT_EQ(NodePath("root").find(model).id, 1U);
    EXPECT_EQ(NodePath("root/part").find(model).id, 2U);
    EXPECT_EQ(NodePath("root/part/part").find(model).id, 3U);
    EXPECT_EQ(NodePath("root/rest").find(model).id, 4U);
}

TEST(NodePath, AnIdLeadsToItsNode)
{
    Model const model = modelWith("root", "part", "rest");
    EXPECT_EQ(NodePath("#1").find(model).id, 1U);
    EXPECT_EQ(NodePath("#4").find(model).id, 4U);
}

TEST(NodePath, SignsInNamesAreEscaped)
{
    Model const model = modelWith("#2", "a/b", R"(c\d)");
    EXPECT_EQ(NodePath(R"(\#2)").find(model).id, 1U);
    EXPECT_EQ(NodePath(R"(\#2/a\/b)").find(model).id, 2U);
    EXPECT_EQ(NodePath(R"(\#2/c\\d)").find(model).id, 4U);
    EXPECT_EQ(NodePath("#2").find(model).id, 2U);
}

TEST(NodePath, ThePathOfANodeLeadsToIt)
{
    Model const model = modelWith("#/", R"(\/\)", "");
    for (MoxRead::Node const& node : model.nodes())
        EXPECT_EQ(&NodePath(NodePath::of(model, node)).find(model), &node)
            << NodePath::of(model, node);
    EXPECT_EQ(NodePath::of(model, model.node(2)), R"(\#\//\\\/\\)");
}

TEST(NodePath, APathThatNobodyHasIsRefused)
{
    Model const model = modelWith("root", "part", "rest");
    for (std::string const text : {"other", "root/other", "root/rest/part", "root/", "", "part",
                                   "#0", "#5", "#18446744073709551615"}) {
        EXPECT_EQ(refusalOf([&] { NodePath(text).find(model); }),
                  "no node has the path \"" + text + "\"");
        EXPECT_TRUE(NodePath(text).findAll(model).empty());
    }
}

TEST(NodePath, TwinsAreNamedByTheirIds)
{
    Model const model = modelWith("root", "twin", "twin");
    EXPECT_EQ(idsOf(NodePath("root/twin").findAll(model)), (Ids{2, 4}));
    EXPECT_EQ(refusalOf([&] { NodePath("root/twin").find(model); }),
              R"(several nodes have the path "root/twin": #2, #4)");
}

TEST(NodePath, WhatIsNoPathIsRefused)
{
    EXPECT_EQ(refusalOf([] { NodePath("#"); }),
              R"("#" is no path: behind "#" there has to be a node's id)");
    EXPECT_EQ(refusalOf([] { NodePath("#2x"); }),
              R"("#2x" is no path: behind "#" there has to be a node's id)");
    EXPECT_EQ(refusalOf([] { NodePath("#99999999999999999999"); }),
              R"("#99999999999999999999" is no path: behind "#" there has to be a node's id)");
    EXPECT_EQ(refusalOf([] { NodePath("a\\"); }),
              R"("a\\" is no path: nothing follows the last "\")");
}

TEST(NodePath, AShapeAndItsGeometryLeadToTheDatasets)
{
    Model const model = modelWith("root", "part", "rest");
    EXPECT_EQ(NodePath("root/part").findGeometry(model).id, 3U);
    EXPECT_EQ(NodePath("root/part/part").findGeometry(model).id, 3U);
    EXPECT_EQ(refusalOf([&] { NodePath("root/rest").findGeometry(model); }),
              R"(the node at "root/rest" is no shape and carries no datasets)");
}
