#include "EnSightEncoder.h"

#include <exchange/Error.h>
#include <read/ensight/EnSightCheck.h>

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Format = EnSightEncoder::Format;
using Words = std::vector<std::string>;
using Reals = std::vector<float>;

std::string const timeOfTwo = "TIME\ntime set: 1\nnumber of steps: 2\nfilename start number: 0\n"
                              "filename increment: 1\ntime values: 0 1\n";
std::string const fileOfTwo = "FILE\nfile set: 1\nnumber of steps: 2\n";

/// What is said before VTK reads a case of one mesh and one variable.
class EnSightFaults : public ::testing::Test
{
protected:
    EnSightEncoder beginMesh(Format format, bool isGold, std::string const& nodeIds = "off",
                             std::string const& elementIds = "off")
    {
        isGold_ = isGold;
        EnSightEncoder mesh(format, isGold);
        mesh.format();
        mesh.line("made by a test");
        mesh.line("of some parts");
        mesh.line("node id " + nodeIds);
        mesh.line("element id " + elementIds);
        return mesh;
    }

    /// Of part 1.
    static EnSightEncoder beginValues(Format format, bool isGold, std::string const& section)
    {
        EnSightEncoder values(format, isGold);
        values.line("made by a test");
        values.part(1);
        values.line(section);
        return values;
    }

    static void addPart(EnSightEncoder& mesh, int number)
    {
        mesh.part(number);
        mesh.line("a part");
    }

    static void addSquare(EnSightEncoder& mesh, int number, std::string const& kind = "block")
    {
        addPart(mesh, number);
        mesh.line(kind);
        mesh.integers({2, 2, 1}, 3);
        for (int axis = 0; axis < 3; ++axis)
            mesh.reals({0, 1, 0, 1});
        if (kind.find("iblanked") != std::string::npos)
            mesh.integers({1, 1, 1, 1}, mesh.isGold() ? 1 : 10);
    }

    static void addNodes(EnSightEncoder& mesh, std::size_t count, Reals const& values)
    {
        mesh.line("coordinates");
        mesh.integers({static_cast<int>(count)}, 1);
        if (!mesh.isGold()) {
            for (std::size_t i = 0; i < count; ++i)
                mesh.realsInLines(values, 3);
            return;
        }
        for (int axis = 0; axis < 3; ++axis)
            mesh.reals(Reals(count, values[0]));
    }

    static void addElement(EnSightEncoder& mesh, std::string const& type, std::size_t nodes)
    {
        std::vector<int> connectivity;
        for (std::size_t i = 0; i < nodes; ++i)
            connectivity.push_back(static_cast<int>(i) + 1);
        mesh.line(type);
        mesh.integers({1}, 1);
        mesh.integers(connectivity, nodes);
    }

    /// \param variable its kind, sets, name and file; none if empty
    Words said(std::string const& variable = "", std::string const& sections = "",
               std::string const& model = "mesh") const
    {
        std::string text = std::string("FORMAT\ntype: ensight") + (isGold_ ? " gold" : "") +
                           "\nGEOMETRY\nmodel: " + model + "\n";
        if (!variable.empty())
            text += "VARIABLE\n" + variable + "\n";
        auto const path = folder_.write("in.case", text + sections);
        Exchange::Report report;
        try {
            VtkRead::requireWholeFiles(path, report);
        } catch (Exchange::Error const& error) {
            return {error.what()};
        }
        return report.warnings();
    }

    static Words misread(std::string const& what)
    {
        return {"The variable 'V' has " + what + ", which VTK misreads in this format."};
    }

    void write(std::string const& name, EnSightEncoder const& file) const
    {
        folder_.write(name, file.content());
    }

    static EnSightEncoder series(EnSightEncoder const& file)
    {
        EnSightEncoder all(file.encoding(), file.isGold());
        all.append(file.content().substr(0, file.formatLength()));
        for (int step = 0; step < 2; ++step) {
            all.line("BEGIN TIME STEP");
            all.append(file.content().substr(file.formatLength()));
            all.line("END TIME STEP");
        }
        return all;
    }

    Support::Folder folder_;
    bool isGold_ = true;
};

