#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/stream/archive.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

#include "fom/serialization.h"

namespace VyrFOM {

/// An archive whose bytes are taken out of it; records may append to them, and more may be put around.
class BodyArchive {
public:
    explicit BodyArchive(udi::PtrRemapper& remapper)
        : m_archive(m_nowhere, remapper, FOMSerialization::GetColorContext()) {
        constexpr std::size_t kUsualSize = 512;
        m_archive.GetBytes().reserve(kUsualSize);
    }

    udi::OutputArchive& Get() noexcept { return m_archive; }
    std::vector<std::uint8_t>& Bytes() noexcept { return m_archive.GetBytes(); }

private:
    MemoryFileStream m_nowhere;
    udi::OutputArchive m_archive;
};

/// False for what is no body of such a record. Throws bad_alloc.
template <class Record>
bool LoadBody(Record& record, std::span<const std::uint8_t> body, udi::PtrRemapper& remapper) {
    udi::InputArchive archive(body, remapper, FOMSerialization::GetColorContext());
    return record.LoadFrom(archive);
}

}  // namespace VyrFOM
