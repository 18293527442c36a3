#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "host/base/little_endian.h"

/// docs/formats/bodies.md: a body is its version and fields; a field is its number, a code for the width of
/// its value, and the value.
namespace host::detail {

inline constexpr std::uint16_t kBodyVersion = 1;

/// Codes 0 to 4 stand for 1, 2, 4, 8 and 16 bytes; this one for a u32 size that follows.
inline constexpr std::uint8_t kSizedCode = 5;
inline constexpr std::size_t kSizedHead = 2 + sizeof(std::uint32_t);

constexpr std::uint8_t WidthCode(std::size_t size) noexcept {
    switch (size) {
        case 1:
            return 0;
        case 2:
            return 1;
        case 4:
            return 2;
        case 8:
            return 3;
        case 16:
            return 4;
        default:
            return kSizedCode;
    }
}

/// Bytes of a field whose value has `size` bytes.
constexpr std::size_t FieldSize(std::size_t size) noexcept {
    return size + (WidthCode(size) == kSizedCode ? kSizedHead : 2);
}

/// Writes what stands before a value of `size` bytes. Returns the value's place.
inline std::uint8_t* StoreHead(std::uint8_t* at, unsigned number, std::size_t size) noexcept {
    at = StoreLittle(at, static_cast<std::uint8_t>(number));
    at = StoreLittle(at, WidthCode(size));
    return WidthCode(size) == kSizedCode ? StoreLittle(at, static_cast<std::uint32_t>(size)) : at;
}

/// Walks through fields in the order of their numbers. What is wrong with them shows at the end: from a
/// fault on there are no more fields.
class FieldReader {
public:
    explicit FieldReader(std::span<const std::uint8_t> bytes) noexcept
        : m_at(bytes.data()), m_end(bytes.data() + bytes.size()) {}

    /// Passes over fields with lower numbers. Whether the next one has this number: then Take follows.
    /// Numbers rise from call to call.
    bool Find(unsigned number) noexcept {
        if (m_at != m_end && *m_at < number) PassBelow(number);
        m_last = number;
        return m_at != m_end && *m_at == number;
    }
    /// The number of the next field, whatever it is: then Take follows. 0 when there is none.
    unsigned Next() noexcept {
        if (m_at == m_end) return 0;
        if (*m_at <= m_last)
            Fail();
        else
            m_last = *m_at;
        return m_good ? m_last : 0;
    }
    /// The value of the field that Find or Next found. Null when there is a fault.
    std::span<const std::uint8_t> Take() noexcept {
        const std::span value = ValueAt(m_at, m_end);
        if (value.data() == nullptr)
            Fail();
        else
            m_at = value.data() + value.size();
        return value;
    }
    void Fail() noexcept {
        m_at = m_end;
        m_good = false;
    }
    /// Passes over what is left; true when there was no fault.
    bool Finish() noexcept {
        if (m_at != m_end) PassBelow(256);
        return m_good;
    }

private:
    /// Null when the field does not lie within the bytes.
    static std::span<const std::uint8_t> ValueAt(const std::uint8_t* at, const std::uint8_t* end) noexcept {
        const auto left = static_cast<std::size_t>(end - at);
        if (left < 2) return {};
        if (at[1] < kSizedCode) {
            const std::size_t size = std::size_t{1} << at[1];
            if (size <= left - 2) return {at + 2, size};
        } else if (at[1] == kSizedCode && left >= kSizedHead) {
            const std::size_t size = LoadLittle<std::uint32_t>(at + 2);
            if (size <= left - kSizedHead) return {at + kSizedHead, size};
        }
        return {};
    }
    /// The first field from `at` on whose number is not below `number`. Null when one before it does not lie
    /// within the bytes or has a number not above `last` or the one before it.
    static const std::uint8_t* Pass(const std::uint8_t* at, const std::uint8_t* end, unsigned last,
                                    unsigned number) noexcept;
    void PassBelow(unsigned number) noexcept {
        const std::uint8_t* const next = Pass(m_at, m_end, m_last, number);
        if (next)
            m_at = next;
        else
            Fail();
    }

    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
    unsigned m_last = 0;
    bool m_good = true;
};

}  // namespace host::detail