TEST_F(EnSightFaults, FortranFilesOfEnSight6AreRefused)
{
    EnSightEncoder mesh = beginMesh(Format::Fortran, false);
    addSquare(mesh, 1);
    write("mesh", mesh);
    EXPECT_EQ(said(), Words{"VTK can't read Fortran binary files of EnSight 6."});
}

TEST_F(EnSightFaults, FortranFilesOfSeveralStepsAreRefused)
{
    EnSightEncoder mesh = beginMesh(Format::Fortran, true);
    addSquare(mesh, 1);
    write("mesh", mesh);
    EXPECT_EQ(said(), Words());
    write("mesh", series(mesh));
    EXPECT_EQ(said("", timeOfTwo + fileOfTwo, "1 1 mesh"),
              Words{"VTK can't read Fortran binary files with several steps in a file."});
}

TEST_F(EnSightFaults, BinaryFilesOfEnSight6OfSeveralStepsAreRefused)
{
    for (Format const format : {Format::Text, Format::C}) {
        EnSightEncoder mesh = beginMesh(format, false);
        addNodes(mesh, 13, {1, 2, 3});
        addSquare(mesh, 1);
        addPart(mesh, 2);
        addElement(mesh, "bar2", 2);
        write("mesh", series(mesh));
        EXPECT_EQ(said("", timeOfTwo + fileOfTwo, "1 1 mesh"),
                  format == Format::Text ? Words()
                                         : Words{"VTK can't read binary files of EnSight 6 with "
                                                 "several steps in a file."});
        write("mesh", mesh);
        EXPECT_EQ(said(), Words());
    }
}

TEST_F(EnSightFaults, FilesWithoutStepsInACaseWithFileSetsAreRefused)
{
    std::string const scalar = "scalar per node: 1 1 V values";
    for (Format const format : {Format::Text, Format::C}) {
        EnSightEncoder mesh = beginMesh(format, true);
        addSquare(mesh, 1);
        EnSightEncoder values = beginValues(format, true, "block");
        values.reals({1, 2, 3, 4});
        write("mesh", series(mesh));
        write("values", series(values));
        EXPECT_EQ(said(scalar, timeOfTwo + fileOfTwo, "1 1 mesh"), Words());
        write("values", values);
        EXPECT_EQ(said(scalar, timeOfTwo + fileOfTwo, "1 1 mesh"),
                  Words{"The case has a FILE section, but the file '" +
                        folder_.path("values").string() +
                        "' does not begin with a step, which VTK can't read."});
        write("mesh", mesh);
        EXPECT_EQ(said(scalar, timeOfTwo + fileOfTwo),
                  Words{"The case has a FILE section, but the file '" +
                        folder_.path("mesh").string() +
                        "' does not begin with a step, which VTK can't read."});
    }
}

TEST_F(EnSightFaults, VariablesWithoutFileSetInACaseWithFileSetsAreRefused)
{
    EnSightEncoder mesh = beginMesh(Format::Text, true);
    addSquare(mesh, 1);
    write("mesh", series(mesh));
    EXPECT_EQ(said("scalar per node: 1 V values", timeOfTwo + fileOfTwo, "1 1 mesh"),
              Words{"The case has a FILE section, but the variable 'V' has no file set, which VTK "
                    "can't read."});
}

TEST_F(EnSightFaults, ComplexVariablesNeedOthersOfTheSameTimeSet)
{
    Words const refused = {
        "VTK misreads complex variables of a case with a TIME section, unless as "
        "many others have the same time set and file set."};
    EnSightEncoder mesh = beginMesh(Format::Text, true);
    addSquare(mesh, 1);
    write("mesh", mesh);
    EnSightEncoder values = beginValues(Format::Text, true, "block");
    values.reals({1, 2, 3, 4});
    for (char const* const name :
         {"real0", "real1", "imaginary0", "imaginary1", "other0", "other1"})
        write(name, values);
    std::string const constant = "complex scalar per node: V real0 imaginary0 50";
    std::string const changing = "complex scalar per node: 1 V real* imaginary* 50";
    std::string const other = "\nscalar per node: 1 S other*";
    EXPECT_EQ(said(constant), Words());
    EXPECT_EQ(said(constant, timeOfTwo), refused);
    EXPECT_EQ(said(changing, timeOfTwo), refused);
    EXPECT_EQ(said(changing + other, timeOfTwo), Words());
    EXPECT_EQ(said(constant + other, timeOfTwo), refused);
    EXPECT_EQ(said(changing + "\n" + changing + other, timeOfTwo), refused);
}

