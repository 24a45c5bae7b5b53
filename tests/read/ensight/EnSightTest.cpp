#include "read/vtk/OpenedFile.h"

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Support::Folder;
using VtkRead::FileKind;
using Doubles = std::vector<double>;
using Floats = std::vector<float>;
using Names = std::vector<std::string>;
using Rows = std::vector<std::uint32_t>;

Rows const hexahedron = {0, 1, 2, 3, 4, 5, 6, 7};
Doubles const unitCube = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};

/// A number on a line of its own, for each of the values.
std::string lines(Doubles const& values)
{
    std::string text;
    for (double const value : values) {
        char line[32];
        std::snprintf(line, sizeof(line), "%12.5e\n", value);
        text += line;
    }
    return text;
}

class EnSight : public ::testing::Test
{
protected:
    EnSight()
    {
        folder_.write("in.geo", geometry(unitCube));
        folder_.write("temperature0", nodal({1, 2, 3, 4, 5, 6, 7, 8}));
        folder_.write("temperature1", nodal({8, 7, 6, 5, 4, 3, 2, 1}));
        folder_.write("stress0", "stress\npart\n         1\nhexa8\n" + lines({1, 2, 3, 4, 5, 6}));
        folder_.write("stress1", "stress\npart\n         1\nhexa8\n" + lines({2, 2, 3, 4, 5, 6}));
    }

    static std::string geometry(Doubles const& points)
    {
        std::string text = "made by a test\nof one cube\nnode id off\nelement id off\n"
                           "part\n         1\nThe cube\ncoordinates\n         8\n";
        for (std::size_t axis = 0; axis < 3; ++axis)
            for (std::size_t i = axis; i < points.size(); i += 3)
                text += lines({points[i]});
        return text + "hexa8\n         1\n"
                      "         1         2         3         4         5         6         7"
                      "         8\n";
    }

    static std::string nodal(Doubles const& values)
    {
        return "temperature\npart\n         1\ncoordinates\n" + lines(values);
    }

    std::filesystem::path writeCase(std::string const& model = "in.geo") const
    {
        return folder_.write("in.case", "FORMAT\ntype: ensight gold\n\nGEOMETRY\nmodel: " + model +
                                            "\n\nVARIABLE\n"
                                            "scalar per node: 1 Temperature temperature*\n"
                                            "tensor symm per element: 1 Stress stress*\n\n"
                                            "TIME\ntime set: 1\nnumber of steps: 2\n"
                                            "filename start number: 0\nfilename increment: 1\n"
                                            "time values: 0.5 1.5\n");
    }

    Folder folder_;
};

TEST_F(EnSight, PartsStepsAndVariablesAreRead)
{
    OpenedFile const file(FileKind::EnSight, writeCase());
    ASSERT_EQ(file.parts.size(), 1U);
    EXPECT_EQ(file.parts[0].name, "The cube");
    EXPECT_EQ(file.parts[0].coordinates, unitCube);
    EXPECT_EQ(file.parts[0].connectivity, hexahedron);
    ASSERT_EQ(file.steps.size(), 2U);
    EXPECT_EQ(file.steps[0].time, 0.5);
    EXPECT_EQ(file.steps[1].time, 1.5);
    EXPECT_EQ(std::get<Floats>(file.field("Temperature", 0).values),
              (Floats{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(std::get<Floats>(file.field("Temperature", 1).values),
              (Floats{8, 7, 6, 5, 4, 3, 2, 1}));
}

TEST_F(EnSight, TensorsAreInTheOrderOfAModel)
{
    // The format has xx, yy, zz, xy, xz, yz.
    OpenedFile const file(FileKind::EnSight, writeCase());
    EXPECT_EQ(std::get<Floats>(file.field("Stress", 1).values), (Floats{2, 2, 3, 4, 6, 5}));
}

TEST_F(EnSight, MovingNodesAreRead)
{
    Doubles moved = unitCube;
    moved[0] = -1;
    folder_.write("in.geo0", geometry(unitCube));
    folder_.write("in.geo1", geometry(moved));
    OpenedFile const file(FileKind::EnSight, writeCase("1 in.geo*"));
    EXPECT_EQ(file.fieldNames(0), (Names{"Temperature", "Stress"}));
    ASSERT_TRUE(file.field("Coordinates", 1).movesNodes);
    EXPECT_EQ(std::get<Doubles>(file.field("Coordinates", 1).values), moved);
}

TEST_F(EnSight, ComplexVariablesAreRead)
{
    folder_.write("imaginary", nodal({8, 7, 6, 5, 4, 3, 2, 1}));
    Doubles const real = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                          13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24};
    folder_.write("vectors", nodal(real));
    auto const path =
        folder_.write("in.case", "FORMAT\ntype: ensight gold\nGEOMETRY\n"
                                 "model: in.geo\nVARIABLE\n"
                                 "complex scalar per node: A temperature0 imaginary "
                                 "50\ncomplex vector per node: B vectors vectors 50\n");
    OpenedFile const file(FileKind::EnSight, path);
    EXPECT_EQ(std::get<Floats>(file.field("A").values),
              (Floats{1, 8, 2, 7, 3, 6, 4, 5, 5, 4, 6, 3, 7, 2, 8, 1}));
    Floats const byNode = {1, 9,  17, 2, 10, 18, 3, 11, 19, 4, 12, 20,
                           5, 13, 21, 6, 14, 22, 7, 15, 23, 8, 16, 24};
    EXPECT_EQ(std::get<Floats>(file.field("B_r").values), byNode);
    EXPECT_EQ(std::get<Floats>(file.field("B_i").values), byNode);
}

TEST_F(EnSight, MissingFilesAreRefused)
{
    std::filesystem::remove(folder_.path("temperature1"));
    EXPECT_NE(OpenedFile::complaint(FileKind::EnSight, writeCase()), "");
    EXPECT_NE(OpenedFile::complaint(FileKind::EnSight, writeCase("gone.geo")), "");
}

TEST_F(EnSight, VariablesWithoutValuesAreRefused)
{
    folder_.write("temperature1", "temperature\n");
    EXPECT_EQ(OpenedFile::complaint(FileKind::EnSight, writeCase()),
              "The values of the variable 'Temperature' are missing.");
}

} // namespace
