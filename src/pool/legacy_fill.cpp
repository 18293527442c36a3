#include "pool/legacy_fill.h"

#include <new>
#include <utility>

#include "fom/legacy_records.h"

#include "pool/legacy_fill_layout.h"

using ColorSystem::ColorContext;
using VyrFOM::LegacyReader;
using VyrFOM::LegacyWriter;

namespace {

constexpr std::int16_t kEvenRate = 50;  // what 12.00 means when its flag says that no rate is stored
constexpr std::uint32_t kHasLines = 1;

/// The bytes from which on both layouts are the same: 12.50 has a reserved word more.
template <unsigned kVersion, class Bytes>
auto Body(Bytes& bytes) noexcept {
    const std::size_t shift = CGE_FILL_LEGACY<kVersion>::kHeaderSize - CGE_FILL_1200::kHeaderSize;
    return std::span(bytes).subspan(std::min(shift, bytes.size()));
}

CLR_FOUNTCOLOR_ARRAY ReadStops(const LegacyReader& reader, std::size_t count) {
    const std::size_t present =
        (std::max(reader.Size(), VyrFOM::kStopsAt) - VyrFOM::kStopsAt) / VyrFOM::kStopSize;
    CLR_FOUNTCOLOR_ARRAY stops(std::min(count, present));
    for (std::size_t i = 0; i < stops.size(); ++i)
        VyrFOM::StopFields(reader, i, stops[i]);
    return stops;
}

template <unsigned kVersion>
void ReadRate(CGE_FOUNTAINFILL& fountain, const VyrFOM::LegacyFountain& old) noexcept {
    if constexpr (kVersion == 1200) {
        fountain.SetBlendRateMethod(BlendRateDefault);
        if (old.rateWord == 0) fountain.SetBlendRateValue(kEvenRate);
        if (old.rateWord == 1) fountain.SetBlendRateValue(old.rate);
    } else {
        fountain.SetBlendRateMethod(static_cast<ClrBlendRateMethod>(old.rateWord));
        fountain.SetBlendRateValue(old.rate);
    }
}

template <unsigned kVersion>
void ReadFountain(const LegacyReader& reader, CGE_FOUNTAINFILL& fountain) {
    VyrFOM::LegacyFountain old;
    VyrFOM::FountainFields(reader, old);
    fountain.SetFountainType(old.type);
    fountain.SetScreen(old.screen);
    fountain.SetPadding(old.padding);
    fountain.SetAngle(old.angle);
    fountain.SetCenterOffset(old.centerX, old.centerY);
    fountain.SetNumSteps(old.steps);
    ReadRate<kVersion>(fountain, old);
    fountain.SetColors(ReadStops(reader, old.colors));
    fountain.SetLegacyBlendMode(old.blendMode);
}

template <unsigned kVersion>
void WriteFountain(const LegacyWriter& writer, const CGE_FOUNTAINFILL& fountain) {
    VyrFOM::LegacyFountain old;
    old.type = fountain.GetFountainType();
    old.screen = fountain.GetScreen();
    old.padding = fountain.GetPadding();
    old.angle = fountain.GetAngle();
    old.centerX = fountain.GetCenterOffsetX();
    old.centerY = fountain.GetCenterOffsetY();
    old.steps = fountain.GetNumSteps();
    old.blendMode = fountain.GetLegacyBlendMode();
    old.rate = fountain.GetBlendRateValue();
    if constexpr (kVersion == 1200)
        old.rateWord = old.rate != kEvenRate;
    else
        old.rateWord = fountain.GetBlendRateMethod();
    old.colors = fountain.GetNumColors();
    VyrFOM::FountainFields(writer, old);
    for (std::size_t i = 0; i < old.colors; ++i)
        VyrFOM::StopFields(writer, i, fountain.GetColors()[i]);
}

/// A copy that the record may own; null where nothing, or something else, stands for the number.
HMEM CopyPatternData(HMEM known) {
    if (MEMMANGetSize(known) != kPatternDataSize) return nullptr;
    const HMEM copy = MEMMANDuplicate(known);
    if (!copy) throw std::bad_alloc();
    return copy;
}

void ReadPattern(const LegacyReader& reader, CGE_PATTERNFILL& pattern, bool holdsImage) {
    HMEM known = nullptr;
    std::uint32_t foreign = 0;
    VyrFOM::PatternFields(reader, pattern, known, foreign);
    pattern.originalBoundingBox = pattern.boundingBox;
    pattern.AdoptPatternData(CopyPatternData(known));
    pattern.SetOwner(nullptr);
    std::uint32_t own = 0;
    if (foreign != 0) own = holdsImage ? TMPRegisterPrivateData(nullptr) : TMPCreateTmpFile();
    pattern.AdoptTmpFile(own);
}

void WritePattern(const LegacyWriter& writer, const CGE_PATTERNFILL& pattern) {
    VyrFOM::PatternFields(writer, pattern, pattern.patternData, pattern.tmpFile);
}

void ReadHatch(const LegacyReader& reader, CGE_HATCHFILL& hatch, const std::vector<CGE_HATCHLINE>& lines) {
    std::uint32_t count = 0;
    std::uint32_t array = 0;
    VyrFOM::HatchFields(reader, hatch, count, array);
    const std::size_t present = array == 0 ? 0 : std::min<std::size_t>(count, lines.size());
    hatch.lines.assign(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(present));
}

void WriteHatch(const LegacyWriter& writer, const CGE_HATCHFILL& hatch) {
    const std::uint32_t count = hatch.GetNumLines();
    const std::uint32_t array = count == 0 ? 0 : kHasLines;
    VyrFOM::HatchFields(writer, hatch, count, array);
}

template <unsigned kVersion>
void Read(const CGE_FILL_LEGACY<kVersion>& legacy, CGE_FILL& fill, udi::PtrRemapper& remapper) {
    const LegacyReader reader(Body<kVersion>(legacy.bytes), remapper);
    switch (fill.GetType()) {
        case FillUniform:
            return VyrFOM::UniformFields(reader, fill.EditUniform());
        case FillFountain:
            return ReadFountain<kVersion>(reader, fill.EditFountain());
        case FillPostScript:
            return VyrFOM::PostScriptFields(reader, fill.EditPostScript());
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return VyrFOM::MonoFields(reader, fill.EditMonoBitmap());
        case FillColorBitmap:
            return ReadPattern(reader, fill.EditColorBitmap(), true);
        case FillVector:
            return ReadPattern(reader, fill.EditVector(), false);
        case FillTexture:
            ReadPattern(reader, fill.EditTexture(), true);
            return VyrFOM::TextureFields(reader, fill.EditTexture().info);
        case FillHatch:
            return ReadHatch(reader, fill.EditHatch(), legacy.lines);
        case FillNone:
            return;
    }
}

template <unsigned kVersion>
void WriteFields(const CGE_FILL& fill, const LegacyWriter& writer) {
    switch (fill.GetType()) {
        case FillUniform:
            return VyrFOM::UniformFields(writer, fill.Uniform());
        case FillFountain:
            return WriteFountain<kVersion>(writer, fill.Fountain());
        case FillPostScript:
            return VyrFOM::PostScriptFields(writer, fill.PostScript());
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return VyrFOM::MonoFields(writer, fill.MonoBitmap());
        case FillColorBitmap:
        case FillVector:
            return WritePattern(writer, *fill.Pattern());
        case FillTexture:
            WritePattern(writer, fill.Texture());
            return VyrFOM::TextureFields(writer, fill.Texture().info);
        case FillHatch:
            return WriteHatch(writer, fill.Hatch());
        case FillNone:
            return;
    }
}

template <unsigned kVersion>
std::uint32_t RecordSize(CgeFillType kind, std::uint32_t colors) noexcept {
    using Legacy = CGE_FILL_LEGACY<kVersion>;
    if (kind == FillHatch && Legacy::kLastKind == FillHatch) return VyrFOM::kLegacyHatchSize;
    return VyrFOM::LegacyFillSize(kind, colors) + static_cast<std::uint32_t>(Legacy::kHeaderSize) -
           static_cast<std::uint32_t>(CGE_FILL_1200::kHeaderSize);
}

template <unsigned kVersion>
void Write(const CGE_FILL& fill, CGE_FILL_LEGACY<kVersion>& legacy, const ColorContext& context,
           udi::PtrRemapper& remapper) {
    const std::uint32_t size = VyrFOM::GetLegacyFillSize<kVersion>(fill);
    if (size == legacy.kHeaderSize) return;
    legacy.bytes.assign(size, 0);
    if (fill.GetType() == FillHatch)
        legacy.lines = fill.Hatch().lines;
    else
        legacy.lines.clear();
    VyrFOM::WriteLegacyFill<kVersion>(legacy.bytes, fill, context, remapper);
}

template <unsigned kVersion>
bool Convert(bool toCurrent, CGE_FILL& fill, CGE_FILL_LEGACY<kVersion>& legacy, const ColorContext& context,
             udi::PtrRemapper& remapper) {
    if (toCurrent)
        fill.SetType(legacy.GetType());
    else
        legacy.SetType(fill.GetType());
    if (fill.GetType() > legacy.kLastKind) return false;
    if (toCurrent)
        Read(legacy, fill, remapper);
    else
        Write(std::as_const(fill), legacy, context, remapper);
    return true;
}

/// The number at a 12.00 offset; 0 where it is not all there.
template <class Number>
Number NumberAt(std::span<const std::uint8_t> body, std::size_t at) noexcept {
    return body.size() < at + sizeof(Number) ? Number{0} : host::LoadLittle<Number>(body.data() + at);
}

template <unsigned kVersion>
std::uint32_t SizeOf(const CGE_FILL_LEGACY<kVersion>& legacy) noexcept {
    return RecordSize<kVersion>(legacy.GetType(),
                                NumberAt<std::uint16_t>(Body<kVersion>(legacy.bytes), VyrFOM::kNumColorsAt));
}

}  // namespace