TEST_F(EnSightFaults, MeasuredPointsInSeveralStepsOfABinaryFileAreRefused)
{
    for (Format const format : {Format::Text, Format::C}) {
        EnSightEncoder mesh = beginMesh(format, true);
        addSquare(mesh, 1);
        EnSightEncoder points(format, false);
        points.format();
        points.line("made by a test");
        points.line("particle coordinates");
        points.integers({2}, 1);
        points.rowsWithIds({1, 2}, {{0, 0, 0}, {1, 1, 1}});
        write("mesh", series(mesh));
        write("points", series(points));
        EXPECT_EQ(said("", timeOfTwo + fileOfTwo, "1 1 mesh\nmeasured: 1 1 points"),
                  format == Format::Text ? Words()
                                         : Words{"VTK can't read measured points in binary files "
                                                 "with several steps in a file."});
    }
}

TEST_F(EnSightFaults, TetrahedraNamedByIdsInBinaryFilesOfEnSight6AreRefused)
{
    for (int const first : {1, 11}) {
        EnSightEncoder mesh = beginMesh(Format::C, false, "given");
        mesh.line("coordinates");
        mesh.integers({4}, 1);
        mesh.rowsWithIds({first, first + 1, first + 2, first + 3},
                         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
        addPart(mesh, 1);
        addElement(mesh, "tetra4", 4);
        write("mesh", mesh);
        EXPECT_EQ(said(), first == 1
                              ? Words()
                              : Words{"VTK misreads the nodes of 'tetra4' elements in binary files "
                                      "of EnSight 6 with node ids."});
    }
}

TEST_F(EnSightFaults, PointsWithoutIdsInTextsWithNodeIdsAreRefused)
{
    for (std::string const ids : {"off", "given"}) {
        EnSightEncoder mesh = beginMesh(Format::Text, true, ids);
        addPart(mesh, 1);
        mesh.line("coordinates");
        mesh.integers({2}, 1);
        if (ids == "given")
            mesh.integers({1, 2}, 1);
        mesh.reals({0, 1, 0, 1, 0, 1});
        addElement(mesh, "point", 1);
        write("mesh", mesh);
        EXPECT_EQ(said(), ids == "off" ? Words()
                                       : Words{"VTK misreads 'point' elements without ids in texts "
                                               "with node ids."});
    }
}

TEST_F(EnSightFaults, BlankedCurvilinearBlocksAreRefused)
{
    EnSightEncoder mesh = beginMesh(Format::C, true);
    addSquare(mesh, 3, "block curvilinear iblanked");
    write("mesh", mesh);
    EXPECT_EQ(said(), Words{"Part 3 is a blanked curvilinear block, which VTK misreads."});
    mesh = beginMesh(Format::C, true);
    addSquare(mesh, 3, "block iblanked");
    addSquare(mesh, 4, "block curvilinear");
    write("mesh", mesh);
    EXPECT_EQ(said(), Words());
}

TEST_F(EnSightFaults, BlankedBlocksOfSeveralLinesOfMarksAreRefusedInTextsOfEnSight6)
{
    for (Format const format : {Format::Text, Format::C})
        for (int const length : {10, 11}) {
            auto const count = static_cast<std::size_t>(length);
            EnSightEncoder mesh = beginMesh(format, false);
            addNodes(mesh, 0, {});
            addPart(mesh, 1);
            mesh.line("block iblanked");
            mesh.integers({length, 1, 1}, 3);
            for (int axis = 0; axis < 3; ++axis)
                mesh.reals(Reals(count, 1));
            mesh.integers(std::vector<int>(count, 1), 10);
            write("mesh", mesh);
            EXPECT_EQ(said(), format == Format::C || length == 10
                                  ? Words()
                                  : Words{"Part 1 is a blanked block of more than 10 nodes, which "
                                          "VTK misreads in texts of EnSight 6."});
        }
}

TEST_F(EnSightFaults, BlanksOfTextsThatAreNotLeftOutAreTold)
{
    EnSightEncoder mesh = beginMesh(Format::Text, true);
    addPart(mesh, 2);
    mesh.line("block rectilinear iblanked");
    mesh.integers({2, 2, 1}, 3);
    mesh.reals({0, 1, 0, 1, 0});
    mesh.integers({1, 1, 0, 1}, 1);
    write("mesh", mesh);
    EXPECT_EQ(said(), Words{"VTK does not leave out what is blanked in part 2."});
}

TEST_F(EnSightFaults, ConstantsAreToldToBeLost)
{
    EnSightEncoder mesh = beginMesh(Format::Text, true);
    addSquare(mesh, 1);
    write("mesh", mesh);
    EXPECT_EQ(said("constant per case: density 7.5"),
              Words{"VTK leaves out the constant 'density' of the case."});
    EXPECT_EQ(said("constant per case: 1 density 7.5 8.5", timeOfTwo),
              Words{"VTK leaves out the constant 'density' of the case."});
}

TEST_F(EnSightFaults, MidSideNodesOfEnSight6AreToldToBeLost)
{
    for (Format const format : {Format::Text, Format::C}) {
        EnSightEncoder mesh = beginMesh(format, false);
        addNodes(mesh, 10, {0, 1, 2});
        addPart(mesh, 1);
        addElement(mesh, "tetra10", 10);
        addPart(mesh, 2);
        addElement(mesh, "tetra10", 10);
        addElement(mesh, "tetra4", 4);
        write("mesh", mesh);
        EXPECT_EQ(said(),
                  Words{"VTK leaves out the mid-side nodes of 2 'tetra10' elements of EnSight 6."});
    }
}

class EnSightFaultsOfOldBlocks : public EnSightFaults, public ::testing::WithParamInterface<Format>
{
protected:
    EnSightEncoder begin() { return beginMesh(GetParam(), false); }

    void writeValues(std::vector<std::vector<Reals>> const& ofParts, Reals const& shared = {}) const
    {
        EnSightEncoder values(GetParam(), false);
        values.line("values");
        values.reals(shared);
        for (std::size_t i = 0; i < ofParts.size(); ++i) {
            values.part(static_cast<int>(i) + 1);
            values.line("block");
            for (Reals const& component : ofParts[i])
                values.reals(component);
        }
        write("values", values);
    }
};

TEST_P(EnSightFaultsOfOldBlocks, ScalarsOfOneBlockAreTaken)
{
    EnSightEncoder mesh = begin();
    addNodes(mesh, 0, {});
    addSquare(mesh, 1);
    write("mesh", mesh);
    writeValues({{{1, 2, 3, 4}}});
    EXPECT_EQ(said("scalar per node: V values"), Words());
    writeValues({{{1}}});
    EXPECT_EQ(said("scalar per element: V values"), Words());
}

TEST_P(EnSightFaultsOfOldBlocks, ComponentsOfBlocksAreRefused)
{
    EnSightEncoder mesh = begin();
    addNodes(mesh, 0, {});
    addSquare(mesh, 1);
    write("mesh", mesh);
    writeValues({{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}}});
    EXPECT_EQ(said("vector per node: V values"), misread("values on structured parts"));
    writeValues({{{1}, {2}, {3}}});
    EXPECT_EQ(said("vector per element: V values"), misread("values on structured parts"));
}

