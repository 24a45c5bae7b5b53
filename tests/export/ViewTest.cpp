#include "Exported.h"
#include "Pixels.h"

#include <export/View.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>
#include <vector>

namespace {

using namespace ExportTest;
using Export::ViewOptions;
using Export::ViewSummary;

constexpr float noValue = std::numeric_limits<float>::quiet_NaN();
constexpr Color white = {255, 255, 255};
constexpr Color leastColor = {68, 1, 84};
constexpr Color greatestColor = {253, 231, 37};
constexpr Color missingColor = {153, 153, 153};

/// No test may depend on a display that happens to be there.
class View : public testing::Test
{
protected:
    View() { ::unsetenv("DISPLAY"); }
};

ViewSummary view(ModelFile const& file, ViewOptions options = ViewOptions())
{
    options.overwrite = true;
    options.width = options.width == 1280 ? 480 : options.width;
    options.height = options.height == 960 ? 360 : options.height;
    return viewModel(file.path(), file.path("out.png"), options);
}

Pixels pixelsOf(ModelFile const& file, ViewOptions const& options = ViewOptions())
{
    view(file, options);
    return Pixels(file.path("out.png"));
}

std::string complaintOfView(ModelFile const& file, ViewOptions const& options)
{
    try {
        view(file, options);
    } catch (Export::Error const& error) {
        return error.what();
    }
    return "";
}

/// A square plate of two triangles, seen best from z.
unsigned int addPlate(Model& model)
{
    unsigned int const shape = model.addNode(NodeType::Shape, "plate");
    model.addArrayProperty(DatasetType::Coordinates,
                           rows(3, {0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10, 0}), shape, Step());
    model.addArrayProperty(DatasetType::Connectivity2, Array1d<unsigned int>{0, 1, 2, 0, 2, 3},
                           shape, Step());
    model.addArrayProperty(DatasetType::Polylength2, Array1d<unsigned int>{3, 3}, shape, Step());
    return shape;
}

ModelFile plate(std::function<void(Model&, unsigned int)> const& addFields)
{
    return ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        addFields(model, addPlate(model));
    });
}

ModelFile heatedPlate()
{
    return plate([](Model& model, unsigned int shape) {
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{0, 0, 40, 40}, shape,
                               Step("Cold"));
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>{90, 20, 10, 50}, shape,
                               Step("Hot"));
    });
}

ViewOptions fromAbove()
{
    ViewOptions options;
    options.camera = Export::Camera::Z;
    return options;
}

TEST_F(View, HasTheSizeThatIsAskedFor)
{
    ModelFile const file = heatedPlate();
    ViewOptions options;
    options.width = 333;
    options.height = 222;
    Pixels const pixels = pixelsOf(file, options);
    EXPECT_EQ(pixels.width(), 333);
    EXPECT_EQ(pixels.height(), 222);
}

TEST_F(View, NeedsNoDisplayEvenWhenOneIsNamed)
{
    ::setenv("DISPLAY", ":4711", 1);
    EXPECT_GT(pixelsOf(heatedPlate()).count(white), 1000);
    ::unsetenv("DISPLAY");
}

TEST_F(View, ShowsTheWholeScaleAndLeavesTheBackgroundWhite)
{
    Pixels const pixels = pixelsOf(heatedPlate(), fromAbove());
    EXPECT_EQ(pixels.at(1, 1), white);
    EXPECT_EQ(pixels.at(478, 358), white);
    // The scale stands at the right.
    int const x = static_cast<int>(0.86 * 480) + 4;
    EXPECT_TRUE(areAlike(pixels.at(x, static_cast<int>(0.2 * 360) + 1), leastColor, 8));
    EXPECT_TRUE(areAlike(pixels.at(x, static_cast<int>(0.8 * 360) - 2), greatestColor, 8));
}

TEST_F(View, ColorsTheModelByItsValues)
{
    ModelFile const file = plate([](Model& model, unsigned int shape) {
        model.addArrayProperty("E", DatasetType::Result14, Array1d<float>{1, 2}, shape, Step());
    });
    Pixels const pixels = pixelsOf(file, fromAbove());
    // Shading makes colours darker than those of the scale, so that only their hue is compared.
    auto const isYellow = [](Color const& color) {
        return color[0] > 120 && color[1] > 110 && color[2] < 60;
    };
    auto const isViolet = [](Color const& color) {
        return color[0] < 80 && color[1] < 15 && color[2] > 40;
    };
    EXPECT_GT(pixels.countIf(isYellow), 10000);
    EXPECT_GT(pixels.countIf(isViolet), 10000);
}

