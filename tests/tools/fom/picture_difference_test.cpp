#include "fom/picture_difference.h"

#include <cairo.h>
#include <cstring>
#include <gtest/gtest.h>

#include "fom/picture_pixels.h"
#include "fom/surface_png.h"

namespace {

using namespace command;

/// A picture of one colour, 0xAARRGGBB with colours multiplied by the opacity.
SurfacePointer Plain(std::uint32_t color, int width = 100, int height = 100) {
    SurfacePointer surface = MakeImageSurface(width, height);
    const Pixels pixels(*surface);
    for (std::size_t y = 0; y < pixels.Height(); ++y)
        std::fill(pixels.Row(y).begin(), pixels.Row(y).end(), color);
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

void Put(CairoSurface& surface, std::size_t count, std::uint32_t color) {
    const Pixels pixels(surface);
    for (std::size_t i = 0; i < count; ++i)
        pixels.Row(i / pixels.Width())[i % pixels.Width()] = color;
    cairo_surface_mark_dirty(&surface);
}

TEST(PictureDifference, MeasuresEveryChannel) {
    const SurfacePointer before = Plain(0xff808080);
    EXPECT_TRUE(ComparePictures(*before, *Plain(0xff808080)).IsIdentical());
    for (const std::uint32_t other : {0xff808085u, 0xff807b80u, 0xff858080u, 0xfa808080u}) {
        const SurfacePointer after = Plain(0xff808080);
        Put(*after, 1, other);
        const PictureDifference difference = ComparePictures(*before, *after);
        EXPECT_EQ(difference.worst, 5u) << std::hex << other;
        EXPECT_EQ(difference.differing, 1u);
        EXPECT_FALSE(difference.IsIdentical());
        EXPECT_TRUE(difference.IsWithin());
    }
}

TEST(PictureDifference, KeepsToTheTolerance) {
    const SurfacePointer before = Plain(0xff000000);
    EXPECT_TRUE(ComparePictures(*before, *Plain(0xff020202)).IsWithin()) << "2 everywhere";
    EXPECT_FALSE(ComparePictures(*before, *Plain(0xff000003)).IsWithin());
    const SurfacePointer after = Plain(0xff000000);
    Put(*after, 10, 0xff0000ff);  // of 10,000 pixels
    EXPECT_TRUE(ComparePictures(*before, *after).IsWithin());
    Put(*after, 11, 0xff0000ff);
    EXPECT_FALSE(ComparePictures(*before, *after).IsWithin());
    EXPECT_EQ(ComparePictures(*before, *after).excess, 11u);
}

TEST(PictureDifference, TellsSizesApart) {
    for (const SurfacePointer& after : {Plain(0, 100, 99), Plain(0, 99, 100)}) {
        const PictureDifference difference = ComparePictures(*Plain(0), *after);
        EXPECT_FALSE(difference.sameSize);
        EXPECT_FALSE(difference.IsWithin());
        EXPECT_FALSE(difference.IsIdentical());
    }
}

TEST(PictureDifference, ShowsSinglePixels) {
    const SurfacePointer before = Plain(0xff000000, 5, 4), after = Plain(0xff000000, 5, 4);
    Pixels(*after).Row(2)[3] = 0xff000001;
    cairo_surface_mark_dirty(after.get());
    const SurfacePointer slight = DrawDifference(*before, *after);
    Pixels(*after).Row(2)[3] = 0xffffffff;
    const SurfacePointer strong = DrawDifference(*before, *after);
    const std::uint32_t ground = Pixels(*slight).Row(0)[0];
    for (std::size_t y = 0; y < 4; ++y) {
        for (std::size_t x = 0; x < 5; ++x) {
            const bool isNear = x >= 2 && y >= 1;
            EXPECT_EQ(Pixels(*slight).Row(y)[x] != ground, isNear) << x << " " << y;
            EXPECT_EQ(Pixels(*strong).Row(y)[x] != ground, isNear) << x << " " << y;
        }
    }
    EXPECT_NE(Pixels(*slight).Row(2)[3], Pixels(*strong).Row(2)[3]);
}

TEST(PictureDifference, ReadsPicturesBack) {
    const SurfacePointer picture = Plain(0x80402000, 7, 3);
    const auto png = EncodePng(*picture);
    ASSERT_TRUE(png);
    EXPECT_TRUE(ComparePictures(*picture, *DecodePng(*png)).IsIdentical());
    EXPECT_EQ(DecodePng(std::span(*png).first(png->size() / 2)), nullptr);
    EXPECT_EQ(DecodePng({}), nullptr);
    // Without opacity in the file: opaque all the same.
    const SurfacePointer opaque(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 7, 3));
    const SurfacePointer black = DecodePng(*EncodePng(*opaque));
    ASSERT_TRUE(black);
    EXPECT_TRUE(ComparePictures(*black, *Plain(0xff000000, 7, 3)).IsIdentical());
}

}  // namespace