template <unsigned kVersion>
std::uint32_t VyrFOM::GetLegacyFillSize(const CGE_FILL& fill) noexcept {
    return RecordSize<kVersion>(fill.GetType(), fill.Fountain().GetNumColors());
}
template std::uint32_t VyrFOM::GetLegacyFillSize<1200>(const CGE_FILL&) noexcept;
template std::uint32_t VyrFOM::GetLegacyFillSize<1250>(const CGE_FILL&) noexcept;

template <unsigned kVersion>
void VyrFOM::WriteLegacyFill(std::span<std::uint8_t> bytes, const CGE_FILL& fill, const ColorContext& context,
                             udi::PtrRemapper& remapper) {
    host::StoreLittle(bytes.data(), std::uint16_t{fill.GetType()});
    if (fill.GetType() > CGE_FILL_LEGACY<kVersion>::kLastKind) return;
    WriteFields<kVersion>(fill, LegacyWriter(Body<kVersion>(bytes), context, remapper));
}
template void VyrFOM::WriteLegacyFill<1200>(std::span<std::uint8_t>, const CGE_FILL&, const ColorContext&,
                                            udi::PtrRemapper&);
template void VyrFOM::WriteLegacyFill<1250>(std::span<std::uint8_t>, const CGE_FILL&, const ColorContext&,
                                            udi::PtrRemapper&);

