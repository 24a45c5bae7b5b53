#include "OpenedFile.h"

#include "support/Folder.h"
#include "support/VtkGrids.h"

#include <vtkFloatArray.h>
#include <vtkUnstructuredGridWriter.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Support;
using VtkRead::FileKind;

vtkSmartPointer<vtkUnstructuredGrid> gridWithField()
{
    auto const grid = gridOf(4, {{VTK_TRIANGLE, {0, 1, 2}}, {VTK_TRIANGLE, {0, 2, 3}}});
    grid->GetPointData()->AddArray(arrayOf<vtkFloatArray>("P", 1, {1, 2, 3, 4}));
    return grid;
}

enum class Mode
{
    Ascii,
    Binary,
    Appended
};

std::string xmlText(Folder const& folder, Mode mode)
{
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    std::filesystem::path const path = folder.path("whole.vtu");
    writer->SetFileName(path.c_str());
    writer->SetInputDataObject(gridWithField());
    if (mode == Mode::Ascii)
        writer->SetDataModeToAscii();
    else if (mode == Mode::Binary)
        writer->SetDataModeToBinary();
    writer->Write();
    return contentOf(path);
}

std::string replaced(std::string text, std::string const& from, std::string const& to)
{
    auto const place = text.find(from);
    if (place == std::string::npos)
        throw std::runtime_error("nothing to replace");
    return text.replace(place, from.size(), to);
}

class DamagedFile : public ::testing::Test
{
protected:
    /// Reads the file and returns the message of the failure. The test fails if the reader prints
    /// anything.
    std::string complaintAbout(FileKind kind, std::filesystem::path const& path) const
    {
        ::testing::internal::CaptureStderr();
        ::testing::internal::CaptureStdout();
        std::string complaint = OpenedFile::complaint(kind, path);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        return complaint;
    }

    std::string complaintAboutXml(std::string const& text) const
    {
        return complaintAbout(FileKind::Xml, folder_.write("in.vtu", text));
    }

    /// Expects a complaint about the text when it is cut off before its first `needed` bytes. What
    /// stands behind them can be missing without a loss.
    void expectComplaintsAboutCuts(std::string const& text, std::size_t needed) const
    {
        for (std::size_t length = 0; length < needed; length += 7)
            EXPECT_NE(complaintAboutXml(text.substr(0, length)), "") << length;
    }

    Folder folder_;
};

TEST_F(DamagedFile, FilesOfAllModesAreSoundBeforeTheyAreDamaged)
{
    for (Mode const mode : {Mode::Ascii, Mode::Binary, Mode::Appended})
        EXPECT_EQ(complaintAboutXml(xmlText(folder_, mode)), "");
}

TEST_F(DamagedFile, CutOffFilesAreRefused)
{
    for (Mode const mode : {Mode::Ascii, Mode::Binary, Mode::Appended}) {
        std::string const text = xmlText(folder_, mode);
        std::size_t const needed =
            mode == Mode::Appended ? text.rfind("</AppendedData>") - 8 : text.rfind("</VTKFile>");
        expectComplaintsAboutCuts(text, needed);
    }
}

TEST_F(DamagedFile, DataThatDoesNotInflateIsRefused)
{
    std::string text = xmlText(folder_, Mode::Appended);
    std::size_t const data = text.find('_', text.find("<AppendedData")) + 30;
    text[data] = text[data] == 'A' ? 'B' : 'A';
    text[data + 1] = text[data + 1] == 'A' ? 'B' : 'A';
    EXPECT_NE(complaintAboutXml(text), "");
}

TEST_F(DamagedFile, TextThatIsNoBase64IsRefused)
{
    std::string text = xmlText(folder_, Mode::Binary);
    std::size_t const data = text.find('\n', text.find("format=\"binary\"")) + 20;
    text.replace(data, 4, "!!!!");
    EXPECT_NE(complaintAboutXml(text), "");
}

TEST_F(DamagedFile, ArraysThatAreTooShortAreRefused)
{
    std::string const text = xmlText(folder_, Mode::Ascii);
    EXPECT_NE(complaintAboutXml(replaced(text, "1 2 3 4", "1 2 3")), "");
    EXPECT_NE(complaintAboutXml(replaced(text, "NumberOfPoints=\"4\"", "NumberOfPoints=\"5\"")),
              "");
    EXPECT_NE(complaintAboutXml(replaced(text, "NumberOfCells=\"2\"", "NumberOfCells=\"3\"")), "");
}

