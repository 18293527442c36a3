#include "host/gfx/arrowhead.h"

#include <cassert>

#include "host/base/little_endian.h"

#include "base/locked_block.h"

namespace {

using host::LittleReader;
using host::LittleWriter;

// docs/formats/arrowheads.md
constexpr std::uint32_t kSignature = 0x57525241;  // "ARRW"
constexpr std::uint16_t kVersion = 1;
constexpr std::uint16_t kHeaderSize = 16;
constexpr std::size_t kPointSize = 8;

struct Header {
    std::uint32_t signature = 0;
    std::uint16_t version = 0;
    std::uint16_t size = 0;
    std::int32_t lineEnd = 0;
    std::uint32_t count = 0;
};

/// Which step may follow: all but a move need an open sub-path.
class StepOrder {
public:
    bool Accept(CgeArrowStep kind) noexcept {
        if (kind != kArrowMove && !m_inside) return false;
        m_inside = kind != kArrowClose;
        return true;
    }

private:
    bool m_inside = false;
};

std::size_t PointCount(CgeArrowStep kind) noexcept {
    return kind == kArrowCurve ? 3 : kind == kArrowClose ? 0 : 1;
}

std::size_t BlockSize(const CGE_ARROWHEAD& head) noexcept {
    std::size_t size = kHeaderSize;
    for (const CGE_ARROWSTEP& step : head.steps)
        size += 1 + PointCount(step.kind) * kPointSize;
    return size;
}

void WritePoint(LittleWriter& writer, const POINT& point) noexcept {
    writer.Write(point.x);
    writer.Write(point.y);
}

void WriteStep(LittleWriter& writer, const CGE_ARROWSTEP& step) noexcept {
    writer.Write(static_cast<std::uint8_t>(step.kind));
    if (step.kind == kArrowCurve) {
        WritePoint(writer, step.control1);
        WritePoint(writer, step.control2);
    }
    if (step.kind != kArrowClose) WritePoint(writer, step.to);
}

bool ReadPoint(LittleReader& reader, POINT& point) noexcept {
    return reader.Read(point.x) && reader.Read(point.y);
}

bool ReadStep(LittleReader& reader, CGE_ARROWSTEP& step) noexcept {
    std::uint8_t kind = 0;
    if (!reader.Read(kind) || kind > kArrowClose) return false;
    step.kind = static_cast<CgeArrowStep>(kind);
    if (step.kind == kArrowCurve && !(ReadPoint(reader, step.control1) && ReadPoint(reader, step.control2)))
        return false;
    return step.kind == kArrowClose || ReadPoint(reader, step.to);
}

/// The steps begin after it, where `reader` then stands.
std::optional<Header> ReadHeader(LittleReader& reader) noexcept {
    Header header;
    const bool whole = reader.Read(header.signature) && reader.Read(header.version) &&
                       reader.Read(header.size) && reader.Read(header.lineEnd) && reader.Read(header.count);
    if (!whole || header.signature != kSignature || header.version != kVersion) return std::nullopt;
    if (header.size < kHeaderSize || !reader.Skip(header.size - std::size_t{kHeaderSize}))
        return std::nullopt;
    return header;
}

/// Whether `reader` holds `count` steps in order and nothing else.
bool HoldsSteps(LittleReader reader, std::uint32_t count) noexcept {
    StepOrder order;
    CGE_ARROWSTEP step;
    for (std::uint32_t i = 0; i < count; ++i)
        if (!ReadStep(reader, step) || !order.Accept(step.kind)) return false;
    return reader.Remaining() == 0;
}

}  // namespace

bool CGE_ARROWHEAD::IsWellFormed() const noexcept {
    StepOrder order;
    for (const CGE_ARROWSTEP& step : steps)
        if (step.kind > kArrowClose || !order.Accept(step.kind)) return false;
    return true;
}

HMEM CGE_ARROWHEAD::ToBlock() const noexcept {
    assert(IsWellFormed());
    const HMEM block = MEMMANAlloc(BlockSize(*this), false);
    if (!block) return nullptr;
    const host::LockedBlock locked(block);
    LittleWriter writer(locked.Bytes().data());
    writer.Write(kSignature);
    writer.Write(kVersion);
    writer.Write(kHeaderSize);
    writer.Write(lineEnd);
    writer.Write(static_cast<std::uint32_t>(steps.size()));
    for (const CGE_ARROWSTEP& step : steps)
        WriteStep(writer, step);
    return block;
}

std::optional<CGE_ARROWHEAD> CGE_ARROWHEAD::FromBlock(HMEM block) {
    const host::LockedBlock locked(block);
    LittleReader reader(locked.Bytes());
    const std::optional<Header> header = ReadHeader(reader);
    // All steps are looked at before memory is taken for any.
    if (!header || !HoldsSteps(reader, header->count)) return std::nullopt;
    CGE_ARROWHEAD head;
    head.lineEnd = header->lineEnd;
    head.steps.resize(header->count);
    for (CGE_ARROWSTEP& step : head.steps)
        ReadStep(reader, step);
    return head;
}
