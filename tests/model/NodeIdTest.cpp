#include "Zyl2/Mox2/Extractor/NodeId.h"

#include "Expectations.h"
#include "OpenDatabase.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace Zyl2::Mox2;
using ModelTests::OpenDatabase;

unsigned int idOf(Database const& database, std::string const& path,
                  std::string const& separator = "/")
{
    return Extractor::NodeId(path, separator).extractFrom(database);
}

/// A root r with the groups a (id 2), b below it (id 3), and a second a (id 4) below the root.
class NodeIdTest : public testing::Test
{
protected:
    NodeIdTest()
    {
        open.add(NodeType::Group, "r");
        open.add(NodeType::Group, "a");
        open.add(NodeType::Group, "b");
        open.tree().SetCurrentId(1);
        open.add(NodeType::Group, "a");
    }

    OpenDatabase open;
};

TEST(NodeId, WithoutATreeNothingIsInitialized)
{
    Database const database;
    for (char const* path : {"/r/a", ""})
        Support::expectThrown<Zyl2::Exception::InvalidObjectState>([&] { idOf(database, path); },
                                                                   ModelTests::notInitialized);
}

TEST(NodeId, WorksWithATreeThatIsNotOpenForWriting)
{
    Database database;
    database.tree = std::make_shared<Zyl2Mox::Tree>();
    EXPECT_EQ(idOf(database, "/r/a"), 0U);
}

TEST(NodeId, OfARootWithoutANodeIsZero)
{
    OpenDatabase open;
    EXPECT_EQ(idOf(open.database, "/"), 0U);
    EXPECT_EQ(idOf(open.database, "/r"), 0U);
    EXPECT_EQ(open.tree().GetNodeCount(), 1U);
}

TEST_F(NodeIdTest, AnEmptyPathIsZeroAndTheTreeIsNotConsulted)
{
    open.tree().SetCurrentId(3);
    EXPECT_EQ(idOf(open.database, ""), 0U);
    EXPECT_EQ(open.tree().GetCurrentId(), 3U);
}

TEST_F(NodeIdTest, APathIsFollowedFromTheRootAndTheRootIsCurrentAfterwards)
{
    EXPECT_EQ(idOf(open.database, "/r/a/b"), 3U);
    EXPECT_EQ(open.tree().GetCurrentId(), 1U);
}

TEST_F(NodeIdTest, OfTwoNodesWithTheSameNameTheFirstIsFound)
{
    EXPECT_EQ(idOf(open.database, "/r/a"), 2U);
}

TEST_F(NodeIdTest, APathThatLeadsNowhereIsZeroAndTheRootIsCurrentAfterwards)
{
    for (char const* path : {"/x/a", "/r/x", "/r/a/b/x", "r/a", "/r/a/", "/r//a", "/r/"}) {
        open.tree().SetCurrentId(3);
        EXPECT_EQ(idOf(open.database, path), 0U) << path;
        EXPECT_EQ(open.tree().GetCurrentId(), 1U) << path;
    }
    EXPECT_EQ(open.tree().GetNodeCount(), 4U);
}

TEST_F(NodeIdTest, TheRootsNameAloneIsNotResolved)
{
    EXPECT_THROW(idOf(open.database, "/r"), std::out_of_range);
}

TEST_F(NodeIdTest, ASeparatorOfSeveralCharactersStandsBetweenTheNames)
{
    EXPECT_EQ(idOf(open.database, "::r::a::b", "::"), 3U);
    EXPECT_EQ(idOf(open.database, ":r:a:b", "::"), 0U);
}

TEST_F(NodeIdTest, ArgumentsAreCopied)
{
    std::string path = "/r/a/b";
    std::string separator = "/";
    Extractor::NodeId command(path, separator);
    path.clear();
    separator.clear();
    EXPECT_EQ(command.extractFrom(open.database), 3U);
}

} // namespace
