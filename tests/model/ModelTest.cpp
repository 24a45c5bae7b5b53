#include <Zyl2/Mox2/Model.h>

#include "Expectations.h"
#include "SavedModel.h"
#include "container/TemporaryFile.h"

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace ModelTests;
using namespace Zyl2::Mox2;
using Zyl2::Exception::FileOpenException;
using Zyl2::Exception::FileWriteException;
using Zyl2::Exception::InvalidObjectState;
using Zyl2::Exception::MiscelleneousException;
using Zyl2::Exception::OutOfBounds;

Support::Thrown const narrowFileExists{
    5, "File exists.", "void Zyl2Wvf::WvFile::OpenFileForWriting(const string&, bool)",
    "Zyl2/Wvf/WvFile", 113};
Support::Thrown const wideFileExists{
    5, "File exists.", "void Zyl2Wvf::WvFile::OpenFileForWriting(const wstring&, bool)",
    "Zyl2/Wvf/WvFile", 124};
Support::Thrown const idOutOfBounds{11, "Out of bounds error", "update",
                                    "Zyl2/Mox2/Modifier/CurrentNodeId", 46};
/// The header is still held back by the stream when the first block seeks its place.
Support::Thrown const deviceIsFull{7, "Saving the buffer failed", "WriteBufferToFileStream",
                                   "Zyl2/Wvf/Index"};
Support::Thrown const fileIsTooLarge{7, "Unable to write to file", "", "Zyl2/Wvf/Block"};

/// Lets no file of this process grow past a size for as long as it lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &previous_);
        rlimit const limit{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit previous_{};
};

SaverOptions overwriting()
{
    SaverOptions options;
    options.overwrite = true;
    return options;
}

template <typename Action>
void expectState(Action action, Support::Thrown const& expected)
{
    Support::expectThrown<InvalidObjectState>(action, expected);
}

/// More of them than a stream holds back fail to be written at once.
Array1d<unsigned int> valuesThatDoNotCompress(unsigned long count)
{
    Array1d<unsigned int> values(count);
    std::mt19937 generator;
    for (unsigned long index = 0; index < count; ++index)
        values(index) = static_cast<unsigned int>(generator());
    return values;
}

class ModelTest : public testing::Test
{
protected:
    /// Saves to a file of the test's own and adds a root group.
    void open()
    {
        model_.saveTo(path_);
        model_.addNode(NodeType::RootGroup, "Root");
    }

    Support::TemporaryFolder folder_;
    std::string path_ = folder_.File("a.mox");
    Array1d<unsigned int> values_{7, 8};
    Model model_;
};

TEST_F(ModelTest, HasTheConstantsOfItsInterface)
{
    EXPECT_EQ(Model::INVALID_ID, 4294967295U);
    unsigned int const& addressable = Model::INVALID_ID;
    EXPECT_EQ(addressable, 4294967295U);
    EXPECT_EQ(Model::defaultPathSeparator(), "/");
    EXPECT_EQ(&Model::defaultPathSeparator(), &Model::defaultPathSeparator());
    EXPECT_EQ(&Model::emptyAttributes(), &Model::emptyAttributes());
    EXPECT_EQ(std::string(MOX_FILE_FORMAT_NAME), "zyli_mox");
}

TEST_F(ModelTest, IsNotCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Model>);
    EXPECT_FALSE(std::is_copy_assignable_v<Model>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<Model>);
}

TEST_F(ModelTest, RefusesToAddBeforeItIsSaved)
{
    expectState([&] { model_.addNode(NodeType::Group, "a"); }, fileNotOpen);
    expectState([&] { model_.setNodeData(1, NodeProperties()); }, fileNotOpen);
    expectState([&] { model_.addAssemblyComponents({"/a"}); }, fileNotOpen);
    expectState([&] { model_.addAssemblyComponents({{"/a", Attributes()}}); }, fileNotOpen);
    expectState([&] { model_.addArrayProperty(DatasetType::NodeIds, values_, 1U, Step()); },
                fileNotOpen);
    expectState([&] { model_.addArrayProperty("a", DatasetType::NodeIds, values_, 1U, Step()); },
                fileNotOpen);
}

