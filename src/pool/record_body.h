#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "host/stream/archive.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

#include "fom/serialization.h"

namespace VyrFOM {

/// What the record's archive holds. Throws bad_alloc.
template <class Record>
std::vector<std::uint8_t> BodyOf(const Record& record, udi::PtrRemapper& remapper) {
    MemoryFileStream nowhere;
    udi::OutputArchive archive(nowhere, remapper, FOMSerialization::GetColorContext());
    record.SaveIn(archive);
    return std::move(archive.GetBytes());
}

/// False for what is no body of such a record. Throws bad_alloc.
template <class Record>
bool LoadBody(Record& record, std::span<const std::uint8_t> body, udi::PtrRemapper& remapper) {
    udi::InputArchive archive(body, remapper, FOMSerialization::GetColorContext());
    return record.LoadFrom(archive);
}

}  // namespace VyrFOM
