#include "fom/fill_handle.h"

#include <utility>

#include "fill/fill_handle_edit.h"
#include "fill/fill_handle_entries.h"

WFillHandle::WFillHandle(bool solid, std::shared_ptr<WRCFillList> pool) : m_pool(pool) {
    RegisterCopyOf(solid ? MakeBlackFill() : CGE_FILL());
}

WFillHandle::WFillHandle(const CLR_COLORSPEC* color, std::shared_ptr<WRCFillList> pool) : m_pool(pool) {
    RegisterCopyOf(color ? MakeUniformFill(*color) : MakeBlackFill());
}

WFillHandle::WFillHandle(unsigned long colorref, std::shared_ptr<WRCFillList> pool) : m_pool(pool) {
    CLR_COLORSPEC color;
    color.MakeCOLORREF(colorref);
    RegisterCopyOf(MakeUniformFill(color));
}

WFillHandle::WFillHandle(WRefCountFill* entry, std::shared_ptr<WRCFillList> pool) : m_pool(pool) {
    const std::shared_ptr<WRCFillList> holder = entry ? WRCFillList::GetHolder(entry) : nullptr;
    if (!holder) {
        std::unique_ptr<WRefCountFill> taken(entry);
        if (!taken) taken = std::make_unique<WRefCountFill>(false);
        SelectAndRegister(std::move(taken), nullptr);
    } else if (holder == FindPool()) {
        AddHolder(entry);
        Hold(entry, holder);
    } else {
        SelectAndRegister(CopyWithUserData(*entry), nullptr);
    }
}

WFillHandle::WFillHandle(const CGE_FILL* record, std::shared_ptr<WRCFillList> pool, const long* digest)
    : m_pool(pool) {
    if (record && !digest)
        RegisterCopyOf(*record);
    else
        SelectAndRegister(std::make_unique<WRefCountFill>(record, digest), nullptr);
}

WFillHandle::WFillHandle(const WFillHandle& other) : ArchiveObject(other) {
    Copy(other);
}

WFillHandle::~WFillHandle() {
    Clear();
}

WFillHandle& WFillHandle::operator=(const WFillHandle& other) {
    Copy(other);
    return *this;
}
