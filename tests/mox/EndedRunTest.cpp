// Commands that somebody ends at random moments. MOXWRITER_ENDED_RUNS tells how many runs of each
// there are, MOXWRITER_ENDED_SEED with which moments.

#include "support/Folder.h"
#include "support/Wanted.h"

#include <moxread/Verify.h>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using Support::contentOf;
using Support::Folder;
using Microseconds = std::chrono::microseconds;
using Names = std::vector<std::string>;
/// By the path below the folder; folders have no content.
using Contents = std::map<std::string, std::string>;

pid_t start(Names const& arguments, int ignored)
{
    Names all = {MOX_COMMAND};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& argument : all)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t const id = ::fork();
    if (id != 0)
        return id;
    // A group of its own, as a shell gives it to a command.
    ::setpgid(0, 0);
    for (int const stream : {STDOUT_FILENO, STDERR_FILENO})
        ::dup2(::open("/dev/null", O_WRONLY), stream);
    if (ignored != 0)
        std::signal(ignored, SIG_IGN);
    ::execv(pointers.front(), pointers.data());
    ::_exit(127);
}

int statusOf(pid_t id)
{
    int status = 0;
    ::waitpid(id, &status, 0);
    return status;
}

Contents contentsOf(fs::path const& folder)
{
    Contents contents;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(folder))
        contents[fs::relative(entry.path(), folder).string()] =
            entry.is_directory() ? "" : contentOf(entry.path());
    return contents;
}

/// One command with its input, and all that it leaves when nobody ends it.
class EndedRun : public testing::Test
{
protected:
    enum class Overwriting
    {
        No,
        Yes
    };

    std::string out(std::string const& name) const { return output_.path(name).string(); }

    void tryMoments(Names const& call, Overwriting overwriting = Overwriting::No)
    {
        call_ = call;
        if (overwriting == Overwriting::Yes)
            call_.push_back("--overwrite");
        learn();
        unsigned const runs = Support::wanted("MOXWRITER_ENDED_RUNS", 3);
        for (unsigned run = 0; run < runs && !HasFailure(); ++run)
            endOnce(run, runs, overwriting == Overwriting::Yes);
        std::cout << call_.front() << ": " << ended_ << " of " << runs << " runs were ended within "
                  << duration_.count() / 1000 << " ms\n";
        EXPECT_GT(ended_, 0U) << "no run lasted long enough";
    }

    std::string translated(std::string const& input)
    {
        std::string const model = input_.path("model.mox").string();
        EXPECT_EQ(statusOf(start({"translate", input, model}, 0)), 0);
        return model;
    }

    std::string inputOf(std::string const& content)
    {
        return input_.write("in.vtk", content).string();
    }

    Folder const input_;
    Folder const output_;
    Names call_;
    Contents whole_;
    Microseconds duration_ = Microseconds(0);
    unsigned ended_ = 0;

private:
    void learn()
    {
        auto const begin = std::chrono::steady_clock::now();
        ASSERT_EQ(statusOf(start(call_, 0)), 0);
        duration_ =
            std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - begin);
        whole_ = contentsOf(output_.path(""));
        ASSERT_FALSE(whole_.empty());
    }

    void endOnce(unsigned run, unsigned runs, bool overwrite)
    {
        if (!overwrite)
            for (auto const& entry : fs::directory_iterator(output_.path("")))
                fs::remove_all(entry.path());
        int const signal = run % 2 == 0 ? SIGINT : SIGTERM;
        pid_t const id = start(call_, 0);
        ::setpgid(id, id);
        Microseconds const moment = momentOf(run, runs);
        std::this_thread::sleep_for(moment);
        // A terminal tells the whole group, others the process that they know.
        ::kill(signal == SIGINT ? -id : id, signal);
        int const status = statusOf(id);
        bool const wasEnded = WIFSIGNALED(status);
        ended_ += wasEnded ? 1 : 0;
        // The first run may have waited for a disk that the others find in memory.
        if (!wasEnded)
            duration_ = moment;
        EXPECT_EQ(wasEnded ? WTERMSIG(status) : status, wasEnded ? signal : 0);
        expectNothingOrAll(overwrite || !wasEnded, run);
    }

    /// Each run has a share of the time that the command takes, and a random moment in it.
    Microseconds momentOf(unsigned run, unsigned runs)
    {
        Microseconds::rep const share = duration_.count() / runs;
        std::uniform_int_distribution<Microseconds::rep> moments(0, share);
        return Microseconds(share * run + moments(random_));
    }

    void expectNothingOrAll(bool mustBeThere, unsigned run)
    {
        Contents const left = contentsOf(output_.path(""));
        if (left.empty() && !mustBeThere)
            return;
        ASSERT_EQ(left.size(), whole_.size()) << "run " << run << " left " << namesOf(left);
        for (auto const& [name, content] : whole_) {
            ASSERT_EQ(left.count(name), 1U) << "run " << run << " left " << namesOf(left);
            // A model tells when it was made.
            if (fs::path(name).extension() == ".mox")
                EXPECT_NO_THROW(MoxRead::verify(output_.path(name).string()));
            else
                EXPECT_TRUE(left.at(name) == content) << "run " << run << ": " << name;
        }
    }

    static std::string namesOf(Contents const& contents)
    {
        std::string names;
        for (auto const& entry : contents)
            names += entry.first + "\n";
        return names;
    }

    std::mt19937 random_{Support::wanted("MOXWRITER_ENDED_SEED", 13)};
};

