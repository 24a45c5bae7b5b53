#include "ExodusFile.h"
#include "Opened.h"

#include <support/Folder.h>

#include <gtest/gtest.h>
#include <netcdf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ExodusTest;

class ExodusFields : public testing::Test
{
protected:
    /// Two blocks of lines: nodes 1, 2, 3 and nodes 3, 4; node 5 is in none.
    static void putMesh(ExodusFile& file)
    {
        file.coordinates(counting(5), Values(5), Values(5));
        file.block(1, "BAR", 2, {1, 2, 2, 3});
        file.block(2, "BAR", 2, {3, 4});
    }

    Support::Folder const folder_;
    std::filesystem::path const path_ = folder_.path("in.exo");
};

TEST_F(ExodusFields, EveryStepHasItsTimeAndValues)
{
    {
        ExodusFile file(path_, parameters(5, 3, 2));
        putMesh(file);
        file.variables(EX_NODAL, {"T"});
        for (int step = 1; step <= 3; ++step) {
            file.time(step, step * 0.1);
            file.variable(step, EX_NODAL, 1, 1, counting(5, 100 * step));
        }
    }
    Opened const opened(path_);
    ASSERT_EQ(opened.steps.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        double const first = 100 * static_cast<double>(i + 1);
        EXPECT_EQ(opened.steps[i].name, "Step " + std::to_string(i + 1));
        EXPECT_EQ(opened.steps[i].time, static_cast<double>(i + 1) * 0.1);
        EXPECT_EQ(opened.values<double>(i, "T", 0), (Values{first, first + 1, first + 2}));
        EXPECT_EQ(opened.values<double>(i, "T", 1), (Values{first + 2, first + 3}));
        EXPECT_EQ(opened.values<double>(i, "T", 2), Values{first + 4});
        EXPECT_EQ(opened.fields[i].size(), 3u);
    }
    EXPECT_EQ(opened.find(0, "T", 0)->location, Exchange::Location::Nodes);
}

TEST_F(ExodusFields, SinglePrecisionStaysSingle)
{
    {
        ExodusFile::Options options;
        options.bytesOfReal = 4;
        ExodusFile file(path_, parameters(5, 3, 2), options);
        putMesh(file);
        file.variables(EX_NODAL, {"T"});
        file.time(1, 0.5);
        file.variable(1, EX_NODAL, 1, 1, {0.1, 0.2, 0.3, 0.4, 0.5});
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.values<float>(0, "T", 0), (std::vector<float>{0.1F, 0.2F, 0.3F}));
    EXPECT_EQ(opened.warnings(), Names{});
}

TEST_F(ExodusFields, ValuesThatAreNoNumbersAreKept)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinity = std::numeric_limits<double>::infinity();
    {
        ExodusFile file(path_, parameters(5, 3, 2));
        putMesh(file);
        file.variables(EX_NODAL, {"T"});
        file.time(1, 0);
        file.variable(1, EX_NODAL, 1, 1, {nan, infinity, -infinity, -0.0, 5});
    }
    Values const values = Opened(path_).values<double>(0, "T", 0);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], infinity);
    EXPECT_EQ(values[2], -infinity);
    EXPECT_TRUE(std::signbit(Opened(path_).values<double>(0, "T", 1)[1]));
}

TEST_F(ExodusFields, VectorsOfThePlaneHaveNoHeight)
{
    {
        ExodusFile file(path_, parameters(3, 1, 1, 2));
        file.coordinates({0, 1, 0}, {0, 0, 1}, {});
        file.block(1, "TRI", 3, {1, 2, 3});
        file.variables(EX_NODAL, {"disp_x", "disp_y"});
        file.variables(EX_ELEM_BLOCK, {"qx", "qy"});
        file.time(1, 0);
        file.variable(1, EX_NODAL, 1, 1, {1, 2, 3});
        file.variable(1, EX_NODAL, 2, 1, {4, 5, 6});
        file.variable(1, EX_ELEM_BLOCK, 1, 1, {7});
        file.variable(1, EX_ELEM_BLOCK, 2, 1, {8});
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.values<double>(0, "disp", 0), (Values{1, 4, 0, 2, 5, 0, 3, 6, 0}));
    EXPECT_EQ(opened.values<double>(0, "q", 0), (Values{7, 8, 0}));
}

