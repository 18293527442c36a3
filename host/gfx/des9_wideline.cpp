#include "host/gfx/des9_wideline.h"

#include "gfx/wideline_fields.h"

void CGE_DES9_CYCLICAL_LINE::SetNumberOfStyles(std::uint32_t count) {
    const std::size_t figures = m_hasFigures ? std::size_t{2} * count : 0;
    m_stylePoints.reserve(count);
    m_figurePoints.resize(figures);
    m_stylePoints.resize(count);
}

void CGE_DES9_CYCLICAL_LINE::SetFigures(bool on) {
    m_figurePoints.resize(on ? 2 * m_stylePoints.size() : 0);
    m_hasFigures = on;
}

void CGE_DES9_WIDELINE_ENTRY::SetCyclical(bool on) {
    if (!on)
        m_cyclical.reset();
    else if (!m_cyclical)
        m_cyclical.emplace();
}

void CGE_DES9_WIDELINE_ENTRY::SetStyle(bool on) {
    if (!on)
        m_style.reset();
    else if (!m_style)
        m_style.emplace();
}

CGE_DES9_WIDELINE::~CGE_DES9_WIDELINE() = default;

std::unique_ptr<CGE_WIDELINE> CGE_DES9_WIDELINE::Clone() const {
    return std::make_unique<CGE_DES9_WIDELINE>(*this);
}

void CGE_DES9_WIDELINE::HashInto(host::Hasher& hasher) const noexcept {
    host::detail::FieldHash hash(hasher);
    hash(*this);
}

int CGE_DES9_WIDELINE::CompareTo(const CGE_DES9_WIDELINE& a, const CGE_DES9_WIDELINE& b,
                                 bool skipThreadWidth) noexcept {
    constexpr unsigned kThreadWidthField = 1;
    int result = 0;
    host::detail::Fields<CGE_DES9_WIDELINE>::Visit([&](unsigned number, auto member, const char*) {
        if (result != 0 || (skipThreadWidth && number == kThreadWidthField)) return;
        result = host::detail::FieldCompare{}(a.*member, b.*member);
    });
    return result;
}

int CGE_DES9_WIDELINE::CompareSameType(const CGE_WIDELINE& other) const noexcept {
    return CompareTo(*this, static_cast<const CGE_DES9_WIDELINE&>(other), false);
}
