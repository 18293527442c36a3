#include "services/standalone_units.h"

#include <array>

namespace host {
namespace {

/// Document units in an inch.
constexpr double kInch = 254000.0;

struct UnitEntry {
    int code;
    std::wstring_view name;
    double length;  ///< document units; 0 where the raster resolution decides
    bool metric;
};

constexpr std::array<UnitEntry, 6> kUnits{{
    {kUnitInch, L"inch", kInch, false},
    {kUnitMillimetre, L"mm", 10000.0, true},
    {kUnitPoint, L"point", kInch / 72.0, false},
    {kUnitTechnicalMillimetre, L"technical mm", 10000.0, true},
    {kUnitCentimetre, L"cm", 100000.0, true},
    {kUnitPixel, L"pixel", 0.0, false},
}};

const UnitEntry* FindUnit(int code) noexcept {
    for (const UnitEntry& entry : kUnits)
        if (entry.code == code) return &entry;
    return nullptr;
}

/// The unit that a preference names, by its code or its name; 0 for none.
int UnitFromText(std::wstring_view text) {
    for (const UnitEntry& entry : kUnits)
        if (CompareFolded(text, entry.name) == 0 || text == std::to_wstring(entry.code)) return entry.code;
    return 0;
}

}  // namespace

double StandaloneUnits::GetBaseLength(int unit) const {
    const UnitEntry* entry = FindUnit(unit);
    if (!entry) return 0.0;
    return entry->code == kUnitPixel ? kInch / m_engine.GetRasterResolution() : entry->length;
}

int StandaloneUnits::GetHorizontalRulerUnit() const {
    const std::optional<WString> stored = m_preferences.Read(L"Units", L"Ruler");
    const int unit = stored ? UnitFromText(*stored) : 0;
    return unit != 0 ? unit : kUnitMillimetre;
}

bool StandaloneUnits::IsMetric() const {
    return FindUnit(GetHorizontalRulerUnit())->metric;
}

}  // namespace host
