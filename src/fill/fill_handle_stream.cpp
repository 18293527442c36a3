#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "host/stream/file_stream.h"

#include "fom/fill_handle.h"

namespace {

constexpr std::array<double MATRIX::*, 6> kElements{&MATRIX::a, &MATRIX::b,  &MATRIX::c,
                                                    &MATRIX::d, &MATRIX::tx, &MATRIX::ty};
using DoubleBytes = std::array<std::uint8_t, 8>;

DoubleBytes ToBytes(double value) noexcept {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    DoubleBytes bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(bits >> (8 * i));
    return bytes;
}

double FromBytes(const DoubleBytes& bytes) noexcept {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bits |= std::uint64_t{bytes[i]} << (8 * i);
    return std::bit_cast<double>(bits);
}

}  // namespace

void WFillHandle::WriteTo(AbstractFileStream& stream) const {
    ArchiveCreator::WriteObject(stream, Entry());
}

void WFillHandle::ReadFrom(AbstractFileStream& stream) {
    const auto factory = [](const std::string& name) -> ArchiveObject* {
        return name == "WRefCountFill" ? new WRefCountFill(false) : nullptr;
    };
    std::unique_ptr<ArchiveObject> object(ArchiveCreator::ReadObject(stream, factory));
    if (!object || !stream.IsGood()) return;
    std::unique_ptr<WRefCountFill> entry(static_cast<WRefCountFill*>(object.release()));
    m_entry.SelectAndRegister(std::move(entry), &stream);
}

void WFillHandle::WriteMat(AbstractFileStream& stream) const noexcept {
    for (const auto element : kElements) {
        const DoubleBytes bytes = ToBytes(m_tilingMatrix.*element);
        stream.Write(bytes.data(), bytes.size());
    }
}

void WFillHandle::ReadMat(AbstractFileStream& stream) noexcept {
    for (const auto element : kElements) {
        DoubleBytes bytes{};
        if (stream.Read(bytes.data(), bytes.size()) == bytes.size())
            m_tilingMatrix.*element = FromBytes(bytes);
    }
}
