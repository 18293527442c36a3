#include "host/services/unit_value.h"

#include <algorithm>
#include <cmath>

#include "host/services/calls.h"

double WSmartUnitValue::GetValueForUnitBase(int unit, int round) const {
    if (m_values.empty()) return 0.0;
    const auto stated = std::find_if(m_values.begin(), m_values.end(),
                                     [unit](const WUnitValuePair& pair) { return pair.unit == unit; });
    const WUnitValuePair& pair = stated != m_values.end() ? *stated : m_values.front();
    const double length = UNITConvertUnitToBase(pair.unit, 0.0, pair.value);
    return round != 0 ? std::round(length) : length;
}
