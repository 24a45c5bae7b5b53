#include "Zyl2/Mox2/Modifier/CurrentNodeId.h"

#include "Expectations.h"
#include "OpenDatabase.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace Zyl2::Mox2;
using ModelTests::OpenDatabase;
using Zyl2::Exception::InvalidObjectState;
using Zyl2::Exception::KeyNotFound;
using Zyl2::Exception::OutOfBounds;

Support::Thrown const outOfBounds{11, "Out of bounds error", "CurrentNodeId::update",
                                  "Zyl2/Mox2/Modifier/CurrentNodeId", 46};

void setCurrent(Database& database, unsigned int id)
{
    Modifier::CurrentNodeId(id).update(database);
}

TEST(CurrentNodeId, WithoutATreeNothingIsInitialized)
{
    Database database;
    for (unsigned int const id : {0U, 1U})
        Support::expectThrown<InvalidObjectState>([&] { setCurrent(database, id); },
                                                  ModelTests::notInitialized);
}

TEST(CurrentNodeId, TheRootOfATreeThatHoldsOnlyTheRootBecomesCurrent)
{
    OpenDatabase open;
    EXPECT_NO_THROW(setCurrent(open.database, 1));
    EXPECT_EQ(open.tree().GetCurrentId(), 1U);
}

TEST(CurrentNodeId, EveryNodeUpToTheLastBecomesCurrent)
{
    OpenDatabase open;
    open.add(NodeType::Group, "root");
    open.add(NodeType::Shape, "shape");
    for (unsigned int const id : {1U, 2U, 3U}) {
        setCurrent(open.database, id);
        EXPECT_EQ(open.tree().GetCurrentId(), id);
    }
}

TEST(CurrentNodeId, ZeroIsOutOfBounds)
{
    OpenDatabase open;
    Support::expectThrown<OutOfBounds>([&] { setCurrent(open.database, 0); }, outOfBounds);
    EXPECT_EQ(open.tree().GetCurrentId(), 1U);
}

TEST(CurrentNodeId, AnIdPastTheLastNodeIsOutOfBoundsAndNeverAMissingKey)
{
    OpenDatabase open;
    open.add(NodeType::Group, "root");
    open.add(NodeType::Group, "group");
    for (unsigned int const id : {3U, 4U, 4294967295U})
        Support::expectThrown<OutOfBounds>([&] { setCurrent(open.database, id); }, outOfBounds);
    EXPECT_EQ(open.tree().GetCurrentId(), 2U);
}

TEST(CurrentNodeId, WorksWithATreeThatIsNotOpenForWriting)
{
    Database database;
    database.tree = std::make_shared<Zyl2Mox::Tree>();
    EXPECT_NO_THROW(setCurrent(database, 1));
}

TEST(CurrentNodeId, TheTreeItselfRefusesAnIdThatWasNeverHandedOut)
{
    OpenDatabase open;
    Support::expectThrown<KeyNotFound>(
        [&] { open.tree().SetCurrentId(2); },
        {14, "Key not found", "SetCurrentId", "Zyl2/Adt/AdtTree", 210});
    EXPECT_EQ(open.tree().GetCurrentId(), 1U);
}

} // namespace
