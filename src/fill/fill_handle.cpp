#include "fom/fill_handle.h"

#include <utility>

#include "fill/fill_handle_entries.h"
#include "pool/pooled_reference.h"

WFillHandle::WFillHandle(bool solid, std::shared_ptr<WRCFillList> pool) : m_entry(pool) {
    m_entry.RegisterCopyOf(solid ? MakeBlackFill() : CGE_FILL());
}

WFillHandle::WFillHandle(const CLR_COLORSPEC* color, std::shared_ptr<WRCFillList> pool) : m_entry(pool) {
    m_entry.RegisterCopyOf(color ? MakeUniformFill(*color) : MakeBlackFill());
}

WFillHandle::WFillHandle(unsigned long colorref, std::shared_ptr<WRCFillList> pool) : m_entry(pool) {
    CLR_COLORSPEC color;
    color.MakeCOLORREF(colorref);
    m_entry.RegisterCopyOf(MakeUniformFill(color));
}

WFillHandle::WFillHandle(WRefCountFill* entry, std::shared_ptr<WRCFillList> pool) : m_entry(pool) {
    if (entry)
        m_entry.Adopt(entry);
    else
        m_entry.RegisterCopyOf(CGE_FILL());
}

WFillHandle::WFillHandle(const CGE_FILL* record, std::shared_ptr<WRCFillList> pool, const long* digest)
    : m_entry(pool) {
    if (record && !digest)
        m_entry.RegisterCopyOf(*record);
    else
        m_entry.SelectAndRegister(std::make_unique<WRefCountFill>(record, digest));
}

WFillHandle::WFillHandle(const WFillHandle& other) : ArchiveObject(other) {
    Copy(other);
}

WFillHandle::~WFillHandle() = default;

WFillHandle& WFillHandle::operator=(const WFillHandle& other) {
    Copy(other);
    return *this;
}

void WFillHandle::Copy(const WFillHandle& other) {
    m_entry.Share(other.m_entry);
    m_tilingMatrix = other.m_tilingMatrix;
}

void WFillHandle::SetRefCountFill(WRefCountFill* entry) {
    m_entry.Set(entry);
}

std::shared_ptr<WRCFillList> WFillHandle::MoveToOtherFillList(std::shared_ptr<WRCFillList> pool) {
    return m_entry.MoveTo(std::move(pool));
}

WRefCountFill* WFillHandle::ExtractRefCountFill() {
    return m_entry.Extract();
}
