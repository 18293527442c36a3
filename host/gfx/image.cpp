#include "host/gfx/image.h"

#include <algorithm>
#include <cstring>

#include "base/flat_blob.h"

namespace {

using host::detail::FlatBlob;

constexpr std::uint32_t kMaxEdge = 65535;
constexpr std::uint64_t kMaxBytes = std::uint64_t{1} << 30;
constexpr unsigned kMaxPlanes = 4;

std::uint64_t CeilDivide(std::uint64_t a, std::uint64_t b) noexcept {
    return (a + b - 1) / b;
}

bool IsSampleSize(unsigned bits) noexcept {
    return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
}

int Compare(std::uint64_t a, std::uint64_t b) noexcept {
    return a < b ? -1 : a > b ? 1 : 0;
}

/// The sample scaled to 0 to 255, rounded.
std::uint8_t To8Bits(std::uint32_t sample, unsigned bits) noexcept {
    const std::uint32_t most = (1u << bits) - 1;
    return static_cast<std::uint8_t>((sample * 255 + most / 2) / most);
}

}  // namespace

RIMAGE::RIMAGE() = default;
RIMAGE::RIMAGE(const RIMAGE& other) = default;
RIMAGE& RIMAGE::operator=(const RIMAGE& other) = default;
RIMAGE::~RIMAGE() = default;

std::unique_ptr<RIMAGE> RIMAGE::Create(std::uint32_t width, std::uint32_t height, unsigned planes,
                                       unsigned bitsPerPlane, std::uint32_t tileEdge) {
    if (width == 0 || height == 0 || width > kMaxEdge || height > kMaxEdge || tileEdge == 0) return nullptr;
    if (planes == 0 || planes > kMaxPlanes || !IsSampleSize(bitsPerPlane)) return nullptr;
    std::unique_ptr<RIMAGE> image(new RIMAGE());
    image->m_width = width;
    image->m_height = height;
    image->m_tileEdge = std::min(tileEdge, kMaxEdge);
    image->m_planes = planes;
    image->m_bitsPerPlane = bitsPerPlane;
    const std::uint32_t lastWidth = (width - 1) % image->m_tileEdge + 1;
    const std::uint64_t bytes =
        height * ((image->TilesAcross() - std::uint64_t{1}) * image->RowBytes(image->m_tileEdge) +
                  image->RowBytes(lastWidth));
    if (bytes > kMaxBytes) return nullptr;
    image->m_pixels = FlatBlob::CreateCleared(static_cast<std::size_t>(bytes));
    return image;
}

std::uint32_t RIMAGE::TilesAcross() const noexcept {
    return static_cast<std::uint32_t>(CeilDivide(m_width, m_tileEdge));
}

std::size_t RIMAGE::RowBytes(std::uint32_t pixels) const noexcept {
    return static_cast<std::size_t>(CeilDivide(std::uint64_t{pixels} * m_planes * m_bitsPerPlane, 8));
}

std::size_t RIMAGE::GetNumTiles() const noexcept {
    return TilesAcross() * static_cast<std::size_t>(CeilDivide(m_height, m_tileEdge));
}

RECT RIMAGE::TileBounds(std::size_t index) const noexcept {
    const std::size_t left = index % TilesAcross() * m_tileEdge;
    const std::size_t top = index / TilesAcross() * m_tileEdge;
    const auto edge = [](std::size_t at, std::size_t most) {
        return static_cast<std::int32_t>(std::min(at, most));
    };
    return {edge(left, m_width), edge(top, m_height), edge(left + m_tileEdge, m_width),
            edge(top + m_tileEdge, m_height)};
}

// Only the last tile of a row is narrower and only those of the last row are lower, so that a tile's place
// follows from its bounds: whole rows of tiles above it, whole tiles before it.
std::size_t RIMAGE::TileStart(const RECT& bounds) const noexcept {
    const auto left = static_cast<std::uint32_t>(bounds.left);
    const auto top = static_cast<std::uint32_t>(bounds.top);
    const auto height = static_cast<std::size_t>(bounds.bottom - bounds.top);
    const std::size_t bytesPerRow = m_pixels->GetBytes().size() / m_height;
    return top * bytesPerRow + left / m_tileEdge * RowBytes(m_tileEdge) * height;
}

RIMAGE::Tile RIMAGE::GetTile(std::size_t index) const noexcept {
    if (index >= GetNumTiles()) return {};
    const RECT bounds = TileBounds(index);
    const std::byte* data = m_pixels->GetBytes().data() + TileStart(bounds);
    return {bounds, reinterpret_cast<const std::uint8_t*>(data),
            RowBytes(static_cast<std::uint32_t>(bounds.right - bounds.left))};
}

RIMAGE::MutableTile RIMAGE::EditTile(std::size_t index) {
    if (index >= GetNumTiles()) return {};
    if (!m_pixels->IsSole()) m_pixels = m_pixels->Clone();
    const Tile tile = GetTile(index);
    std::byte* data = m_pixels->EditBytes().data() + TileStart(tile.bounds);
    return {tile.bounds, reinterpret_cast<std::uint8_t*>(data), tile.stride};
}

