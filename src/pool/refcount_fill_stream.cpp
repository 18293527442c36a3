#include <utility>

#include "fom/refcount_fill.h"

#include "pool/document_version.h"
#include "pool/fill_stream.h"
#include "pool/stream_bytes.h"

void WRefCountFill::WriteTo(AbstractFileStream& stream) const {
    udi::PersistentPtrRemapper remapper;
    WriteTo(stream, remapper);
}

void WRefCountFill::WriteTo(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper) const {
    const CGE_FILL none;
    const CGE_FILL& record = m_hasRecord ? *GetCGEFill() : none;
    if (VyrFOM::IsBefore1250(stream)) return WriteVersion1200(stream, record, remapper);
    VyrFOM::FillStreamRecord stored(record, remapper);
    VyrFOM::WriteWords(stream, {m_userData});
    stored.WriteTo(stream);
}

void WRefCountFill::WriteVersion1200(AbstractFileStream& stream, const CGE_FILL& record,
                                     udi::PtrRemapper& remapper) const {
    VyrFOM::Fill1200StreamRecord(record, remapper).WriteTo(stream, m_userData);
}

void WRefCountFill::ReadFrom(AbstractFileStream& stream) {
    udi::PersistentPtrRemapper remapper;
    ReadFrom(stream, remapper);
}

// The old content goes when the new one is whole.
void WRefCountFill::ReadFrom(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper) {
    CGE_FILL record;
    unsigned userData = 0;
    if (VyrFOM::IsBefore1250(stream)) {
        record = ReadVersion1200(stream, userData, remapper);
    } else {
        userData = VyrFOM::ReadWord(stream);
        VyrFOM::ReadFillRecord(stream, record, remapper);
    }
    DeallocateMemory();
    InstallRecord(std::move(record));
    OwnPatternData();
    m_userData = userData;
    m_count.store(0, std::memory_order_release);
}

CGE_FILL WRefCountFill::ReadVersion1200(AbstractFileStream& stream, unsigned& userData,
                                        udi::PtrRemapper& remapper) {
    return VyrFOM::ReadFill1200(stream, userData, remapper);
}
