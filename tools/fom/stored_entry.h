#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

#include "fom/byte_streams.h"
#include "fom/fill_sections.h"
#include "fom/refcount_fill.h"
#include "fom/refcount_outline.h"

namespace command {

// Pool entries as documents hold them, one by one: WRefCountFill and WRefCountOutline.

/// Appends the record of an entry. False when something of it cannot be stored. Throws bad_alloc.
template <class Entry>
bool AppendRecord(const Entry& entry, DocumentVersion version, std::vector<std::uint8_t>& bytes) {
    const std::size_t start = bytes.size();
    AppendStream stream(bytes);
    stream.RegisterDocumentVersion(static_cast<std::uint32_t>(version));
    entry.WriteTo(stream);
    if constexpr (std::is_same_v<Entry, WRefCountFill>)
        if (HasTemporaryData(entry.GetFillType()))
            HideTemporaryNumbers(std::span(bytes).subspan(start), version);
    return stream.IsWhole();
}

/// What the record says, as far as it can be read; `isWhole` tells whether that is all of it. Throws
/// bad_alloc.
template <class Entry>
std::unique_ptr<Entry> ReadRecord(std::span<const std::uint8_t> record, DocumentVersion version,
                                  bool& isWhole) {
    WindowStream stream;
    stream.RegisterDocumentVersion(static_cast<std::uint32_t>(version));
    stream.Show(record);
    auto entry = std::make_unique<Entry>(false);
    entry->ReadFrom(stream);
    isWhole = stream.IsGood() && stream.GetRemaining() == 0;
    return entry;
}

}  // namespace command
