#include "OpenedFile.h"

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Exchange::Part;
using Support::Folder;
using VtkRead::FileKind;
using Floats = std::vector<float>;

std::string foam(std::string const& kind, std::string const& object, std::string const& body)
{
    return "FoamFile\n{\n    version 2.0;\n    format ascii;\n    class " + kind +
           ";\n    object " + object + ";\n}\n" + body + "\n";
}

/// Two cubes one beside the other.
class OpenFoam : public ::testing::Test
{
protected:
    OpenFoam()
    {
        std::filesystem::create_directories(mesh());
        std::filesystem::create_directories(folder_.path("case/system"));
        folder_.write("case/system/controlDict", foam("dictionary", "controlDict",
                                                      "startTime 0;\nendTime 1;\ndeltaT 0.5;\n"
                                                      "writeControl timeStep;\nwriteInterval 1;"));
        writeMesh("points", "vectorField",
                  "12((0 0 0)(1 0 0)(2 0 0)(0 1 0)(1 1 0)(2 1 0)"
                  "(0 0 1)(1 0 1)(2 0 1)(0 1 1)(1 1 1)(2 1 1))");
        writeMesh("faces", "faceList",
                  "11(4(1 4 10 7)4(0 6 9 3)4(0 1 7 6)4(3 9 10 4)4(0 3 4 1)4(6 7 10 9)"
                  "4(2 5 11 8)4(1 2 8 7)4(4 10 11 5)4(1 4 5 2)4(7 8 11 10))");
        writeMesh("owner", "labelList", "11(0 0 0 0 0 0 1 1 1 1 1)");
        writeMesh("neighbour", "labelList", "1(1)");
        writeMesh("boundary", "polyBoundaryMesh", "1(walls{type wall; nFaces 10; startFace 1;})");
        writeStep("0.5", 1);
        writeStep("1", 3);
    }

    std::filesystem::path mesh() const { return folder_.path("case/constant/polyMesh"); }

    void writeMesh(std::string const& name, std::string const& kind, std::string const& body) const
    {
        folder_.write("case/constant/polyMesh/" + name, foam(kind, name, body));
    }

    void writeStep(std::string const& time, int value) const
    {
        std::filesystem::create_directories(folder_.path("case/" + time));
        std::string const number = std::to_string(value);
        folder_.write("case/" + time + "/p",
                      foam("volScalarField", "p",
                           "dimensions [0 2 -2 0 0 0 0];\ninternalField nonuniform "
                           "List<scalar> 2(" +
                               number + " 2.5);\nboundaryField{walls{type zeroGradient;}}"));
        folder_.write("case/" + time + "/U",
                      foam("volVectorField", "U",
                           "dimensions [0 1 -1 0 0 0 0];\ninternalField uniform (" + number +
                               " 0 -1);\nboundaryField{walls{type zeroGradient;}}"));
    }

    Folder folder_;
};

TEST_F(OpenFoam, ACaseIsReadByItsFolder)
{
    OpenedFile const file(FileKind::OpenFoam, folder_.path("case"));
    ASSERT_GE(file.parts.size(), 1U);
    Part const& part = file.parts[0];
    EXPECT_EQ(part.name, "internalMesh");
    ASSERT_EQ(part.elementCount(), 2U);
    EXPECT_EQ(part.types[0]->name, "Hexahedron");
    EXPECT_EQ(part.nodeCount(), 12U);
    ASSERT_EQ(file.steps.size(), 2U);
    EXPECT_EQ(file.steps[0].time, 0.5);
    EXPECT_EQ(std::get<Floats>(file.field("p", 0).values), (Floats{1, 2.5}));
    EXPECT_EQ(std::get<Floats>(file.field("p", 1).values), (Floats{3, 2.5}));
    EXPECT_EQ(std::get<Floats>(file.field("U", 1).values), (Floats{3, 0, -1, 3, 0, -1}));
    EXPECT_EQ(file.field("U").location, Exchange::Location::Elements);
    EXPECT_EQ(file.warnings(), std::vector<std::string>());
}

TEST_F(OpenFoam, PatchesAreParts)
{
    OpenedFile const file(FileKind::OpenFoam, folder_.path("case/system/controlDict"));
    ASSERT_EQ(file.parts.size(), 2U);
    EXPECT_EQ(file.parts[1].name, "walls");
    EXPECT_EQ(file.parts[1].elementCount(), 10U);
    EXPECT_EQ(file.parts[1].types[0]->name, "Quadrangle");
}

TEST_F(OpenFoam, AMissingMeshIsRefused)
{
    std::filesystem::remove(mesh() / "faces");
    EXPECT_NE(OpenedFile::complaint(FileKind::OpenFoam, folder_.path("case")), "");
}

TEST_F(OpenFoam, CutOffFilesAreRefused)
{
    folder_.write("case/1/p", Support::contentOf(folder_.path("case/1/p")).substr(0, 200));
    EXPECT_NE(OpenedFile::complaint(FileKind::OpenFoam, folder_.path("case")), "");
}

} // namespace
