#include "Zyl2/Mox2/Database.h"

#include "Expectations.h"
#include "OpenDatabase.h"
#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace Zyl2::Mox2;
using ModelTests::OpenDatabase;
using Zyl2::Exception::InvalidObjectState;

void saveTo(Database& database, std::string const& path)
{
    Zyl2::Base::File file;
    file.path = path;
    SaverOptions options;
    options.overwrite = true;
    Saver(file, options).extractFrom(database);
}

void addRootGroup(Database& database)
{
    Adder::Node(NodeType::RootGroup, "root", Attributes()).update(database);
}

TEST(Database, WithoutATreeIsNotInitializedAndItsFileNotOpen)
{
    Database database;
    // The tree decides, whatever the flag says.
    for (bool const flag : {false, true}) {
        database.openedForWriting = flag;
        Support::expectThrown<InvalidObjectState>([&] { database.assertNotEmpty(); },
                                                  ModelTests::notInitialized);
        Support::expectThrown<InvalidObjectState>([&] { database.assertOpenedForWriting(); },
                                                  ModelTests::fileNotOpen);
    }
}

TEST(Database, WithATreeThatIsNotOpenForWritingRefusesToBeWritten)
{
    Database database;
    database.tree = std::make_shared<Zyl2Mox::Tree>();
    EXPECT_NO_THROW(database.assertNotEmpty());
    Support::expectThrown<InvalidObjectState>([&] { database.assertOpenedForWriting(); },
                                              ModelTests::notInWriteMode);
}

TEST(Database, ClosingSavesTheTreeAndEmptiesTheDatabase)
{
    Support::TemporaryFolder const folder;
    Database database;
    saveTo(database, folder.File("a.mox"));
    addRootGroup(database);
    database.accessMode = 7;
    database.openedForReading = true;
    std::weak_ptr<Zyl2Mox::Tree> const tree = database.tree;
    database.close();
    EXPECT_TRUE(tree.expired());
    EXPECT_EQ(database.tree, nullptr);
    EXPECT_EQ(database.accessMode, 1);
    EXPECT_FALSE(database.openedForReading);
    EXPECT_FALSE(database.openedForWriting);
    EXPECT_GT(Support::ReadFile(folder.File("a.mox")).size(), 2800U);
}

TEST(Database, ClosingATreeThatIsNotOpenForWritingClosesItsFileAndSavesNothing)
{
    Support::TemporaryFolder const folder;
    Database database;
    saveTo(database, folder.File("a.mox"));
    std::shared_ptr<Zyl2Mox::Tree> const tree = database.tree;
    database.openedForWriting = false;
    database.close();
    EXPECT_EQ(tree->GetFile().GetStream(), nullptr);
    EXPECT_EQ(database.tree, nullptr);
    EXPECT_EQ(Support::ReadFile(folder.File("a.mox")).size(), 12U);
}

TEST(Database, ClosingForgetsThePositionsThatGeometriesHoldAndNothingElse)
{
    OpenDatabase open;
    Attributes attributes;
    attributes.set("key", 1);
    unsigned int const group = open.add(NodeType::Group, "root", attributes);
    unsigned int const geometry = open.add(NodeType::Shape, "shape");
    open.node<Zyl2Mox::Geometry>(geometry)->GetDatasets()["variable"] = 5;
    open.node<Zyl2Mox::Geometry>(geometry)->FindOrAddVariable("variable");

    std::shared_ptr<Zyl2Mox::Tree> const tree = open.database.tree;
    open.database.close();
    auto* const closed = dynamic_cast<Zyl2Mox::Geometry*>(tree->GetReqNode(geometry).value);
    EXPECT_TRUE(closed->GetDatasets().empty());
    EXPECT_EQ(closed->GetVariables().size(), 1U);
    EXPECT_EQ(tree->GetReqNode(geometry).value->GetName(), "shape");
    auto* const left = dynamic_cast<Zyl2Mox::Group*>(tree->GetReqNode(group).value);
    EXPECT_EQ(left->GetAttributes().size(), 1U);
}

} // namespace
