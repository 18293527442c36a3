#include "engines/texture_engine.h"

#include <algorithm>
#include <vector>

#include "engines/texture_kinds.h"

namespace host {
namespace {

constexpr std::uint16_t kResolution = 300;
constexpr std::uint16_t kMaxEdge = 2049;

/// Middle of pixel `at` of `size`, in 1/65536 of the tile.
std::uint32_t Fraction(std::uint32_t at, std::uint32_t size) noexcept {
    return static_cast<std::uint32_t>((std::uint64_t{at} * 2 + 1) * 32768 / size);
}

/// Colours by value, so that a pixel costs a look-up.
class ColorRamp {
public:
    explicit ColorRamp(const TextureParameters& parameters) {
        for (std::size_t i = 0; i < m_colors.size(); ++i) {
            const int middle = static_cast<int>(i * 65535 / (m_colors.size() - 1)) - 32768;
            const int value = std::clamp(32768 + middle * parameters.contrast / 100, 0, 65535);
            m_colors[i] = {Mix(parameters.first.r, parameters.second.r, value),
                           Mix(parameters.first.g, parameters.second.g, value),
                           Mix(parameters.first.b, parameters.second.b, value)};
        }
    }
    const RIMAGE::Rgb& At(std::uint32_t value) const noexcept { return m_colors[value >> 6]; }

private:
    static std::uint8_t Mix(int a, int b, int value) noexcept {
        return static_cast<std::uint8_t>((a * (65535 - value) + b * value + 32767) / 65535);
    }
    std::array<RIMAGE::Rgb, 1024> m_colors;
};

void RenderRow(const TextureKind& kind, const TextureParameters& parameters, std::uint32_t cells,
               const ColorRamp& ramp, std::uint32_t v, std::span<std::uint8_t> row) noexcept {
    const auto width = static_cast<std::uint32_t>(row.size() / 3);
    for (std::uint32_t x = 0; x < width; ++x) {
        const RIMAGE::Rgb& color = ramp.At(kind.sample(parameters, cells, Fraction(x, width), v));
        std::uint8_t* pixel = row.data() + std::size_t{x} * 3;
        pixel[0] = color.r;
        pixel[1] = color.g;
        pixel[2] = color.b;
    }
}

}  // namespace

WString ProceduralTextures::GetLastUsedLibrary() {
    return WString(kTextureLibrary);
}

bool ProceduralTextures::GetLastUsedTexture(std::wstring_view library, CGE_TXRINFO& info) {
    if (!library.empty() && CompareFolded(library, kTextureLibrary) != 0) return false;
    const TextureKind& kind = GetTextureKinds().front();
    info = CGE_TXRINFO();
    info.present = 1;
    info.resolution = kResolution;
    info.maxEdge = kMaxEdge;
    info.library.Set(kTextureLibrary);
    info.texture.Set(kind.name);
    info.parameters = EncodeTextureParameters(kind.defaults);
    return true;
}

std::unique_ptr<RIMAGE> ProceduralTextures::Render(const CGE_TXRINFO& info, std::uint32_t width,
                                                   std::uint32_t height) {
    const TextureKind* kind = FindTextureKind(info.texture.Get());
    const bool ourLibrary = info.library.IsEmpty() || CompareFolded(info.library.Get(), kTextureLibrary) == 0;
    if (info.present == 0 || !ourLibrary || !kind) return nullptr;
    std::unique_ptr<RIMAGE> image = RIMAGE::Create(width, height, 3, 8);
    if (!image) return nullptr;
    const TextureParameters parameters = DecodeTextureParameters(info.parameters).value_or(kind->defaults);
    const std::uint32_t cells = std::max<std::uint32_t>(1, kind->cells * 100 / parameters.scale);
    const ColorRamp ramp(parameters);
    std::vector<std::uint8_t> row(std::size_t{width} * 3);
    for (std::uint32_t y = 0; y < height; ++y) {
        RenderRow(*kind, parameters, cells, ramp, Fraction(y, height), row);
        image->WriteRow(y, row);
    }
    return image;
}

}  // namespace host
