#include "Zyl2/Mox2/Saver.h"

#include "Expectations.h"
#include "SavedModel.h"
#include "Zyl2/Mox2/Adder/Node.h"
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
using Zyl2::Exception::FileOpenException;
using Zyl2::Exception::InvalidObjectState;
using Zyl2::Exception::MiscelleneousException;

/// Signature and version, as every file begins.
std::string const header("\x89WVF\r\n\x1A\n1.3\0", 12);

Support::Thrown const narrowFileExists{
    5, "File exists.", "void Zyl2Wvf::WvFile::OpenFileForWriting(const string&, bool)",
    "Zyl2/Wvf/WvFile", 113};
Support::Thrown const wideFileExists{
    5, "File exists.", "void Zyl2Wvf::WvFile::OpenFileForWriting(const wstring&, bool)",
    "Zyl2/Wvf/WvFile", 124};

Support::Thrown unableToOpen(std::string const& path)
{
    return {2, "Unable to open file \"" + path + "\"", "WvFile::OpenFile", "Zyl2/Wvf/WvFile"};
}

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

SaverOptions overwriting()
{
    SaverOptions options;
    options.overwrite = true;
    return options;
}

void save(Database& database, Zyl2::Base::File const& file,
          SaverOptions const& options = SaverOptions())
{
    Saver(file, options).extractFrom(database);
}

/// A failed start leaves a tree that is open for writing, with no file behind it.
void expectTreeWithoutFile(Database& database)
{
    ASSERT_NE(database.tree, nullptr);
    EXPECT_TRUE(database.openedForWriting);
    EXPECT_EQ(database.tree->GetFile().GetStream(), nullptr);
    EXPECT_EQ(database.tree->GetNodeCount(), 1U);
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

TEST(Saver, WritesSignatureAndVersionToANewFileOfEitherName)
{
    Support::TemporaryFolder const folder;
    Database narrow;
    save(narrow, narrowFile(folder.File("a.mox")));
    narrow.close();
    Database wide;
    save(wide, wideFile(folder.File("b.mox")));
    EXPECT_EQ(wide.tree->GetFormatVersion(), "1.3");
    wide.close();
    EXPECT_EQ(Support::ReadFile(folder.File("a.mox")).substr(0, 12), header);
    EXPECT_EQ(Support::ReadFile(folder.File("b.mox")).substr(0, 12), header);
}

TEST(Saver, OverwritingTruncatesTheFileAndBeginsWithSignatureAndVersion)
{
    Support::TemporaryFolder const folder;
    std::string const old(100000, 'x');
    for (bool const wide : {false, true}) {
        Support::WriteFile(folder.File("a.mox"), old);
        Database database;
        save(database, wide ? wideFile(folder.File("a.mox")) : narrowFile(folder.File("a.mox")),
             overwriting());
        EXPECT_EQ(std::filesystem::file_size(folder.File("a.mox")), 0U);
        database.close();
        std::string const content = Support::ReadFile(folder.File("a.mox"));
        EXPECT_LT(content.size(), old.size());
        EXPECT_EQ(content.substr(0, 12), header);
    }
}

TEST(Saver, AnExistingFileIsRefusedAndLeftUntouchedUnlessOverwritingIsAskedFor)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("a.mox"), "content");
    Database narrow;
    Support::expectThrown<FileOpenException>(
        [&] { save(narrow, narrowFile(folder.File("a.mox"))); }, narrowFileExists);
    expectTreeWithoutFile(narrow);
    Database wide;
    Support::expectThrown<FileOpenException>([&] { save(wide, wideFile(folder.File("a.mox"))); },
                                             wideFileExists);
    expectTreeWithoutFile(wide);
    narrow.close();
    wide.close();
    EXPECT_EQ(Support::ReadFile(folder.File("a.mox")), "content");
}