TEST_F(DamagedFile, PointsThatAreNotThereAreRefused)
{
    std::string const text = xmlText(folder_, Mode::Ascii);
    EXPECT_EQ(complaintAboutXml(replaced(text, "0 1 2 0 2 3", "0 1 2 0 2 4")),
              "A cell of 'Mesh' has a point that is not there.");
    EXPECT_EQ(complaintAboutXml(replaced(text, "0 1 2 0 2 3", "0 1 2 0 2 -1")),
              "A cell of 'Mesh' has a point that is not there.");
}

TEST_F(DamagedFile, CellsOfTheWrongNumberOfPointsAreRefused)
{
    std::string const text = xmlText(folder_, Mode::Ascii);
    EXPECT_EQ(complaintAboutXml(replaced(text, "5 5", "5 9")),
              "Cell 1 of 'Mesh' has 3 points, too many or too few for its type.");
}

TEST_F(DamagedFile, ForeignFilesAreRefusedByEveryReader)
{
    std::filesystem::path const path = folder_.write("in.txt", "This is no result.\n");
    for (FileKind const kind : {FileKind::Xml, FileKind::Collection, FileKind::Legacy})
        EXPECT_NE(complaintAbout(kind, path), "") << static_cast<int>(kind);
}

TEST_F(DamagedFile, MissingPiecesAreRefused)
{
    writeWith<vtkXMLUnstructuredGridWriter>(folder_.path("in_0.vtu"), gridWithField());
    std::filesystem::path const path = folder_.write(
        "in.pvtu", "<VTKFile type=\"PUnstructuredGrid\" version=\"1.0\">"
                   "<PUnstructuredGrid GhostLevel=\"0\">"
                   "<PPointData><PDataArray type=\"Float32\" Name=\"P\"/></PPointData><PPoints>"
                   "<PDataArray type=\"Float64\" Name=\"Points\" NumberOfComponents=\"3\"/>"
                   "</PPoints><Piece Source=\"in_0.vtu\"/></PUnstructuredGrid></VTKFile>");
    EXPECT_EQ(complaintAbout(FileKind::Xml, path), "");
    std::filesystem::remove(folder_.path("in_0.vtu"));
    EXPECT_NE(complaintAbout(FileKind::Xml, path), "");
}

TEST_F(DamagedFile, MissingFilesOfASeriesAreNamed)
{
    std::filesystem::path const path = folder_.write(
        "in.pvd", "<VTKFile type=\"Collection\"><Collection>"
                  "<DataSet timestep=\"1\" file=\"gone.vtu\"/></Collection></VTKFile>");
    EXPECT_EQ(complaintAbout(FileKind::Collection, path),
              "There is no file '" + folder_.path("gone.vtu").string() + "'.");
}

TEST_F(DamagedFile, ASeriesWithoutFilesIsRefused)
{
    EXPECT_EQ(complaintAbout(FileKind::Collection,
                             folder_.write("in.pvd", "<VTKFile type=\"Collection\"><Collection/>"
                                                     "</VTKFile>")),
              "The series names no files.");
    EXPECT_EQ(complaintAbout(FileKind::Collection,
                             folder_.write("in.pvd", "<VTKFile type=\"Collection\"></VTKFile>")),
              "The file is no sound list of a series.");
}

TEST_F(DamagedFile, LegacyFilesThatEndInTheirMeshAreRefused)
{
    std::filesystem::path const whole =
        writeWith<vtkUnstructuredGridWriter>(folder_.path("whole.vtk"), gridWithField());
    std::string const text = contentOf(whole);
    EXPECT_EQ(complaintAbout(FileKind::Legacy, whole), "");
    std::size_t const last = text.find_last_not_of("\n ", text.find("POINT_DATA") - 1);
    for (std::size_t length = 0; length <= last; length += 7)
        EXPECT_NE(complaintAbout(FileKind::Legacy, folder_.write("in.vtk", text.substr(0, length))),
                  "")
            << length;
}

} // namespace
