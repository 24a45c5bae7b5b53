#include "Zyl2/Mox2/Database.h"

#include "Expectations.h"
#include "OpenDatabase.h"
#include "SavedModel.h"
#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace {

using namespace Zyl2::Mox2;
using ModelTests::OpenDatabase;
using Zyl2::Exception::FileWriteException;
using Zyl2::Exception::InvalidObjectState;

char const* const fullDevice = "/dev/full";

/// The header waits in the stream's buffer until the first seek has to write it.
Support::Thrown const headerDoesNotReachTheDevice{7, "Saving the buffer failed",
                                                  "WriteBufferToFileStream", "Zyl2/Wvf/Index"};

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

std::string contentOf(std::string const& path)
{
    return Support::ReadFile(path);
}

TEST(Database, ANewOneIsEmpty)
{
    Database const database;
    EXPECT_EQ(database.tree, nullptr);
    EXPECT_FALSE(database.openedForReading);
    EXPECT_FALSE(database.openedForWriting);
    EXPECT_EQ(database.accessMode, 1);
    EXPECT_NO_THROW(database.assertEmpty());
}

TEST(Database, WithATreeIsNotEmpty)
{
    OpenDatabase open;
    EXPECT_NO_THROW(open.database.assertNotEmpty());
    EXPECT_NO_THROW(open.database.assertOpenedForWriting());
    Support::expectThrown<InvalidObjectState>([&] { open.database.assertEmpty(); },
                                              ModelTests::notEmpty);
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

TEST(Database, ClosingOneThatNeverHadASaverRunDoesNothing)
{
    Database database;
    database.openedForReading = true;
    database.openedForWriting = true;
    database.accessMode = 7;
    EXPECT_NO_THROW(database.close());
    EXPECT_TRUE(database.openedForReading);
    EXPECT_TRUE(database.openedForWriting);
    EXPECT_EQ(database.accessMode, 7);
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
    EXPECT_EQ(ModelTests::SavedModel(folder.File("a.mox")).node(1).name, "root");
}

TEST(Database, ClosingThroughTheBaseClosesTheSame)
{
    OpenDatabase open;
    Zyl2::Base::Database& base = open.database;
    base.close();
    EXPECT_EQ(open.database.tree, nullptr);
}

TEST(Database, ClosingTwiceWritesTheFileOnce)
{
    Support::TemporaryFolder const folder;
    Database database;
    saveTo(database, folder.File("a.mox"));
    addRootGroup(database);
    database.close();
    database.accessMode = 7;
    Support::WriteFile(folder.File("a.mox"), "mark");
    EXPECT_NO_THROW(database.close());
    EXPECT_EQ(contentOf(folder.File("a.mox")), "mark");
    EXPECT_EQ(database.accessMode, 7);
}

TEST(Database, AfterClosingIsNotInitializedAndItsFileNotOpen)
{
    OpenDatabase open;
    open.database.close();
    Support::expectThrown<InvalidObjectState>([&] { open.database.assertNotEmpty(); },
                                              ModelTests::notInitialized);
    Support::expectThrown<InvalidObjectState>([&] { open.database.assertOpenedForWriting(); },
                                              ModelTests::fileNotOpen);
    EXPECT_NO_THROW(open.database.assertEmpty());
}

TEST(Database, AfterClosingCanBeSavedAnew)
{
    Support::TemporaryFolder const folder;
    Database database;
    for (char const* name : {"a.mox", "b.mox"}) {
        saveTo(database, folder.File(name));
        addRootGroup(database);
        database.close();
        EXPECT_EQ(ModelTests::SavedModel(folder.File(name)).nodes().size(), 1U);
    }
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
    EXPECT_EQ(contentOf(folder.File("a.mox")).size(), 12U);
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

TEST(Database, ClosingOneThatWasSavedWithoutAFileWritesNothing)
{
    OpenDatabase open;
    open.add(NodeType::Group, "root");
    std::shared_ptr<Zyl2Mox::Tree> const tree = open.database.tree;
    EXPECT_NO_THROW(open.database.close());
    EXPECT_EQ(open.database.tree, nullptr);
    EXPECT_TRUE(tree->GetModifierInfos().empty());
}

TEST(Database, DestroyingFinishesTheFile)
{
    Support::TemporaryFolder const folder;
    {
        Database database;
        saveTo(database, folder.File("a.mox"));
        addRootGroup(database);
    }
    EXPECT_EQ(ModelTests::SavedModel(folder.File("a.mox")).node(1).name, "root");
}

TEST(Database, AFailedCloseIsReportedOnceAndKeepsTheTreeUntilTheNextClose)
{
    Database database;
    saveTo(database, fullDevice);
    addRootGroup(database);
    Support::expectThrown<FileWriteException>([&] { database.close(); },
                                              headerDoesNotReachTheDevice);
    ASSERT_NE(database.tree, nullptr);
    EXPECT_TRUE(database.openedForWriting);
    EXPECT_EQ(database.tree->GetFile().GetStream(), nullptr);
    EXPECT_NO_THROW(database.close());
    EXPECT_EQ(database.tree, nullptr);
}

TEST(Database, DestroyingAfterAFailedCloseEndsQuietly)
{
    std::weak_ptr<Zyl2Mox::Tree> tree;
    {
        Database database;
        saveTo(database, fullDevice);
        addRootGroup(database);
        EXPECT_THROW(database.close(), FileWriteException);
        tree = database.tree;
        EXPECT_FALSE(tree.expired());
    }
    EXPECT_TRUE(tree.expired());
}

TEST(DatabaseDeathTest, ADestructorWhoseCloseFailsEndsTheProcess)
{
    auto const destroyUnclosed = [] {
        Database database;
        saveTo(database, fullDevice);
        addRootGroup(database);
    };
    // Optimised builds have lost the exception's text by then.
    EXPECT_EXIT(destroyUnclosed(), testing::KilledBySignal(SIGABRT), "terminate called");
}

} // namespace
