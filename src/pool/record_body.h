#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "host/stream/archive.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

#include "fom/serialization.h"

namespace VyrFOM {

/// The body that a record has in a document, behind `room` bytes of 0 for what stands before it. Throws
/// bad_alloc.
template <class Record>
std::vector<std::uint8_t> MakeBody(const Record& record, udi::PtrRemapper& remapper, std::size_t room = 0) {
    constexpr std::size_t kUsualSize = 512;
    MemoryFileStream nowhere;
    udi::OutputArchive archive(nowhere, remapper, FOMSerialization::GetColorContext());
    std::vector<std::uint8_t>& bytes = archive.GetBytes();
    bytes.reserve(kUsualSize);
    bytes.resize(room);
    record.SaveIn(archive);
    return std::move(bytes);
}

/// False for what is no body of such a record. Throws bad_alloc.
template <class Record>
bool LoadBody(Record& record, std::span<const std::uint8_t> body, udi::PtrRemapper& remapper) {
    udi::InputArchive archive(body, remapper, FOMSerialization::GetColorContext());
    return record.LoadFrom(archive);
}

}  // namespace VyrFOM
