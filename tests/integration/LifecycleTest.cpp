#include "integration/Comparison.h"
#include "integration/ExpectedModel.h"
#include "integration/Overwriting.h"
#include "support/Environment.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"
#include "support/ThrowSite.h"

#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace Integration {

namespace {

using namespace Zyl2::Mox2;

/// A small model, as calls and as expectation.
struct Small
{
    explicit Small(std::string const& given, std::size_t rows = 10) : name(given)
    {
        call.type = DatasetType::Coordinates;
        call.values = Values::ascending(Element::Float, 3, rows);
        expected.addNode(NodeType::RootGroup, name, AttributeSet());
        call.ids = {expected.addNode(NodeType::Shape, name, AttributeSet())};
        expected.addArray(call);
        expected.addArray(call);
    }

    void addTo(Model& model) const
    {
        model.addNode(NodeType::RootGroup, name);
        EXPECT_EQ(model.addNode(NodeType::Shape, name), call.ids[0]);
        // The second time changes nothing but where the values are.
        call.run(model);
        call.run(model);
    }

    std::string name;
    ArrayCall call;
    ExpectedModel expected;
};

/// Makes another folder the current one for as long as it lives.
class CurrentFolder
{
public:
    explicit CurrentFolder(std::string const& path) : previous_(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ~CurrentFolder()
    {
        std::error_code ignored;
        std::filesystem::current_path(previous_, ignored);
    }
    CurrentFolder(CurrentFolder const&) = delete;
    CurrentFolder& operator=(CurrentFolder const&) = delete;

private:
    std::filesystem::path previous_;
};

class LifecycleTest : public testing::Test
{
protected:
    Support::TemporaryFolder folder;
    std::string path = folder.File("model.mox");
};

} // namespace

TEST_F(LifecycleTest, OneObjectWritesTwoModelsOneAfterTheOther)
{
    Small const first("first", 1000);
    Small const second("second", 3);
    std::string const secondPath = folder.File("second.mox");
    Model model;
    model.saveTo(path);
    first.addTo(model);
    model.close();
    model.saveTo(secondPath);
    second.addTo(model);
    model.close();
    expectFile(path, first.expected);
    expectFile(secondPath, second.expected);
}

TEST_F(LifecycleTest, AModelDestroyedWithoutCloseIsComplete)
{
    Small const small("model");
    {
        Model model;
        model.saveTo(path);
        small.addTo(model);
    }
    expectFile(path, small.expected);
}

TEST_F(LifecycleTest, OverwritingLeavesNothingOfALongerFile)
{
    Support::WriteFile(path, std::string(1000000, 'x'));
    Small const small("model");
    Model model;
    model.saveTo(path, overwriting());
    small.addTo(model);
    model.close();
    expectFile(path, small.expected);
    EXPECT_LT(Support::ReadFile(path).size(), 10000U);
}

TEST_F(LifecycleTest, ClosingAModelThatWasNeverSavedWritesNothing)
{
    CurrentFolder const current(folder.File(""));
    Model model;
    model.close();
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST_F(LifecycleTest, AWideNameIsNarrowedToItsLowBytes)
{
    Small const small("model");
    std::string const narrow = folder.File("w\xE4x.mox");
    std::wstring wide(narrow.begin(), narrow.end());
    wide[wide.size() - 6] = L'\x1E4';
    wide[wide.size() - 5] = L'x';
    Model model;
    model.saveTo(wide);
    small.addTo(model);
    model.close();
    expectFile(narrow, small.expected);
}

TEST_F(LifecycleTest, EmptyPathsWriteNothing)
{
    CurrentFolder const current(folder.File(""));
    Support::DefaultBlockSizeSetting const fullAtOnce("10");
    Small const small("model");
    Model model;
    model.saveTo("");
    small.addTo(model);
    model.close();
    model.saveTo(L"");
    small.addTo(model);
    model.close();
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST_F(LifecycleTest, AnExistingFileStaysAsItIsUnlessOverwritingIsAllowed)
{
    Support::DefaultBlockSizeSetting const fullAtOnce("10");
    std::string const old = "the old content";
    Support::WriteFile(path, old);
    Small const small("model");
    Model model;
    Support::expectThrown<Zyl2::Exception::FileOpenException>(
        [&] { model.saveTo(path); }, {Zyl2::Exception::FileOpenException().errorCode(),
                                      "File exists.", "OpenFileForWriting", "", 0});
    EXPECT_EQ(Support::ReadFile(path), old);
    // The model now is one without a file; whatever is added goes nowhere.
    small.addTo(model);
    model.close();
    EXPECT_EQ(Support::ReadFile(path), old);
    model.saveTo(path, overwriting());
    small.addTo(model);
    model.close();
    expectFile(path, small.expected);
}

TEST_F(LifecycleTest, TheWritingRecordCarriesTheTextsOfTheHost)
{
    SaverOptions options;
    options.text1 = "host \xC3\xA4 1.2";
    options.text2 = std::string(1000, 't');
    options.text3 = "nowhere";
    Model model;
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "root");
    model.close();
    MoxRead::Model const file(path);
    MoxRead::GlobalInformation const& information = file.globalInformation();
    ASSERT_EQ(information.writings.size(), 1U);
    EXPECT_EQ(information.writings[0].text1, options.text1);
    EXPECT_EQ(information.writings[0].text2, options.text2);
    EXPECT_EQ(information.writings[0].formatVersion, "1.3");
    EXPECT_FALSE(information.writings[0].time.empty());
    EXPECT_EQ(information.writings[0].text, "");
    EXPECT_TRUE(information.resultAttributes.empty());
    EXPECT_EQ(Support::ReadFile(path).find("nowhere"), std::string::npos);
}

TEST_F(LifecycleTest, TheSecondTextAloneIsNotUsed)
{
    SaverOptions options;
    options.text2 = "second";
    Model model;
    model.saveTo(path, options);
    model.close();
    MoxRead::Model const file(path);
    EXPECT_EQ(file.globalInformation().writings.at(0).text1, "");
    EXPECT_EQ(file.globalInformation().writings.at(0).text2, "");
}

} // namespace Integration