TEST_F(ExodusFields, SymmetricTensorsAreInTheModelsOrder)
{
    {
        ExodusFile file(path_, parameters(5, 3, 2));
        putMesh(file);
        file.variables(EX_ELEM_BLOCK, {"SXY", "SXX", "SXZ", "SYY", "SYZ", "SZZ"});
        file.time(1, 0);
        for (int variable = 1; variable <= 6; ++variable) {
            file.variable(1, EX_ELEM_BLOCK, variable, 1, {10.0 * variable, 10.0 * variable + 1});
            file.variable(1, EX_ELEM_BLOCK, variable, 2, {10.0 * variable + 2});
        }
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.find(0, "S", 0)->location, Exchange::Location::Elements);
    EXPECT_EQ(opened.values<double>(0, "S", 0),
              (Values{20, 40, 60, 10, 50, 30, 21, 41, 61, 11, 51, 31}));
    EXPECT_EQ(opened.values<double>(0, "S", 1), (Values{22, 42, 62, 12, 52, 32}));
}

TEST_F(ExodusFields, WhatABlockDoesNotHaveIsNotThere)
{
    {
        ExodusFile file(path_, parameters(5, 3, 2));
        putMesh(file);
        file.variables(EX_ELEM_BLOCK, {"A", "VX", "VY", "VZ"});
        file.truthTable(2, 4, {1, 1, 1, 1, 0, 1, 0, 1});
        file.time(1, 0);
        for (int variable = 1; variable <= 4; ++variable)
            file.variable(1, EX_ELEM_BLOCK, variable, 1, {1.0 * variable, 2.0 * variable});
        file.variable(1, EX_ELEM_BLOCK, 2, 2, {7});
        file.variable(1, EX_ELEM_BLOCK, 4, 2, {8});
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.values<double>(0, "A", 0), (Values{1, 2}));
    EXPECT_EQ(opened.find(0, "A", 1), nullptr);
    EXPECT_EQ(opened.values<double>(0, "V", 0), (Values{2, 3, 4, 4, 6, 8}));
    EXPECT_EQ(opened.find(0, "V", 1), nullptr);
    EXPECT_EQ(opened.values<double>(0, "VX", 1), Values{7});
    EXPECT_EQ(opened.find(0, "VY", 1), nullptr);
    EXPECT_EQ(opened.values<double>(0, "VZ", 1), Values{8});
}

TEST_F(ExodusFields, BlocksLeftOutHaveNoElementResults)
{
    {
        ExodusFile file(path_, parameters(9, 2, 2));
        file.coordinates(counting(9), Values(9), Values(9));
        file.block(1, "HEX9", 9, numbersFromOne(9));
        file.block(2, "BAR", 2, {1, 2});
        file.variables(EX_ELEM_BLOCK, {"A"});
        file.variables(EX_NODAL, {"T"});
        file.time(1, 0);
        file.variable(1, EX_ELEM_BLOCK, 1, 1, {1});
        file.variable(1, EX_ELEM_BLOCK, 1, 2, {2});
        file.variable(1, EX_NODAL, 1, 1, counting(9));
    }
    Opened const opened(path_, true);
    EXPECT_EQ(opened.find(0, "A", 0), nullptr);
    EXPECT_EQ(opened.values<double>(0, "A", 1), Values{2});
    EXPECT_EQ(opened.find(0, "T", 0), nullptr);
    EXPECT_EQ(opened.values<double>(0, "T", 2), counting(7, 2));
}

TEST_F(ExodusFields, GlobalVariablesAreAttributesOfTheSteps)
{
    {
        ExodusFile file(path_, parameters(5, 3, 2));
        putMesh(file);
        file.variables(EX_GLOBAL, {"energy in J", "Time"});
        for (int step = 1; step <= 2; ++step) {
            file.time(step, step);
            file.variable(step, EX_GLOBAL, 1, 1, {step + 0.25, step + 0.5});
        }
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.steps[0].attributes,
              (Exchange::AttributeList{{"energy in J", 1.25F}, {"Time (2)", 1.5F}}));
    EXPECT_EQ(opened.steps[1].attributes,
              (Exchange::AttributeList{{"energy in J", 2.25F}, {"Time (2)", 2.5F}}));
}