TEST_P(EnSightFaultsOfOldBlocks, ScalarsOfSeveralBlocksAreRefusedInTexts)
{
    EnSightEncoder mesh = begin();
    addNodes(mesh, 0, {});
    addSquare(mesh, 1);
    addSquare(mesh, 2);
    write("mesh", mesh);
    Words const expected =
        GetParam() == Format::Text ? misread("values on structured parts") : Words();
    writeValues({{{1, 2, 3, 4}}, {{5, 6, 7, 8}}});
    EXPECT_EQ(said("scalar per node: V values"), expected);
    writeValues({{{1}}, {{2}}});
    EXPECT_EQ(said("scalar per element: V values"), expected);
}

TEST_P(EnSightFaultsOfOldBlocks, ScalarsOfNodesBesideSharedOnesAreRefusedInBinaryFiles)
{
    EnSightEncoder mesh = begin();
    addNodes(mesh, 2, {1, 2, 3});
    addSquare(mesh, 1);
    addPart(mesh, 2);
    addElement(mesh, "bar2", 2);
    write("mesh", mesh);
    writeValues({{{1, 2, 3, 4}}}, {5, 6});
    EXPECT_EQ(said("scalar per node: V values"),
              GetParam() == Format::Text ? Words() : misread("values on structured parts"));
}

