#include "engines/arrowheads.h"

#include <cstdint>
#include <span>

#include "host/geometry/rect.h"

namespace host {
namespace {

// Points in thousandths of the line's width: the line's end is at (0, 0), x runs on in the line's direction.
constexpr POINT kTriangle[] = {{0, -1500}, {3000, 0}, {0, 1500}};
constexpr POINT kNarrow[] = {{0, -1000}, {4000, 0}, {0, 1000}};
constexpr POINT kBarbed[] = {{-1000, -2000}, {3000, 0}, {-1000, 2000}, {0, 0}};
constexpr POINT kOpen[] = {{-1500, -2000}, {1000, -500}, {1000, 500},   {-1500, 2000},
                           {-1500, 1000},  {0, 0},       {-1500, -1000}};
constexpr POINT kDiamond[] = {{0, 0}, {1500, -1500}, {3000, 0}, {1500, 1500}};
constexpr POINT kSquare[] = {{0, -1250}, {2500, -1250}, {2500, 1250}, {0, 1250}};
constexpr POINT kBar[] = {{0, -2000}, {750, -2000}, {750, 2000}, {0, 2000}};
constexpr POINT kDisc[] = {{0, 0},    {183, -750}, {683, -1299}, {1433, -1500}, {2183, -1299}, {2732, -750},
                           {2933, 0}, {2732, 750}, {2183, 1299}, {1433, 1500},  {683, 1299},   {183, 750}};
constexpr POINT kFeather[] = {{0, -500},   {2000, -2000}, {3500, -2000}, {1500, -500},
                              {1500, 500}, {3500, 2000},  {2000, 2000},  {0, 500}};

constexpr std::span<const POINT> kShapes[] = {kTriangle, kNarrow, kBarbed, kOpen,   kDiamond,
                                              kSquare,   kBar,    kDisc,   kFeather};

void Append(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

std::vector<std::uint8_t> Encode(std::span<const POINT> points) {
    std::vector<std::uint8_t> bytes;
    Append(bytes, static_cast<std::uint32_t>(points.size()));
    for (const POINT& point : points) {
        Append(bytes, static_cast<std::uint32_t>(point.x));
        Append(bytes, static_cast<std::uint32_t>(point.y));
    }
    return bytes;
}

}  // namespace

void BuiltInArrowheads::Load() {
    if (!m_blocks.empty()) return;
    std::vector<MemoryBlock> blocks;
    blocks.reserve(std::size(kShapes));
    for (const std::span<const POINT> shape : kShapes)
        blocks.emplace_back(Encode(shape));
    m_blocks = std::move(blocks);
}

unsigned BuiltInArrowheads::GetCount() {
    Load();
    return static_cast<unsigned>(m_blocks.size());
}

HMEM BuiltInArrowheads::GetHandle(unsigned index) {
    Load();
    return index < m_blocks.size() ? m_blocks[index].Get() : nullptr;
}

}  // namespace host