char const* const solved = EXAMPLE_RESULTS "/cantilever.frd";

TEST_F(EndedRun, OfTranslateLeavesNothingOrAll)
{
    tryMoments({"translate", solved, out("out.mox")});
}

TEST_F(EndedRun, OfDumpLeavesNothingOrAll)
{
    tryMoments({"dump", translated(solved), "cantilever/Group 0 Material STEEL 3D", "Coordinates",
                "-o", out("out.csv")});
}

TEST_F(EndedRun, GoesOnWhenTheSignalWasIgnoredFromTheBeginning)
{
    pid_t const id = start({"translate", solved, out("out.mox")}, SIGHUP);
    // Until it has a temporary file, or is through.
    while (output_.names().empty())
        std::this_thread::sleep_for(Microseconds(100));
    ::kill(id, SIGHUP);
    EXPECT_EQ(statusOf(id), 0);
    EXPECT_EQ(output_.names(), Names{"out.mox"});
}

#ifdef HAS_VTK

/// A cube of hexahedra with a value at each node.
std::string cube(int edge)
{
    std::string points;
    std::string values;
    for (int z = 0; z <= edge; ++z)
        for (int y = 0; y <= edge; ++y)
            for (int x = 0; x <= edge; ++x) {
                points +=
                    std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z) + "\n";
                values += std::to_string(x * y + z) + "\n";
            }
    int const side = edge + 1;
    std::string const count = std::to_string(side * side * side);
    std::string const extent = std::to_string(side);
    return "# vtk DataFile Version 3.0\nby hand\nASCII\nDATASET STRUCTURED_GRID\nDIMENSIONS " +
           extent + " " + extent + " " + extent + "\nPOINTS " + count + " float\n" + points +
           "POINT_DATA " + count + "\nSCALARS T float 1\nLOOKUP_TABLE default\n" + values;
}

constexpr int small = 6;
constexpr int large = 30;

TEST_F(EndedRun, OfTranslateByALibraryLeavesNothingOrAll)
{
    tryMoments({"translate", inputOf(cube(large)), out("out.mox")});
}

TEST_F(EndedRun, OfTranslateOfASeriesLeavesNothingOrAll)
{
    std::string const series = input_.path("in.pvd").string();
    ASSERT_EQ(statusOf(start({"export", translated(solved), series}, 0)), 0);
    tryMoments({"translate", series, out("out.mox")});
}

TEST_F(EndedRun, OfExportToAFileLeavesNothingOrAll)
{
    tryMoments({"export", translated(inputOf(cube(large))), out("out.vtu")});
}

TEST_F(EndedRun, OfExportOfSmallPartsLeavesNothingOrAll)
{
    tryMoments({"export", translated(inputOf(cube(small))), out("out.vtm")});
}

TEST_F(EndedRun, OfExportOfStepsLeavesNothingOrAll)
{
    tryMoments({"export", translated(solved), out("out.pvd")});
}

TEST_F(EndedRun, OfExportOverOldStepsLeavesTheOldOrTheNew)
{
    tryMoments({"export", translated(solved), out("out.pvd")}, Overwriting::Yes);
}

TEST_F(EndedRun, OfViewLeavesNothingOrAll)
{
    tryMoments({"view", translated(inputOf(cube(large))), out("out.png"), "--size", "320x240"});
}

#endif

#ifdef HAS_GMSH

/// Triangles in a row.
std::string strip(int count)
{
    std::string nodes;
    std::string elements;
    for (int i = 1; i <= count + 2; ++i)
        nodes += std::to_string(i) + " " + std::to_string(i) + " " + std::to_string(i % 2) + " 0\n";
    for (int i = 1; i <= count; ++i)
        elements += std::to_string(i) + " 2 2 1 1 " + std::to_string(i) + " " +
                    std::to_string(i + 1 + i % 2) + " " + std::to_string(i + 2 - i % 2) + "\n";
    return "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n" + std::to_string(count + 2) + "\n" +
           nodes + "$EndNodes\n$Elements\n" + std::to_string(count) + "\n" + elements +
           "$EndElements\n";
}

TEST_F(EndedRun, OfTranslateByAChildLeavesNothingOrAll)
{
    tryMoments({"translate", input_.write("in.msh", strip(20000)).string(), out("out.mox")});
}

#endif

} // namespace
