#include <Zyl2/Mox2/Model.h>

#include "container/TemporaryFile.h"
#include "integration/Overwriting.h"
#include "model/Expectations.h"
#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "support/FileSizeLimit.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ModelTests;
using namespace Zyl2::Mox2;
using Integration::overwriting;
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

/// Some rows at a time, and a failure in place of some.
class SomeRows : public ArrayPieces
{
public:
    SomeRows(std::vector<float> const& values, std::size_t atATime, std::size_t failing)
        : ArrayPieces(ArrayView::Element::Float32, values.size() / 3, 3), values_(values),
          atATime_(atATime), failing_(failing)
    {}

    ArrayView next() override
    {
        if (row_ >= failing_)
            throw std::runtime_error("no more");
        std::size_t const count = std::min(atATime_, rows() - row_);
        row_ += count;
        return {values_.data() + (row_ - count) * 3, count, 3};
    }

private:
    std::vector<float> const& values_;
    std::size_t atATime_;
    std::size_t failing_;
    std::size_t row_ = 0;
};

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

TEST_F(ModelTest, LeavesAFileThatIsAbandonedIncomplete)
{
    model_.saveTo(path_);
    model_.addNode(NodeType::RootGroup, "Root");
    model_.abandon();
    EXPECT_THROW(MoxRead::Model{path_}, MoxRead::FormatError);
    model_.close();
    EXPECT_THROW(MoxRead::Model{path_}, MoxRead::FormatError);
    model_.saveTo(path_, overwriting());
    model_.close();
    EXPECT_NO_THROW(MoxRead::Model{path_});
}

TEST_F(ModelTest, RefusesPiecesThatAreNotWhatWasAnnounced)
{
    class OnePiece : public ArrayPieces
    {
    public:
        OnePiece(ArrayView::Element announced, ArrayView const& given)
            : ArrayPieces(announced, 2, 3), given_(given)
        {}
        ArrayView next() override { return given_; }

    private:
        ArrayView given_;
    };
    open();
    unsigned int const shape = model_.addNode(NodeType::Shape, "Shape");
    std::array<double, 12> const doubles{};
    std::array<float, 12> const floats{};
    std::array<int, 12> const integers{};
    auto const told = [&](ArrayView::Element announced, ArrayView const& given) -> std::string {
        OnePiece pieces(announced, given);
        try {
            model_.addArrayPieces(DatasetType::Displacement, pieces, shape, StepList(1));
        } catch (Zyl2::Exception::InvalidArguments const& failure) {
            return Zyl2::Exception::detail(failure);
        }
        return "nothing";
    };
    using Element = ArrayView::Element;
    EXPECT_EQ(told(Element::Float64, ArrayView(doubles.data(), 2, 3)),
              "pieces hold floats or unsigned integers of 32 bits");
    EXPECT_EQ(told(Element::Float32, ArrayView(floats.data(), 3, 3)),
              "Displacement: a piece of 3 rows and 3 columns, where 2 rows are missing");
    EXPECT_EQ(told(Element::Float32, ArrayView(floats.data(), 0, 3)),
              "Displacement: a piece of 0 rows and 3 columns, where 2 rows are missing");
    EXPECT_EQ(told(Element::Float32, ArrayView(floats.data(), 2, 4)),
              "Displacement: a piece of 2 rows and 4 columns, where 2 rows are missing");
    EXPECT_EQ(told(Element::Float32, ArrayView(integers.data(), 2, 3)),
              "Displacement: a piece of 2 rows and 3 columns, where 2 rows are missing");
}

TEST_F(ModelTest, StoresPiecesAsIfTheyCameTogether)
{
    std::vector<float> values(3 * 5000);
    std::iota(values.begin(), values.end(), 0.5F);
    model_.saveTo(path_);
    model_.addNode(NodeType::RootGroup, "Root");
    unsigned int const shape = model_.addNode(NodeType::Shape, "Shape");
    for (std::size_t const atATime : {1UL, 7UL, 5000UL}) {
        SomeRows pieces(values, atATime, values.size());
        model_.addArrayPieces(std::to_string(atATime), DatasetType::Result11, pieces, shape,
                              StepList(1));
    }
    SomeRows failing(values, 100, 300);
    EXPECT_THROW(model_.addArrayPieces(DatasetType::Coordinates, failing, shape, StepList(1)),
                 std::runtime_error);
    model_.close();
    MoxRead::Model written(path_);
    std::size_t datasets = 0;
    for (MoxRead::Variable const& variable : written.node(3).geometry()->variables) {
        EXPECT_EQ(written.read(variable).floats(), values) << variable.name;
        ++datasets;
    }
    EXPECT_EQ(datasets, 3U);
    // What was taken for values that did not come.
    EXPECT_EQ(written.unusedHeavyLength(), values.size() * sizeof(float));
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

TEST_F(ModelTest, TakesTheNameOfItsFileInFourForms)
{
    std::string const wideName = folder_.File("wide.mox");
    std::wstring const wide(wideName.begin(), wideName.end());
    for (std::string const& name : {path_, wideName})
        EXPECT_FALSE(std::filesystem::exists(name));
    model_.saveTo(path_.c_str());
    model_.close();
    EXPECT_EQ(MoxRead::Model(path_).nodes().size(), 1U);
    model_.saveTo(path_, overwriting());
    model_.close();
    model_.saveTo(wide);
    model_.close();
    EXPECT_EQ(MoxRead::Model(wideName).nodes().size(), 1U);
    model_.saveTo(wide.c_str(), overwriting());
    // Of the model before nothing is left. Whether the header is there yet is the stream's affair.
    constexpr std::size_t headerLength = 12;
    EXPECT_LE(Support::ReadFile(wideName).size(), headerLength);
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
    EXPECT_EQ(MoxRead::Model(path_).node(1).name, "Root");
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

TEST_F(ModelTest, RefusesANameWithAZeroByteInsteadOfOpeningAnotherFile)
{
    std::string const shorter = folder_.File("b");
    std::wstring const wide(shorter.begin(), shorter.end());
    // 0x100 has a zero in its low 8 bits, which are what is taken of it.
    for (wchar_t const character : {L'\0', L'\x100'}) {
        Support::expectThrown<MiscelleneousException>(
            [&] { model_.saveTo(wide + character + L".mox", overwriting()); },
            {2, "Unable to open file \"" + shorter + '"', "OpenFile", "Zyl2/Wvf/WvFile"});
        EXPECT_FALSE(std::filesystem::exists(shorter));
        model_.close();
    }
}

TEST_F(ModelTest, FailsToCloseWhenABlockCannotBeWrittenWhole)
{
    open();
    model_.addArrayProperty(DatasetType::NodeIds, valuesThatDoNotCompress(10000),
                            model_.addNode(NodeType::Shape, "Shape"), Step());
    {
        Support::FileSizeLimit const limit(10000);
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
    EXPECT_EQ(MoxRead::Model(path_).nodes().size(), 2U);
}

TEST_F(ModelTest, AddsAssemblyComponentsFromAListInBraces)
{
    model_.saveTo(path_);
    auto const ids = model_.addAssemblyComponents({"/car/wheel", "/car", ""});
    ASSERT_EQ(ids.size(), 3U);
    EXPECT_EQ(ids(0), 3U);
    EXPECT_EQ(ids(1), 1U);
    EXPECT_EQ(ids(2), 0U);
    EXPECT_EQ(model_.addAssemblyComponents({"|car|roof/top|"}, "|")(0), 4U);
    model_.close();
    EXPECT_EQ(MoxRead::Model(path_).node(4).name, "roof/top");
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
