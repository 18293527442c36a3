#include "host/gfx/outline.h"

#include <utility>

#include "gfx/outline_fields.h"

using host::SharedRecord;
using host::detail::FieldCompare;
using host::detail::OutlineExtras;

namespace {

template <class T>
void SetExtra(SharedRecord<OutlineExtras>& extras, T OutlineExtras::*member, T value) {
    if (FieldCompare{}(extras.Read().*member, value) == 0) return;
    OutlineExtras changed = extras.Read();
    changed.*member = std::move(value);
    extras.Set(std::move(changed));
}

}  // namespace

bool OutlineExtras::IsDefault() const noexcept {
    return FieldCompare{}(*this, host::EmptyRecord<OutlineExtras>()) == 0;
}

void CGE_OUTLINE::SetToNoOutline() noexcept {
    const VyrUtils::Guid kept = guid;
    *this = CGE_OUTLINE();
    guid = kept;
}

void CGE_OUTLINE::SetToWideline(const CGE_WIDELINE& wideline) {
    SetWideline(wideline.Clone());
    SetKind(OutlineWideline);
}

const CGE_WIDELINE* CGE_OUTLINE::GetWideline() const noexcept {
    return m_extras.Read().wideline.get();
}

void CGE_OUTLINE::SetWideline(std::unique_ptr<CGE_WIDELINE> wideline) {
    SetExtra(m_extras, &OutlineExtras::wideline, std::shared_ptr<const CGE_WIDELINE>(std::move(wideline)));
}

const CGE_VARIABLEATTRIB& CGE_OUTLINE::GetVariableAttribute() const noexcept {
    return m_extras.Read().variable;
}

void CGE_OUTLINE::SetVariableAttribute(CGE_VARIABLEATTRIB attribute) {
    SetExtra(m_extras, &OutlineExtras::variable, std::move(attribute));
}

const CGE_ARROWATTRIB& CGE_OUTLINE::GetLeftArrowAttributes() const noexcept {
    return m_extras.Read().leftArrow;
}

void CGE_OUTLINE::SetLeftArrowAttributes(const CGE_ARROWATTRIB& attributes) {
    SetExtra(m_extras, &OutlineExtras::leftArrow, attributes);
}

const CGE_ARROWATTRIB& CGE_OUTLINE::GetRightArrowAttributes() const noexcept {
    return m_extras.Read().rightArrow;
}

void CGE_OUTLINE::SetRightArrowAttributes(const CGE_ARROWATTRIB& attributes) {
    SetExtra(m_extras, &OutlineExtras::rightArrow, attributes);
}

const MATRIX& CGE_OUTLINE::GetProjectMatrix() const noexcept {
    return m_extras.Read().project;
}

void CGE_OUTLINE::SetProjectMatrix(const MATRIX& matrix) {
    SetExtra(m_extras, &OutlineExtras::project, matrix);
}

int CGE_OUTLINE::CompareTo(const CGE_OUTLINE& a, const CGE_OUTLINE& b, bool skipColorBytes) noexcept {
    return &a == &b ? 0 : FieldCompare{skipColorBytes}(a, b);
}

void CGE_OUTLINE::HashInto(host::Hasher& hasher) const noexcept {
    host::detail::FieldHash hash(hasher);
    hash(*this);
}