TEST(Saver, AfterARefusedFileTheDatabaseHasToBeClosedFirst)
{
    Support::TemporaryFolder const folder;
    Support::WriteFile(folder.File("a.mox"), "content");
    Database database;
    EXPECT_THROW(save(database, narrowFile(folder.File("a.mox"))), FileOpenException);
    Support::expectThrown<InvalidObjectState>(
        [&] { save(database, narrowFile(folder.File("b.mox"))); }, ModelTests::notEmpty);
    EXPECT_FALSE(std::filesystem::exists(folder.File("b.mox")));
    database.close();
    EXPECT_NO_THROW(save(database, narrowFile(folder.File("b.mox"))));
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

TEST(Saver, AFileThatCanNotBeOpenedLeavesATreeWithoutFile)
{
    Support::TemporaryFolder const folder;
    std::string const path = folder.File("none/a.mox");
    Database narrow;
    Support::expectThrown<MiscelleneousException>([&] { save(narrow, narrowFile(path)); },
                                                  unableToOpen(path));
    expectTreeWithoutFile(narrow);
    EXPECT_EQ(narrow.tree->GetFormatVersion(), "");
    EXPECT_NO_THROW(narrow.close());
    Database wide;
    Support::expectThrown<MiscelleneousException>([&] { save(wide, wideFile(path)); },
                                                  unableToOpen(path));
    expectTreeWithoutFile(wide);
    EXPECT_NO_THROW(wide.close());
}

TEST(Saver, AWideNameWithAZeroByteIsRefusedInsteadOfOpeningAnotherFile)
{
    Support::TemporaryFolder const folder;
    Zyl2::Base::File file = wideFile(folder.File("a"));
    std::wstring const prefix = file.widePath;
    // 0x100 has a zero in its low 8 bits, which are what is taken of it.
    for (wchar_t const character : {L'\0', L'\x100'}) {
        file.widePath = prefix + character + L"b";
        Database database;
        Support::expectThrown<MiscelleneousException>([&] { save(database, file); },
                                                      unableToOpen(folder.File("a")));
        EXPECT_FALSE(std::filesystem::exists(folder.File("a")));
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

TEST(Saver, WithoutAPathOpensNothingAndLeavesTheModelReadyForNodes)
{
    Database database;
    EXPECT_NO_THROW(save(database, Zyl2::Base::File()));
    expectTreeWithoutFile(database);
    EXPECT_EQ(database.tree->GetFormatVersion(), "");
    Adder::Node(NodeType::Group, "root", Attributes()).update(database);
    EXPECT_EQ(database.tree->GetReqNode(1).value->GetName(), "root");
    EXPECT_NO_THROW(database.close());
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

TEST(Saver, TheTextsAndTheVersionReachTheFile)
{
    Support::TemporaryFolder const folder;
    SaverOptions options;
    options.text1 = "first";
    options.text2 = "second";
    options.text3 = "third";
    Database database;
    save(database, narrowFile(folder.File("a.mox")), options);
    database.close();
    auto const record = ModelTests::SavedModel(folder.File("a.mox")).writingRecord();
    ASSERT_EQ(record.size(), 7U);
    EXPECT_EQ(record[0], "first");
    EXPECT_EQ(record[1], "second");
    EXPECT_EQ(record[2], "1.3");
    for (std::string const& text : record)
        EXPECT_NE(text, "third");
}

TEST(Saver, AnEmptyFirstTextKeepsTheSecondFromTheTree)
{
    Support::TemporaryFolder const folder;
    SaverOptions options;
    options.text2 = "second";
    for (Zyl2::Base::File const& file : {narrowFile(folder.File("a.mox")), Zyl2::Base::File()}) {
        Database database;
        save(database, file, options);
        EXPECT_EQ(database.tree->GetScratchModifierInfo().GetText1(), "");
        EXPECT_EQ(database.tree->GetScratchModifierInfo().GetText2(), "");
    }
}

TEST(SaverOptions, ByDefaultDoNotOverwriteAndHaveEmptyTexts)
{
    SaverOptions const options;
    EXPECT_FALSE(options.overwrite);
    EXPECT_EQ(options.text1 + options.text2 + options.text3, "");
}

} // namespace