std::uint16_t RIMAGE::GetSample(std::uint32_t x, std::uint32_t y, unsigned plane) const noexcept {
    if (x >= m_width || y >= m_height || plane >= m_planes) return 0;
    const Tile tile = GetTile(std::size_t{y / m_tileEdge} * TilesAcross() + x / m_tileEdge);
    const std::size_t bit = (std::size_t{x % m_tileEdge} * m_planes + plane) * m_bitsPerPlane;
    const std::uint8_t* at = tile.data + y % m_tileEdge * tile.stride + bit / 8;
    if (m_bitsPerPlane == 16) return static_cast<std::uint16_t>(at[0] | at[1] << 8);
    const unsigned shift = 8 - static_cast<unsigned>(bit % 8) - m_bitsPerPlane;
    return static_cast<std::uint16_t>((*at >> shift) & ((1u << m_bitsPerPlane) - 1));
}

void RIMAGE::ReadRowRGBA(std::uint32_t y, std::span<std::uint8_t> rgba) const noexcept {
    if (y >= m_height) return;
    const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(m_width, rgba.size() / 4));
    const bool indexed = m_planes == 1 && !m_palette.empty();
    for (std::uint32_t x = 0; x < count; ++x) {
        const auto sample = [&](unsigned plane) { return To8Bits(GetSample(x, y, plane), m_bitsPerPlane); };
        std::uint8_t* to = rgba.data() + std::size_t{x} * 4;
        if (indexed) {
            const std::size_t entry = GetSample(x, y, 0);
            const Rgb color = entry < m_palette.size() ? m_palette[entry] : Rgb();
            to[0] = color.r, to[1] = color.g, to[2] = color.b;
        } else if (m_planes < 3) {
            to[0] = to[1] = to[2] = sample(0);
        } else {
            to[0] = sample(0), to[1] = sample(1), to[2] = sample(2);
        }
        to[3] = m_planes % 2 == 0 ? sample(m_planes - 1) : 255;
    }
}

void RIMAGE::WriteRow(std::uint32_t y, std::span<const std::uint8_t> row) {
    if (m_bitsPerPlane != 8 || y >= m_height || row.size() != std::size_t{m_width} * m_planes) return;
    const std::size_t first = std::size_t{y / m_tileEdge} * TilesAcross();
    for (std::size_t i = first; i < first + TilesAcross(); ++i) {
        const MutableTile tile = EditTile(i);
        std::copy_n(row.begin() + static_cast<std::ptrdiff_t>(tile.bounds.left) * m_planes, tile.stride,
                    tile.data + y % m_tileEdge * tile.stride);
    }
}

// Sample by sample only where whole bytes cannot be compared: the result is that of the samples in either
// case, as earlier samples are higher bits or earlier bytes.
int RIMAGE::CompareRow(const RIMAGE& other, std::uint32_t y) const noexcept {
    const bool wholeBytes = m_tileEdge == other.m_tileEdge;
    for (std::uint32_t left = 0; left < m_width; left += m_tileEdge) {
        const std::uint32_t right = std::min(left + m_tileEdge, m_width);
        std::uint32_t x = left;
        if (wholeBytes) {
            const Tile a = GetTile(std::size_t{y / m_tileEdge} * TilesAcross() + left / m_tileEdge);
            const Tile b = other.GetTile(std::size_t{y / m_tileEdge} * TilesAcross() + left / m_tileEdge);
            const unsigned bits = m_planes * m_bitsPerPlane;
            // Pixels that end on a byte; the rest, fewer than eight, may lie beside padding.
            const std::uint32_t whole = bits % 8 == 0 ? right - left : (right - left) / 8 * 8;
            const std::size_t row = y % m_tileEdge;
            const int result =
                std::memcmp(a.data + row * a.stride, b.data + row * b.stride, std::size_t{whole} * bits / 8);
            if (result != 0) return result;
            x += whole;
        }
        for (; x < right; ++x)
            for (unsigned plane = 0; plane < m_planes; ++plane) {
                const std::uint16_t a = GetSample(x, y, plane), b = other.GetSample(x, y, plane);
                if (a != b)
                    return Compare(a & 255u, b & 255u) != 0 ? Compare(a & 255u, b & 255u) : Compare(a, b);
            }
    }
    return 0;
}

int RIMAGE::CompareTo(const RIMAGE& other) const noexcept {
    if (this == &other) return 0;
    if (m_width != other.m_width) return Compare(m_width, other.m_width);
    if (m_height != other.m_height) return Compare(m_height, other.m_height);
    if (m_planes != other.m_planes) return Compare(m_planes, other.m_planes);
    if (m_bitsPerPlane != other.m_bitsPerPlane) return Compare(m_bitsPerPlane, other.m_bitsPerPlane);
    if (m_palette.size() != other.m_palette.size()) return Compare(m_palette.size(), other.m_palette.size());
    if (!m_palette.empty()) {
        static_assert(sizeof(Rgb) == 3);
        const int result =
            std::memcmp(m_palette.data(), other.m_palette.data(), m_palette.size() * sizeof(Rgb));
        if (result != 0) return result;
    }
    for (std::uint32_t y = 0; y < m_height; ++y)
        if (const int result = CompareRow(other, y); result != 0) return result;
    return 0;
}

std::optional<RIMAGE::Tile> RIPTileParser::Next() noexcept {
    if (m_next >= m_image.GetNumTiles()) return std::nullopt;
    return m_image.GetTile(m_next++);
}

int RCF_CompareRImage(const RIMAGE* a, const RIMAGE* b) noexcept {
    if (a == b) return 0;
    if (!a || !b) return a ? 1 : -1;
    return a->CompareTo(*b);
}