TEST_F(ModelTest, RefusesToAnswerBeforeItIsSaved)
{
    expectState([&] { model_.getNodeId("/a/b"); }, notInitialized);
    expectState([&] { model_.getNodeId(""); }, notInitialized);
    expectState([&] { model_.getNodeId(std::vector<std::string>()); }, notInitialized);
    expectState([&] { model_.setCurrentNodeId(1); }, notInitialized);
    expectState([&] { model_.moveToParentNode(); }, notInitialized);
}

TEST_F(ModelTest, ConvertsArgumentsBeforeItLooksAtItsState)
{
    Support::expectThrown<Zyl2::Exception::InvalidArguments>(
        [&] { model_.addArrayProperty(DatasetType::Result15, values_, 1U, Step()); },
        {3, "Can't guess result name for specified type", "nameFrom", "Zyl2/Mox2/ArrayProperty"});
    Array1d<float> const column{1, 2};
    expectState([&] { model_.addArrayProperty(DatasetType::Coordinates, column, 1U, Step()); },
                fileNotOpen);
}

TEST_F(ModelTest, AddsNoPathsToAClosedModelWithoutComplaint)
{
    EXPECT_EQ(model_.addAssemblyComponents(std::vector<std::string>()).size(), 0U);
    EXPECT_EQ(model_.addAssemblyComponents(std::map<std::string, Attributes>()).size(), 0U);
    EXPECT_EQ(model_.addAssemblyComponents({}).size(), 0U);
}

TEST_F(ModelTest, IsSavedOnceUntilItIsClosed)
{
    open();
    expectState([&] { model_.saveTo(folder_.File("b.mox")); }, notEmpty);
    EXPECT_FALSE(std::filesystem::exists(folder_.File("b.mox")));
}

TEST_F(ModelTest, IsEmptyAfterItIsClosed)
{
    open();
    model_.close();
    expectState([&] { model_.addNode(NodeType::Group, "a"); }, fileNotOpen);
    expectState([&] { model_.moveToParentNode(); }, notInitialized);
}

TEST_F(ModelTest, IsSavedAnewAfterItIsClosed)
{
    open();
    model_.close();
    model_.saveTo(folder_.File("b.mox"));
    EXPECT_EQ(model_.addNode(NodeType::RootGroup, "Second"), 1U);
    model_.close();
    EXPECT_EQ(SavedModel(path_).node(1).name, "Root");
    EXPECT_EQ(SavedModel(folder_.File("b.mox")).node(1).name, "Second");
}

TEST_F(ModelTest, WritesItsFileOnceHoweverOftenItIsClosed)
{
    {
        Model model;
        model.saveTo(path_);
        model.addNode(NodeType::RootGroup, "Root");
        model.close();
        Support::WriteFile(path_, "touched");
        model.close();
        EXPECT_EQ(Support::ReadFile(path_), "touched");
    }
    EXPECT_EQ(Support::ReadFile(path_), "touched");
}

TEST_F(ModelTest, FinishesItsFileWhenItIsDestroyed)
{
    {
        Model model;
        model.saveTo(path_);
        model.addNode(NodeType::RootGroup, "Root");
    }
    EXPECT_EQ(SavedModel(path_).node(1).name, "Root");
}

TEST_F(ModelTest, MayBeClosedThoughItWasNeverSaved)
{
    EXPECT_NO_THROW(model_.close());
}

