#pragma once

#include <utility>
#include <vector>

#include "fom/legacy_records.h"
#include "fom/serialization.h"

#include "pool/external_data.h"

namespace VyrFOM {

/// The record out of an old form, then what follows it in the stream. The hatch lines are moved out of it:
/// they may be many.
template <class Legacy>
CGE_FILL FromLegacy(AbstractFileStream& stream, Legacy& legacy, udi::PtrRemapper& remapper) {
    CGE_FILL fill;
    std::vector<CGE_HATCHLINE> lines = std::exchange(legacy.lines, {});
    FOMIO12Conv::ConvertCGE_FILL(true, fill, legacy, FOMSerialization::GetColorContext(), remapper);
    if (fill.GetType() == FillHatch) fill.EditHatch().lines = std::move(lines);
    ReadExternalData(stream, fill);
    return fill;
}

}  // namespace VyrFOM
