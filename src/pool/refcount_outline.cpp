#include "fom/refcount_outline.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <new>

#include "host/base/hash.h"
#include "host/base/wstring.h"
#include "host/gfx/arrowhead.h"
#include "host/services/calls.h"

#include "fom/line_pattern_preset.h"

#include "pool/pending_duplicates.h"

/// A name as the application reads it, and the part of it that the order compares.
struct WRefCountOutline::ColorName {
    static constexpr std::size_t kMaxUnits = 31;

    explicit ColorName(std::wstring_view name) noexcept {
        std::wstring_view kept = host::CutUtf16(name, kMaxUnits);
        std::copy(kept.begin(), kept.end(), text);
        std::array<char16_t, kMaxUnits + 1> units;
        host::PackUtf16(kept, units);
        std::copy_n(units.begin(), key.size(), key.begin());
    }

    wchar_t text[kMaxUnits + 1]{};
    std::array<char16_t, 16> key;
};

namespace {

constexpr int kDefaultWidth = 50;

/// Null for null.
HMEM DuplicateArrow(HMEM arrow) {
    if (!arrow) return nullptr;
    HMEM copy = SUDIRegisterArrow(MEMMANDuplicate(arrow));
    if (!copy) throw std::bad_alloc();
    return copy;
}

void DuplicateArrows(CGE_OUTLINE& record) {
    HMEM left = DuplicateArrow(record.leftArrow);
    record.rightArrow = DuplicateArrow(record.rightArrow);
    record.leftArrow = left;
}

}  // namespace

WRefCountOutline::WRefCountOutline(bool visible) {
    m_record.type = visible ? OutlineSolid : OutlineNone;
    m_record.width = kDefaultWidth;
    m_record.nibStretch = CGE_OUTLINE::kRoundNib;
    m_record.color.MakeRGB(0, 0, 0);
}

WRefCountOutline::WRefCountOutline(unsigned width, const CLR_COLORSPEC* color,
                                   const CLinePatternPreset* preset, unsigned leftArrow,
                                   unsigned rightArrow) {
    m_record.type = OutlineSolid;
    m_record.width = static_cast<std::int32_t>(
        std::min<unsigned>(width, static_cast<unsigned>(std::numeric_limits<std::int32_t>::max())));
    m_record.nibStretch = CGE_OUTLINE::kRoundNib;
    if (color) m_record.color = *color;
    if (preset) SetLinePatternPreset(*preset);
    if (leftArrow != 0) SetLeftArrowStyle(leftArrow);
    if (rightArrow != 0) SetRightArrowStyle(rightArrow);
    m_record.screen.Init();
}

WRefCountOutline::WRefCountOutline(const CGE_OUTLINE* record, bool duplicateArrows) {
    if (record)
        Copy(record, true, true, duplicateArrows);
    else
        m_record.type = OutlineNone;
}

WRefCountOutline::WRefCountOutline(const WRefCountOutline& other)
    : ArchiveObject(other), InternNode(other), m_record(other.m_record) {}

WRefCountOutline::~WRefCountOutline() {
    VyrFOM::PendingOutlineDuplicates::Leave(*this);
}

// A colour without its name, or under the name of the colour before, would be another colour.
bool WRefCountOutline::Copy(const WRefCountOutline& source, bool copyColor, bool copyRest) {
    if (this == &source) return copyColor || copyRest;
    std::unique_ptr<ColorName> name;
    if (copyColor && source.m_colorName) name = std::make_unique<ColorName>(*source.m_colorName);
    const bool copied = Copy(&source.m_record, copyColor, copyRest, false);
    if (copyColor) m_colorName = std::move(name);
    return copied;
}

bool WRefCountOutline::Copy(const CGE_OUTLINE* record, bool copyColor, bool copyRest, bool duplicateArrows) {
    if (copyRest) {
        CGE_OUTLINE copy = *record;
        if (duplicateArrows) DuplicateArrows(copy);
        if (!copyColor) copy.color = m_record.color;
        m_record = copy;
    } else if (copyColor) {
        m_record.color = record->color;
    }
    return copyColor || copyRest;
}