TEST_F(ModelTest, TakesTheNameOfItsFileInFourForms)
{
    std::string const wideName = folder_.File("wide.mox");
    std::wstring const wide(wideName.begin(), wideName.end());
    for (std::string const& name : {path_, wideName})
        EXPECT_FALSE(std::filesystem::exists(name));
    model_.saveTo(path_.c_str());
    model_.close();
    EXPECT_EQ(SavedModel(path_).nodes().size(), 1U);
    model_.saveTo(path_, overwriting());
    model_.close();
    model_.saveTo(wide);
    model_.close();
    EXPECT_EQ(SavedModel(wideName).nodes().size(), 1U);
    model_.saveTo(wide.c_str(), overwriting());
    EXPECT_EQ(Support::ReadFile(wideName), "");
}

TEST_F(ModelTest, RefusesAnExistingFileUnlessItMayOverwriteIt)
{
    Support::WriteFile(path_, "precious");
    Support::expectThrown<FileOpenException>([&] { model_.saveTo(path_); }, narrowFileExists);
    expectState([&] { model_.saveTo(folder_.File("b.mox")); }, notEmpty);
    model_.close();
    EXPECT_EQ(Support::ReadFile(path_), "precious");
    model_.saveTo(path_, overwriting());
    model_.addNode(NodeType::RootGroup, "Root");
    model_.close();
    EXPECT_EQ(SavedModel(path_).node(1).name, "Root");
}

TEST_F(ModelTest, RefusesAnExistingFileOfAWideNameToo)
{
    Support::WriteFile(path_, "precious");
    std::wstring const wide(path_.begin(), path_.end());
    Support::expectThrown<FileOpenException>([&] { model_.saveTo(wide); }, wideFileExists);
    Support::expectThrown<InvalidObjectState>([&] { model_.saveTo(wide.c_str()); }, notEmpty);
    model_.close();
    EXPECT_EQ(Support::ReadFile(path_), "precious");
}

TEST_F(ModelTest, CanBeFilledAndClosedAfterItsFileWasRefused)
{
    Support::WriteFile(path_, "precious");
    Support::expectThrown<FileOpenException>([&] { model_.saveTo(path_); }, narrowFileExists);
    model_.addNode(NodeType::RootGroup, "Root");
    unsigned int const shape = model_.addNode(NodeType::Shape, "Shape");
    model_.addArrayProperty(DatasetType::NodeIds, values_, shape, Step());
    EXPECT_NO_THROW(model_.close());
    EXPECT_EQ(Support::ReadFile(path_), "precious");
}

TEST_F(ModelTest, CanBeFilledAndClosedAfterItsFileCouldNotBeOpened)
{
    std::string const missing = folder_.File("missing/a.mox");
    Support::expectThrown<MiscelleneousException>(
        [&] { model_.saveTo(missing); },
        {2, "Unable to open file \"" + missing + '"', "OpenFile", "Zyl2/Wvf/WvFile"});
    expectState([&] { model_.saveTo(path_); }, notEmpty);
    EXPECT_EQ(model_.addNode(NodeType::RootGroup, "Root"), 1U);
    EXPECT_NO_THROW(model_.close());
    EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::path(path_).parent_path()));
}

TEST_F(ModelTest, CanBeFilledAndClosedWithoutAFile)
{
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::path(path_).parent_path());
    for (int wide = 0; wide < 2; ++wide) {
        if (wide != 0)
            model_.saveTo(L"");
        else
            model_.saveTo("");
        model_.addNode(NodeType::RootGroup, "Root");
        unsigned int const shape = model_.addNode(NodeType::Shape, "Shape");
        model_.addArrayProperty(DatasetType::NodeIds, values_, shape, Step());
        EXPECT_NO_THROW(model_.close());
        EXPECT_TRUE(std::filesystem::is_empty("."));
    }
    std::filesystem::current_path(before);
}

