// Whatever a file holds, it is refused with one sentence, and the libraries below say nothing.

#include "ExodusFile.h"
#include "Opened.h"

#include <support/Folder.h>

#include <exchange/Error.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace ExodusTest;

class DamagedExodusFile : public testing::Test
{
protected:
    DamagedExodusFile()
    {
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
    }

    ~DamagedExodusFile() override
    {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }

    /// A file with something of everything. Its last variable is full of values that aren't 0.
    std::filesystem::path writeWhole(int mode = 0)
    {
        ex_init_params sizes = parameters(8, 2, 2);
        sizes.num_node_sets = 1;
        ExodusFile::Options options;
        options.mode = mode;
        ExodusFile file(path_, sizes, options);
        file.coordinates(counting(8, 1), counting(8, 1), counting(8, 1));
        file.block(1, "HEX8", 8, numbersFromOne(8));
        file.block(2, "BAR", 2, {1, 2});
        file.set(EX_NODE_SET, 1, {1, 2});
        file.variables(EX_NODAL, {"T"});
        file.variables(EX_ELEM_BLOCK, {"E"});
        file.truthTable(2, 1, {1, 1});
        file.variables(EX_GLOBAL, {"G"});
        for (int step = 1; step <= 2; ++step) {
            file.time(step, step);
            file.variable(step, EX_NODAL, 1, 1, counting(8, 1.1));
            file.variable(step, EX_ELEM_BLOCK, 1, 1, {2.2});
            file.variable(step, EX_ELEM_BLOCK, 1, 2, {3.3});
            file.variable(step, EX_GLOBAL, 1, 1, {4.4});
        }
        return path_;
    }

    static std::string errorOf(std::filesystem::path const& path)
    {
        try {
            Opened const opened(path, true);
        } catch (Exchange::Error const& error) {
            return error.what();
        }
        return "";
    }

    /// The file that `writeWhole` makes, with a variable that the format asks for renamed.
    std::string errorWithout(char const* variable)
    {
        writeWhole();
        int file = -1;
        int id = -1;
        EXPECT_EQ(nc_open(path_.c_str(), NC_WRITE, &file), NC_NOERR);
        EXPECT_EQ(nc_inq_varid(file, variable, &id), NC_NOERR) << variable;
        EXPECT_EQ(nc_redef(file), NC_NOERR);
        EXPECT_EQ(nc_rename_var(file, id, "gone"), NC_NOERR);
        EXPECT_EQ(nc_close(file), NC_NOERR);
        return errorOf(path_);
    }

    Support::Folder const folder_;
    std::filesystem::path const path_ = folder_.path("in.exo");
};

TEST_F(DamagedExodusFile, WholeFilesAreRead)
{
    for (int const mode : {0, EX_LARGE_MODEL, EX_NETCDF4, EX_NETCDF4 | EX_NOCLASSIC}) {
        writeWhole(mode);
        EXPECT_EQ(errorOf(path_), "") << mode;
    }
}

TEST_F(DamagedExodusFile, FilesOfOtherFormatsAreRefused)
{
    std::string const hdf5Magic = "\x89HDF\r\n\x1A\n";
    std::vector<std::string> const contents = {"",
                                               "CDF",
                                               "CDF\x01",
                                               std::string("CDF\x02") + std::string(100, '\xFF'),
                                               hdf5Magic,
                                               hdf5Magic + std::string(1000, 'x'),
                                               "<?xml version=\"1.0\"?>\n",
                                               "$MeshFormat\n2.2 0 8\n"};
    for (std::string const& content : contents) {
        auto const path = folder_.write("other", content);
        EXPECT_NE(errorOf(path), "") << content;
    }
    EXPECT_NE(errorOf("http://localhost/in.exo"), "");
    EXPECT_NE(errorOf(folder_.path("nothing")), "");
    EXPECT_NE(errorOf(folder_.path("")), "");
}

TEST_F(DamagedExodusFile, OtherNetcdfFilesAreRefused)
{
    for (int const mode : {0, NC_NETCDF4}) {
        int file = -1;
        ASSERT_EQ(nc_create(path_.c_str(), NC_CLOBBER | mode, &file), NC_NOERR);
        int dimension = -1;
        ASSERT_EQ(nc_def_dim(file, "num_nodes", 3, &dimension), NC_NOERR);
        ASSERT_EQ(nc_close(file), NC_NOERR);
        EXPECT_EQ(errorOf(path_), "The file is a netCDF file, but no Exodus file.");
    }
}

