// The command itself, which has to outlive what makes Gmsh crash.

#include <support/Folder.h>

#include <moxread/Verify.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>

#include <sys/wait.h>

namespace {

std::string meshOfOneLine(std::string const& node)
{
    return "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n$Entities\n0 1 0 0\n1 0 0 0 1 0 0 0 0\n"
           "$EndEntities\n$Nodes\n1 2 7 " +
           node + "\n1 1 0 2\n" + node +
           "\n7\n0 0 0\n1 0 0\n$EndNodes\n$Elements\n1 1 1 1\n1 1 1 1\n1 " + node +
           " 7\n$EndElements\n";
}

class GmshCommand : public testing::Test
{
protected:
    /// With a bound on its memory, because a damaged count may ask for all there is.
    int translate(std::string const& content)
    {
        auto const input = folder_.write("in.msh", content);
        std::string const command =
            std::string("ulimit -v 8000000; '") + MOX_COMMAND +
            "' translate --overwrite --skip-unknown '" + input.string() + "' '" + output_.string() +
            "' >'" + folder_.path("out").string() + "' 2>'" + folder_.path("err").string() + "'";
        int const status = std::system(command.c_str());
        said_ = Support::contentOf(folder_.path("err"));
        EXPECT_EQ(Support::contentOf(folder_.path("out")), "");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    Support::Folder const folder_;
    std::filesystem::path const output_ = folder_.path("out.mox");
    std::string said_;
};

TEST_F(GmshCommand, WritesASoundModel)
{
    EXPECT_EQ(translate(meshOfOneLine("8")), 0) << said_;
    EXPECT_EQ(said_, "");
    EXPECT_NO_THROW(MoxRead::verify(output_.string()));
}

TEST_F(GmshCommand, TellsOfACrashInOneSentence)
{
    // Gmsh takes tags of nodes for numbers of 32 bits, and crashes on others.
    EXPECT_EQ(translate(meshOfOneLine("3000000000")), 1);
    EXPECT_EQ(std::count(said_.begin(), said_.end(), '\n'), 1) << said_;
    EXPECT_FALSE(std::filesystem::exists(output_));
}

TEST_F(GmshCommand, ChangedBytesGiveASoundModelOrOneSentence)
{
    std::string const whole = meshOfOneLine("8") +
                              "$NodeData\n1\n\"T\"\n1\n0.5\n3\n0\n1\n2\n7 1.5\n"
                              "8 2.5\n$EndNodeData\n";
    std::mt19937 random(20240607);
    for (int round = 0; round < 15; ++round) {
        std::string changed = whole;
        for (int i = 0; i < 1 + round % 3; ++i)
            changed[20 + random() % (whole.size() - 20)] = static_cast<char>(random() % 256);
        std::filesystem::remove(output_);
        if (translate(changed) == 0) {
            EXPECT_NO_THROW(MoxRead::verify(output_.string())) << changed;
            continue;
        }
        EXPECT_EQ(said_.find("mox translate: "), 0U) << said_;
        EXPECT_EQ(std::count(said_.begin(), said_.end(), '\n'), 1) << said_;
        EXPECT_FALSE(std::filesystem::exists(output_));
    }
}

} // namespace
