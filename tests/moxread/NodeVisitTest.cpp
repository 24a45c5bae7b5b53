#include "moxread/NodeVisit.h"

#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace MoxReadTest;

namespace {

std::string visited(std::uint32_t first)
{
    TemporaryFile const file(Sample().file());
    MoxRead::Model const model(file.path());
    std::string text;
    MoxRead::visitNodes(model, model.node(first),
                        [&](MoxRead::Node const& node, std::size_t depth) {
                            text += std::to_string(node.id) + "@" + std::to_string(depth) + " ";
                        });
    return text;
}

} // namespace

TEST(NodeVisit, ParentsComeBeforeTheirChildren)
{
    EXPECT_EQ(visited(1), "1@0 2@1 3@2 4@1 ");
}

TEST(NodeVisit, SiblingsOfTheFirstNodeAreLeftOut)
{
    EXPECT_EQ(visited(2), "2@0 3@1 ");
    EXPECT_EQ(visited(3), "3@0 ");
    EXPECT_EQ(visited(4), "4@0 ");
}