TEST_F(DamagedExodusFile, TruncatedFilesAreRefusedAtEveryLength)
{
    for (int const mode : {0, EX_LARGE_MODEL, EX_NETCDF4}) {
        std::string const whole = Support::contentOf(writeWhole(mode));
        std::size_t const stride = mode == EX_NETCDF4 ? 1021 : 23;
        for (std::size_t length = 0; length < whole.size(); length += stride)
            EXPECT_NE(errorOf(folder_.write("cut", whole.substr(0, length))), "")
                << "mode " << mode << ", " << length << " of " << whole.size();
        EXPECT_NE(errorOf(folder_.write("cut", whole.substr(0, whole.size() - 1))), "") << mode;
    }
}

TEST_F(DamagedExodusFile, FilesOfTheClassicFormatsSayHowMuchIsMissing)
{
    std::string const whole = Support::contentOf(writeWhole());
    std::string const error = errorOf(folder_.write("cut", whole.substr(0, whole.size() - 1)));
    EXPECT_EQ(error, "The file is cut off: it has " + std::to_string(whole.size() - 1) + " of " +
                         std::to_string(whole.size()) + " bytes.");
}

TEST_F(DamagedExodusFile, FilesWithOneRecordVariableAreWhole)
{
    {
        ExodusFile::Options options;
        options.bytesOfReal = 4;
        ExodusFile file(path_, parameters(2, 1, 1), options);
        file.coordinates({1, 2}, {3, 4}, {5, 6});
        file.block(1, "BAR", 2, {1, 2});
        for (int step = 1; step <= 3; ++step)
            file.time(step, step);
    }
    EXPECT_EQ(Opened(path_).steps.size(), 3u);
}

TEST_F(DamagedExodusFile, MissingVariablesAreTold)
{
    for (char const* const variable :
         {"coordx", "coordz", "connect1", "connect2", "eb_prop1", "time_whole", "vals_nod_var1",
          "vals_elem_var1eb2", "vals_glo_var", "name_nod_var", "node_ns1"})
        EXPECT_NE(errorWithout(variable), "") << variable;
}

TEST_F(DamagedExodusFile, FilesWithoutNodesAreRefused)
{
    {
        ExodusFile const file(path_, parameters(0, 0, 0));
    }
    EXPECT_EQ(errorOf(path_), "The file has no nodes.");
}

TEST_F(DamagedExodusFile, NodesThatAreNotThereAreTold)
{
    for (std::int64_t const node : {0, -1, 4}) {
        {
            ExodusFile file(path_, parameters(3, 1, 1));
            file.coordinates(counting(3), Values(3), Values(3));
            file.block(1, "TRI", 3, {1, 2, node});
        }
        EXPECT_EQ(errorOf(path_),
                  "The file is damaged: it refers to the node " + std::to_string(node) + " of 3.");
    }
}

TEST_F(DamagedExodusFile, EntriesOfSetsThatAreNotThereAreTold)
{
    ex_init_params sizes = parameters(3, 1, 1);
    sizes.num_node_sets = 1;
    {
        ExodusFile file(path_, sizes);
        file.coordinates(counting(3), Values(3), Values(3));
        file.block(1, "TRI", 3, {1, 2, 3});
        file.set(EX_NODE_SET, 1, {4});
    }
    EXPECT_NE(errorOf(path_), "");
}

TEST_F(DamagedExodusFile, PolygonsThatDoNotAddUpAreTold)
{
    {
        ExodusFile file(path_, parameters(5, 2, 1));
        file.coordinates(counting(5), Values(5), Values(5));
        file.polygons(1, {3, 4}, {1, 2, 3, 4, 5});
    }
    EXPECT_NE(errorOf(path_), "");
}

TEST_F(DamagedExodusFile, ChangedBytesNeverEndTheProgram)
{
    for (int const mode : {0, EX_LARGE_MODEL}) {
        std::string const whole = Support::contentOf(writeWhole(mode));
        std::mt19937 random(20240607);
        int refused = 0;
        for (int round = 0; round < 400; ++round) {
            std::string changed = whole;
            for (int i = 0; i < 1 + round % 3; ++i)
                changed[random() % changed.size()] = static_cast<char>(random() % 256);
            refused += errorOf(folder_.write("changed", changed)).empty() ? 0 : 1;
        }
        EXPECT_GT(refused, 20);
    }
}

} // namespace