CGE_OUTLINE* WRefCountOutline::GetCGEOutlineCopy() const {
    return new CGE_OUTLINE(m_record);
}

CGE_OUTLINE* WRefCountOutline::CreateCGEOutline() {
    return new CGE_OUTLINE;
}

void WRefCountOutline::DeleteCGEOutlineCopy(CGE_OUTLINE* record) noexcept {
    delete record;
}

// The new name is made first: `name` may be the old one.
void WRefCountOutline::SetColorName(const wchar_t* name) {
    const bool none = !name || *name == 0;
    m_colorName = none ? nullptr : std::make_unique<ColorName>(std::wstring_view(name));
}

const wchar_t* WRefCountOutline::GetColorName() const noexcept {
    return m_colorName ? m_colorName->text : nullptr;
}

bool WRefCountOutline::SetOverprintFlag(OVERPRINT_FLAG flag) noexcept {
    m_record.overprint = flag == OVERPRINT_ON ? 1 : 0;
    return true;
}

// "Positive" of a signed word.
OVERPRINT_FLAG WRefCountOutline::GetOverprintFlag() const noexcept {
    if ((m_record.type & 15) == OutlineNone) return OVERPRINT_NONE;
    return static_cast<std::int32_t>(m_record.overprint) > 0 ? OVERPRINT_ON : OVERPRINT_OFF;
}

bool WRefCountOutline::SetScreenSpecs(const CLR_SCREENSPEC& screen) noexcept {
    m_record.screen = screen;
    return true;
}

bool WRefCountOutline::SetLinePatternPreset(const CLinePatternPreset& preset) {
    preset.ApplyTo(m_record);
    return true;
}

bool WRefCountOutline::SetLeftArrowStyle(unsigned index) {
    return SetArrowStyle(m_record.leftArrow, index);
}

bool WRefCountOutline::SetRightArrowStyle(unsigned index) {
    return SetArrowStyle(m_record.rightArrow, index);
}

bool WRefCountOutline::SetArrowStyle(HMEM& arrow, unsigned index) {
    if (index == 0) {
        arrow = nullptr;
        return true;
    }
    if (index > ARRGetNumberOfArrowheads()) return false;
    HMEM listed = ARRGetArrowheadHandle(index - 1);
    if (!listed) return false;
    arrow = DuplicateArrow(listed);
    return true;
}

int WRefCountOutline::GetArrowStyle(HMEM arrow) {
    if (!arrow) return -1;
    const unsigned count = ARRGetNumberOfArrowheads();
    for (unsigned i = 0; i < count; ++i) {
        HMEM listed = ARRGetArrowheadHandle(i);
        if (listed == arrow || ARRAreArrowsSame(listed, arrow)) return static_cast<int>(i) + 1;
    }
    return -1;
}

int WRefCountOutline::GetArrowStyleCount() {
    return static_cast<int>(ARRGetNumberOfArrowheads());
}

int WRefCountOutline::Compare(const WRefCountOutline* other, bool mode) const noexcept {
    if (!other) return 1;
    if (other == this) return 0;
    if (!m_colorName != !other->m_colorName) return m_colorName ? 1 : -1;
    if (m_colorName) {
        static_assert(std::endian::native == std::endian::little, "the key's bytes are compared as stored");
        const auto& a = m_colorName->key;
        const auto& b = other->m_colorName->key;
        if (const int order = std::memcmp(a.data(), b.data(), sizeof a)) return order;
    }
    return CGE_OUTLINE::CompareTo(m_record, other->m_record, mode);
}

std::uint64_t WRefCountOutline::GetHash() const noexcept {
    if (!m_colorName) return HashOfCopy(m_record);
    host::Hasher hasher;
    hasher.Bytes(m_colorName->key.data(), sizeof m_colorName->key);
    m_record.HashInto(hasher);
    return hasher.Finish();
}

std::uint64_t WRefCountOutline::HashOfCopy(const CGE_OUTLINE& record) noexcept {
    host::Hasher hasher;
    record.HashInto(hasher);
    return hasher.Finish();
}