TEST_F(ModelTest, RefusesANameWithAZeroByteInsteadOfOpeningAnotherFile)
{
    std::string const shorter = folder_.File("b");
    std::wstring wide(shorter.begin(), shorter.end());
    wide += L'\x100';
    wide += L".mox";
    Support::expectThrown<MiscelleneousException>(
        [&] { model_.saveTo(wide, overwriting()); },
        {2, "Unable to open file \"" + shorter + '"', "OpenFile", "Zyl2/Wvf/WvFile"});
    EXPECT_FALSE(std::filesystem::exists(shorter));
}

TEST_F(ModelTest, BeginsItsFileWithSignatureAndVersion)
{
    model_.saveTo(path_);
    model_.close();
    EXPECT_EQ(Support::ReadFile(path_).substr(0, 12), std::string("\x89WVF\r\n\x1A\n1.3\0", 12));
}

TEST_F(ModelTest, NotesTheTextsOfItsOptions)
{
    SaverOptions options;
    options.text1 = "host";
    options.text2 = "source";
    options.text3 = "never used";
    model_.saveTo(path_, options);
    model_.close();
    std::vector<std::string> const record = SavedModel(path_).writingRecord();
    ASSERT_EQ(record.size(), 7U);
    EXPECT_EQ(record[0], "host");
    EXPECT_EQ(record[1], "source");
    EXPECT_EQ(record[2], "1.3");
    EXPECT_EQ(record[6], "");
}

TEST_F(ModelTest, FailsToCloseWhenABlockCannotBeWrittenWhole)
{
    open();
    model_.addArrayProperty(DatasetType::NodeIds, valuesThatDoNotCompress(10000),
                            model_.addNode(NodeType::Shape, "Shape"), Step());
    {
        FileSizeLimit const limit(10000);
        Support::expectThrown<FileWriteException>([&] { model_.close(); }, fileIsTooLarge);
        EXPECT_NO_THROW(model_.close());
    }
    EXPECT_LE(Support::ReadFile(path_).size(), 10000U);
}

TEST_F(ModelTest, FailsToCloseOnceOnAFullDeviceAndIsEmptyAfterTheNextClose)
{
    model_.saveTo("/dev/full", overwriting());
    model_.addNode(NodeType::RootGroup, "Root");
    Support::expectThrown<FileWriteException>([&] { model_.close(); }, deviceIsFull);
    expectState([&] { model_.saveTo(path_); }, notEmpty);
    EXPECT_EQ(model_.getNodeId("/Root/a"), 0U);
    EXPECT_NO_THROW(model_.close());
    model_.saveTo(path_);
}

TEST_F(ModelTest, IsDestroyedQuietlyAfterAFailedClose)
{
    Model model;
    model.saveTo("/dev/full", overwriting());
    Support::expectThrown<FileWriteException>([&] { model.close(); }, deviceIsFull);
}

TEST_F(ModelTest, GivesTheRootTheIdOneAndAShapeThatOfItsGeometry)
{
    model_.saveTo("");
    EXPECT_EQ(model_.addNode(NodeType::Shape, "Root"), 1U);
    EXPECT_EQ(model_.addNode(NodeType::Group, "Group"), 2U);
    EXPECT_EQ(model_.addNode(NodeType::Shape, "Shape"), 4U);
    EXPECT_EQ(model_.addNode(NodeType::Group, "Below the geometry"), 5U);
    EXPECT_EQ(model_.moveToParentNode(), 4U);
    EXPECT_EQ(model_.moveToParentNode(), 3U);
    EXPECT_EQ(model_.moveToParentNode(), 2U);
    EXPECT_EQ(model_.moveToParentNode(), 1U);
}

TEST_F(ModelTest, StaysAtTheRootWhenItMovesToItsParent)
{
    open();
    EXPECT_EQ(model_.moveToParentNode(), 0U);
    EXPECT_EQ(model_.moveToParentNode(), 0U);
    EXPECT_EQ(model_.addNode(NodeType::Group, "Child"), 2U);
    model_.close();
    EXPECT_EQ(SavedModel(path_).node(2).parent, 1U);
}

