#include <algorithm>
#include <limits>
#include <utility>

#include "fom/legacy_records.h"

#include "pool/legacy_io.h"
#include "pool/legacy_values.h"

using VyrFOM::LegacyReader;
using VyrFOM::LegacyWriter;

namespace {

constexpr std::size_t kLeftArrowAt = 104;
constexpr std::size_t kRightArrowAt = 108;

/// What the old record holds narrower than the current one.
struct NarrowFields {
    std::uint16_t type = OutlineNone;
    std::uint16_t overprint = 0;
    std::int32_t miterLimit = 0;
    CGE_DOTDASHSPEC16 dotDash;
    std::int16_t dashAdjust = 0;
};

/// Every field of the record; `Io` is LegacyReader or LegacyWriter, whose records may be const.
template <class Io, class Outline, class Narrow>
void OutlineFields(const Io& io, Outline& outline, Narrow& narrow) {
    io.Number(0, narrow.type);
    io.Number(2, outline.endCaps);
    io.Number(4, outline.join);
    io.Number(6, outline.justification);
    io.Number(8, outline.width);
    io.Number(12, outline.nibStretch);
    io.Number(14, narrow.overprint);
    io.Number(16, outline.nibAngle);
    io.Number(20, narrow.miterLimit);
    VyrFOM::MatrixAt(io, 24, outline.matrix);
    io.Color(72, outline.color);
    VyrFOM::ScreenAt(io, 84, outline.screen);
    io.Number(100, outline.dotLength);
    io.Object(kLeftArrowAt, udi::kPtrBlock, outline.leftArrow);
    io.Object(kRightArrowAt, udi::kPtrBlock, outline.rightArrow);
    io.Number(112, narrow.dotDash.count);
    VyrFOM::NumbersAt(io, 114, narrow.dotDash.element);
    io.Number(134, narrow.dashAdjust);
}

bool IsNone(std::uint16_t type) noexcept {
    return (type & 15) == OutlineNone;
}

/// The old record has no wideline: a solid line as wide stands for it.
std::uint16_t WithoutWideline(std::uint16_t type) noexcept {
    return static_cast<std::uint16_t>((type & OutlineWideline) ? (type & 0xFFF2) | OutlineSolid : type);
}

template <class Narrow, class Wide>
Narrow Narrowed(Wide value) noexcept {
    using Limits = std::numeric_limits<Narrow>;
    return static_cast<Narrow>(std::clamp<Wide>(value, Limits::min(), Limits::max()));
}

void Read(const LegacyReader& reader, CGE_OUTLINE& outline) {
    NarrowFields narrow;
    outline.SetToNoOutline();
    OutlineFields(reader, outline, narrow);
    outline.type = WithoutWideline(narrow.type);
    outline.overprint = narrow.overprint;
    outline.SetMiterLimit(narrow.miterLimit);
    outline.SetDashAdjust(CGE_DASH_ADJUST{narrow.dashAdjust});
    outline.dotDash = CGEDotDashFrom16(narrow.dotDash);
}

/// Its arrowheads all the same: their blocks follow the record in the stream.
void ReadNone(const LegacyReader& reader, CGE_OUTLINE& outline) {
    outline.SetToNoOutline();
    reader.Object(kLeftArrowAt, udi::kPtrBlock, outline.leftArrow);
    reader.Object(kRightArrowAt, udi::kPtrBlock, outline.rightArrow);
}

void Write(const CGE_OUTLINE& outline, const LegacyWriter& writer) {
    const NarrowFields narrow{WithoutWideline(outline.type), Narrowed<std::uint16_t>(outline.overprint),
                              outline.GetMiterLimit(), CGEDotDashTo16(outline.dotDash),
                              Narrowed<std::int16_t>(std::int32_t{outline.GetDashAdjust()})};
    OutlineFields(writer, outline, narrow);
}

}  // namespace

bool FOMIO12Conv::ConvertCGE_OUTLINE(bool toCurrent, CGE_OUTLINE& outline, CGE_OUTLINE_12xx& legacy,
                                     const ColorSystem::ColorContext& context, udi::PtrRemapper& remapper) {
    if (toCurrent) {
        const LegacyReader reader(legacy.bytes, remapper);
        std::uint16_t type = 0;
        reader.Number(0, type);
        if (IsNone(type))
            ReadNone(reader, outline);
        else
            Read(reader, outline);
        return true;
    }
    legacy.bytes.fill(0);
    if (IsNone(outline.type))
        legacy.bytes[0] = OutlineNone;
    else
        Write(std::as_const(outline), LegacyWriter(legacy.bytes, context, remapper));
    return true;
}
