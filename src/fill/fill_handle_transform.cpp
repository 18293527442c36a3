#include <utility>

#include "fom/fill_compare.h"
#include "fom/fill_handle.h"
#include "fom/hatch_lines.h"

#include "pool/pooled_reference.h"

bool WFillHandle::GetScaleWithObject() const noexcept {
    const CGE_FILL* hatch = GetCGEFill(FillHatch);
    if (hatch) return (hatch->Hatch().modification & kHatchScaleWithObject) != 0;
    const CGE_TILING* tiling = GetCGETiling();
    return tiling && (tiling->flags & kTilingScaleWithObject) != 0;
}

bool WFillHandle::GetScaleLineWidths() const noexcept {
    const CGE_FILL* hatch = GetCGEFill(FillHatch);
    return hatch && (hatch->Hatch().modification & kHatchScaleLineWidths) != 0;
}

// The tiling matrix comes last: registering the lines may fail.
void WFillHandle::ProjectFill(const MATRIX& m, bool force) {
    const MATRIX tiling = force || !GetScaleWithObject() ? m * m_tilingMatrix : m_tilingMatrix;
    if (force || !GetScaleLineWidths()) TransformHatchLines(&m, force);
    m_tilingMatrix = tiling;
}

template <class Change>
void WFillHandle::EditHatchLines(bool always, Change&& change) {
    const CGE_FILL* fill = GetCGEFill(FillHatch);
    if (!fill) return;
    CGE_HATCHFILL changed = fill->Hatch();
    std::forward<Change>(change)(changed);
    if (!always && FILLCompareHatchFills(&changed, &fill->Hatch()) == 0) return;
    m_entry.Edit([&changed](WRefCountFill& entry) { entry.GetCGEFill()->EditHatch() = std::move(changed); });
}

void WFillHandle::TransformHatchLines(const MATRIX* m, bool force) {
    if (m) EditHatchLines(force, [m](CGE_HATCHFILL& hatch) { VyrFOM::TransformHatchLines(hatch, *m); });
}

void WFillHandle::PreAdjustHatchPenWidths(const MATRIX* m) {
    if (m) EditHatchLines(false, [m](CGE_HATCHFILL& hatch) { VyrFOM::PreAdjustHatchPenWidths(hatch, *m); });
}

void WFillHandle::PostAdjustHatchPenWidths(const MATRIX* m) {
    if (m) EditHatchLines(false, [m](CGE_HATCHFILL& hatch) { VyrFOM::PostAdjustHatchPenWidths(hatch, *m); });
}

void WFillHandle::ClearHatchLineTransfos() {
    EditHatchLines(false, [](CGE_HATCHFILL& hatch) { VyrFOM::ClearHatchLineTransfos(hatch); });
}
