#include "OpenedFile.h"

#include "support/Folder.h"
#include "support/VtkGrids.h"

#include <vtkBitArray.h>
#include <vtkCharArray.h>
#include <vtkCompositeDataSet.h>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkIntArray.h>
#include <vtkLongLongArray.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkPolyData.h>
#include <vtkShortArray.h>
#include <vtkSignedCharArray.h>
#include <vtkStringArray.h>
#include <vtkTable.h>
#include <vtkTableWriter.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnsignedIntArray.h>
#include <vtkUnsignedLongLongArray.h>
#include <vtkUnsignedShortArray.h>
#include <vtkUnstructuredGridWriter.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLMultiBlockDataWriter.h>
#include <vtkXMLPolyDataWriter.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace Support;
using Exchange::Field;
using Exchange::Location;
using Exchange::Part;
using VtkRead::FileKind;
using Doubles = std::vector<double>;
using Integers = std::vector<std::int64_t>;
using Names = std::vector<std::string>;
using Rows = std::vector<std::uint32_t>;

vtkSmartPointer<vtkUnstructuredGrid> twoTriangles()
{
    return gridOf(4, {{VTK_TRIANGLE, {0, 1, 2}}, {VTK_TRIANGLE, {0, 2, 3}}});
}

constexpr char const* twoSteps = "<DataSet timestep=\"1\" file=\"0.vtu\"/>"
                                 "<DataSet timestep=\"2\" file=\"1.vtu\"/>";

class Source : public ::testing::Test
{
protected:
    std::filesystem::path write(vtkUnstructuredGrid* grid, std::string const& name = "in.vtu") const
    {
        return writeWith<vtkXMLUnstructuredGridWriter>(folder_.path(name), grid);
    }

    OpenedFile opened(vtkUnstructuredGrid* grid, bool skipUnknown = false) const
    {
        return OpenedFile(FileKind::Xml, write(grid), skipUnknown);
    }

    OpenedFile openedSeries(std::string const& entries) const
    {
        return OpenedFile(FileKind::Collection, writeSeries(entries));
    }

    std::filesystem::path writeSeries(std::string const& entries) const
    {
        return folder_.write("in.pvd", "<?xml version=\"1.0\"?><VTKFile type=\"Collection\">"
                                       "<Collection>" +
                                           entries + "</Collection></VTKFile>");
    }

    Folder folder_;
};

