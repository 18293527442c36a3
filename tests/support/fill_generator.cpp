#include "support/fill_generator.h"

#include <algorithm>
#include <limits>

#include "host/base/temp_data.h"

#include "support/blocks.h"

namespace testing_support {
namespace {

using Field = FillGenerator::Field;
using Generator = FillGenerator;

std::uint16_t Small(unsigned value) {
    return static_cast<std::uint16_t>(value);
}

/// Doubles whose bytes differ though two of them are equal by value and one equals nothing.
double Number(unsigned value) {
    const double numbers[] = {0.0, -0.0, std::numeric_limits<double>::quiet_NaN()};
    return numbers[value];
}

/// A process colour, a spot colour and one of a named palette.
CLR_COLORSPEC Color(unsigned value) {
    CLR_COLORSPEC color;
    color.MakeCMYKBlack();
    if (value == 1) color.MakeSpot(7, 50);
    if (value == 2) color.SetPaletteType(12);
    return color;
}

void SetIdentity(CLR_COLORSPEC& color, unsigned value) {
    auto identity = color.GetIdentity();
    identity[15] = static_cast<std::uint8_t>(value);
    color.SetIdentity(identity);
}

/// An identity that CompareColors does not read.
void SetUnreadIdentity(CLR_COLORSPEC& color, unsigned value) {
    if (!color.IsNamedPalette()) SetIdentity(color, value);
}

template <std::size_t N>
void SetName(host::FixedName<N>& name, unsigned value) {
    constexpr const wchar_t* names[] = {L"", L"Stra\u00dfe", L"\u00e4hnlich"};
    name.Set(names[value]);
}

template <std::size_t N>
void ChangeCase(host::FixedName<N>& name, unsigned value) {
    for (char16_t& unit : name.Units()) {
        if (value == 1 && unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - 32);
        if (value == 2 && unit == u'\u00e4') unit = u'\u00c4';
    }
}

void SetContents(CGE_VECTORFILL& vector, unsigned value) {
    // The last byte, beyond one piece of reading, tells them apart.
    std::vector<std::byte> bytes(20000);
    bytes.back() = static_cast<std::byte>(value);
    vector.AdoptTmpFile(value == 0 ? 0 : TMPCreateTmpFile(bytes));
}

void SetImage(CGE_PATTERNFILL& pattern, HUDIIMAGE image) {
    pattern.AdoptTmpFile(image ? TMPRegisterPrivateData(image) : 0);
}

/// The image again, as another object.
void SwapImage(CGE_COLORBMPFILL& bitmap, Generator& g) {
    const HUDIIMAGE image = UDIIMGFromTmpFile(bitmap.tmpFile);
    for (unsigned value = 1; value < Generator::kValues && image; ++value) {
        const HUDIIMAGE first = g.Image(value, false);
        const HUDIIMAGE second = g.Image(value, true);
        UDIIMGRelease(image == first ? first : second);
        if (image == first || image == second) return SetImage(bitmap, image == first ? second : first);
        UDIIMGRelease(first);
    }
}

void SwapBitmap(CGE_MONOBMPFILL& mono, Generator& g) {
    for (unsigned value = 1; value < Generator::kValues; ++value)
        if (mono.bitmap == g.Bitmap(value, false)) return void(mono.bitmap = g.Bitmap(value, true));
}

void SetInstance(CGE_FILL& fill, unsigned value) {
    fill.EditPattern()->instance = reinterpret_cast<void*>(std::uintptr_t{value} << 8);
}

void SetPatternData(CGE_FILL& fill, unsigned value) {
    fill.EditPattern()->AdoptPatternData(value == 0 ? nullptr : MEMMANAlloc(kPatternDataSize, true));
    fill.EditPattern()->SetOwner(&fill);
}

CGE_HATCHLINE& LastLine(CGE_FILL& fill) {
    CGE_HATCHFILL& hatch = fill.EditHatch();
    if (hatch.lines.empty()) hatch.SetHatchArraySize(1);
    return hatch.lines.back();
}

using Stop = CLR_FOUNTCOLOR;
Stop LastStop(CGE_FILL& fill) {
    if (fill.Fountain().GetNumColors() == 0) fill.EditFountain().SetNumColors(1);
    return fill.Fountain().GetColors().back();
}
void SetLastStop(CGE_FILL& fill, const Stop& stop) {
    fill.EditFountain().SetColor(fill.Fountain().GetNumColors() - 1u, stop);
}

/// A screen that is a member: `record` is an expression in `f`.
#define SCREEN_FIELDS(record)                                                                                \
    {"screenId", [](CGE_FILL& f, unsigned v, Generator&) { record.screen.screenId = Small(v); }},            \
        {"angle",                                                                                            \
         [](CGE_FILL& f, unsigned v, Generator&) { record.screen.angle = 45000000 - static_cast<int>(v); }}, \
    {                                                                                                        \
        "frequency", [](CGE_FILL& f, unsigned v, Generator&) { record.screen.frequency = 60 + 250 * v; }     \
    }
#define FIELD(name, ...)                                                                                     \
    {                                                                                                        \
        name, []([[maybe_unused]] CGE_FILL& f, [[maybe_unused]] unsigned v, [[maybe_unused]] Generator& g) { \
            __VA_ARGS__;                                                                                     \
        }                                                                                                    \
    }

const Field kUniform[] = {
    FIELD("color", f.EditUniform().color = Color(v)), SCREEN_FIELDS(f.EditUniform()),
    FIELD("overprint", if (!f.Uniform().color.IsSpot()) f.EditUniform().screen.overprint = v),
    FIELD("identity", SetIdentity(f.EditUniform().color, v))};
const Field kUniformIgnored[] = {
    FIELD("reserved", f.EditUniform().screen.reserved = Small(v)),
    FIELD("overprint of a spot colour", if (f.Uniform().color.IsSpot()) f.EditUniform().screen.overprint = v),
    FIELD("guid", f.SetGuid(VyrUtils::Guid::Generate())),
    FIELD("stale hatch", f.EditHatch().SetHatchArraySize(v)),
    FIELD("stale vector", SetContents(f.EditVector(), v))};

const Field kFountain[] = {
    FIELD("type", f.EditFountain().SetFountainType(static_cast<ClrFountainFillType>(v))),
    FIELD("angle", f.EditFountain().SetAngle(-1000 * static_cast<int>(v))),
    FIELD("centre", f.EditFountain().SetCenterOffset(0, static_cast<int>(v))),
    FIELD("origin", f.EditFountain().SetOrigin({0, Number(v)})),
    FIELD("matrix", f.EditFountain().SetMatrix({1, 0, 0, 1, 0, Number(v)})),
    FIELD("steps", f.EditFountain().SetNumSteps(static_cast<std::int16_t>(v * 256))),
    FIELD("acceleration", f.EditFountain().SetBlendRateAcceleration(Number(v))),
    FIELD("screen", CLR_SCREENSPEC s = f.Fountain().GetScreen(); s.overprint = v;
          f.EditFountain().SetScreen(s)),
    FIELD("stops", f.EditFountain().SetNumColors(Small(v + 1))),
    FIELD("stop color", Stop s = LastStop(f); s.color = Color(v); SetLastStop(f, s)),
    FIELD("stop position", Stop s = LastStop(f); s.position = Small(v * 50); SetLastStop(f, s))};

const Field kPostScript[] = {FIELD("number", f.EditPostScript().number = Small(v)),
                             FIELD("reserved", f.EditPostScript().reserved = Small(v)),
                             FIELD("first", f.EditPostScript().parameters[0] = static_cast<std::int16_t>(v)),
                             FIELD("last", f.EditPostScript().parameters[4] = static_cast<std::int16_t>(v))};
/// For kinds whose whole content is compared.
const Field kOnlyIgnored[] = {FIELD("guid", f.SetGuid(VyrUtils::Guid::Generate())),
                              FIELD("stale uniform", f.EditUniform().color = Color(v)),
                              FIELD("stale vector", SetContents(f.EditVector(), v))};

#define TILING_FIELDS                                                            \
    FIELD("width", f.EditCGETiling()->width = static_cast<int>(v)),              \
        FIELD("height", f.EditCGETiling()->height = -static_cast<int>(v)),       \
        FIELD("xOffset", f.EditCGETiling()->xOffset = Small(v)),                 \
        FIELD("yOffset", f.EditCGETiling()->yOffset = Small(v)),                 \
        FIELD("interTileOffset", f.EditCGETiling()->interTileOffset = Small(v)), \
        FIELD("flags", f.EditCGETiling()->flags = Small(v))

const Field kMono[] = {
    FIELD("bitmap", f.EditMonoBitmap().bitmap = g.Bitmap(v, false)),
    TILING_FIELDS,
    FIELD("foreground", f.EditMonoBitmap().foreground = Color(v)),
    FIELD("background", f.EditMonoBitmap().background = Color(v)),
    SCREEN_FIELDS(f.EditMonoBitmap()),
    FIELD("overprint", const CGE_MONOBMPFILL& m = f.MonoBitmap();
          if (!m.foreground.IsSpot() && !m.background.IsSpot()) f.EditMonoBitmap().screen.overprint = v),
    FIELD("switch", f.EditMonoBitmap().engineSwitch = static_cast<std::uint8_t>(v))};
const Field kMonoIgnored[] = {
    FIELD("bitmap object", SwapBitmap(f.EditMonoBitmap(), g)),
    FIELD("identity", SetUnreadIdentity(f.EditMonoBitmap().background, v)),
    FIELD("overprint of a spot colour", CGE_MONOBMPFILL& m = f.EditMonoBitmap();
          if (m.foreground.IsSpot() || m.background.IsSpot()) m.screen.overprint = v),
    FIELD("guid", f.SetGuid(VyrUtils::Guid::Generate()))};

#define PATTERN_FIELDS                                                                       \
    TILING_FIELDS, FIELD("box", f.EditPattern()->boundingBox.bottom = -static_cast<int>(v)), \
        FIELD("instance", SetInstance(f, v))

const Field kBitmap[] = {PATTERN_FIELDS, FIELD("image", SetImage(f.EditColorBitmap(), g.Image(v, false)))};
const Field kBitmapIgnored[] = {
    FIELD("image object", SwapImage(f.EditColorBitmap(), g)), FIELD("pattern data", SetPatternData(f, v)),
    FIELD("original box", f.EditColorBitmap().originalBoundingBox.top = static_cast<int>(v))};

const Field kVector[] = {PATTERN_FIELDS,
                         FIELD("original box", f.EditVector().originalBoundingBox.top = static_cast<int>(v)),
                         FIELD("contents", SetContents(f.EditVector(), v))};
const Field kVectorIgnored[] = {
    FIELD("pattern data", SetPatternData(f, v)),
    FIELD("no bytes",
          if (v == 1 && f.Vector().tmpFile == 0) f.EditVector().AdoptTmpFile(TMPCreateTmpFile()))};

const Field kTexture[] = {
    PATTERN_FIELDS,
    FIELD("present", f.EditTexture().info.present = v != 0),
    FIELD("resolution", f.EditTexture().info.resolution = Small(v)),
    FIELD("maxEdge", f.EditTexture().info.maxEdge = Small(v)),
    FIELD("library", SetName(f.EditTexture().info.library, v)),
    FIELD("texture", SetName(f.EditTexture().info.texture, v)),
    FIELD("style", SetName(f.EditTexture().info.style, v)),
    FIELD("last parameter", f.EditTexture().info.parameters[103] = static_cast<std::uint8_t>(v))};
const Field kTextureIgnored[] = {
    FIELD("present word", if (f.Texture().info.present != 0) f.EditTexture().info.present = 1 + v),
    FIELD("image", SetImage(f.EditTexture(), g.Image(v, false))),
    FIELD("original box", f.EditTexture().originalBoundingBox.top = static_cast<int>(v)),
    FIELD("case of library", ChangeCase(f.EditTexture().info.library, v)),
    FIELD("case of texture", ChangeCase(f.EditTexture().info.texture, v)),
    FIELD("case of style", ChangeCase(f.EditTexture().info.style, v))};

const Field kHatch[] = {FIELD("background", f.EditHatch().background = v == 2 ? CLR_COLORSPEC() : Color(v)),
                        SCREEN_FIELDS(f.EditHatch()),
                        FIELD("overprint", f.EditHatch().screen.overprint = v),
                        FIELD("modification", f.EditHatch().modification = v),
                        FIELD("spacing", f.EditHatch().spacingMultiplier = Number(v)),
                        FIELD("thickness", f.EditHatch().thicknessMultiplier = Number(v)),
                        FIELD("library", SetName(f.EditHatch().library, v)),
                        FIELD("name", SetName(f.EditHatch().name, v)),
                        FIELD("lines", f.EditHatch().SetHatchArraySize(1 + v)),
                        FIELD("origin", LastLine(f).origin.y = static_cast<int>(v)),
                        FIELD("offset", LastLine(f).offset = static_cast<int>(v)),
                        FIELD("line spacing", LastLine(f).spacing = static_cast<int>(v)),
                        FIELD("line angle", LastLine(f).angle = static_cast<int>(v)),
                        FIELD("pen width", LastLine(f).pen.width = static_cast<int>(v)),
                        FIELD("pen identity", SetIdentity(LastLine(f).pen.color, v))};
const Field kHatchIgnored[] = {
    FIELD("reserved", f.EditHatch().screen.reserved = Small(v)),
    FIELD("identity", SetUnreadIdentity(f.EditHatch().background, v)),
    FIELD("no colour",
          if (f.Hatch().background.GetModel() == ClrModel::None) f.EditHatch().background.SetComponent(
              0, Small(v))),
    FIELD("case of library", ChangeCase(f.EditHatch().library, v)),
    FIELD("case of name", ChangeCase(f.EditHatch().name, v)),
    FIELD("pen guid", if (!f.Hatch().lines.empty()) LastLine(f).pen.guid = VyrUtils::Guid::Generate())};

#undef PATTERN_FIELDS
#undef TILING_FIELDS
#undef FIELD
#undef SCREEN_FIELDS

struct KindFields {
    CgeFillType kind;
    std::span<const Field> compared, ignored;
};
const KindFields& FieldsOf(CgeFillType kind) {
    static const KindFields kinds[] = {
        {FillUniform, kUniform, kUniformIgnored},    {FillFountain, kFountain, kOnlyIgnored},
        {FillPostScript, kPostScript, kOnlyIgnored}, {FillMonoBitmap, kMono, kMonoIgnored},
        {FillMonoBitmapAlt, kMono, kMonoIgnored},    {FillColorBitmap, kBitmap, kBitmapIgnored},
        {FillVector, kVector, kVectorIgnored},       {FillTexture, kTexture, kTextureIgnored},
        {FillHatch, kHatch, kHatchIgnored}};
    static const KindFields none{FillNone, {}, kOnlyIgnored};
    const auto found = std::ranges::find(kinds, kind, &KindFields::kind);
    return found != std::end(kinds) ? *found : none;
}

HMEM MakeBitmap(unsigned value) {
    return BlockOf(std::string(12, static_cast<char>(value)));
}

HUDIIMAGE MakeImage(unsigned value) {
    auto raster = RIMAGE::Create(3, 2, 1, 8);
    const std::uint8_t row[3] = {0, 0, static_cast<std::uint8_t>(value)};
    raster->WriteRow(1, row);
    return UDIIMGCreateFromRIMAGE(std::move(raster));
}

}  // namespace

FillGenerator::FillGenerator(std::uint32_t seed) : m_random(seed), m_bitmaps(2), m_images(2) {
    for (unsigned value = 1; value < kValues; ++value) {
        m_bitmaps.insert(m_bitmaps.end(), {MakeBitmap(value), MakeBitmap(value)});
        m_images.insert(m_images.end(), {MakeImage(value), MakeImage(value)});
    }
}

FillGenerator::~FillGenerator() {
    for (HMEM block : m_bitmaps)
        MEMMANFree(block);
    for (HUDIIMAGE image : m_images)
        UDIIMGRelease(image);
}

std::span<const Field> FillGenerator::ComparedFields(CgeFillType kind) {
    return FieldsOf(kind).compared;
}

std::span<const Field> FillGenerator::IgnoredFields(CgeFillType kind) {
    return FieldsOf(kind).ignored;
}

CGE_FILL FillGenerator::Make(CgeFillType kind) {
    CGE_FILL fill(kind);
    // Few changes to each record, or hardly any two would be equal.
    for (const Field& field : ComparedFields(kind))
        if (Pick(6) == 0) field.set(fill, Pick(kValues), *this);
    for (const Field& field : IgnoredFields(kind))
        if (Pick(3) == 0) field.set(fill, Pick(kValues), *this);
    return fill;
}

CGE_FILL FillGenerator::MakeEqual(const CGE_FILL& fill) {
    CGE_FILL copy(fill);
    for (const Field& field : IgnoredFields(fill.GetType()))
        if (Pick(2) == 0) field.set(copy, Pick(kValues), *this);
    return copy;
}

}  // namespace testing_support
