#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

namespace udi {

/// Where records write their bodies. The bytes are gathered and reach the stream with Flush, at the latest
/// when the archive goes; faults show in the stream's good flag. Stream, remapper and context outlive it.
class FOM_API OutputArchive {
public:
    OutputArchive(AbstractFileStream& stream, PtrRemapper& remapper,
                  const ColorSystem::ColorContext& context);
    ~OutputArchive();
    OutputArchive(const OutputArchive&) = delete;
    OutputArchive& operator=(const OutputArchive&) = delete;

    void Flush() noexcept;
    /// What is gathered; records append to it. Throws bad_alloc.
    std::vector<std::uint8_t>& GetBytes() noexcept { return m_bytes; }
    PtrRemapper& GetRemapper() noexcept { return m_remapper; }
    const ColorSystem::ColorContext& GetColorContext() const noexcept { return m_context; }

private:
    AbstractFileStream& m_stream;
    PtrRemapper& m_remapper;
    const ColorSystem::ColorContext& m_context;
    std::vector<std::uint8_t> m_bytes;
};

/// Where records read their bodies: bytes that belong to the caller, of which every one may be hostile.
class FOM_API InputArchive {
public:
    InputArchive(std::span<const std::uint8_t> bytes, PtrRemapper& remapper,
                 const ColorSystem::ColorContext& context) noexcept
        : m_bytes(bytes), m_remapper(remapper), m_context(context) {}

    std::span<const std::uint8_t> GetBytes() const noexcept { return m_bytes; }
    PtrRemapper& GetRemapper() noexcept { return m_remapper; }
    const ColorSystem::ColorContext& GetColorContext() const noexcept { return m_context; }

private:
    std::span<const std::uint8_t> m_bytes;
    PtrRemapper& m_remapper;
    const ColorSystem::ColorContext& m_context;
};

}  // namespace udi
