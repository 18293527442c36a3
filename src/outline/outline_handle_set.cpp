#include <algorithm>
#include <limits>
#include <utility>

#include "fom/outline_blend.h"
#include "fom/outline_handle.h"
#include "fom/pen_width.h"

#include "pool/pooled_reference.h"

namespace {

constexpr std::int32_t kHairline = 762;

/// The nearest value that the field holds.
template <class T, class V>
T Held(V value) noexcept {
    using Limits = std::numeric_limits<T>;
    return static_cast<T>(
        std::clamp<std::int64_t>(static_cast<std::int64_t>(value), Limits::min(), Limits::max()));
}

void GiveWidth(CGE_OUTLINE& record, unsigned width) noexcept {
    if ((record.type & 15) == OutlineNone) {
        record.SetKind(OutlineSolid);
        if (record.nibStretch == 0) record.nibStretch = CGE_OUTLINE::kRoundNib;
    }
    record.width = Held<std::int32_t>(width);
}

}  // namespace

template <class Change>
bool WOutlineHandle::Edit(Change&& change) {
    return m_entry.Edit([&change](WRefCountOutline& entry) { change(*entry.GetCGEOutline()); });
}

void WOutlineHandle::SetCGEType(CgeOutlineType kind) {
    if (GetCGEType() == kind) return;
    Edit([=](CGE_OUTLINE& record) { record.SetKind(kind); });
}

void WOutlineHandle::SetWidth(unsigned width) {
    if (GetWidth() == width) return;
    Edit([=](CGE_OUTLINE& record) { GiveWidth(record, width); });
}

void WOutlineHandle::SetJoinType(unsigned join) {
    Edit([=](CGE_OUTLINE& record) { record.join = Held<std::uint16_t>(join); });
}

void WOutlineHandle::SetEndCaps(unsigned caps) {
    Edit([=](CGE_OUTLINE& record) { record.endCaps = Held<std::uint16_t>(caps); });
}

void WOutlineHandle::SetJustification(unsigned justification) {
    Edit([=](CGE_OUTLINE& record) { record.justification = Held<std::uint16_t>(justification); });
}

void WOutlineHandle::SetNibAngle(int microDegrees) {
    Edit([=](CGE_OUTLINE& record) { record.nibAngle = microDegrees; });
}

void WOutlineHandle::SetNibStretch(int perCent) {
    Edit([=](CGE_OUTLINE& record) { record.nibStretch = Held<std::int16_t>(perCent); });
}

void WOutlineHandle::SetDotLength(unsigned length) {
    Edit([=](CGE_OUTLINE& record) { record.dotLength = length; });
}

void WOutlineHandle::SetMiterLimit(int microDegrees) {
    Edit([=](CGE_OUTLINE& record) { record.SetMiterLimit(microDegrees); });
}

void WOutlineHandle::SetColorspec(const CLR_COLORSPEC* color) {
    if (!color) return;
    m_entry.Edit([color = *color](WRefCountOutline& entry) { entry.GetCGEOutline()->color = color; });
}

void WOutlineHandle::SetScreenSpecs(const CLR_SCREENSPEC& screen) {
    m_entry.Edit([screen = screen](WRefCountOutline& entry) { entry.SetScreenSpecs(screen); });
}

void WOutlineHandle::SetOverprintFlag(OVERPRINT_FLAG flag) {
    if (flag == OVERPRINT_NONE || flag == GetOverprintFlag()) return;
    m_entry.Edit([=](WRefCountOutline& entry) { entry.SetOverprintFlag(flag); });
}

void WOutlineHandle::SetTransfoMatrix(const MATRIX& matrix) {
    Edit([matrix = matrix](CGE_OUTLINE& record) { record.matrix = matrix; });
}

void WOutlineHandle::SetProjectMatrix(const MATRIX& matrix) {
    Edit([matrix = matrix](CGE_OUTLINE& record) { record.SetProjectMatrix(matrix); });
}

void WOutlineHandle::SetPenParams(int nibAngle, unsigned width, int nibStretch) {
    Edit([=](CGE_OUTLINE& record) {
        record.nibAngle = nibAngle;
        record.width = Held<std::int32_t>(width);
        record.nibStretch = Held<std::int16_t>(nibStretch);
    });
}

bool WOutlineHandle::SetLeftArrowStyle(unsigned index) {
    return SetArrowStyle(&WRefCountOutline::SetLeftArrowStyle, index);
}

bool WOutlineHandle::SetRightArrowStyle(unsigned index) {
    return SetArrowStyle(&WRefCountOutline::SetRightArrowStyle, index);
}

// On a copy, since it may fail.
bool WOutlineHandle::SetArrowStyle(bool (WRefCountOutline::*set)(unsigned), unsigned index) {
    std::unique_ptr<WRefCountOutline> copy = m_entry.MakePrivateCopy();
    return ((*copy).*set)(index) && m_entry.SelectAndRegister(std::move(copy));
}

// On a copy, since a preset may be anybody's class, which must not be called under the pool's lock.
void WOutlineHandle::SetLinePatternPreset(const CLinePatternPreset& preset) {
    std::unique_ptr<WRefCountOutline> copy = m_entry.MakePrivateCopy();
    copy->SetLinePatternPreset(preset);
    m_entry.SelectAndRegister(std::move(copy));
}

void WOutlineHandle::SetCGEOutline(const CGE_OUTLINE* record) {
    if (record)
        m_entry.RegisterCopyOf(*record);
    else
        m_entry.RegisterCopyOf(CGE_OUTLINE());
}

void WOutlineHandle::SetToNoOutline() {
    Edit([](CGE_OUTLINE& record) { record.SetToNoOutline(); });
}

void WOutlineHandle::MakeSolid() {
    if (GetCGEType() != OutlineNone) return;
    Edit([](CGE_OUTLINE& record) {
        record.SetKind(OutlineSolid);
        record.nibAngle = 0;
        record.dotDash.count = 0;
        record.leftArrow = record.rightArrow = nullptr;
        record.dotLength = 0;
        record.width = kHairline;
        record.nibStretch = CGE_OUTLINE::kRoundNib;
    });
}

void WOutlineHandle::PreAdjustPenWidth(const MATRIX* m) {
    if (m) Edit([m = *m](CGE_OUTLINE& record) { OUTPreAdjustPenWidth(record, &m); });
}

void WOutlineHandle::PostAdjustPenWidth(const MATRIX* m) {
    if (m) Edit([m = *m](CGE_OUTLINE& record) { OUTPostAdjustPenWidth(record, &m); });
}

bool WOutlineHandle::BlendPen(const ColorContext& context, const WOutlineHandle& from,
                              const WOutlineHandle& to, double factor) {
    const CGE_OUTLINE none;
    const CGE_OUTLINE* a = from.GetCGEOutline();
    const CGE_OUTLINE* b = to.GetCGEOutline();
    CGE_OUTLINE blended;
    if (!BlendOutline(context, blended, a ? *a : none, b ? *b : none, factor)) return false;
    return Edit([&blended](CGE_OUTLINE& record) {
        blended.guid = record.guid;
        record = blended;
    });
}
