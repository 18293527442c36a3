#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/base/guid.h"
#include "host/base/hash.h"
#include "host/base/memory.h"
#include "host/base/wstring.h"
#include "host/color/convert.h"
#include "host/color/fountcolor.h"
#include "host/color/screenspec.h"
#include "host/geometry/matrix.h"
#include "host/geometry/rect.h"
#include "host/gfx/dot_dash.h"
#include "host/gfx/shared_record.h"
#include "host/gfx/wideline.h"

/// A record's fields as data. `Fields<Record>::Visit(v)` calls `v(number, &Record::member, name)` for every
/// field, in the order of their numbers. A number stands for its field in stored forms for good; a name is
/// what people read. One list serves comparison and hash here and whatever else must not forget a field.
///
/// Where a record has them, `IsStored(record, number)` says which fields its stored form has, and
/// `Accepts(record)` whether the fields that were read agree with each other.
namespace host::detail {

template <class Record>
struct Fields;

template <class T>
concept HasFields = requires {
    sizeof(Fields<T>);
};

/// No padding and no meaning beyond the bytes.
template <class T>
concept ByBytes = std::same_as<T, double> || std::same_as<T, MATRIX> || std::same_as<T, VECTOR2D> ||
    std::same_as<T, CLR_SCREENSPEC> || std::same_as<T, CLR_FOUNTCOLOR>;
template <class T>
concept ByValue = std::is_integral_v<T> || std::is_enum_v<T>;
/// Hashed by all its bytes.
template <class T>
concept HashedByBytes = ByBytes<T> || ByValue<T> || std::same_as<T, CLR_COLORSPEC>;

/// Negative, 0 or positive: none first, then by size, then by bytes.
int CompareBlocks(HMEM a, HMEM b) noexcept;

/// Three-way comparison of two records over their field lists; an identifier (Guid) never takes part.
struct FieldCompare {
    /// Leaves the identity block of a colour to WClrConvert::CompareColors alone.
    bool skipIdentity = false;

    template <class T>
    int operator()(const T& a, const T& b) const noexcept {
        if constexpr (HasFields<T>) {
            int result = 0;
            Fields<T>::Visit([&](unsigned, auto member, const char*) {
                if (result == 0) result = (*this)(a.*member, b.*member);
            });
            return result;
        } else if constexpr (ByBytes<T>) {
            return std::memcmp(&a, &b, sizeof(T));
        } else {
            static_assert(ByValue<T>, "no comparison is defined for this field");
            return a < b ? -1 : a > b ? 1 : 0;
        }
    }
    template <class T>
    int operator()(const std::vector<T>& a, const std::vector<T>& b) const noexcept {
        if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
        return Elements(a.data(), b.data(), a.size());
    }
    /// None first.
    template <class T>
    int operator()(const std::optional<T>& a, const std::optional<T>& b) const noexcept {
        if (!a || !b) return static_cast<int>(a.has_value()) - static_cast<int>(b.has_value());
        return (*this)(*a, *b);
    }
    template <class T>
    int operator()(const SharedRecord<T>& a, const SharedRecord<T>& b) const noexcept {
        return a.IsSharedWith(b) ? 0 : (*this)(a.Read(), b.Read());
    }
    int operator()(const std::shared_ptr<const CGE_WIDELINE>& a,
                   const std::shared_ptr<const CGE_WIDELINE>& b) const noexcept {
        if (!a || !b) return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
        return a->Compare(*b);
    }
    int operator()(const CGE_DOTDASHSPEC& a, const CGE_DOTDASHSPEC& b) const noexcept {
        const std::size_t used = a.Used();
        if (used != b.Used()) return used < b.Used() ? -1 : 1;
        return Elements(a.element.data(), b.element.data(), used);
    }
    int operator()(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) const noexcept {
        const int result = WClrConvert::CompareColors(a, b);
        if (result != 0 || skipIdentity) return result;
        return std::memcmp(a.GetIdentity().data(), b.GetIdentity().data(), a.GetIdentity().size());
    }
    int operator()(HMEM a, HMEM b) const noexcept { return a == b ? 0 : CompareBlocks(a, b); }
    int operator()(const VyrUtils::Guid&, const VyrUtils::Guid&) const noexcept { return 0; }

private:
    template <class T>
    int Elements(const T* a, const T* b, std::size_t count) const noexcept {
        int result = 0;
        for (std::size_t i = 0; i < count && result == 0; ++i)
            result = (*this)(a[i], b[i]);
        return result;
    }
};

/// Hashes `size` bytes, four words at a time side by side: several times faster than word after word.
void HashBytes(Hasher& hasher, const void* data, std::size_t size) noexcept;

/// Hashes what FieldCompare compares. Fields are gathered and hashed together when the buffer is full or at
/// the end.
class FieldHash {
public:
    // cppcheck-suppress uninitMemberVar
    explicit FieldHash(Hasher& hasher) noexcept : m_hasher(hasher) {}
    ~FieldHash() { HashBytes(m_hasher, m_gathered, m_used); }
    FieldHash(const FieldHash&) = delete;
    FieldHash& operator=(const FieldHash&) = delete;

