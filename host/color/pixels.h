#pragma once

#include <array>
#include <cstring>
#include <span>

#include "host/color/colorspec.h"

#include "color/icc_engine.h"

namespace host::detail {

/// Four doubles hold a pixel of any format.
inline constexpr std::size_t kLargestPixel = 4 * sizeof(double);

/// One of the pixel formats, or kNoPixelFormat.
using PixelFormatIndex = std::uint8_t;
inline constexpr PixelFormatIndex kNoPixelFormat = kPixelFormats;

/// By model number: the narrowest format that holds the model's colours without loss.
inline constexpr std::array<PixelFormatIndex, 32> kPixelFormatOfModel = [] {
    std::array<PixelFormatIndex, 32> table{};
    table.fill(kNoPixelFormat);
    const auto set = [&table](ClrModel model, PixelFormat format) {
        table[static_cast<std::size_t>(model)] = static_cast<PixelFormatIndex>(format);
    };
    set(ClrModel::RGB, PixelFormat::Rgb8);
    for (const ClrModel model : {ClrModel::RGB48, ClrModel::CMY, ClrModel::HSB, ClrModel::HLS,
                                 ClrModel::YIQ255, ClrModel::UserInk}) {
        set(model, PixelFormat::Rgb16);
    }
    set(ClrModel::CMYK255, PixelFormat::Cmyk8);
    set(ClrModel::CMYK, PixelFormat::Cmyk16);
    set(ClrModel::Hexachrome, PixelFormat::Cmyk16);
    set(ClrModel::Gray, PixelFormat::Gray8);
    set(ClrModel::Gray24, PixelFormat::Gray8);
    set(ClrModel::BlackAndWhite, PixelFormat::Gray16);
    for (const ClrModel model : {ClrModel::LAB, ClrModel::LAB255, ClrModel::XYZ})
        set(model, PixelFormat::Lab);
    return table;
}();

/// The format to pack `color` in, kNoPixelFormat when it has no appearance. Named palettes have tints, which
/// need the wide formats.
inline PixelFormatIndex PixelFormatOf(const CLR_COLORSPEC& color) noexcept {
    const auto model = static_cast<std::size_t>(color.GetModel());
    if (model >= kPixelFormatOfModel.size()) return kNoPixelFormat;
    const PixelFormatIndex format = kPixelFormatOfModel[model];
    constexpr PixelFormatIndex kToWide = static_cast<PixelFormatIndex>(PixelFormat::Rgb16);
    if (format < kToWide && color.IsNamedPalette()) return static_cast<PixelFormatIndex>(format + kToWide);
    return format;
}

/// Packs colours, all of `format`, into `out` (kLargestPixel bytes for each are enough).
void Pack(std::span<CLR_COLORSPEC* const> colors, PixelFormat format, void* out) noexcept;

/// Sets each colour from the transform's output for `family`, encoded as `model`. Identity blocks stay,
/// except of named palettes.
void Unpack(std::span<CLR_COLORSPEC* const> colors, Family family, ClrModel model, const void* in) noexcept;

/// Makes `color` what `appearance` says, keeping its identity block unless it is of a named palette.
inline void Replace(CLR_COLORSPEC& color, const CLR_COLORSPEC& appearance) noexcept {
    if (color.IsNamedPalette()) {
        color = appearance;
    } else {
        std::memcpy(static_cast<void*>(&color), &appearance, 16);  // all but the identity block
    }
}

}  // namespace host::detail
