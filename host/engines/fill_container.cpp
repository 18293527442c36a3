#include "host/engines/fill_container.h"

#include <algorithm>
#include <string_view>

#include "host/base/atomic_file.h"
#include "host/base/wstring.h"

#include "engines/fill_container_header.h"

namespace host {
namespace {

constexpr std::string_view kSignature = "FOMFILL\n";
constexpr std::uint32_t kVersion = 1;
// Offsets of docs/formats/fill_container.md.
constexpr std::size_t kVersionAt = 8, kSubtypeAt = 10, kHeaderSizeAt = 12, kPayloadSizeAt = 16;
constexpr std::uint32_t kHeaderSize = 20;

void Append(std::vector<std::byte>& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
}

std::uint32_t Get(std::span<const std::byte> bytes, std::size_t at, std::size_t size) noexcept {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= std::to_integer<std::uint32_t>(bytes[at + i]) << (8 * i);
    return value;
}

std::nullopt_t Fail(Error& error, std::uint64_t offset, const char* reason) {
    error = {"fill container", offset, 0, reason};
    return std::nullopt;
}

}  // namespace

std::optional<FillContainerHeader> ReadFillContainerHeader(std::span<const std::byte> bytes, Error& error) {
    if (bytes.size() < kHeaderSize) return Fail(error, bytes.size(), "the file ends within its header");
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!text.starts_with(kSignature)) return Fail(error, 0, "the signature is missing");
    if (Get(bytes, kVersionAt, 2) != kVersion) return Fail(error, kVersionAt, "the version is not known");
    const std::uint32_t subtype = Get(bytes, kSubtypeAt, 2);
    if (subtype > static_cast<std::uint32_t>(FillContainerSubtype::Fountain))
        return Fail(error, kSubtypeAt, "the subtype is not known");
    const std::uint32_t size = Get(bytes, kHeaderSizeAt, 4);
    if (size < kHeaderSize) return Fail(error, kHeaderSizeAt, "the stated header size is too small");
    return FillContainerHeader{static_cast<FillContainerSubtype>(subtype), size,
                               Get(bytes, kPayloadSizeAt, 4)};
}

std::vector<std::byte> EncodeFillContainer(const FillContainer& container) {
    std::vector<std::byte> bytes;
    bytes.reserve(kHeaderSize + container.payload.size());
    for (const char c : kSignature)
        bytes.push_back(static_cast<std::byte>(c));
    Append(bytes, kVersion, 2);
    Append(bytes, static_cast<std::uint32_t>(container.subtype), 2);
    Append(bytes, kHeaderSize, 4);
    Append(bytes, static_cast<std::uint32_t>(container.payload.size()), 4);
    bytes.insert(bytes.end(), container.payload.begin(), container.payload.end());
    return bytes;
}

std::optional<FillContainer> DecodeFillContainer(std::span<const std::byte> bytes, Error& error) {
    const std::optional<FillContainerHeader> header = ReadFillContainerHeader(bytes, error);
    if (!header) return std::nullopt;
    if (bytes.size() < header->size || bytes.size() - header->size != header->payloadSize)
        return Fail(error, kPayloadSizeAt, "the stated sizes are not those of the file");
    const std::span<const std::byte> payload = bytes.subspan(header->size);
    return FillContainer{header->subtype, {payload.begin(), payload.end()}};
}

bool WriteFillContainer(const std::filesystem::path& path, const FillContainer& container, Error& error) {
    return SaveAtomically(path, EncodeFillContainer(container), error);
}

std::optional<FillContainer> ReadFillContainer(const std::filesystem::path& path, Error& error) {
    const std::optional<std::vector<std::byte>> bytes = ReadWholeFile(path, error);
    if (!bytes) return std::nullopt;
    std::optional<FillContainer> container = DecodeFillContainer(*bytes, error);
    if (!container) error.what = ToUtf8(FromPath(path));
    return container;
}

}  // namespace host
