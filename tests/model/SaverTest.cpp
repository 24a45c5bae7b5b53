#include "Zyl2/Mox2/Saver.h"

#include "Expectations.h"
#include "Zyl2/Base/Modifier.h"
#include "container/FailingAllocation.h"
#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>
#include <string>

namespace {

using namespace Zyl2::Mox2;
using Zyl2::Exception::InvalidObjectState;

Zyl2::Base::File narrowFile(std::string const& path)
{
    Zyl2::Base::File file;
    file.path = path;
    return file;
}

Zyl2::Base::File wideFile(std::string const& path)
{
    Zyl2::Base::File file;
    file.widePath = std::wstring(path.begin(), path.end());
    return file;
}

void save(Database& database, Zyl2::Base::File const& file,
          SaverOptions const& options = SaverOptions())
{
    Saver(file, options).extractFrom(database);
}

TEST(Saver, LeavesANewTreeThatIsOpenForWriting)
{
    Support::TemporaryFolder const folder;
    Database database;
    database.openedForReading = true;
    save(database, narrowFile(folder.File("a.mox")));
    EXPECT_FALSE(database.openedForReading);
    EXPECT_TRUE(database.openedForWriting);
    EXPECT_EQ(database.accessMode, 1);
    ASSERT_NE(database.tree, nullptr);
    EXPECT_EQ(database.tree->GetCurrentId(), 1U);
    EXPECT_EQ(database.tree->GetNextId(), 2U);
    EXPECT_EQ(database.tree->GetNodeCount(), 1U);
    EXPECT_EQ(database.tree->GetReqNode(1).value, nullptr);
    EXPECT_EQ(database.tree->GetFormatVersion(), "1.3");
    EXPECT_NE(database.tree->GetFile().GetStream(), nullptr);
}

TEST(Saver, SeedsTheRandomGeneratorSoThatEveryRunIsRepeatable)
{
    std::srand(0);
    int const first = std::rand();
    std::srand(5);
    Database database;
    save(database, Zyl2::Base::File());
    EXPECT_EQ(std::rand(), first);
}

TEST(Saver, ADatabaseThatHasATreeIsRefusedAndUnchanged)
{
    Support::TemporaryFolder const folder;
    Database database;
    database.tree = std::make_shared<Zyl2Mox::Tree>();
    database.openedForReading = true;
    Zyl2Mox::Tree const* const tree = database.tree.get();
    Support::expectThrown<InvalidObjectState>(
        [&] { save(database, narrowFile(folder.File("a.mox"))); }, ModelTests::notEmpty);
    EXPECT_EQ(database.tree.get(), tree);
    EXPECT_TRUE(database.openedForReading);
    EXPECT_FALSE(database.openedForWriting);
    EXPECT_FALSE(std::filesystem::exists(folder.File("a.mox")));
}

/// Whether the n-th allocation was what the saver failed for.
bool failsForLackOfMemory(Saver& saver, Database& database, std::size_t allocation)
{
    Support::FailingAllocation const failing(allocation);
    try {
        saver.extractFrom(database);
    } catch (std::bad_alloc const&) {
        return true;
    }
    return false;
}

TEST(Saver, WithoutMemoryForATreeTheDatabaseStaysEmptyButMarkedOpenForWriting)
{
    Support::TemporaryFolder const folder;
    // The tree itself, and the root in it.
    for (std::size_t const allocation : {0U, 1U}) {
        Database database;
        database.openedForReading = true;
        Saver saver(narrowFile(folder.File("a.mox")), SaverOptions());
        ASSERT_TRUE(failsForLackOfMemory(saver, database, allocation));
        EXPECT_EQ(database.tree, nullptr) << allocation;
        EXPECT_FALSE(database.openedForReading);
        EXPECT_TRUE(database.openedForWriting);
        EXPECT_FALSE(std::filesystem::exists(folder.File("a.mox")));
        EXPECT_NO_THROW(saver.extractFrom(database));
        EXPECT_NE(database.tree, nullptr);
        database.close();
        std::filesystem::remove(folder.File("a.mox"));
    }
}

TEST(Saver, TheNarrowPathIsTakenWhenThereAreTwo)
{
    Support::TemporaryFolder const folder;
    Zyl2::Base::File file = wideFile(folder.File("wide"));
    file.path = folder.File("narrow");
    Database database;
    save(database, file);
    EXPECT_TRUE(std::filesystem::exists(folder.File("narrow")));
    EXPECT_FALSE(std::filesystem::exists(folder.File("wide")));
}

TEST(Saver, CopiesItsFirstTwoTextsIntoTheWritingRecordWhateverThePath)
{
    Support::TemporaryFolder const folder;
    SaverOptions options;
    options.text1 = "first";
    options.text2 = "second";
    options.text3 = "third";
    for (Zyl2::Base::File const& file :
         {narrowFile(folder.File("a.mox")), wideFile(folder.File("b.mox")), Zyl2::Base::File()}) {
        Database database;
        save(database, file, options);
        Zyl2Mox::ModifierInfo const& record = database.tree->GetScratchModifierInfo();
        EXPECT_EQ(record.GetText1(), "first");
        EXPECT_EQ(record.GetText2(), "second");
        EXPECT_EQ(record.GetText(), "");
    }
}

TEST(Saver, DoesNothingByTheOperationsThatItInherits)
{
    Database database;
    Saver saver{Zyl2::Base::File(), SaverOptions()};
    Zyl2::Base::Extractor<Database, void>& extractor = saver;
    extractor.extractFrom(database);
    saver.extractFrom(Zyl2::Base::Database());
    Zyl2::Base::Modifier<Database>().update(database);
    EXPECT_EQ(database.tree, nullptr);
    EXPECT_EQ((Zyl2::Base::Extractor<Database, unsigned int>().extractFrom(database)), 0U);
    EXPECT_NO_THROW(Zyl2::Base::Database().close());
}

} // namespace