TEST_F(ExodusFields, TitleAndRecordsAreAttributesOfTheModel)
{
    ex_init_params sizes = parameters(5, 3, 2);
    std::string const title = "A title \xC3\xA4";
    title.copy(sizes.title, MAX_LINE_LENGTH);
    {
        ExodusFile file(path_, sizes);
        putMesh(file);
        std::string texts[4] = {"solver", "1.2", "2024-01-01", "12:00"};
        char* qa[1][4] = {{&texts[0][0], &texts[1][0], &texts[2][0], &texts[3][0]}};
        ASSERT_EQ(ex_put_qa(file.id(), 1, qa), 0);
        std::string lines[2] = {"first line", "second line"};
        char* info[2] = {&lines[0][0], &lines[1][0]};
        ASSERT_EQ(ex_put_info(file.id(), 2, info), 0);
    }
    EXPECT_EQ(Opened(path_).attributes,
              (Exchange::AttributeList{{"Title", title},
                                       {"QA 1 Code", std::string("solver")},
                                       {"QA 1 Version", std::string("1.2")},
                                       {"QA 1 Date", std::string("2024-01-01")},
                                       {"QA 1 Time", std::string("12:00")},
                                       {"Info 1", std::string("first line")},
                                       {"Info 2", std::string("second line")}}));
}

TEST_F(ExodusFields, WhatAModelGetsNothingOfIsTold)
{
    ex_init_params sizes = parameters(5, 3, 2);
    sizes.num_side_sets = 2;
    sizes.num_node_sets = 1;
    {
        ExodusFile file(path_, sizes);
        file.coordinates(counting(5), Values(5), Values(5));
        ASSERT_EQ(ex_put_block(file.id(), EX_ELEM_BLOCK, 1, "BAR", 2, 2, 0, 0, 3), 0);
        Ids const nodes = {1, 2, 2, 3};
        ASSERT_EQ(ex_put_conn(file.id(), EX_ELEM_BLOCK, 1, nodes.data(), nullptr, nullptr), 0);
        file.block(2, "BAR", 2, {3, 4});
        for (std::int64_t set : {1, 2}) {
            Ids const one = {1};
            ASSERT_EQ(ex_put_set_param(file.id(), EX_SIDE_SET, set, 1, 0), 0);
            ASSERT_EQ(ex_put_set(file.id(), EX_SIDE_SET, set, one.data(), one.data()), 0);
        }
        Ids const entry = {1};
        double const factor = 2;
        ASSERT_EQ(ex_put_set_param(file.id(), EX_NODE_SET, 1, 1, 1), 0);
        ASSERT_EQ(ex_put_set(file.id(), EX_NODE_SET, 1, entry.data(), nullptr), 0);
        ASSERT_EQ(ex_put_set_dist_fact(file.id(), EX_NODE_SET, 1, &factor), 0);
        file.variables(EX_NODE_SET, {"onSet"});
        ASSERT_EQ(ex_put_prop(file.id(), EX_ELEM_BLOCK, 1, "material", 5), 0);
    }
    Names warnings = Opened(path_).warnings();
    std::sort(warnings.begin(), warnings.end());
    EXPECT_EQ(warnings,
              (Names{"1 list of distribution factors of sets was left out.",
                     "1 property of blocks and sets was left out.",
                     "1 variable on node sets was left out.", "2 side sets were left out.",
                     "3 attributes of elements were left out."}));
}

/// A file as programs write it that have no library of the format: one array for each result, of
/// one or more columns, and nothing that says so. Its mesh are two triangles.
class ForeignFile
{
public:
    ForeignFile(std::filesystem::path const& path, int mode)
    {
        require(nc_create(path.c_str(), NC_CLOBBER | mode, &file_));
        require(nc_put_att_text(file_, NC_GLOBAL, "title", 4, "made"));
        float const version = 5.1F;
        int const wordSize = 8;
        require(nc_put_att_float(file_, NC_GLOBAL, "version", NC_FLOAT, 1, &version));
        require(nc_put_att_float(file_, NC_GLOBAL, "api_version", NC_FLOAT, 1, &version));
        require(nc_put_att_int(file_, NC_GLOBAL, "floating_point_word_size", NC_INT, 1, &wordSize));
        dimension("num_el_blk", 1);
        dimension("num_elem", 2);
        int const elements = dimension("num_el_in_blk1", 2);
        int const corners = dimension("num_nod_per_el1", 3);
        nodes_ = dimension("num_nodes", 4);
        axes_ = dimension("num_dim", 3);
        nameLength_ = dimension("len_string", 33);
        steps_ = dimension("time_step", NC_UNLIMITED);
        time_ = array("time_whole", {steps_});
        coordinates_ = array("coord", {axes_, nodes_});
        block_ = array("eb_prop1", {dimension("one", 1)}, NC_INT);
        connectivity_ = array("connect1", {elements, corners}, NC_INT);
        require(nc_put_att_text(file_, connectivity_, "elem_type", 3, "TRI"));
        names_ = array("name_nod_var", {dimension("num_nod_var", 2), nameLength_}, NC_CHAR);
        scalar_ = array("vals_nod_var1", {steps_, nodes_});
    }

