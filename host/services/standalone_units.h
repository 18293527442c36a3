#pragma once

#include "host/services/services.h"

namespace host {

/// Units from one table. The ruler unit is the preference "Units"/"Ruler": a unit code, "inch" or "mm";
/// anything else is millimetres. Both rulers show the same unit.
class StandaloneUnits final : public Units {
public:
    /// Pixels are measured at the engine's raster resolution; both references must outlive the units.
    StandaloneUnits(const Preferences& preferences, const GraphicsEngine& engine) noexcept
        : m_preferences(preferences), m_engine(engine) {}

    double GetBaseLength(int unit) const override;
    int GetHorizontalRulerUnit() const override;
    int GetVerticalRulerUnit() const override { return GetHorizontalRulerUnit(); }
    bool IsMetric() const override;

private:
    const Preferences& m_preferences;
    const GraphicsEngine& m_engine;
};

}  // namespace host