TEST_P(EnSightFaultsOfOldBlocks, ScalarsOfElementsBehindABlockAreRefusedInTexts)
{
    EnSightEncoder values = beginValues(GetParam(), false, "block");
    values.reals({1});
    values.part(2);
    values.line("bar2");
    values.reals({2});
    write("values", values);
    EnSightEncoder mesh = begin();
    addNodes(mesh, 2, {1, 2, 3});
    addSquare(mesh, 1);
    addPart(mesh, 2);
    addElement(mesh, "bar2", 2);
    write("mesh", mesh);
    EXPECT_EQ(said("scalar per element: V values"),
              GetParam() == Format::Text ? misread("values on structured parts") : Words());
}

INSTANTIATE_TEST_SUITE_P(All, EnSightFaultsOfOldBlocks, ::testing::Values(Format::Text, Format::C),
                         [](auto const& one) { return EnSightEncoder::nameOf(one.param); });

TEST_F(EnSightFaults, ComponentsPerElementOfBlocksInTextsAreRefused)
{
    for (Format const format : {Format::Text, Format::C}) {
        EnSightEncoder mesh = beginMesh(format, true);
        addSquare(mesh, 1);
        write("mesh", mesh);
        EnSightEncoder values = beginValues(format, true, "block");
        values.reals({1});
        write("scalar", values);
        values.reals({2});
        values.reals({3});
        write("vector", values);
        EXPECT_EQ(said("scalar per element: V scalar"), Words());
        EXPECT_EQ(said("vector per element: V vector"),
                  format == Format::Text ? misread("values on structured parts") : Words());
    }
}

TEST_F(EnSightFaults, QuadraticWedgesInSeveralStepsOfTextsAreRefused)
{
    for (Format const format : {Format::Text, Format::C}) {
        EnSightEncoder mesh = beginMesh(format, true);
        addPart(mesh, 1);
        addNodes(mesh, 15, {1});
        addElement(mesh, "penta15", 15);
        write("mesh", mesh);
        EnSightEncoder values = beginValues(format, true, "penta15");
        values.reals({1});
        write("values0", values);
        write("values1", values);
        EXPECT_EQ(said("scalar per element: V values0"), Words());
        EXPECT_EQ(said("scalar per element: 1 V values*", timeOfTwo),
                  format == Format::Text ? misread("values of 'penta15' elements in several steps")
                                         : Words());
    }
}

TEST_F(EnSightFaults, UndefinedValuesInSeveralStepsOfABinaryFileAreRefused)
{
    for (Format const format : {Format::Text, Format::C})
        for (std::string const kind : {"block", "block undef", "block partial"}) {
            EnSightEncoder mesh = beginMesh(format, true);
            addSquare(mesh, 1);
            write("mesh", series(mesh));
            EnSightEncoder values = beginValues(format, true, kind);
            if (kind == "block undef")
                values.reals({-1});
            if (kind == "block partial")
                values.integers({4, 1, 2, 3, 4}, 1);
            values.reals({1, 2, 3, 4});
            write("values", series(values));
            bool const isTaken = format == Format::Text || kind == "block";
            EXPECT_EQ(said("scalar per node: 1 1 V values", timeOfTwo + fileOfTwo, "1 1 mesh"),
                      isTaken ? Words() : misread("undefined values and several steps in a file"))
                << EnSightEncoder::nameOf(format) << " " << kind;
        }
}

} // namespace
