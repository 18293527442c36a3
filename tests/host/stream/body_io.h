#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/stream/archive.h"

/// Bodies in and out of memory.
namespace stream_test {

using ByteVector = std::vector<std::uint8_t>;

template <class Record>
ByteVector Encode(const Record& record, udi::PtrRemapper& remapper) {
    MemoryFileStream stream;
    const ColorSystem::ColorContext context;
    udi::OutputArchive archive(stream, remapper, context);
    record.SaveIn(archive);
    return archive.GetBytes();
}

template <class Record>
std::optional<Record> Decode(std::span<const std::uint8_t> bytes, udi::PtrRemapper& remapper) {
    // A copy of its own for each body: sanitizers watch its ends.
    const ByteVector exact(bytes.begin(), bytes.end());
    const ColorSystem::ColorContext context;
    udi::InputArchive archive(exact, remapper, context);
    std::optional<Record> record(std::in_place);
    if (!record->LoadFrom(archive)) record.reset();
    return record;
}

/// Puts fields together, sizes included.
class BodyBuilder {
public:
    template <class T>
    BodyBuilder& Number(T value) {
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * i)));
        return *this;
    }
    BodyBuilder& Field(unsigned number, const ByteVector& value) {
        Number(static_cast<std::uint8_t>(number));
        return Number(std::uint8_t{5}).Element(value);
    }
    /// A size and what has that size.
    BodyBuilder& Element(const ByteVector& value) {
        Number(static_cast<std::uint32_t>(value.size()));
        return Append(value);
    }
    BodyBuilder& Append(const ByteVector& more) {
        bytes.insert(bytes.end(), more.begin(), more.end());
        return *this;
    }

    ByteVector bytes;
};

}  // namespace stream_test