TEST_F(ModelTest, AddsBelowTheNodeThatWasMadeCurrent)
{
    open();
    unsigned int const first = model_.addNode(NodeType::Group, "First");
    model_.addNode(NodeType::Group, "Below the first");
    model_.setCurrentNodeId(first);
    unsigned int const child = model_.addNode(NodeType::Group, "Another below the first");
    model_.close();
    EXPECT_EQ(SavedModel(path_).node(child).parent, first);
}

TEST_F(ModelTest, RefusesToMakeANodeCurrentThatIsNone)
{
    open();
    for (unsigned int const id : {0U, 2U, Model::INVALID_ID})
        Support::expectThrown<OutOfBounds>([&] { model_.setCurrentNodeId(id); }, idOutOfBounds);
    EXPECT_NO_THROW(model_.setCurrentNodeId(1));
}

TEST_F(ModelTest, FindsNodesByTheirPath)
{
    open();
    unsigned int const group = model_.addNode(NodeType::Group, "a/b");
    unsigned int const geometry = model_.addNode(NodeType::Shape, "Shape");
    EXPECT_EQ(model_.getNodeId({"Root", "a/b"}), group);
    EXPECT_EQ(model_.getNodeId(std::vector<std::string>{"Root", "a/b", "Shape"}), geometry - 1);
    EXPECT_EQ(model_.getNodeId("|Root|a/b|Shape|Shape", "|"), geometry);
    EXPECT_EQ(model_.getNodeId("/Root/a/b"), 0U);
    EXPECT_EQ(model_.getNodeId("/Other/Shape"), 0U);
    EXPECT_EQ(model_.getNodeId("::Root::a/b", "::"), group);
    EXPECT_EQ(model_.moveToParentNode(), 0U);
}

TEST_F(ModelTest, FindsNoNodeOfAnEmptyPathAndLeavesTheCursorAlone)
{
    open();
    model_.addNode(NodeType::Group, "Child");
    EXPECT_EQ(model_.getNodeId(""), 0U);
    EXPECT_EQ(model_.getNodeId(std::vector<std::string>()), 0U);
    EXPECT_EQ(model_.moveToParentNode(), 1U);
}

TEST_F(ModelTest, FindsNoNodeInATreeWhoseRootIsNoNodeYet)
{
    model_.saveTo("");
    EXPECT_EQ(model_.getNodeId("/Root/a"), 0U);
    EXPECT_EQ(model_.getNodeId(std::vector<std::string>{"Root"}), 0U);
}

TEST_F(ModelTest, AnswersNoNodeWithZeroAndNeverWithTheInvalidId)
{
    model_.saveTo("");
    EXPECT_EQ(model_.addNode(NodeType::RootGroup, "Root"), 1U);
    EXPECT_EQ(model_.moveToParentNode(), 0U);
    EXPECT_EQ(model_.getNodeId("/Root/missing"), 0U);
    EXPECT_EQ(model_.getNodeId(""), 0U);
    EXPECT_EQ(model_.getNodeId({"Root", "missing"}), 0U);
    EXPECT_EQ(model_.addAssemblyComponents({"", "/"})(1), 0U);
    EXPECT_EQ(model_.addNode(NodeType::Shape, "Shape"), 3U);
}

TEST_F(ModelTest, DoesNotResolveTheRootAlone)
{
    open();
    EXPECT_THROW(model_.getNodeId("/Root"), std::out_of_range);
    EXPECT_THROW(model_.getNodeId(std::vector<std::string>{"Root"}), std::out_of_range);
}

