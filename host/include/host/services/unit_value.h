#pragma once

#include <utility>
#include <vector>

#include "host/base/export.h"

/// A value as one unit of measure states it.
struct WUnitValuePair {
    int unit;
    double value;
};

/// One length that reads as a round number in each of several units.
class FOM_API WSmartUnitValue {
public:
    explicit WSmartUnitValue(std::vector<WUnitValuePair> values) : m_values(std::move(values)) {}
    /// The value stated for `unit` (the first one when none is), in document units; rounded half away from
    /// zero when `round` is not 0.
    double GetValueForUnitBase(int unit, int round) const;

private:
    std::vector<WUnitValuePair> m_values;
};
