#include "fom/record_fields.h"

#include <algorithm>
#include <string_view>

#include "host/stream/body_fields.h"

#include "fom/serialization.h"

namespace command {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Fields = std::vector<host::BodyField>;

constexpr std::string_view kStops = "colours";

/// Pointers are numbered as they are met: what matters is where there are some.
template <class Serialization, class Record>
Bytes BodyOf(const Record& record) {
    udi::PersistentPtrRemapper remapper;
    return Serialization::MakeBody(record, remapper);
}

std::span<const std::uint8_t> ValueOf(const Fields& fields, std::string_view name) noexcept {
    for (const host::BodyField& field : fields)
        if (field.name == name) return field.value;
    return {};
}

/// Of what stands in either list, in its order.
std::vector<std::string> Compare(const Fields& before, const Fields& after) {
    std::vector<std::string> names;
    const auto add = [&](const host::BodyField& field) {
        const bool isKnown = std::find(names.begin(), names.end(), field.name) != names.end();
        if (!isKnown && !std::ranges::equal(ValueOf(before, field.name), ValueOf(after, field.name)))
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
    if (!isSameTransparency) names.emplace_back("transparency of colours");
}

}  // namespace

std::vector<std::string> CompareRecords(const CGE_FILL& before, const CGE_FILL& after) {
    if (before.GetType() != after.GetType()) return {"the whole fill"};
    const Bytes a = BodyOf<FOMFillSerialization>(before), b = BodyOf<FOMFillSerialization>(after);
    std::vector<std::string> names = Compare(host::ReadFillFields(a), host::ReadFillFields(b));
    if (before.GetType() == FillFountain) NameStops(before.Fountain(), after.Fountain(), names);
    return names;
}

std::vector<std::string> CompareRecords(const CGE_OUTLINE& before, const CGE_OUTLINE& after) {
    const Bytes a = BodyOf<FOMOutlineSerialization>(before), b = BodyOf<FOMOutlineSerialization>(after);
    return Compare(host::ReadOutlineFields(a), host::ReadOutlineFields(b));
}

}  // namespace command