TEST_F(View, DiffersBetweenSteps)
{
    ModelFile const file = heatedPlate();
    ViewOptions cold = fromAbove();
    cold.step = "Cold";
    EXPECT_EQ(view(file, cold).step, "Cold");
    std::string const coldPicture = Support::contentOf(file.path("out.png"));
    EXPECT_EQ(view(file, fromAbove()).step, "Hot");
    EXPECT_NE(Support::contentOf(file.path("out.png")), coldPicture);
}

/// A plate with a temperature, displacements and stresses.
ModelFile loadedPlate()
{
    return plate([](Model& model, unsigned int shape) {
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>(4, 1.0F), shape,
                               Step("One"));
        model.addArrayProperty(DatasetType::Displacement,
                               rows(3, {0, 0, 0, 3, 0, 4, 0, 0, 0, 0, -1, 0}), shape, Step("One"));
        model.addArrayProperty("STRESS", DatasetType::Result13,
                               rows(6, {10, 0, 0, 0, 0, 0, 0, 0, 0, 10, 0, 0, //
                                        5,  5, 5, 0, 0, 0, 1, 2, 3, 4,  5, 6}),
                               shape, Step("One"));
    });
}

TEST_F(View, PrefersTheLengthOfDisplacements)
{
    ViewSummary const summary = view(loadedPlate());
    EXPECT_EQ(summary.field, "Displacement");
    EXPECT_EQ(summary.component, "magnitude");
    EXPECT_EQ(summary.least, 0);
    EXPECT_EQ(summary.greatest, 5);
}

TEST_F(View, ShowsTheComponentThatIsAskedFor)
{
    ModelFile const file = loadedPlate();
    ViewOptions options;
    options.component = "y";
    EXPECT_EQ(view(file, options).least, -1);
    options.field = "STRESS";
    options.component = "zx";
    EXPECT_EQ(view(file, options).greatest, 6);
    options.component = "yz";
    EXPECT_EQ(view(file, options).greatest, 5);
}

TEST_F(View, OfTensorsShowsTheValueOfMises)
{
    ModelFile const file = loadedPlate();
    ViewOptions options;
    options.field = "STRESS";
    ViewSummary const summary = view(file, options);
    EXPECT_EQ(summary.component, "mises");
    EXPECT_EQ(summary.least, 0);
    // The shear of 10 counts as sqrt(3) times 10, more than the pull of 10 and the last row.
    EXPECT_NEAR(summary.greatest, std::sqrt(3.0) * 10, 1e-12);
}

TEST_F(View, MagnifiesDisplacementsToATenthOfTheSize)
{
    ModelFile const file = loadedPlate();
    ViewSummary const summary = view(file);
    EXPECT_NEAR(summary.warp * 5, 0.1 * std::sqrt(200.0), 0.005);
    ViewOptions options = fromAbove();
    options.warp = 0;
    EXPECT_EQ(view(file, options).warp, 0);
    std::string const flat = Support::contentOf(file.path("out.png"));
    options.warp = 2;
    EXPECT_EQ(view(file, options).warp, 2);
    EXPECT_NE(Support::contentOf(file.path("out.png")), flat);
}

TEST_F(View, EdgesAreDrawnOnDemand)
{
    ModelFile const file = heatedPlate();
    ViewOptions options = fromAbove();
    Pixels const without = pixelsOf(file, options);
    options.edges = true;
    Pixels const with = pixelsOf(file, options);
    int different = 0;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            different += areAlike(with.at(x, y), without.at(x, y), 20) ? 0 : 1;
    // One edge goes from corner to corner.
    EXPECT_GT(different, 150);
    EXPECT_LT(different, 5000);
}

TEST_F(View, CamerasSeeDifferentSides)
{
    ModelFile const file = loadedPlate();
    std::set<std::string> pictures;
    for (auto const camera :
         {Export::Camera::Iso, Export::Camera::X, Export::Camera::Y, Export::Camera::Z}) {
        ViewOptions options;
        options.camera = camera;
        view(file, options);
        pictures.insert(Support::contentOf(file.path("out.png")));
    }
    EXPECT_EQ(pictures.size(), 4U);
}

TEST_F(View, WhatHasNoValueIsGrey)
{
    ModelFile const file = plate([](Model& model, unsigned int shape) {
        model.addArrayProperty("E", DatasetType::Result14, Array1d<float>{1, noValue}, shape,
                               Step());
    });
    ViewSummary const summary = view(file, fromAbove());
    EXPECT_EQ(summary.least, 1);
    EXPECT_EQ(summary.greatest, 1);
    Pixels const pixels(file.path("out.png"));
    auto const isGrey = [](Color const& color) {
        return color[0] == color[1] && color[1] == color[2] && color[0] > 60 && color[0] < 200;
    };
    EXPECT_GT(pixels.countIf(isGrey), 5000);
    EXPECT_GT(pixels.count(missingColor), 50);
}

