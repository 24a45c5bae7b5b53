#include "Zyl2/Mox/Shape.h"

#include "Zyl2/Wvf/Block.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

using Zyl2Mox::Material;
using Zyl2Mox::Shape;

TEST(Shape, SaysWhatItIs)
{
    Shape const shape("s");
    EXPECT_EQ(shape.GetName(), "s");
    EXPECT_EQ(shape.GetType(), "Shape");
    EXPECT_EQ(shape.GetVersion(), "0.2");
    EXPECT_FALSE(shape.IsLoaded());
}

TEST(Shape, ANewShapesMaterialHasNoNameAndAnAmbientColourOf016)
{
    Shape const shape("s");
    EXPECT_EQ(shape.GetMaterial().GetName(), "");
    Material::Color const& ambient = shape.GetMaterial().GetAmbientColor();
    for (std::size_t component = 0; component < 3; ++component)
        EXPECT_FLOAT_EQ(ambient[component], 0.16F);
    EXPECT_FLOAT_EQ(ambient[3], 0.2F);
}

TEST(Shape, HasAMaterialOfItsOwn)
{
    Shape first("s");
    Shape const second("s");
    first.GetMaterial().SetShininess(0.9F);
    EXPECT_EQ(first.GetMaterial().GetShininess(), 0.9F);
    EXPECT_EQ(second.GetMaterial().GetShininess(), 0.2F);
}

TEST(Shape, LoadSaveAndCopyingHaveNoEffect)
{
    Shape shape("s");
    Zyl2Wvf::Block block;
    shape.Load("somewhere");
    shape.Save();
    shape.CopyToBlock(block);
    shape.CopyFromBlock(block);
    EXPECT_EQ(block.GetLength(), 0U);
    EXPECT_FALSE(shape.IsLoaded());
}

} // namespace
