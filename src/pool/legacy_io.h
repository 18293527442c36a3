#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "host/base/little_endian.h"
#include "host/color/colorspec.h"
#include "host/color/context.h"
#include "host/stream/ptr_remapper.h"

namespace VyrFOM {

/// Kind of objects that are not blocks, for the remapper.
inline constexpr int kPtrObject = 0;

/// The whole number that an integer, an enumerator or a double is stored as.
template <class T>
using StoredNumber =
    std::conditional_t<sizeof(T) == 8, std::uint64_t,
                       std::conditional_t<sizeof(T) == 4, std::uint32_t,
                                          std::conditional_t<sizeof(T) == 2, std::uint16_t, std::uint8_t>>>;

/// The fields of a legacy record by their offsets. LegacyReader and LegacyWriter have the same functions, so
/// that one description of a layout serves both directions. Bytes that are not there read as 0.
class LegacyReader {
public:
    static constexpr bool kReads = true;

    LegacyReader(std::span<const std::uint8_t> bytes, udi::PtrRemapper& remapper) noexcept
        : m_bytes(bytes), m_remapper(remapper) {}

    std::size_t Size() const noexcept { return m_bytes.size(); }
    template <class T>
    void Number(std::size_t at, T& value) const noexcept {
        std::array<std::uint8_t, sizeof(T)> bytes{};
        Take(at, bytes);
        value = std::bit_cast<T>(host::LoadLittle<StoredNumber<T>>(bytes.data()));
    }
    void Color(std::size_t at, CLR_COLORSPEC& color) const noexcept {
        CLR_COLORSPEC_125X old;
        Take(at, old.bytes);
        color.LoadFrom12(old);
    }
    template <class T>
    void Object(std::size_t at, int kind, T*& object) const {
        std::uint32_t id = 0;
        Number(at, id);
        object = static_cast<T*>(m_remapper.UnmapPtr(id, kind));
    }

private:
    void Take(std::size_t at, std::span<std::uint8_t> to) const noexcept {
        const auto rest = m_bytes.subspan(std::min(at, m_bytes.size()));
        std::copy_n(rest.begin(), std::min(rest.size(), to.size()), to.begin());
    }

    std::span<const std::uint8_t> m_bytes;
    udi::PtrRemapper& m_remapper;
};

/// There is room for every field that is written.
class LegacyWriter {
public:
    static constexpr bool kReads = false;

    LegacyWriter(std::span<std::uint8_t> bytes, const ColorSystem::ColorContext& context,
                 udi::PtrRemapper& remapper) noexcept
        : m_bytes(bytes), m_context(context), m_remapper(remapper) {}

    template <class T>
    void Number(std::size_t at, const T& value) const noexcept {
        host::StoreLittle(m_bytes.data() + at, std::bit_cast<StoredNumber<T>>(value));
    }
    void Color(std::size_t at, const CLR_COLORSPEC& color) const {
        CLR_COLORSPEC_125X old;
        color.SaveIn12(old, m_context, true);
        std::copy(old.bytes.begin(), old.bytes.end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }
    void Object(std::size_t at, int kind, const void* object) const {
        Number(at, m_remapper.MapPtr(object, kind));
    }

private:
    std::span<std::uint8_t> m_bytes;
    const ColorSystem::ColorContext& m_context;
    udi::PtrRemapper& m_remapper;
};

}  // namespace VyrFOM