bool FOMIO12Conv::ConvertCGE_FILL(bool toCurrent, CGE_FILL& fill, CGE_FILL_1200& legacy,
                                  const ColorContext& context, udi::PtrRemapper& remapper) {
    return Convert(toCurrent, fill, legacy, context, remapper);
}

bool FOMIO12Conv::ConvertCGE_FILL(bool toCurrent, CGE_FILL& fill, CGE_FILL_1250& legacy,
                                  const ColorContext& context, udi::PtrRemapper& remapper) {
    return Convert(toCurrent, fill, legacy, context, remapper);
}

std::uint32_t FOMIO12Conv::GetFillSize(const CGE_FILL_1200& legacy) noexcept {
    return SizeOf(legacy);
}

std::uint32_t FOMIO12Conv::GetFillSize(const CGE_FILL_1250& legacy) noexcept {
    return SizeOf(legacy);
}

std::uint32_t FOMIO12Conv::GetNumHatchLines(const CGE_FILL_1250& legacy) noexcept {
    const auto body = Body<1250>(legacy.bytes);
    if (legacy.GetType() != FillHatch || NumberAt<std::uint32_t>(body, VyrFOM::kLineArrayAt) == 0) return 0;
    return NumberAt<std::uint32_t>(body, VyrFOM::kNumLinesAt);
}
