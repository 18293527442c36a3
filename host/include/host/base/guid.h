#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

#include "host/base/export.h"
#include "host/base/wstring.h"

namespace VyrUtils {

/// A 128-bit identifier. The default is nil. Bytes stand in the order of the text form.
class FOM_API Guid {
public:
    constexpr Guid() noexcept = default;
    constexpr explicit Guid(const std::array<std::uint8_t, 16>& bytes) noexcept : m_bytes(bytes) {}

    /// A new random identifier (version 4). Safe from any thread; never nil.
    static Guid Generate();
    /// "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx", with or without braces, any case.
    static std::optional<Guid> Parse(std::wstring_view text) noexcept;

    bool IsNil() const noexcept;
    /// Lower case, without braces.
    VyrPlatform::VyrStringT<wchar_t> ToString() const;
    const std::array<std::uint8_t, 16>& Bytes() const noexcept { return m_bytes; }

    friend auto operator<=>(const Guid&, const Guid&) = default;

private:
    std::array<std::uint8_t, 16> m_bytes{};
};

}  // namespace VyrUtils
