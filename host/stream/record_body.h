#pragma once

#include <utility>

#include "host/stream/archive.h"

#include "stream/field_codec.h"

namespace host::detail {

/// Appends the version and the record's fields. Throws bad_alloc, and then nothing was appended.
template <class Record>
void WriteBody(udi::OutputArchive& archive, const Record& record) {
    std::vector<std::uint8_t>& bytes = archive.GetBytes();
    const std::size_t start = bytes.size();
    const std::size_t bound = sizeof kBodyVersion + FieldsBound(record);
    if (bound > UINT32_MAX) throw std::bad_alloc();  // nested sizes have 32 bits
    bytes.resize(start + bound);
    std::uint8_t* end = StoreLittle(bytes.data() + start, kBodyVersion);
    try {
        end = WriteFields<false>(end, record, archive.GetRemapper());
    } catch (...) {
        bytes.resize(start);
        throw;
    }
    const auto size = static_cast<std::size_t>(end - bytes.data());
    assert(size <= bytes.size());
    bytes.resize(size);
}

/// Makes the record anew where it lies: copying one that was just written field by field waits for every
/// store.
template <class Record>
void Renew(Record& record) noexcept {
    static_assert(std::is_nothrow_default_constructible_v<Record>);
    std::destroy_at(&record);
    ::new (static_cast<void*>(&record)) Record;
}

/// A version above ours has fields that we do not know, and those that we know as they are.
template <class Record>
bool ReadBody(udi::InputArchive& archive, Record& record) {
    const Bytes bytes = archive.GetBytes();
    Renew(record);
    try {
        if (bytes.size() >= sizeof kBodyVersion && LoadLittle<std::uint16_t>(bytes.data()) != 0 &&
            ReadFields(bytes.subspan(sizeof kBodyVersion), record, archive.GetRemapper()))
            return true;
    } catch (...) {
        Renew(record);
        throw;
    }
    Renew(record);
    return false;
}

}  // namespace host::detail
