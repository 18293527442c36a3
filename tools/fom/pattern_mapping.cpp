#include "fom/pattern_mapping.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <type_traits>

#include "host/base/temp_data.h"
#include "host/engines/image_codecs.h"

#include "fom/document_units.h"

namespace command {
namespace {

constexpr double kSameShare = 0.01;

bool InObjectUnits(const svg::Pattern& pattern) noexcept {
    return pattern.units == svg::Units::ObjectBoundingBox;
}

/// Whether how the content lies in its tile depends on the size of the shape.
bool IsContentApart(const svg::Pattern& pattern) noexcept {
    if (pattern.viewBox) return InObjectUnits(pattern) && pattern.preserveAspectRatio != "none";
    return pattern.units != pattern.contentUnits;
}

std::int32_t ToLength(double length) noexcept {
    constexpr double limit = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::round(std::clamp(length, -limit, limit)));
}

RECT ToRect(const svg::Rect& box, double scale) noexcept {
    return {ToLength(box.left * scale), ToLength(box.top * scale), ToLength(box.right * scale),
            ToLength(box.bottom * scale)};
}

/// The tile in the coordinates of its content.
svg::Rect TileInContent(const svg::Pattern& pattern, const svg::Rect& shape) {
    double width = pattern.width;
    double height = pattern.height;
    if (InObjectUnits(pattern) && IsContentApart(pattern)) {
        width *= shape.Width();
        height *= shape.Height();
    }
    if (!pattern.viewBox) {
        const bool shares = pattern.contentUnits == svg::Units::ObjectBoundingBox && !InObjectUnits(pattern);
        const double across = shares && shape.Width() > 0 ? shape.Width() : 1;
        const double down = shares && shape.Height() > 0 ? shape.Height() : 1;
        return {0, 0, width / across, height / down};
    }
    const svg::Matrix fit = svg::FitViewBox(*pattern.viewBox, width, height, pattern.preserveAspectRatio);
    if (!(fit.a > 0) || !(fit.d > 0)) return {0, 0, width, height};
    return {-fit.e / fit.a, -fit.f / fit.d, (width - fit.e) / fit.a, (height - fit.f) / fit.d};
}

void SetTile(CGE_PATTERNFILL& fill, const svg::Pattern& pattern, const svg::Rect& shape,
             svg::Omissions& omissions) {
    const bool objectUnits = InObjectUnits(pattern);
    const double tileScale = objectUnits ? 100 : kUnitsPerPixel;
    const double boxScale = objectUnits ? kObjectSide : kUnitsPerPixel;
    const svg::Rect tile{pattern.x, pattern.y, pattern.x + pattern.width, pattern.y + pattern.height};
    fill.tiling.width = std::max(1, ToLength(pattern.width * tileScale));
    fill.tiling.height = std::max(1, ToLength(pattern.height * tileScale));
    if (objectUnits) fill.tiling.flags = kTilingScaleWithObject;
    fill.boundingBox = ToRect(tile, boxScale);
    fill.originalBoundingBox = ToRect(TileInContent(pattern, shape), kUnitsPerPixel);
    if (IsContentApart(pattern)) omissions.Count("pattern content measured apart from its tile");
}

struct ReleaseImage {
    void operator()(HUDIIMAGE image) const noexcept { UDIIMGRelease(image); }
};
using ImageReference = std::unique_ptr<std::remove_pointer_t<HUDIIMAGE>, ReleaseImage>;

std::unique_ptr<RIMAGE> Decode(const svg::PatternImage& image, host::Error& error) {
    const std::span<const std::byte> bytes = std::as_bytes(std::span(image.bytes));
    return image.mediaType == "image/png" ? host::ReadPng(bytes, error) : host::ReadJpeg(bytes, error);
}

/// A colour bitmap is drawn over its whole tile.
void CountPlacement(const svg::PatternImage& image, const RIMAGE& raster, const RECT& tile,
                    svg::Omissions& omissions) {
    if (image.opacity < 1) omissions.Count("pattern image opacity");
    const double width = image.width.value_or(raster.GetWidth()) * image.transform.a;
    const double height = image.height.value_or(raster.GetHeight()) * image.transform.d;
    const double left = image.x * image.transform.a + image.transform.e;
    const double top = image.y * image.transform.d + image.transform.f;
    const auto differs = [](double at, std::int32_t edge, std::int32_t side) {
        return std::abs(at * kUnitsPerPixel - edge) > std::abs(double(side)) * kSameShare + 1;
    };
    const std::int32_t across = tile.right - tile.left;
    const std::int32_t down = tile.bottom - tile.top;
    const bool turned = image.transform.b != 0 || image.transform.c != 0;
    if (turned || differs(left, tile.left, across) || differs(left + width, tile.right, across) ||
        differs(top, tile.top, down) || differs(top + height, tile.bottom, down))
        omissions.Count("pattern image beside its tile");
}

bool SetImage(CGE_COLORBMPFILL& fill, const svg::PatternImage& image, svg::Omissions& omissions,
              host::Error& error) {
    std::unique_ptr<RIMAGE> raster = Decode(image, error);
    if (!raster) {
        error.reason = "image data broken: " + error.reason;
        return false;
    }
    CountPlacement(image, *raster, fill.originalBoundingBox, omissions);
    const ImageReference reference(UDIIMGCreateFromRIMAGE(std::move(raster)));
    const unsigned id = TMPRegisterPrivateData(reference.get());
    UDIIMGDuplicate(reference.get());
    fill.AdoptTmpFile(id);
    return true;
}

void AppendBytes(std::string& key, const void* data, std::size_t size) {
    key.append(static_cast<const char*>(data), size);
}

template <class... Numbers>
void AppendNumbers(std::string& key, Numbers... numbers) {
    for (const double number : {static_cast<double>(numbers)...})
        AppendBytes(key, &number, sizeof number);
}

void AppendText(std::string& key, std::string_view text) {
    AppendNumbers(key, text.size());
    key.append(text);
}

}  // namespace

