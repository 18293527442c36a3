#include "engines/pattern_images.h"

#include <cstdint>

namespace host {
namespace {

constexpr std::uint32_t kEdge = 64;

RIMAGE::Rgb Checkerboard(std::uint32_t x, std::uint32_t y) noexcept {
    return (x / 32 + y / 32) % 2 == 0 ? RIMAGE::Rgb{32, 32, 32} : RIMAGE::Rgb{240, 240, 240};
}

RIMAGE::Rgb Bricks(std::uint32_t x, std::uint32_t y) noexcept {
    const std::uint32_t course = y / 16;
    const bool mortar = y % 16 < 2 || (x + course % 2 * 16) % 32 < 2;
    return mortar ? RIMAGE::Rgb{208, 200, 188} : RIMAGE::Rgb{168, 72, 48};
}

RIMAGE::Rgb Dots(std::uint32_t x, std::uint32_t y) noexcept {
    // From the middle of the dot, in half pixels.
    const int dx = 2 * static_cast<int>(x % 16) - 15;
    const int dy = 2 * static_cast<int>(y % 16) - 15;
    return dx * dx + dy * dy < 100 ? RIMAGE::Rgb{24, 88, 160} : RIMAGE::Rgb{255, 255, 255};
}

struct PatternEntry {
    std::wstring_view name;
    RIMAGE::Rgb (*paint)(std::uint32_t x, std::uint32_t y) noexcept;
};

constexpr PatternEntry kPatterns[] = {{L"Checkerboard", Checkerboard}, {L"Bricks", Bricks}, {L"Dots", Dots}};

}  // namespace

std::vector<WString> BuiltInPatternImages::GetBitmapNames() {
    std::vector<WString> names;
    for (const PatternEntry& entry : kPatterns)
        names.emplace_back(entry.name);
    return names;
}

HUDIIMAGE BuiltInPatternImages::GetImage(std::wstring_view name) {
    for (const PatternEntry& entry : kPatterns) {
        if (CompareFolded(entry.name, name) != 0) continue;
        std::unique_ptr<RIMAGE> image = RIMAGE::Create(kEdge, kEdge, 3, 8);
        std::vector<std::uint8_t> row;
        for (std::uint32_t y = 0; y < kEdge; ++y) {
            row.clear();
            for (std::uint32_t x = 0; x < kEdge; ++x) {
                const RIMAGE::Rgb color = entry.paint(x, y);
                row.insert(row.end(), {color.r, color.g, color.b});
            }
            image->WriteRow(y, row);
        }
        return UDIIMGCreateFromRIMAGE(std::move(image));
    }
    return nullptr;
}

}  // namespace host
