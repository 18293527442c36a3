#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "fom/outline_defaults.h"
#include "fom/outline_handle.h"

#include "pool/pooled_reference.h"

namespace {

/// Document units, by the number of the pen; 0 has none.
constexpr std::array<std::int32_t, 11> kPresetWidths{0,     762,   1764,  3528,  7056, 14111,
                                                     28222, 42333, 56444, 70556, 84667};

void RemoveStroke(CGE_OUTLINE& outline) noexcept {
    outline.SetKind(OutlineNone);
    outline.leftArrow = outline.rightArrow = nullptr;
}

void SetStroke(CGE_OUTLINE& outline, std::int32_t width) noexcept {
    if ((outline.type & 15) == OutlineNone) outline.SetKind(OutlineSolid);
    outline.nibAngle = 0;
    outline.width = width;
    outline.nibStretch = CGE_OUTLINE::kRoundNib;
    if (outline.color.GetModel() == ClrModel::None) outline.color.MakeCMYKBlack();
}

}  // namespace

void OUTGetDefaultOutline(WRCOutlineList* list, WOutlineHandle** handle, int rgbBlack) {
    if (!handle) return;
    CGE_OUTLINE record;
    OUTGetDefaultOutline(&record, rgbBlack);
    *handle = new WOutlineHandle(&record, false, list);
}

void SetPresetPen(WOutlineHandle** handle, int n) {
    if (!handle || n < 0 || n >= static_cast<int>(kPresetWidths.size())) return;
    std::unique_ptr<WOutlineHandle> fresh;
    if (!*handle) fresh = std::make_unique<WOutlineHandle>();
    (fresh ? fresh.get() : *handle)->m_entry.Edit([n](WRefCountOutline& entry) {
        CGE_OUTLINE& outline = *entry.GetCGEOutline();
        n == 0 ? RemoveStroke(outline) : SetStroke(outline, kPresetWidths[static_cast<std::size_t>(n)]);
    });
    if (fresh) *handle = fresh.release();
}