std::optional<CGE_FILL> MapPattern(const svg::Pattern& pattern, const std::optional<svg::Rect>& shape,
                                   svg::Omissions& omissions, host::Error& error) {
    const svg::Rect box = shape.value_or(svg::Rect{0, 0, 100, 100});
    const std::optional<svg::PatternImage>& image = pattern.content->image;
    CGE_FILL fill(image ? FillColorBitmap : FillVector);
    SetTile(*fill.EditPattern(), pattern, box, omissions);
    if (image) {
        if (!SetImage(fill.EditColorBitmap(), *image, omissions, error)) return std::nullopt;
    } else {
        fill.EditVector().AdoptTmpFile(TMPCreateTmpFile(std::as_bytes(std::span(pattern.content->bytes))));
    }
    return fill;
}

std::string PatternKey(const svg::Pattern& pattern, const std::optional<svg::Rect>& shape) {
    std::string key;
    AppendNumbers(key, static_cast<int>(pattern.units), static_cast<int>(pattern.contentUnits), pattern.x,
                  pattern.y, pattern.width, pattern.height);
    if (pattern.viewBox)
        AppendNumbers(key, pattern.viewBox->x, pattern.viewBox->y, pattern.viewBox->width,
                      pattern.viewBox->height);
    AppendText(key, pattern.preserveAspectRatio);
    if (IsContentApart(pattern) && shape) AppendNumbers(key, shape->Width(), shape->Height());
    const std::optional<svg::PatternImage>& image = pattern.content->image;
    AppendText(key, image ? image->bytes : pattern.content->bytes);
    if (image) {
        const svg::Matrix& m = image->transform;
        AppendNumbers(key, image->opacity, image->x, image->y, image->width.value_or(-1),
                      image->height.value_or(-1), m.a, m.b, m.c, m.d, m.e, m.f);
    }
    return key;
}

}  // namespace command
