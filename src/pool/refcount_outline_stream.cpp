#include "fom/refcount_outline.h"

#include "pool/document_version.h"
#include "pool/outline_stream.h"

void WRefCountOutline::WriteTo(AbstractFileStream& stream) const {
    udi::PersistentPtrRemapper remapper;
    WriteTo(stream, remapper);
}

void WRefCountOutline::WriteTo(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper) const {
    if (VyrFOM::IsBefore1250(stream)) return WriteVersion12(stream, remapper);
    VyrFOM::OutlineStreamRecord(m_record, remapper).WriteTo(stream);
}

void WRefCountOutline::WriteVersion12(AbstractFileStream& stream, udi::PtrRemapper& remapper) const {
    VyrFOM::WriteOutline12(stream, m_record, remapper);
}

void WRefCountOutline::ReadFrom(AbstractFileStream& stream) {
    udi::PersistentPtrRemapper remapper;
    ReadFrom(stream, remapper);
}

// The old content goes when the new one is whole.
void WRefCountOutline::ReadFrom(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper) {
    if (VyrFOM::IsBefore1250(stream))
        VyrFOM::ReadOutline12(stream, m_record, remapper);
    else
        VyrFOM::ReadOutlineRecord(stream, m_record, remapper);
    SetColorName(nullptr);
    m_count.store(0, std::memory_order_release);
}