TEST_F(View, AFieldWithoutAnyValueIsAllGrey)
{
    ModelFile const file = plate([](Model& model, unsigned int shape) {
        model.addArrayProperty("T", DatasetType::Result10, Array1d<float>(4, noValue), shape,
                               Step());
    });
    ViewSummary const summary = view(file, fromAbove());
    EXPECT_TRUE(std::isnan(summary.least));
    EXPECT_TRUE(std::isnan(summary.greatest));
    EXPECT_EQ(Pixels(file.path("out.png")).count(greatestColor), 0);
}

TEST_F(View, WithoutFieldsShapesHaveTheirColors)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        NodeProperties red;
        red.set(PropertyType::DiffuseColor, Floats{1, 0, 0});
        model.setNodeData(addPlate(model), red);
    });
    EXPECT_EQ(view(file, fromAbove()).field, "");
    auto const isRed = [](Color const& color) {
        return color[0] > 120 && color[1] < 30 && color[2] < 30;
    };
    EXPECT_GT(Pixels(file.path("out.png")).countIf(isRed), 20000);
}

TEST_F(View, PointsAndLinesAreDrawn)
{
    ModelFile const file([](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const points = model.addNode(NodeType::Shape, "points");
        model.addArrayProperty(DatasetType::Coordinates, rows(3, {0, 0, 0, 1, 1, 0}), points,
                               Step());
        leaveShape(model);
        unsigned int const lines = model.addNode(NodeType::Shape, "lines");
        model.addArrayProperty(DatasetType::Coordinates, rows(3, {0, 1, 0, 1, 0, 0}), lines,
                               Step());
        model.addArrayProperty(DatasetType::Connectivity1, Array1d<unsigned int>{0, 1}, lines,
                               Step());
        model.addArrayProperty(DatasetType::Polylength1, Array1d<unsigned int>{2}, lines, Step());
    });
    Pixels const pixels = pixelsOf(file, fromAbove());
    // The region is free of axes and title, so that dark pixels in it are those of the line.
    int dark = 0;
    for (int y = 100; y < 250; ++y)
        for (int x = 100; x < 380; ++x)
            dark += pixels.at(x, y)[0] < 220 ? 1 : 0;
    EXPECT_GT(dark, 100);
}

TEST_F(View, WhatCannotBeShownIsTold)
{
    ModelFile const file = loadedPlate();
    ViewOptions options;
    options.field = "P";
    EXPECT_EQ(complaintOfView(file, options),
              file.path() + ": There is no field \"P\" in this step.");
    options.field = "T";
    options.component = "mises";
    EXPECT_EQ(complaintOfView(file, options),
              file.path() + ": The field \"T\" has no component mises.");
    options.step = "Two";
    EXPECT_EQ(complaintOfView(file, options), file.path() + ": There is no step \"Two\".");
    ModelFile const empty([](Model& model) { model.addNode(NodeType::RootGroup, "root"); });
    EXPECT_EQ(complaintOfView(empty, ViewOptions()),
              empty.path() + ": There is nothing in it that can be drawn.");
    EXPECT_EQ(empty.folder().names(), std::vector<std::string>{"model.mox"});
}

TEST_F(View, StagesOfTheWorkAreTold)
{
    using Stages = std::vector<std::pair<std::size_t, std::size_t>>;
    Stages told;
    ViewOptions options;
    options.progress = [&](std::size_t done, std::size_t all) { told.emplace_back(done, all); };
    view(heatedPlate(), options);
    EXPECT_EQ(told, (Stages{{1, 5}, {2, 5}, {3, 5}, {4, 5}, {5, 5}}));
}

TEST_F(View, TinyAndHugeModelsFillThePicture)
{
    for (float const size : {1e-6F, 1e6F}) {
        ModelFile const file([&](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            NodeProperties scale;
            scale.set(PropertyType::Scale, Floats{size, size, size});
            model.setNodeData(model.addNode(NodeType::Group, "group"), scale);
            addPlate(model);
        });
        auto const isShape = [](Color const& color) { return color[0] > 60 && color[0] < 250; };
        EXPECT_GT(pixelsOf(file, fromAbove()).countIf(isShape), 20000) << size;
    }
}

} // namespace