TEST_F(ModelTest, HasNoCurrentNodeAfterDataWasGivenForAnUnknownId)
{
    open();
    Support::expectThrown<Zyl2::Exception::KeyNotFound>(
        [&] { model_.addArrayProperty(DatasetType::NodeIds, values_, 99U, Step()); },
        currentNodeIsNone);
    Support::expectThrown<Zyl2::Exception::KeyNotFound>(
        [&] { model_.addNode(NodeType::Shape, "Lost"); }, currentNodeIsNone);
    Support::expectThrown<Zyl2::Exception::KeyNotFound>([&] { model_.moveToParentNode(); },
                                                        currentNodeIsNone);
    model_.setCurrentNodeId(1);
    EXPECT_EQ(model_.addNode(NodeType::Group, "Found"), 2U);
    model_.close();
    EXPECT_EQ(SavedModel(path_).nodes().size(), 2U);
}

std::vector<unsigned int> idsOf(Array1d<unsigned int> const& array)
{
    std::vector<unsigned int> ids;
    for (unsigned long index = 0; index < array.size(); ++index)
        ids.push_back(array(index));
    return ids;
}

TEST_F(ModelTest, AddsAssemblyComponentsFromPathsAndFromAMap)
{
    using Ids = std::vector<unsigned int>;
    model_.saveTo(path_);
    std::vector<std::string> const paths{"/car/body/door", "", "/car/body/"};
    EXPECT_EQ(idsOf(model_.addAssemblyComponents(paths)), (Ids{4, 0, 2}));
    EXPECT_EQ(idsOf(model_.addAssemblyComponents({"/car/wheel", "/car"})), (Ids{6, 1}));
    EXPECT_EQ(idsOf(model_.addAssemblyComponents({"|car|roof/top|"}, "|")), Ids{7});
    std::map<std::string, Attributes> components;
    components["/car/seat/"];
    components["/car/door/"].set("Number", 7);
    EXPECT_EQ(idsOf(model_.addAssemblyComponents(components)), (Ids{8, 9}));
    model_.close();
    SavedModel const saved(path_);
    EXPECT_EQ(saved.nodes().size(), 9U);
    EXPECT_EQ(saved.node(1).type, "Group");
    EXPECT_EQ(saved.node(4).type, "Geometry");
    EXPECT_EQ(saved.node(7).name, "roof/top");
    EXPECT_EQ(saved.node(8).name, "door");
    EXPECT_TRUE(saved.node(8).attributes.empty());
}

TEST_F(ModelTest, RefusesRelativePathsAndOtherRoots)
{
    open();
    Support::expectThrown<Zyl2::Exception::InvalidArguments>(
        [&] { model_.addAssemblyComponents({"Root/a"}); },
        {3, "Relative paths not supported", "", "Zyl2/Mox2/Adder/Components", 188});
    Support::expectThrown<Zyl2::Exception::NotYetImplemented>(
        [&] { model_.addAssemblyComponents({"/Other/a"}); },
        {20, "Not yet implemented", "addMergeNode", "Zyl2/Mox2/Adder/Components", 108});
}

TEST_F(ModelTest, SavesTheDataOfItsNodes)
{
    open();
    unsigned int const shape = model_.addNode(NodeType::Shape, "Shape");
    NodeProperties transform;
    transform.set(PropertyType::Translation, std::vector<float>{1, 2, 3});
    Attributes attributes;
    attributes.set("Number", 7);
    model_.setNodeData(1, transform, attributes);
    NodeProperties material;
    material.set(PropertyType::Transparency, 0.5);
    model_.setNodeData(shape, material);
    EXPECT_EQ(model_.moveToParentNode(), 1U);
    model_.close();
    SavedModel const saved(path_);
    EXPECT_EQ(saved.node(1).transform, (std::array<float, 10>{1, 2, 3, 0, 0, 1, 0, 1, 1, 1}));
    EXPECT_EQ(saved.node(1).attributes.at("Number"), "i 7");
    EXPECT_EQ(saved.node(shape - 1).material[16], 0.5F);
}

TEST(ModelDeathTest, EndsTheProcessWhenItsDestructorFailsToClose)
{
    EXPECT_DEATH(
        {
            Model model;
            model.saveTo("/dev/full", overwriting());
        },
        "terminate called");
}

} // namespace
