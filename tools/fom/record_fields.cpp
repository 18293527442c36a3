#include "fom/record_fields.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "host/base/little_endian.h"
#include "host/stream/archive.h"

#include "fom/serialization.h"

namespace command {
namespace {

using Bytes = std::span<const std::uint8_t>;

/// What a field is called; a record is its fields.
struct Naming {
    unsigned number;
    const char* name;
    std::span<const Naming> fields = {};
};

constexpr const char* kUnknown = "unknown field";
constexpr const char* kKind = "kind";
constexpr const char* kStops = "colours";
constexpr const char* kTransparency = "transparency of colours";

constexpr Naming kUniform[] = {{1, "colour"}, {2, "screen"}};
constexpr Naming kFountain[] = {{1, "type"},
                                {2, "blend rate method"},
                                {3, "spread method"},
                                {4, "legacy blend mode"},
                                {5, "number of steps"},
                                {6, "padding"},
                                {7, "blend rate value"},
                                {8, "anisotropic"},
                                {9, "angle"},
                                {10, "centre offset x"},
                                {11, "centre offset y"},
                                {12, "units"},
                                {13, "origin"},
                                {14, "matrix"},
                                {15, "blend rate acceleration"},
                                {16, "screen"},
                                {17, kStops}};
constexpr Naming kTiling[] = {{1, "tile width"},    {2, "tile height"},       {3, "tile x offset"},
                              {4, "tile y offset"}, {5, "inter-tile offset"}, {6, "tile flags"}};
constexpr Naming kMono[] = {{1, "bitmap"},     {2, "tiling", kTiling}, {3, "foreground"},
                            {4, "background"}, {5, "screen"},          {6, "engine switch"}};
constexpr Naming kTexture[] = {
    {1, "texture present"}, {2, "texture resolution"}, {3, "maximum tile edge"}, {4, "texture library name"},
    {5, "texture name"},    {6, "texture style name"}, {7, "texture parameters"}};
constexpr Naming kPattern[] = {{1, "pattern data"},          {2, "tiling", kTiling}, {3, "bounding box"},
                               {4, "original bounding box"}, {5, "instance"},        {6, "temporary data"},
                               {7, "texture", kTexture}};
constexpr Naming kPostScript[] = {{1, "pattern number"}, {2, "reserved word"}, {3, "parameters"}};
constexpr Naming kHatch[] = {{1, "background"},           {2, "screen"},
                             {3, "modification"},         {4, "spacing multiplier"},
                             {5, "thickness multiplier"}, {6, "hatch library name"},
                             {7, "hatch name"},           {8, "hatch lines"}};
constexpr Naming kFill[] = {{1, kKind},
                            {2, "GUID"},
                            {3, "uniform", kUniform},
                            {4, "fountain", kFountain},
                            {5, "mono bitmap", kMono},
                            {6, "colour bitmap", kPattern},
                            {7, "vector", kPattern},
                            {8, "texture", kPattern},
                            {9, "PostScript", kPostScript},
                            {10, "hatch", kHatch}};
constexpr Naming kExtras[] = {{1, "wideline"},
                              {2, "variable width"},
                              {3, "left arrow attributes"},
                              {4, "right arrow attributes"},
                              {5, "project matrix"}};
constexpr Naming kOutline[] = {{1, "type"},
                               {2, "end caps"},
                               {3, "join"},
                               {4, "justification"},
                               {5, "width"},
                               {6, "nib stretch"},
                               {7, "nib angle"},
                               {8, "matrix"},
                               {9, "colour"},
                               {10, "screen"},
                               {11, "overprint"},
                               {12, "dot-dash"},
                               {13, "left arrowhead"},
                               {14, "right arrowhead"},
                               {15, "dot length"},
                               {16, "GUID"},
                               {17, "miter limit"},
                               {18, "dash adjust"},
                               {19, "extras", kExtras}};

/// The value of the next field, by its width code.
bool ReadValue(Bytes bytes, std::size_t& at, unsigned width, Bytes& value) noexcept {
    constexpr unsigned kSized = 5;
    std::size_t size = width < kSized ? std::size_t{1} << width : 0;
    if (width == kSized) {
        if (bytes.size() - at < 4) return false;
        size = host::LoadLittle<std::uint32_t>(bytes.data() + at);
        at += 4;
    }
    if (width > kSized || size > bytes.size() - at) return false;
    value = bytes.subspan(at, size);
    at += size;
    return true;
}

void AppendFields(Bytes bytes, std::size_t base, std::span<const Naming> namings,
                  std::vector<RecordField>& fields) {
    for (std::size_t at = 0; bytes.size() - at >= 2;) {
        const unsigned number = bytes[at], width = bytes[at + 1];
        at += 2;
        Bytes value;
        if (!ReadValue(bytes, at, width, value)) return;
        const std::size_t offset = base + at - value.size();
        const auto naming = std::find_if(namings.begin(), namings.end(),
                                         [number](const Naming& known) { return known.number == number; });
        if (naming != namings.end() && !naming->fields.empty()) {
            AppendFields(value, offset, naming->fields, fields);
        } else {
            fields.push_back({naming == namings.end() ? kUnknown : naming->name, offset, value});
        }
    }
}

std::vector<RecordField> ReadFields(Bytes body, std::span<const Naming> namings) {
    constexpr std::size_t kVersion = 2;
    std::vector<RecordField> fields;
    if (body.size() >= kVersion) AppendFields(body.subspan(kVersion), kVersion, namings, fields);
    return fields;
}

template <class Record>
std::vector<std::uint8_t> MakeBody(const Record& record) {
    MemoryFileStream nowhere;
    udi::PersistentPtrRemapper remapper;
    udi::OutputArchive archive(nowhere, remapper, FOMSerialization::GetColorContext());
    record.SaveIn(archive);
    return std::move(archive.GetBytes());
}

Bytes ValueOf(const std::vector<RecordField>& fields, const char* name) noexcept {
    for (const RecordField& field : fields)
        if (std::strcmp(field.name, name) == 0) return field.value;
    return {};
}

bool IsSame(Bytes a, Bytes b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

/// Of what stands in either list, in its order.
std::vector<std::string> Compare(const std::vector<RecordField>& before,
                                 const std::vector<RecordField>& after) {
    std::vector<std::string> names;
    const auto add = [&](const RecordField& field) {
        const bool isKnown = std::find(names.begin(), names.end(), field.name) != names.end();
        if (!isKnown && !IsSame(ValueOf(before, field.name), ValueOf(after, field.name)))
            names.emplace_back(field.name);
    };
    std::for_each(before.begin(), before.end(), add);
    std::for_each(after.begin(), after.end(), add);
    return names;
}

/// Which half of the stops differs.
void NameStops(const CGE_FOUNTAINFILL& before, const CGE_FOUNTAINFILL& after,
               std::vector<std::string>& names) {
    const auto stops = std::find(names.begin(), names.end(), kStops);
    if (stops == names.end()) return;
    const CLR_FOUNTCOLOR_ARRAY &a = before.GetColors(), &b = after.GetColors();
    bool isSameColor = a.size() == b.size(), isSameTransparency = isSameColor;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        CLR_FOUNTCOLOR opaque = a[i], other = b[i];
        isSameTransparency = isSameTransparency && opaque.transparency == other.transparency;
        opaque.transparency = other.transparency = 0;
        isSameColor = isSameColor && opaque == other;
    }
    if (isSameColor) names.erase(stops);
    if (!isSameTransparency) names.emplace_back(kTransparency);
}

}  // namespace

std::vector<RecordField> ReadFillFields(Bytes body) {
    return ReadFields(body, kFill);
}

std::vector<RecordField> ReadOutlineFields(Bytes body) {
    return ReadFields(body, kOutline);
}

std::vector<std::uint8_t> BodyOf(const CGE_FILL& record) {
    return MakeBody(record);
}

std::vector<std::uint8_t> BodyOf(const CGE_OUTLINE& record) {
    return MakeBody(record);
}

std::vector<std::string> CompareRecords(const CGE_FILL& before, const CGE_FILL& after) {
    if (before.GetType() != after.GetType()) return {"the whole fill"};
    const std::vector<std::uint8_t> a = BodyOf(before), b = BodyOf(after);
    std::vector<std::string> names = Compare(ReadFillFields(a), ReadFillFields(b));
    if (before.GetType() == FillFountain) NameStops(before.Fountain(), after.Fountain(), names);
    return names;
}

std::vector<std::string> CompareRecords(const CGE_OUTLINE& before, const CGE_OUTLINE& after) {
    const std::vector<std::uint8_t> a = BodyOf(before), b = BodyOf(after);
    return Compare(ReadOutlineFields(a), ReadOutlineFields(b));
}

}  // namespace command
