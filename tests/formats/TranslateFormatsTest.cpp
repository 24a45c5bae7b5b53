#include "support/Folder.h"

#include <mox/commands/TranslateCommand.h>
#include <moxread/Verify.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <sstream>

#include <sys/wait.h>

namespace {

using Mox::TranslateArguments;
using Mox::translateFile;

using Support::contentOf;
using Support::Folder;
using Names = std::vector<std::string>;

class TranslateFormats : public ::testing::Test
{
protected:
    int translate(std::filesystem::path const& input, bool json = false)
    {
        TranslateArguments arguments;
        arguments.input = input.string();
        arguments.output = folder_.path("out.mox").string();
        arguments.json = json;
        std::ostringstream out;
        std::ostringstream err;
        int const status = translateFile(arguments, out, err);
        printed_ = out.str();
        said_ = err.str();
        return status;
    }

    /// Runs the real command, limited by what the shell sets before it.
    int runCommand(std::filesystem::path const& input, std::string const& limits = "")
    {
        std::string const command = limits + MOX_COMMAND + std::string(" translate '") +
                                    input.string() + "' '" + folder_.path("out.mox").string() +
                                    "' >'" + folder_.path("stdout").string() + "' 2>'" +
                                    folder_.path("stderr").string() + "'";
        int const status = std::system(command.c_str());
        printed_ = contentOf(folder_.path("stdout"));
        said_ = contentOf(folder_.path("stderr"));
        std::filesystem::remove(folder_.path("stdout"));
        std::filesystem::remove(folder_.path("stderr"));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    Folder folder_;
    std::string printed_;
    std::string said_;
};

TEST_F(TranslateFormats, AFileOfNoKnownFormatGetsOneSentence)
{
    std::filesystem::path const input = folder_.write("in.vtu", "hello");
    EXPECT_EQ(translate(input), 1);
    EXPECT_EQ(said_, "mox translate: " + input.string() +
                         ": The file is of no format that can be translated.\n");
}

TEST_F(TranslateFormats, AFileThatIsNotThereGetsOneSentence)
{
    std::filesystem::path const input = folder_.path("in.vtu");
    EXPECT_EQ(translate(input), 1);
    EXPECT_EQ(said_, "mox translate: " + input.string() + ": There is no such file.\n");
}

TEST_F(TranslateFormats, TheSummaryOfAResultFileCountsWhatWasWritten)
{
    EXPECT_EQ(translate(EXAMPLE_DATA "/cantilever.frd", true), 0);
    nlohmann::json const json = nlohmann::json::parse(printed_);
    EXPECT_EQ(json.at("format"), "frd");
    EXPECT_GT(json.at("nodes"), 0);
    EXPECT_GT(json.at("elements"), 0);
    EXPECT_GT(json.at("steps"), 0);
    EXPECT_GT(json.at("fields"), json.at("steps"));
    EXPECT_EQ(json.at("warnings"), nlohmann::json::array());
    EXPECT_EQ(json.at("largestRelativeError"), 0);
}

#ifdef HAS_VTK

char const* const triangle =
    "# vtk DataFile Version 3.0\nby hand\nASCII\nDATASET UNSTRUCTURED_GRID\nPOINTS 3 double\n"
    "0 0 0 1 0 0 0.1 1 0\nCELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5\n";

TEST_F(TranslateFormats, TheSummaryTellsWhatRoundingCost)
{
    EXPECT_EQ(translate(folder_.write("in.vtk", triangle), true), 0);
    nlohmann::json const json = nlohmann::json::parse(printed_);
    EXPECT_EQ(json.at("format"), "VTK legacy");
    EXPECT_EQ(json.at("nodes"), 3);
    EXPECT_EQ(json.at("elements"), 1);
    EXPECT_EQ(json.at("steps"), 0);
    EXPECT_EQ(json.at("warnings").size(), 1U);
    EXPECT_NEAR(json.at("largestRelativeError").get<double>(), (0.1F - 0.1) / 0.1, 1e-12);
}

TEST_F(TranslateFormats, TheCommandWritesASoundModel)
{
    EXPECT_EQ(runCommand(folder_.write("in.vtk", triangle)), 0);
    EXPECT_EQ(printed_, "");
    EXPECT_NO_THROW(MoxRead::verify(folder_.path("out.mox").string()));
    EXPECT_EQ(folder_.names(), (Names{"in.vtk", "out.mox"}));
}

TEST_F(TranslateFormats, AFullDiskGetsOneSentenceAndLeavesNothing)
{
    std::filesystem::path const input = folder_.write("in.vtk", triangle);
    // The limit is one block, not none, because it holds for the command's messages as well.
    EXPECT_EQ(runCommand(input, "ulimit -f 1; "), 1);
    EXPECT_EQ(said_.find("mox translate: " + folder_.path("out.mox").string() + ": "), 0U) << said_;
    EXPECT_EQ(std::count(said_.begin(), said_.end(), '\n'), 1);
    EXPECT_EQ(folder_.names(), (Names{"in.vtk"}));
}

TEST_F(TranslateFormats, AFileThatItsLibraryDoesNotSurviveGetsOneSentenceAndLeavesNothing)
{
    std::filesystem::path const input =
        folder_.write("in.cgns", "@(#)ADF Database Version A02011>, but nothing else");
    EXPECT_EQ(runCommand(input), 1);
    EXPECT_EQ(said_, "mox translate: " + input.string() +
                         ": The file is damaged in a way that the library reading it does not "
                         "survive.\n");
    EXPECT_EQ(folder_.names(), (Names{"in.cgns"}));
}

#endif

} // namespace
