// Runs a copy of the command in a folder of its own, away from the program that opens other
// formats. That is missing there unless a test puts something else in its place.

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

using Support::contentOf;
using Names = std::vector<std::string>;

char const* const triangle =
    "# vtk DataFile Version 3.0\nby hand\nASCII\nDATASET UNSTRUCTURED_GRID\nPOINTS 3 float\n"
    "0 0 0 1 0 0 0 1 0\nCELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5\n";

class FormatsProgram : public testing::Test
{
protected:
    FormatsProgram()
    {
        fs::create_directory(bin());
        fs::copy(MOX_COMMAND, bin() / "mox");
        folder_.write("in.vtk", triangle);
    }

    fs::path bin() const { return fs::canonical(folder_.path(".")) / "bin"; }

    /// Where the program would be if this were an installation.
    fs::path installed() const { return (bin() / MOX_VTK_PROGRAM).lexically_normal(); }

    void putBeside(std::string const& content, fs::perms permissions) const
    {
        fs::permissions(folder_.write("bin/mox-formats", content), permissions);
    }

    /// Runs the copy in the test's folder.
    int run(std::string const& arguments, std::string const& prefix = "")
    {
        std::string const command = "cd '" + folder_.path(".").string() + "' && " + prefix +
                                    " bin/mox " + arguments + " >bin/out 2>bin/err";
        int const status = std::system(command.c_str());
        printed_ = contentOf(bin() / "out");
        said_ = contentOf(bin() / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    Support::Folder const folder_;
    std::string printed_;
    std::string said_;
};

std::string complaint(fs::path const& program, std::string const& reason)
{
    return program.string() +
           ": This program, which has the libraries that this takes, cannot be run: " + reason +
           ".\n";
}

TEST_F(FormatsProgram, IsToldInOneSentenceWhenItIsMissing)
{
    for (std::string const call :
         {"translate in.vtk out.mox", "export in.mox out.vtu", "view in.mox out.png"}) {
        EXPECT_EQ(run(call), 1) << call;
        EXPECT_EQ(printed_, "");
        EXPECT_EQ(said_, "mox " + call.substr(0, call.find(' ')) + ": " +
                             complaint(installed(), "No such file or directory"));
    }
    EXPECT_EQ(folder_.names(), (Names{"bin", "in.vtk"}));
}

#ifdef MOX_GMSH_PROGRAM

TEST_F(FormatsProgram, IsAnotherOneForGmshWhoseLibraryTakesLongest)
{
    folder_.write("in.msh", "$MeshFormat\n");
    EXPECT_EQ(run("translate in.msh out.mox"), 1);
    fs::path const program = (bin() / MOX_GMSH_PROGRAM).lexically_normal();
    EXPECT_EQ(program.filename(), "mox-gmsh");
    EXPECT_EQ(said_, "mox translate: " + complaint(program, "No such file or directory"));
}

#endif

TEST_F(FormatsProgram, IsToldInOneSentenceWhenItCannotBeRun)
{
    putBeside("#!/bin/sh\n", fs::perms::owner_read);
    EXPECT_EQ(run("translate in.vtk out.mox"), 1);
    EXPECT_EQ(said_, "mox translate: " + complaint(bin() / "mox-formats", "Permission denied"));
}

TEST_F(FormatsProgram, IsNotTakenFromPath)
{
    fs::create_directory(folder_.path("path"));
    fs::permissions(folder_.write("path/mox-formats", "#!/bin/sh\n"), fs::perms::owner_all);
    EXPECT_EQ(run("translate in.vtk out.mox", "PATH=path:$PATH"), 1);
    EXPECT_EQ(said_, "mox translate: " + complaint(installed(), "No such file or directory"));
}

TEST_F(FormatsProgram, GetsTheSameArgumentsAndItsStatusIsTheCommands)
{
    putBeside("#!/bin/sh\nprintf '<%s>' \"$@\"\necho said >&2\nexit 7\n", fs::perms::owner_all);
    EXPECT_EQ(run("export --step '' 'a  b' 'c\nd.vtu'"), 7);
    EXPECT_EQ(printed_, "<export><--step><><a  b><c\nd.vtu>");
    EXPECT_EQ(said_, "said\n");
}

TEST_F(FormatsProgram, IsNotNeededByOtherCommands)
{
    std::string const model = " model.mox";
    EXPECT_EQ(run("translate " EXAMPLE_DATA "/cantilever.frd" + model), 0) << said_;
    for (std::string const call : {"ls", "info", "verify"})
        EXPECT_EQ(run(call + model), 0) << said_;
    EXPECT_EQ(run("diff" + model + model), 0) << said_;
}

TEST_F(FormatsProgram, IsNotNeededToTellOfWrongUsage)
{
    EXPECT_EQ(run("export in.mox out.txt"), 2);
    EXPECT_EQ(run("view in.mox out.png --size big"), 2);
    EXPECT_EQ(run("export --help"), 0);
    EXPECT_EQ(run("translate bin/mox out.mox"), 1);
    EXPECT_EQ(said_, "mox translate: bin/mox: The file is of no format that can be translated.\n");
}

} // namespace
