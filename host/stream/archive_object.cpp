#include "host/stream/archive_object.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

namespace {

void WriteNameLength(AbstractFileStream& stream, std::size_t length) noexcept {
    const std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(length & 0xFF),
                                            static_cast<std::uint8_t>(length >> 8)};
    stream.Write(bytes.data(), bytes.size());
}

std::size_t ReadNameLength(AbstractFileStream& stream) noexcept {
    std::array<std::uint8_t, 2> bytes{};
    stream.Read(bytes.data(), bytes.size());
    return bytes[0] | (std::size_t{bytes[1]} << 8);
}

ArchiveObject* Fail(AbstractFileStream& stream) noexcept {
    stream.SetGood(false);
    return nullptr;
}

}  // namespace

ArchiveObject::~ArchiveObject() = default;

void ArchiveCreator::WriteObject(AbstractFileStream& stream, const ArchiveObject* object) {
    if (!object) {
        WriteNameLength(stream, 0);
        return;
    }
    const std::string_view name = object->getClassName();
    if (name.empty() || name.size() > kMaxClassName) {
        stream.SetGood(false);
        return;
    }
    WriteNameLength(stream, name.size());
    stream.Write(name.data(), name.size());
    object->WriteTo(stream);
}

ArchiveObject* ArchiveCreator::ReadObject(
    AbstractFileStream& stream, const Delegate<ArchiveObject*(const std::string& className)>& factory) {
    if (!stream.IsGood()) return nullptr;
    const std::size_t length = ReadNameLength(stream);
    if (length == 0 || !stream.IsGood()) return nullptr;
    if (length > kMaxClassName || !factory) return Fail(stream);
    std::string name(length, '\0');
    stream.Read(name.data(), length);
    if (!stream.IsGood()) return nullptr;
    std::unique_ptr<ArchiveObject> object(factory(name));
    if (!object) return Fail(stream);
    object->ReadFrom(stream);
    return object.release();
}