    ~ForeignFile() { nc_close(file_); }

    int dimension(char const* name, std::size_t length)
    {
        int id = -1;
        require(nc_def_dim(file_, name, length, &id));
        return id;
    }

    int array(char const* name, std::vector<int> const& dimensions, nc_type type = NC_DOUBLE)
    {
        int id = -1;
        require(nc_def_var(file_, name, type, static_cast<int>(dimensions.size()),
                           dimensions.data(), &id));
        return id;
    }

    void vectors(std::size_t columns)
    {
        vector_ = array("vals_nod_var2", {steps_, nodes_, dimension("columns", columns)});
        columns_ = columns;
        putMesh();
    }

    void step(std::size_t index, double time, Values const& scalars, Values const& rows)
    {
        std::array<std::size_t, 3> const start = {index, 0, 0};
        std::array<std::size_t, 3> const count = {1, 4, columns_};
        require(nc_put_vara_double(file_, time_, start.data(), count.data(), &time));
        require(nc_put_vara_double(file_, scalar_, start.data(), count.data(), scalars.data()));
        require(nc_put_vara_double(file_, vector_, start.data(), count.data(), rows.data()));
    }

private:
    static void require(int status)
    {
        if (status != NC_NOERR)
            throw std::runtime_error(std::string("the test's file can't be written: ") +
                                     nc_strerror(status));
    }

    void putMesh() const
    {
        require(nc_enddef(file_));
        require(nc_put_var_double(file_, coordinates_,
                                  Values{0, 1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 5}.data()));
        int const id = 7;
        require(nc_put_var_int(file_, block_, &id));
        require(nc_put_var_int(file_, connectivity_, std::array<int, 6>{1, 2, 3, 1, 3, 4}.data()));
        std::string names(2 * 33, '\0');
        names.replace(0, 1, "T").replace(33, 8, "velocity");
        require(nc_put_var_text(file_, names_, names.data()));
    }

    int file_ = -1;
    int nodes_ = -1;
    int axes_ = -1;
    int nameLength_ = -1;
    int steps_ = -1;
    int time_ = -1;
    int coordinates_ = -1;
    int block_ = -1;
    int connectivity_ = -1;
    int names_ = -1;
    int scalar_ = -1;
    int vector_ = -1;
    std::size_t columns_ = 0;
};

TEST_F(ExodusFields, ArraysThatTheLibraryDoesNotLookForAreRead)
{
    for (int const mode : {0, NC_64BIT_OFFSET, NC_NETCDF4}) {
        {
            ForeignFile file(path_, mode);
            file.vectors(3);
            file.step(0, 0.5, counting(4, 10), counting(12, 100));
            file.step(1, 1.5, counting(4, 20), counting(12, 200));
        }
        Opened const opened(path_);
        ASSERT_EQ(opened.steps.size(), 2U);
        EXPECT_EQ(opened.parts.at(0).coordinates, (Values{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 5}));
        for (std::size_t step = 0; step < 2; ++step) {
            double const factor = static_cast<double>(step + 1);
            EXPECT_EQ(opened.steps[step].time, factor - 0.5);
            EXPECT_EQ(opened.values<double>(step, "T", 0), counting(4, 10 * factor));
            EXPECT_EQ(opened.values<double>(step, "velocity", 0), counting(12, 100 * factor));
            EXPECT_EQ(opened.find(step, "velocity", 0)->components, 3U);
        }
        EXPECT_EQ(opened.warnings(), Names{});
    }
}

TEST_F(ExodusFields, ColumnsOfSuchArraysThatAreNoAxesAreResultsOfTheirOwn)
{
    {
        ForeignFile file(path_, 0);
        file.vectors(2);
        file.step(0, 0.5, counting(4), counting(8));
    }
    Opened const opened(path_);
    EXPECT_EQ(opened.values<double>(0, "velocity_1", 0), counting(4, 0, 2));
    EXPECT_EQ(opened.values<double>(0, "velocity_2", 0), counting(4, 1, 2));
}

} // namespace