    template <class T>
    void operator()(const T& value) noexcept {
        if constexpr (HasFields<T>) {
            GatherPlain(value);
            Fields<T>::Visit([&](unsigned, auto member, const char*) {
                if constexpr (!HashedByBytes<FieldOf<T, decltype(member)>>) (*this)(value.*member);
            });
        } else {
            static_assert(HashedByBytes<T>, "no hash is defined for this field");
            Gather(value);
        }
    }
    template <class T>
    void operator()(const std::vector<T>& values) noexcept {
        Gather(values.size());
        if constexpr (ByBytes<T>) {
            HashBytes(m_hasher, values.data(), values.size() * sizeof(T));
        } else {
            for (const T& value : values)
                (*this)(value);
        }
    }
    template <class T>
    void operator()(const std::optional<T>& value) noexcept {
        Gather(value.has_value());
        if (value) (*this)(*value);
    }
    template <class T>
    void operator()(const SharedRecord<T>& record) noexcept {
        Gather(record.IsDefault());
        if (!record.IsDefault()) (*this)(record.Read());
    }
    void operator()(const std::shared_ptr<const CGE_WIDELINE>& wideline) noexcept {
        Gather(wideline != nullptr);
        if (wideline) wideline->HashInto(m_hasher);
    }
    void operator()(const CGE_DOTDASHSPEC& dots) noexcept {
        const std::size_t used = dots.Used();
        Gather(static_cast<std::uint16_t>(used));
        for (std::size_t i = 0; i < used; ++i)
            Gather(dots.element[i]);
    }
    void operator()(HMEM block) noexcept {
        Gather(block != nullptr);
        if (block) GatherContents(block);
    }
    void operator()(const VyrUtils::Guid&) noexcept {}

private:
    static constexpr std::size_t kRoom = 256;

    template <class T, class Member>
    using FieldOf = std::remove_cvref_t<decltype(std::declval<const T&>().*std::declval<Member>())>;

    template <class T>
    static constexpr std::size_t PlainSize() {
        std::size_t size = 0;
        Fields<T>::Visit([&size](unsigned, auto member, const char*) {
            using Field = FieldOf<T, decltype(member)>;
            if constexpr (HashedByBytes<Field>) size += sizeof(Field);
        });
        return size;
    }
    /// The fields that are hashed by their bytes, one after the other: only where the first one goes is not
    /// known when this is compiled.
    template <class T>
    void GatherPlain(const T& record) noexcept {
        constexpr std::size_t kSize = PlainSize<T>();
        MakeRoom<kSize>();
        unsigned char* at = m_gathered + m_used;
        Fields<T>::Visit([&](unsigned, auto member, const char*) {
            using Field = FieldOf<T, decltype(member)>;
            if constexpr (HashedByBytes<Field>) {
                std::memcpy(at, &(record.*member), sizeof(Field));
                at += sizeof(Field);
            }
        });
        m_used += kSize;
    }
    void GatherContents(HMEM block) noexcept;
    template <class T>
    void Gather(const T& value) noexcept {
        MakeRoom<sizeof(T)>();
        std::memcpy(m_gathered + m_used, &value, sizeof(T));
        m_used += sizeof(T);
    }
    template <std::size_t kSize>
    void MakeRoom() noexcept {
        static_assert(kSize <= kRoom);
        if (kRoom - m_used >= kSize) return;
        HashBytes(m_hasher, m_gathered, m_used);
        m_used = 0;
    }

    Hasher& m_hasher;
    std::size_t m_used = 0;
    unsigned char m_gathered[kRoom];  // not cleared: what is used is written first
};

}  // namespace host::detail