TEST_F(Source, AMeshIsReadAsItIs)
{
    OpenedFile const file = opened(twoTriangles());
    ASSERT_EQ(file.parts.size(), 1U);
    Part const& part = file.parts[0];
    EXPECT_EQ(part.name, "Mesh");
    EXPECT_EQ(part.coordinates,
              (Doubles{0, 0, 1, 0.1, 1 / 7.0, 0.5, 0.2, 4 / 7.0, 1 / 3.0, 0.1 * 3, 9 / 7.0, 0.25}));
    EXPECT_EQ(part.connectivity, (Rows{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(part.offsets, (std::vector<std::uint64_t>{0, 3, 6}));
    EXPECT_EQ(part.types[1], Exchange::ElementType::find("Triangle"));
    EXPECT_TRUE(part.nodeIds.empty());
    EXPECT_TRUE(part.elementIds.empty());
}

template <typename Array>
void addPair(vtkUnstructuredGrid& grid, std::string const& name, typename Array::ValueType a,
             typename Array::ValueType b)
{
    grid.GetCellData()->AddArray(arrayOf<Array>(name, 1, {a, b}));
}

TEST_F(Source, NumbersOfEveryTypeKeepTheirValues)
{
    auto const grid = twoTriangles();
    addPair<vtkSignedCharArray>(*grid, "int8", -128, 127);
    addPair<vtkCharArray>(*grid, "char", 1, 2);
    addPair<vtkUnsignedCharArray>(*grid, "uint8", 0, 255);
    addPair<vtkShortArray>(*grid, "int16", -32768, 32767);
    addPair<vtkUnsignedShortArray>(*grid, "uint16", 0, 65535);
    addPair<vtkIntArray>(*grid, "int32", std::numeric_limits<int>::min(), 7);
    addPair<vtkUnsignedIntArray>(*grid, "uint32", 0, 4294967295U);
    addPair<vtkLongLongArray>(*grid, "int64", std::numeric_limits<long long>::min(),
                              std::numeric_limits<long long>::max());
    addPair<vtkUnsignedLongLongArray>(*grid, "uint64", 1, 9223372036854775807U);
    addPair<vtkIdTypeArray>(*grid, "id", -1, 5);
    OpenedFile const file = opened(grid);
    auto const integers = [&](std::string const& name) {
        return std::get<Integers>(file.field(name).values);
    };
    EXPECT_EQ(integers("int8"), (Integers{-128, 127}));
    EXPECT_EQ(integers("char"), (Integers{1, 2}));
    EXPECT_EQ(integers("uint8"), (Integers{0, 255}));
    EXPECT_EQ(integers("int16"), (Integers{-32768, 32767}));
    EXPECT_EQ(integers("uint16"), (Integers{0, 65535}));
    EXPECT_EQ(integers("int32"), (Integers{std::numeric_limits<int>::min(), 7}));
    EXPECT_EQ(integers("uint32"), (Integers{0, 4294967295}));
    EXPECT_EQ(integers("int64"), (Integers{std::numeric_limits<std::int64_t>::min(),
                                           std::numeric_limits<std::int64_t>::max()}));
    EXPECT_EQ(integers("uint64"), (Integers{1, std::numeric_limits<std::int64_t>::max()}));
    EXPECT_EQ(integers("id"), (Integers{-1, 5}));
    EXPECT_EQ(file.field("id").location, Location::Elements);
}

TEST_F(Source, FloatsStayFloatsAndDoublesDoubles)
{
    auto const grid = twoTriangles();
    addPair<vtkFloatArray>(*grid, "float", 0.1F, 1e38F);
    addPair<vtkDoubleArray>(*grid, "double", 0.1, 1e300);
    OpenedFile const file = opened(grid);
    EXPECT_EQ(std::get<std::vector<float>>(file.field("float").values),
              (std::vector<float>{0.1F, 1e38F}));
    EXPECT_EQ(std::get<Doubles>(file.field("double").values), (Doubles{0.1, 1e300}));
}

TEST_F(Source, UnsignedNumbersAboveTheSignedOnesBecomeDoubles)
{
    auto const grid = twoTriangles();
    addPair<vtkUnsignedLongLongArray>(*grid, "big", 1, 18446744073709551615U);
    OpenedFile const file = opened(grid);
    EXPECT_EQ(std::get<Doubles>(file.field("big").values), (Doubles{1, 18446744073709551615.0}));
}

TEST_F(Source, BitsAreOnesAndZeros)
{
    auto const grid = twoTriangles();
    vtkNew<vtkBitArray> bits;
    bits->SetName("bits");
    bits->InsertNextValue(1);
    bits->InsertNextValue(0);
    grid->GetCellData()->AddArray(bits);
    OpenedFile const file(FileKind::Legacy,
                          writeWith<vtkUnstructuredGridWriter>(folder_.path("in.vtk"), grid));
    EXPECT_EQ(std::get<Integers>(file.field("bits").values), (Integers{1, 0}));
}

TEST_F(Source, ComponentsAndTheirNamesAreKept)
{
    auto const grid = twoTriangles();
    auto const array = arrayOf<vtkFloatArray>("pair", 2, {1, 2, 3, 4, 5, 6, 7, 8});
    array->SetComponentName(0, "Real");
    array->SetComponentName(1, "Imaginary");
    grid->GetPointData()->AddArray(array);
    OpenedFile const file = opened(grid);
    EXPECT_EQ(file.field("pair").components, 2U);
    EXPECT_EQ(file.field("pair").location, Location::Nodes);
    EXPECT_EQ(file.field("pair").componentNames, (Names{"Real", "Imaginary"}));
}

TEST_F(Source, TextsAreLeftOutWithAWarning)
{
    auto const grid = twoTriangles();
    vtkNew<vtkStringArray> texts;
    texts->SetName("names");
    texts->InsertNextValue("a");
    texts->InsertNextValue("b");
    grid->GetCellData()->AddArray(texts);
    OpenedFile const file = opened(grid);
    EXPECT_EQ(file.fieldNames(), Names());
    EXPECT_EQ(file.warnings(), (Names{"The array 'names' holds no numbers and was left out."}));
}

TEST_F(Source, ArraysThatAModelsIdsHaveTheNameOfAreIds)
{
    auto const grid = twoTriangles();
    grid->GetPointData()->AddArray(arrayOf<vtkUnsignedIntArray>("Node Ids", 1, {9, 8, 7, 6}));
    addPair<vtkUnsignedIntArray>(*grid, "Element IDs", 21, 20);
    OpenedFile const file = opened(grid);
    EXPECT_EQ(file.parts[0].nodeIds, (Integers{9, 8, 7, 6}));
    EXPECT_EQ(file.parts[0].elementIds, (Integers{21, 20}));
    EXPECT_EQ(file.fieldNames(), Names());
}

TEST_F(Source, GlobalIdsAreIds)
{
    auto const grid = twoTriangles();
    grid->GetPointData()->SetGlobalIds(arrayOf<vtkIdTypeArray>("G", 1, {5, 6, 7, 8}));
    grid->GetCellData()->SetPedigreeIds(arrayOf<vtkIdTypeArray>("P", 1, {3, 4}));
    OpenedFile const file = opened(grid);
    EXPECT_EQ(file.parts[0].nodeIds, (Integers{5, 6, 7, 8}));
    EXPECT_EQ(file.parts[0].elementIds, (Integers{3, 4}));
    EXPECT_EQ(file.fieldNames(), Names());
}

TEST_F(Source, CellsAndPointsOfAnotherPieceAreLeftOutWithTheirValues)
{
    auto const grid = gridOf(
        5, {{VTK_TRIANGLE, {0, 1, 2}}, {VTK_TRIANGLE, {1, 2, 4}}, {VTK_TRIANGLE, {0, 2, 3}}});
    grid->GetCellData()->AddArray(
        arrayOf<vtkUnsignedCharArray>(vtkDataSetAttributes::GhostArrayName(), 1, {0, 1, 0}));
    // The second point is used by a cell that stays, the last one is not.
    grid->GetPointData()->AddArray(
        arrayOf<vtkUnsignedCharArray>(vtkDataSetAttributes::GhostArrayName(), 1, {0, 1, 0, 0, 1}));
    grid->GetCellData()->AddArray(arrayOf<vtkFloatArray>("C", 1, {1, 2, 3}));
    grid->GetPointData()->AddArray(arrayOf<vtkFloatArray>("P", 1, {1, 2, 3, 4, 5}));
    OpenedFile const file = opened(grid);
    EXPECT_EQ(file.parts[0].nodeCount(), 4U);
    EXPECT_EQ(file.parts[0].connectivity, (Rows{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(file.fieldNames(), (Names{"P", "C"}));
    EXPECT_EQ(std::get<std::vector<float>>(file.field("C").values), (std::vector<float>{1, 3}));
    EXPECT_EQ(std::get<std::vector<float>>(file.field("P").values),
              (std::vector<float>{1, 2, 3, 4}));
}

TEST_F(Source, CellsThatAModelCannotHoldAreRefusedOrLeftOutWithTheirValues)
{
    auto const grid = gridOf(8, {cellOver(VTK_TETRA, 4), cellOver(VTK_CONVEX_POINT_SET, 7)});
    addPair<vtkIntArray>(*grid, "C", 5, 6);
    std::filesystem::path const path = write(grid);
    EXPECT_EQ(OpenedFile::complaint(FileKind::Xml, path),
              "A model cannot hold 1 element of the type convex point set; --skip-unknown leaves "
              "them out.");
    OpenedFile const file(FileKind::Xml, path, true);
    EXPECT_EQ(file.parts[0].elementCount(), 1U);
    EXPECT_EQ(file.parts[0].nodeCount(), 8U);
    EXPECT_EQ(std::get<Integers>(file.field("C").values), (Integers{5}));
    EXPECT_EQ(file.warnings(), (Names{"1 element of the type convex point set was left out."}));
}

TEST_F(Source, ImagesAndPolygonsAreMeshesToo)
{
    vtkNew<vtkImageData> image;
    image->SetDimensions(2, 2, 2);
    image->SetSpacing(1, 2, 3);
    OpenedFile const file(FileKind::Xml,
                          writeWith<vtkXMLImageDataWriter>(folder_.path("in.vti"), image));
    EXPECT_EQ(file.parts[0].connectivity, (Rows{0, 1, 3, 2, 4, 5, 7, 6}));
    EXPECT_EQ(file.parts[0].coordinates[23], 3);

    vtkNew<vtkPolyData> polygons;
    polygons->SetPoints(somePoints(6));
    polygons->AllocateEstimate(4, 5);
    vtkIdType const points[] = {0, 1, 2, 3, 4};
    polygons->InsertNextCell(VTK_POLYGON, 5, points);
    polygons->InsertNextCell(VTK_LINE, 2, points);
    OpenedFile const lines(FileKind::Xml,
                           writeWith<vtkXMLPolyDataWriter>(folder_.path("in.vtp"), polygons));
    ASSERT_EQ(lines.parts[0].elementCount(), 2U);
    EXPECT_EQ(lines.parts[0].types[0]->name, "Line");
    EXPECT_EQ(lines.parts[0].types[1]->name, "Polygon");
}

TEST_F(Source, BlocksAreParts)
{
    vtkNew<vtkMultiBlockDataSet> inner;
    inner->SetBlock(0, twoTriangles());
    vtkNew<vtkMultiBlockDataSet> outer;
    outer->SetBlock(0, gridOf(3, {cellOver(VTK_TRIANGLE, 3)}));
    outer->GetMetaData(0U)->Set(vtkCompositeDataSet::NAME(), "Bär / links");
    outer->SetBlock(1, inner);
    outer->GetMetaData(1U)->Set(vtkCompositeDataSet::NAME(), "inner group");
    std::filesystem::path const path =
        writeWith<vtkXMLMultiBlockDataWriter>(folder_.path("in.vtm"), outer);
    // The writer itself leaves empty blocks out.
    std::string text = contentOf(path);
    text.insert(text.find("</Block>"), "<DataSet index=\"1\" name=\"leer\"/>");
    OpenedFile const file(FileKind::Xml, folder_.write("in.vtm", text));
    ASSERT_EQ(file.parts.size(), 3U);
    EXPECT_EQ(file.parts[0].name, "Bär / links");
    EXPECT_EQ(file.parts[0].groups, Names());
    EXPECT_EQ(file.parts[1].groups, (Names{"inner group"}));
    EXPECT_EQ(file.parts[1].elementCount(), 2U);
    EXPECT_EQ(file.parts[2].name, "leer");
    EXPECT_EQ(file.parts[2].nodeCount(), 0U);
}

TEST_F(Source, PiecesAreOneMesh)
{
    for (float const first : {0.0F, 1.0F}) {
        auto const grid = twoTriangles();
        grid->GetPointData()->AddArray(
            arrayOf<vtkFloatArray>("P", 1, {first, first + 0.1F, first + 0.2F, first + 0.3F}));
        write(grid, first == 0 ? "in_0.vtu" : "in_1.vtu");
    }
    OpenedFile const file(
        FileKind::Xml,
        folder_.write("in.pvtu",
                      "<VTKFile type=\"PUnstructuredGrid\" version=\"1.0\">"
                      "<PUnstructuredGrid GhostLevel=\"0\">"
                      "<PPointData><PDataArray type=\"Float32\" Name=\"P\"/></PPointData><PPoints>"
                      "<PDataArray type=\"Float64\" Name=\"Points\" NumberOfComponents=\"3\"/>"
                      "</PPoints><Piece Source=\"in_0.vtu\"/><Piece Source=\"in_1.vtu\"/>"
                      "</PUnstructuredGrid></VTKFile>"));
    ASSERT_EQ(file.parts.size(), 1U);
    EXPECT_EQ(file.parts[0].nodeCount(), 8U);
    EXPECT_EQ(file.parts[0].connectivity, (Rows{0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}));
    EXPECT_EQ(std::get<std::vector<float>>(file.field("P").values),
              (std::vector<float>{0, 0.1F, 0.2F, 0.3F, 1, 1 + 0.1F, 1 + 0.2F, 1 + 0.3F}));
}

TEST_F(Source, WhatHasNoMeshIsRefused)
{
    vtkNew<vtkTable> table;
    table->AddColumn(arrayOf<vtkFloatArray>("x", 1, {1, 2}));
    EXPECT_EQ(OpenedFile::complaint(FileKind::Legacy,
                                    writeWith<vtkTableWriter>(folder_.path("in.vtk"), table)),
              "'Mesh' is a vtkTable, which is no mesh.");
}

TEST_F(Source, TheTimeOfASingleFileIsItsStep)
{
    auto const grid = twoTriangles();
    EXPECT_EQ(opened(grid).steps[0].name, "");
    grid->GetFieldData()->AddArray(arrayOf<vtkDoubleArray>("TimeValue", 1, {0.3}));
    for (OpenedFile const& file :
         {opened(grid), OpenedFile(FileKind::Legacy, writeWith<vtkUnstructuredGridWriter>(
                                                         folder_.path("in.vtk"), grid))}) {
        ASSERT_EQ(file.steps.size(), 1U);
        EXPECT_EQ(file.steps[0].name, "Step 1");
        EXPECT_EQ(file.steps[0].time, 0.3);
    }
}

TEST_F(Source, AFileWithSeveralStepsHasTheirTimes)
{
    auto const grid = twoTriangles();
    auto const array = arrayOf<vtkFloatArray>("T", 1, {0, 0, 0, 0});
    grid->GetPointData()->AddArray(array);
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    std::filesystem::path const path = folder_.path("in.vtu");
    writer->SetFileName(path.c_str());
    writer->SetInputDataObject(grid);
    writer->SetNumberOfTimeSteps(3);
    writer->Start();
    for (double const time : {0.5, 1.5, 2.25}) {
        array->SetValue(0, static_cast<float>(time));
        array->Modified();
        writer->WriteNextTime(time);
    }
    writer->Stop();
    OpenedFile const file(FileKind::Xml, path);
    ASSERT_EQ(file.steps.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(file.steps[i].time, std::get<std::vector<float>>(file.field("T", i).values)[0]);
    EXPECT_EQ(file.steps[2].time, 2.25);
}

TEST_F(Source, SingleValuesThatBelongToNoPointAreAttributesOfThePart)
{
    auto const grid = twoTriangles();
    grid->GetFieldData()->AddArray(arrayOf<vtkIntArray>("Cycle", 1, {7}));
    grid->GetFieldData()->AddArray(arrayOf<vtkDoubleArray>("Load", 1, {0.5}));
    grid->GetFieldData()->AddArray(arrayOf<vtkDoubleArray>("Several", 1, {1, 2}));
    vtkNew<vtkStringArray> text;
    text->SetName("Title");
    text->InsertNextValue("a beam");
    grid->GetFieldData()->AddArray(text);
    OpenedFile const file = opened(grid);
    EXPECT_EQ(
        file.parts[0].attributes,
        (Exchange::AttributeList{{"Cycle", 7}, {"Load", 0.5F}, {"Title", std::string("a beam")}}));
    EXPECT_EQ(file.warnings(),
              (Names{"The field data 'Several' is not a single value and was left out."}));
}

vtkSmartPointer<vtkStringArray> textOf(std::string const& name, std::string const& text)
{
    auto array = vtkSmartPointer<vtkStringArray>::New();
    array->SetName(name.c_str());
    array->InsertNextValue(text);
    return array;
}

TEST_F(Source, SingleValuesInASeriesAreAttributesOfTheStep)
{
    for (int i = 0; i < 2; ++i) {
        auto const grid = twoTriangles();
        grid->GetFieldData()->AddArray(arrayOf<vtkDoubleArray>("TimeValue", 1, {0.25}));
        grid->GetFieldData()->AddArray(arrayOf<vtkIntArray>("Cycle", 1, {7 + i}));
        grid->GetFieldData()->AddArray(textOf("Load", i == 0 ? "wind" : "snow"));
        grid->GetFieldData()->AddArray(arrayOf<vtkDoubleArray>("Several", 1, {1, 2}));
        write(grid, std::to_string(i) + ".vtu");
    }
    OpenedFile const file = openedSeries(twoSteps);
    EXPECT_EQ(file.steps[0].attributes,
              (Exchange::AttributeList{{"Cycle", 7}, {"Load", std::string("wind")}}));
    EXPECT_EQ(file.steps[1].attributes,
              (Exchange::AttributeList{{"Cycle", 8}, {"Load", std::string("snow")}}));
    EXPECT_TRUE(file.parts[0].attributes.empty());
    EXPECT_EQ(file.warnings(),
              (Names{"The field data 'Several' is not a single value and was left out."}));
}

TEST_F(Source, WhatPartsOfAStepSayDifferentlyIsLeftOutWithAWarning)
{
    for (int i = 0; i < 2; ++i) {
        auto const grid = twoTriangles();
        grid->GetFieldData()->AddArray(arrayOf<vtkIntArray>("Part", 1, {i}));
        grid->GetFieldData()->AddArray(arrayOf<vtkIntArray>("Cycle", 1, {7}));
        write(grid, std::to_string(i) + ".vtu");
    }
    OpenedFile const file = openedSeries("<DataSet timestep=\"1\" file=\"0.vtu\"/>"
                                         "<DataSet timestep=\"1\" file=\"1.vtu\"/>"
                                         "<DataSet timestep=\"2\" file=\"0.vtu\"/>"
                                         "<DataSet timestep=\"2\" file=\"1.vtu\"/>");
    for (Exchange::StepInfo const& step : file.steps)
        EXPECT_EQ(step.attributes, (Exchange::AttributeList{{"Cycle", 7}}));
    EXPECT_EQ(file.warnings(), (Names{"The field data 'Part' differs between the parts of a step "
                                      "and was left out."}));
}

Names namesOf(OpenedFile const& file)
{
    Names names;
    for (Exchange::StepInfo const& step : file.steps)
        names.push_back(step.name);
    return names;
}

class NamedSteps : public Source
{
protected:
    std::filesystem::path writeNamed(std::string const& file, std::string const& step) const
    {
        auto const grid = twoTriangles();
        if (!step.empty())
            grid->GetFieldData()->AddArray(textOf("Step", step));
        return write(grid, file);
    }

    OpenedFile openedPair(std::string const& first, std::string const& second) const
    {
        writeNamed("0.vtu", first);
        writeNamed("1.vtu", second);
        return openedSeries(twoSteps);
    }
};

TEST_F(NamedSteps, AreCalledWhatTheirFilesSay)
{
    OpenedFile const file = openedPair("Schnee / Dach", "wind");
    EXPECT_EQ(namesOf(file), (Names{"Schnee / Dach", "wind"}));
    EXPECT_TRUE(file.steps[0].attributes.empty());
    EXPECT_EQ(file.steps[1].time, 2.0);
    EXPECT_EQ(file.warnings(), Names());
}

TEST_F(NamedSteps, AreCountedWhereTwoAreCalledAlike)
{
    OpenedFile const file = openedPair("load", "load");
    EXPECT_EQ(namesOf(file), (Names{"Step 1", "Step 2"}));
    for (Exchange::StepInfo const& step : file.steps)
        EXPECT_EQ(step.attributes, (Exchange::AttributeList{{"Step", std::string("load")}}));
}

TEST_F(NamedSteps, AreCountedWhereOneHasNoName)
{
    EXPECT_EQ(namesOf(openedPair("load", "")), (Names{"Step 1", "Step 2"}));
    EXPECT_EQ(namesOf(openedPair("", "load")), (Names{"Step 1", "Step 2"}));
}

TEST_F(NamedSteps, OfBlocksAreCalledWhatTheBlocksSay)
{
    for (std::string const step : {"a", "b"}) {
        auto const grid = twoTriangles();
        grid->GetFieldData()->AddArray(textOf("Step", "load " + step));
        vtkNew<vtkMultiBlockDataSet> blocks;
        blocks->SetBlock(0, grid);
        blocks->SetBlock(1, grid);
        writeWith<vtkXMLMultiBlockDataWriter>(folder_.path(step + ".vtm"), blocks);
    }
    OpenedFile const file = openedSeries("<DataSet timestep=\"1\" file=\"a.vtm\"/>"
                                         "<DataSet timestep=\"2\" file=\"b.vtm\"/>");
    EXPECT_EQ(namesOf(file), (Names{"load a", "load b"}));
    EXPECT_EQ(file.warnings(), Names());
}

TEST_F(NamedSteps, OfASingleFileNeedATime)
{
    auto const grid = twoTriangles();
    grid->GetFieldData()->AddArray(textOf("Step", "load"));
    OpenedFile const timeless = opened(grid);
    EXPECT_EQ(namesOf(timeless), Names{""});
    EXPECT_EQ(timeless.parts[0].attributes,
              (Exchange::AttributeList{{"Step", std::string("load")}}));
    grid->GetFieldData()->AddArray(arrayOf<vtkDoubleArray>("TimeValue", 1, {0.3}));
    OpenedFile const timed = opened(grid);
    EXPECT_EQ(namesOf(timed), Names{"load"});
    EXPECT_TRUE(timed.parts[0].attributes.empty());
}

TEST_F(NamedSteps, BlocksInThemselvesAreRefused)
{
    folder_.write("a.vtm", "<VTKFile type=\"vtkMultiBlockDataSet\" version=\"1.0\">"
                           "<vtkMultiBlockDataSet><DataSet index=\"0\" file=\"a.vtm\"/>"
                           "</vtkMultiBlockDataSet></VTKFile>");
    writeNamed("b.vtu", "load");
    EXPECT_NE(OpenedFile::complaint(FileKind::Collection,
                                    writeSeries("<DataSet timestep=\"1\" file=\"b.vtu\"/>"
                                                "<DataSet timestep=\"2\" file=\"a.vtm\"/>")),
              "");
}

TEST_F(Source, TheFilesOfASeriesAreStepsInAscendingTime)
{
    for (int i = 0; i < 3; ++i) {
        auto const grid = twoTriangles();
        addPair<vtkIntArray>(*grid, "I", i, -i);
        write(grid, std::to_string(i) + ".vtu");
    }
    OpenedFile const file = openedSeries("<DataSet timestep=\"0.2\" file=\"2.vtu\"/>"
                                         "<DataSet timestep=\"0\" part=\"0\" file=\"0.vtu\"/>"
                                         "<DataSet timestep=\"0.1\" file=\"1.vtu\"/>");
    ASSERT_EQ(file.steps.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        auto const value = static_cast<std::int64_t>(i);
        EXPECT_EQ(file.steps[i].name, "Step " + std::to_string(i + 1));
        EXPECT_EQ(std::get<Integers>(file.field("I", i).values), (Integers{value, -value}));
    }
    EXPECT_EQ(file.steps[1].time, 0.1);
}

TEST_F(Source, PartsOfASeriesArePartsOfTheMesh)
{
    write(twoTriangles(), "a.vtu");
    OpenedFile const file = openedSeries("<DataSet timestep=\"1\" part=\"0\" file=\"a.vtu\"/>"
                                         "<DataSet timestep=\"1\" part=\"1\" name=\"N\" "
                                         "group=\"G\" file=\"a.vtu\"/>");
    ASSERT_EQ(file.parts.size(), 2U);
    EXPECT_EQ(file.parts[0].name, "Part 0");
    EXPECT_EQ(file.parts[1].name, "N");
    EXPECT_EQ(file.parts[1].groups, (Names{"G"}));
    EXPECT_EQ(file.steps[0].time, 1.0);
}

TEST_F(Source, NodesThatMoveHaveTheirCoordinatesInTheStep)
{
    write(twoTriangles(), "a.vtu");
    auto const moved = twoTriangles();
    moved->SetPoints(somePoints(4, 1));
    write(moved, "b.vtu");
    OpenedFile const file = openedSeries("<DataSet timestep=\"1\" file=\"a.vtu\"/>"
                                         "<DataSet timestep=\"2\" file=\"b.vtu\"/>"
                                         "<DataSet timestep=\"3\" file=\"a.vtu\"/>");
    EXPECT_TRUE(file.fields[0].empty());
    ASSERT_EQ(file.fields[1].size(), 1U);
    EXPECT_TRUE(file.fields[1][0].movesNodes);
    EXPECT_EQ(std::get<Doubles>(file.fields[1][0].values)[0], 1);
    EXPECT_TRUE(file.fields[2].empty());
}

TEST_F(Source, AMeshThatChangesIsRefused)
{
    write(twoTriangles(), "a.vtu");
    write(gridOf(4, {{VTK_TRIANGLE, {0, 1, 2}}, {VTK_TRIANGLE, {0, 1, 3}}}), "b.vtu");
    EXPECT_EQ(OpenedFile::complaint(FileKind::Collection,
                                    writeSeries("<DataSet timestep=\"1\" file=\"a.vtu\"/>"
                                                "<DataSet timestep=\"2\" file=\"b.vtu\"/>")),
              "The mesh changes from step to step, which a model cannot hold.");
    EXPECT_EQ(OpenedFile::complaint(FileKind::Collection,
                                    writeSeries("<DataSet timestep=\"1\" file=\"a.vtu\"/>"
                                                "<DataSet timestep=\"2\" file=\"a.vtu\"/>"
                                                "<DataSet timestep=\"2\" file=\"a.vtu\"/>")),
              "The mesh changes from step to step, which a model cannot hold.");
}

} // namespace
