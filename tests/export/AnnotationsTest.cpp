#include "Exported.h"

#include <vtkDoubleArray.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

namespace {

using namespace ExportTest;

using Texts = std::vector<std::string>;

NodeProperties red()
{
    NodeProperties material;
    material.set(PropertyType::DiffuseColor, Floats{1, 0.5F, 0.25F});
    material.set(PropertyType::Transparency, 0.75F);
    return material;
}

/// Two shapes, the second one red, with attributes wherever they can be.
ModelFile described()
{
    return ModelFile([](Model& model) {
        Attributes title;
        title.set("Title", "Träger <1>");
        title.set("Version", 3);
        model.addNode(NodeType::RootGroup, "root", title);
        Attributes supplier;
        supplier.set("Supplier", "internal");
        model.addNode(NodeType::Group, "car", supplier);
        unsigned int const first = addTriangle(model, "first");
        leaveShape(model);
        unsigned int const second = addTriangle(model, "second");
        model.setNodeData(second, red());
        Attributes group;
        group.set("GroupNumber", 7);
        model.addArrayProperty(DatasetType::Connectivity2, Array1d<unsigned int>{0, 1, 2}, second,
                               Step(), group);
        Attributes time;
        time.set("Time", 0.25F);
        Attributes unit;
        unit.set("Unit", "K");
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, first,
                               Step("One", time), unit);
        model.addArrayProperty("P", DatasetType::Result10, Array1d<float>{1, 2, 3}, second,
                               Step("One", time));
    });
}

TEST(Annotations, OfGroupsAreTexts)
{
    auto const grid = exportedGrid(described());
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Root: Title"), Texts{"Träger <1>"});
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Root: Version"), Texts{"3"});
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Group car: Supplier"), Texts{"internal"});
}

TEST(Annotations, OfMaterialsHaveARowForEachShape)
{
    auto const grid = exportedGrid(described());
    Floats const diffuse = ReadBack::floats(grid->GetFieldData(), "Diffuse Color");
    ASSERT_EQ(diffuse.size(), 8U);
    EXPECT_EQ(Floats(diffuse.begin() + 4, diffuse.begin() + 7), (Floats{1, 0.5F, 0.25F}));
    EXPECT_EQ(ReadBack::floats(grid->GetFieldData(), "Transparency"), (Floats{0, 0.75F}));
}

TEST(Annotations, OfDatasetsHaveARowForEachShape)
{
    auto const grid = exportedGrid(described());
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Dataset Connectivity: GroupNumber"),
              (Texts{"", "7"}));
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Dataset T: Unit"), (Texts{"K", ""}));
}

TEST(Annotations, WhatAllDatasetsOfAStepSayIsOfTheStep)
{
    auto const grid = exportedGrid(described());
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Step"), Texts{"One"});
    EXPECT_EQ(ReadBack::texts(grid->GetFieldData(), "Step: Time"), Texts{"0.25"});
    EXPECT_EQ(grid->GetFieldData()->HasArray("Dataset T: Time"), 0);
    auto* const time = vtkDoubleArray::SafeDownCast(grid->GetFieldData()->GetArray("TimeValue"));
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->GetValue(0), 0.25);
}

TEST(Annotations, OfAStepGoWithIt)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = addTriangle(model, "part");
        Attributes mode;
        mode.set("Mode", 1);
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, shape,
                               Step("One", mode));
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{1, 2, 3}, shape,
                               Step("Two"));
    });
    Export::exportModel(file.path(), file.path("out.pvd"));
    auto const first = ReadBack::grid(file.path("out/step_1.vtu"));
    auto const second = ReadBack::grid(file.path("out/step_2.vtu"));
    EXPECT_EQ(ReadBack::texts(first->GetFieldData(), "Step: Mode"), Texts{"1"});
    EXPECT_EQ(second->GetFieldData()->HasArray("Step: Mode"), 0);
    EXPECT_EQ(ReadBack::texts(second->GetFieldData(), "Step"), Texts{"Two"});
}

TEST(Annotations, OfBlocksAreTheirOwn)
{
    ModelFile const file = described();
    Export::exportModel(file.path(), file.path("out.vtm"));
    auto const root = ReadBack::blocks(file.path("out.vtm"));
    auto* const car = vtkMultiBlockDataSet::SafeDownCast(root->GetBlock(0));
    ASSERT_NE(car, nullptr);
    auto* const second = vtkUnstructuredGrid::SafeDownCast(car->GetBlock(1));
    EXPECT_EQ(ReadBack::texts(second->GetFieldData(), "Shape Names"), Texts{"second"});
    EXPECT_EQ(ReadBack::texts(second->GetFieldData(), "Root: Title"), Texts{"Träger <1>"});
    EXPECT_EQ(ReadBack::texts(second->GetFieldData(), "Group car: Supplier"), Texts{"internal"});
    EXPECT_EQ(ReadBack::floats(second->GetFieldData(), "Transparency"), Floats{0.75F});
}

} // namespace
