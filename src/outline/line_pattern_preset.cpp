#include "fom/line_pattern_preset.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

#include "fom/dot_dash.h"
#include "fom/outline_record.h"

#include "fill/rounding.h"
#include "outline/find_wideline.h"

namespace {

using VyrFOM::FindWideline;

std::uint16_t ReplaceKind(std::uint16_t type, unsigned kept, CgeOutlineType kind) noexcept {
    return static_cast<std::uint16_t>((type & kept) | kind);
}

/// The dot length with which a pattern of `dots` dots, not 0, has the length that is estimated for it.
std::uint32_t FindDotLength(const CGE_OUTLINE& outline, std::int64_t dots) noexcept {
    const std::int64_t length = VyrFOM::RoundTo<std::int64_t>(OUTEstimatePatternLength(&outline)) / dots;
    return static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(length, 0, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

CLinePatternPresetVisitor::~CLinePatternPresetVisitor() = default;

CLinePatternPreset::~CLinePatternPreset() = default;

void CSolidLinePatternPreset::Accept(CLinePatternPresetVisitor& visitor) {
    visitor.VisitSolidPattern(*this);
}

void CSolidLinePatternPreset::ApplyTo(CGE_OUTLINE& outline) const {
    outline.type = ReplaceKind(outline.type, 0xFFF2, OutlineSolid);
}

bool CSolidLinePatternPreset::operator==(const CLinePatternPreset& other) const {
    return dynamic_cast<const CSolidLinePatternPreset*>(&other) != nullptr;
}

bool CSolidLinePatternPreset::operator==(const CGE_OUTLINE& outline) const {
    return (outline.type & OutlineSolid) != 0;
}

void CStdLinePatternPreset::Accept(CLinePatternPresetVisitor& visitor) {
    visitor.VisitStdPattern(*this);
}

void CStdLinePatternPreset::ApplyTo(CGE_OUTLINE& outline) const {
    outline.type = ReplaceKind(outline.type, 0xFFF4, OutlineDotDash);
    outline.dotDash = m_dotDash;
    const std::int64_t dots = CGEDotDashDotCount(m_dotDash);
    if (outline.dotLength == 0 && dots != 0) outline.dotLength = FindDotLength(outline, dots);
}

bool CStdLinePatternPreset::operator==(const CLinePatternPreset& other) const {
    const auto* dashes = dynamic_cast<const CStdLinePatternPreset*>(&other);
    return dashes && OUTCompareDotDash(&m_dotDash, &dashes->m_dotDash) == 0;
}

bool CStdLinePatternPreset::operator==(const CGE_OUTLINE& outline) const {
    return OUTCompareDotDash(&m_dotDash, &outline.dotDash) == 0;
}

bool CStdLinePatternPreset::IsValid() const {
    return OUTIsValidDotDash(m_dotDash);
}

void CEnhLinePatternPreset::Accept(CLinePatternPresetVisitor& visitor) {
    visitor.VisitEnhPattern(*this);
}

void CEnhLinePatternPreset::ApplyTo(CGE_OUTLINE& outline) const {
    CGE_DES9_WIDELINE wideline = m_wideline;
    if (const CGE_DES9_WIDELINE* old = FindWideline(outline)) wideline.threadWidth = old->threadWidth;
    outline.SetToWideline(wideline);
}

bool CEnhLinePatternPreset::operator==(const CLinePatternPreset& other) const {
    const auto* threads = dynamic_cast<const CEnhLinePatternPreset*>(&other);
    return threads && CGE_DES9_WIDELINE::CompareTo(m_wideline, threads->m_wideline, false) == 0;
}

bool CEnhLinePatternPreset::operator==(const CGE_OUTLINE& outline) const {
    const CGE_DES9_WIDELINE* wideline = FindWideline(outline);
    return wideline && CGE_DES9_WIDELINE::CompareTo(m_wideline, *wideline, true) == 0;
}

CLinePatternPreset* OUTCreatePatternPreset(const CGE_OUTLINE& outline) noexcept {
    try {
        if ((outline.type & 15) == OutlineDotDash) return new CStdLinePatternPreset(outline.dotDash);
        if (const CGE_DES9_WIDELINE* wideline = FindWideline(outline))
            return new CEnhLinePatternPreset(*wideline);
        return new CSolidLinePatternPreset;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
