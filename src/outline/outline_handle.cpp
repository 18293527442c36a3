#include "fom/outline_handle.h"

#include "pool/pooled_reference.h"

namespace {

std::weak_ptr<WRCOutlineList> Told(const WRCOutlineList* pool) noexcept {
    return pool ? pool->GetUnowned() : nullptr;
}

CLR_COLORSPEC ColorOf(unsigned long rgb) noexcept {
    CLR_COLORSPEC color;
    color.MakeCOLORREF(rgb);
    return color;
}

}  // namespace

WOutlineHandle::WOutlineHandle(bool visible, WRCOutlineList* pool) : m_entry(Told(pool)) {
    if (visible) m_entry.SelectAndRegister(std::make_unique<WRefCountOutline>(true));
}

WOutlineHandle::WOutlineHandle(const CGE_OUTLINE* record, bool duplicateArrows, WRCOutlineList* pool)
    : m_entry(Told(pool)) {
    if (record && !duplicateArrows)
        m_entry.RegisterCopyOf(*record);
    else
        m_entry.SelectAndRegister(std::make_unique<WRefCountOutline>(record, duplicateArrows));
}

WOutlineHandle::WOutlineHandle(WRefCountOutline* entry, WRCOutlineList* pool) : m_entry(Told(pool)) {
    if (entry) m_entry.Adopt(entry);
}

WOutlineHandle::WOutlineHandle(unsigned width, const CLR_COLORSPEC* color, const CLinePatternPreset* pattern,
                               unsigned leftArrow, unsigned rightArrow, WRCOutlineList* pool)
    : m_entry(Told(pool)) {
    m_entry.SelectAndRegister(
        std::make_unique<WRefCountOutline>(width, color, pattern, leftArrow, rightArrow));
}

WOutlineHandle::WOutlineHandle(unsigned width, unsigned long rgb, const CLinePatternPreset* pattern,
                               unsigned leftArrow, unsigned rightArrow, WRCOutlineList* pool)
    : m_entry(Told(pool)) {
    const CLR_COLORSPEC color = ColorOf(rgb);
    m_entry.SelectAndRegister(
        std::make_unique<WRefCountOutline>(width, &color, pattern, leftArrow, rightArrow));
}

WOutlineHandle::WOutlineHandle(const WOutlineHandle& other) {
    m_entry.Share(other.m_entry);
}

WOutlineHandle::~WOutlineHandle() = default;

WOutlineHandle& WOutlineHandle::operator=(const WOutlineHandle& other) {
    m_entry.Share(other.m_entry);
    return *this;
}

// Copies the name that an edit of a shared entry would lose: it belongs to the colour.
bool WOutlineHandle::Copy(const WOutlineHandle& other, bool copyColor, bool copyRest) {
    if (copyColor && copyRest) {
        m_entry.Share(other.m_entry);
        return true;
    }
    if (!copyColor && !copyRest) return false;
    const WRefCountOutline none(static_cast<const CGE_OUTLINE*>(nullptr));
    const WRefCountOutline* current = m_entry.Get();
    const WRefCountOutline* source = other.m_entry.Get();
    if (source == current || (!source && copyColor)) return true;
    std::unique_ptr<WRefCountOutline> copy = VyrFOM::CopyWhole(current ? *current : none);
    copy->Copy(source ? *source : none, copyColor, copyRest);
    m_entry.SelectAndRegister(std::move(copy));
    return true;
}

void WOutlineHandle::SetRefCountOutline(WRefCountOutline* entry) {
    m_entry.Set(entry);
}

WRefCountOutline* WOutlineHandle::ExtractRefCountOutline() {
    return m_entry.Extract();
}

void WOutlineHandle::ReadFrom(AbstractFileStream& stream) {
    auto entry = std::make_unique<WRefCountOutline>(false);
    entry->ReadFrom(stream);
    if (stream.IsGood()) m_entry.SelectAndRegister(std::move(entry), &stream);
}
