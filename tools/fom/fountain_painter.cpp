#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>

#include "fom/fill_painter_parts.h"
#include "fom/fountain_ramp.h"

namespace command {
namespace {

/// Gradients are handed over in a space of this many units for the unit, as the drawing library calculates
/// with few binary places.
constexpr double kRun = 256;
constexpr double kMostPixels = 2048;

void PaintColor(CairoContext& target, const ScreenColor& color) {
    cairo_set_source_rgba(&target, color.r, color.g, color.b, color.opacity);
    cairo_paint(&target);
}

cairo_extend_t ToExtend(CgeFountainFillSpreadMethod spread) noexcept {
    if (spread == SpreadRepeat) return CAIRO_EXTEND_REPEAT;
    return spread == SpreadReflect ? CAIRO_EXTEND_REFLECT : CAIRO_EXTEND_PAD;
}

void PaintGradient(CairoContext& target, const CGE_FOUNTAINFILL& fountain, const MATRIX& toUnit,
                   const FountainRamp& ramp) {
    const VECTOR2D origin = fountain.GetOrigin();
    const PatternPointer pattern(
        fountain.GetFountainType() == FountainRadial
            ? cairo_pattern_create_radial(origin.x * kRun, origin.y * kRun, 0, 0, 0, kRun)
            : cairo_pattern_create_linear(0, 0, kRun, 0));
    for (const FountainRamp::Stop& stop : ramp.Stops()) {
        const ScreenColor& color = stop.color;
        cairo_pattern_add_color_stop_rgba(pattern.get(), stop.offset, color.r, color.g, color.b,
                                          color.opacity);
    }
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, toUnit.a * kRun, toUnit.b * kRun, toUnit.c * kRun, toUnit.d * kRun,
                      toUnit.tx * kRun, toUnit.ty * kRun);
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    cairo_pattern_set_extend(pattern.get(), ToExtend(fountain.GetSpreadMethod()));
    cairo_set_source(&target, pattern.get());
    cairo_paint(&target);
}

/// Where a point of the unit space lies in the run of a fountain that is neither linear nor radial. A conical
/// one runs from the x axis both ways round to the opposite side.
double PlaceInRun(const CGE_FOUNTAINFILL& fountain, VECTOR2D at) noexcept {
    const VECTOR2D from{at.x - fountain.GetOrigin().x, at.y - fountain.GetOrigin().y};
    if (fountain.GetFountainType() == FountainConical)
        return std::abs(std::atan2(from.y, from.x)) / std::numbers::pi;
    // The square of a point: how far it is from the origin, as a share of the way on to the unit square's
    // edge.
    const auto share = [](double way, double origin) {
        const double edge = way < 0 ? 1 + origin : 1 - origin;
        return edge > 0 ? std::abs(way) / edge : 0;
    };
    return std::max(share(from.x, fountain.GetOrigin().x), share(from.y, fountain.GetOrigin().y));
}

std::uint32_t ToPixel(const ScreenColor& color) noexcept {
    const auto part = [&color](double value) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(value * color.opacity, 0.0, 1.0) * 255));
    };
    const auto opacity = static_cast<std::uint32_t>(std::lround(std::clamp(color.opacity, 0.0, 1.0) * 255));
    return opacity << 24 | part(color.r) << 16 | part(color.g) << 8 | part(color.b);
}

/// Samples the fountain once for each pixel of the target's clip.
void PaintSampled(CairoContext& target, const CGE_FOUNTAINFILL& fountain, const MATRIX& toUnit,
                  const FountainRamp& ramp) {
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(&target, &left, &top, &right, &bottom);
    double across = right - left, down = 0, across2 = 0, down2 = bottom - top;
    cairo_user_to_device_distance(&target, &across, &down);
    cairo_user_to_device_distance(&target, &across2, &down2);
    const auto pixels = [](double x, double y) {
        return static_cast<int>(std::clamp(std::ceil(std::hypot(x, y)), 1.0, kMostPixels));
    };
    const int width = pixels(across, down);
    const int height = pixels(across2, down2);
    const SurfacePointer surface = MakeImageSurface(width, height);
    cairo_surface_flush(surface.get());
    unsigned char* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(data + std::ptrdiff_t{y} * stride);
        for (int x = 0; x < width; ++x) {
            const VECTOR2D at{left + (x + 0.5) * (right - left) / width,
                              top + (y + 0.5) * (bottom - top) / height};
            row[x] = ToPixel(ramp.At(PlaceInRun(fountain, TransformPoint(toUnit, at))));
        }
    }
    cairo_surface_mark_dirty(surface.get());
    cairo_translate(&target, left, top);
    cairo_scale(&target, (right - left) / width, (bottom - top) / height);
    cairo_set_source_surface(&target, surface.get(), 0, 0);
    cairo_pattern_set_extend(cairo_get_source(&target), CAIRO_EXTEND_PAD);
    cairo_paint(&target);
}

}  // namespace

void PaintFountain(CairoContext& target, const CGE_FOUNTAINFILL& fountain, const ObjectBounds& object) {
    const FountainRamp ramp(fountain);
    const std::optional<MATRIX> toUnit = Inverse(fountain.GetTotalMatrix(object));
    if (!toUnit || ramp.Stops().size() == 1) return PaintColor(target, ramp.Stops().back().color);
    switch (fountain.GetFountainType()) {
        case FountainLinear:
        case FountainRadial:
            return PaintGradient(target, fountain, *toUnit, ramp);
        case FountainConical:
        case FountainSquare:
            return PaintSampled(target, fountain, *toUnit, ramp);
        case FountainNone:
            return;
    }
}

}  // namespace command
