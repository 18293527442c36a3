#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include "host/base/memory.h"
#include "host/base/wstring.h"
#include "host/gfx/lazy_record.h"
#include "host/gfx/shared_record.h"
#include "host/stream/ptr_remapper.h"

#include "gfx/field_fold.h"
#include "stream/field_reader.h"
#include "stream/packed_values.h"

/// The stored form of whatever has a field list (docs/formats/bodies.md).
///
/// Writing is done in two steps: SizeBound says how many bytes are enough, and then nothing checks for room
/// any more. Both steps go through the same codecs, one per type of field:
///
///     bool IsDefault(value, value of an empty record)   such a field is left out
///     size_t SizeBound(value)                           at least what Write writes
///     uint8_t* Write(at, number, value, remapper)       the whole field; the place behind it
///     bool Read(bytes, value, remapper)                 into a default value
///
/// Reading trusts nothing. Every list is counted by the bytes that are there before memory is taken for it.
namespace host::detail {

using Bytes = std::span<const std::uint8_t>;
using udi::PtrRemapper;

template <class T>
struct Codec;

/// The codec of a record's member: its type's, but for members of which the type does not tell all.
template <class Record, class Member>
struct CodecOf;
template <class Record, class Owner, class T>
struct CodecOf<Record, T Owner::*> {
    using Type = Codec<T>;
};

template <class T>
concept IsRecord = HasFields<T> && !IsPacked<T>;

/// Numbers have one byte, and none is given twice.
template <class Record>
consteval bool HasRisingNumbers() {
    unsigned last = 0;
    bool good = true;
    Fields<Record>::Visit([&](unsigned number, auto, const char*) {
        good = good && number > last && number <= 255;
        last = number;
    });
    return good;
}

template <class Record>
bool IsStored(const Record& record, unsigned number) noexcept {
    if constexpr (requires { Fields<Record>::IsStored(record, number); })
        return Fields<Record>::IsStored(record, number);
    else
        return true;
}

/// Fields that an element of a list has even where they hold the default, so that no element is much smaller
/// than the memory that it takes.
template <class FieldCodec>
concept IsAlwaysInElements = requires {
    FieldCodec::kSize;
};

template <class Record>
consteval std::size_t LeastElementSize() {
    std::size_t size = 0;
    Fields<Record>::Visit([&]<class Member>(unsigned, Member, const char*) {
        using FieldCodec = typename CodecOf<Record, Member>::Type;
        if constexpr (IsAlwaysInElements<FieldCodec>) size += FieldCodec::kSize;
    });
    return size;
}

// Each of the three functions below is one piece of straight code for a whole record.

template <class Record>
[[gnu::flatten, gnu::noinline]] std::size_t FieldsBound(const Record& record) noexcept {
    std::size_t bound = 0;
    Fields<Record>::Visit([&]<class Member>(unsigned number, Member member, const char*) {
        if (IsStored(record, number)) bound += CodecOf<Record, Member>::Type::SizeBound(record.*member);
    });
    return bound;
}

template <bool isElement, class Record>
[[gnu::flatten, gnu::noinline]] std::uint8_t* WriteFields(std::uint8_t* at, const Record& record,
                                                          PtrRemapper& remapper) {
    static_assert(HasRisingNumbers<Record>());
    const Record& empty = EmptyRecord<Record>();
    Fields<Record>::Visit([&]<class Member>(unsigned number, Member member, const char*) {
        using FieldCodec = typename CodecOf<Record, Member>::Type;
        constexpr bool isAlways = isElement && IsAlwaysInElements<FieldCodec>;
        if (!IsStored(record, number)) return;
        if (isAlways || !FieldCodec::IsDefault(record.*member, empty.*member))
            at = FieldCodec::Write(at, number, record.*member, remapper);
    });
    return at;
}

template <class Record>
[[gnu::flatten, gnu::noinline]] bool ReadFields(Bytes bytes, Record& record, PtrRemapper& remapper) {
    FieldReader reader(bytes);
    Fields<Record>::Visit([&]<class Member>(unsigned number, Member member, const char*) {
        if (!reader.Find(number)) return;
        const Bytes value = reader.Take();
        if (!IsStored(record, number)) return;
        if (!CodecOf<Record, Member>::Type::Read(value, record.*member, remapper)) reader.Fail();
    });
    if (!reader.Finish()) return false;
    if constexpr (requires { Fields<Record>::Accepts(record); }) return Fields<Record>::Accepts(record);
    return true;
}

/// A field of which `write(at)` writes the value and returns the place behind it.
template <class Write>
std::uint8_t* WriteSized(std::uint8_t* at, unsigned number, Write write) {
    std::uint8_t* const value = at + kSizedHead;
    std::uint8_t* const end = write(value);
    at = StoreLittle(at, static_cast<std::uint8_t>(number));
    at = StoreLittle(at, kSizedCode);
    StoreLittle(at, static_cast<std::uint32_t>(end - value));
    return end;
}

template <class Record>
std::uint8_t* WriteRecord(std::uint8_t* at, unsigned number, const Record& record, PtrRemapper& remapper) {
    return WriteSized(at, number,
                      [&](std::uint8_t* value) { return WriteFields<false>(value, record, remapper); });
}

template <IsPacked T>
struct Codec<T> {
    static constexpr std::size_t kSize = FieldSize(sizeof(T));

    static bool IsDefault(const T& value, const T& empty) noexcept { return HasSameBytes(value, empty); }
    static std::size_t SizeBound(const T&) noexcept { return kSize; }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const T& value, PtrRemapper&) noexcept {
        return StorePacked(StoreHead(at, number, sizeof(T)), value);
    }
    static bool Read(Bytes bytes, T& value, PtrRemapper&) noexcept {
        if (bytes.size() != sizeof(T)) return false;
        LoadPacked(bytes.data(), value);
        return true;
    }
};

template <HasShortForm T>
struct Codec<T> {
    static constexpr std::size_t kShortSize = Packed<T>::kShortSize;

    static bool IsDefault(const T& value, const T& empty) noexcept { return HasSameBytes(value, empty); }
    static std::size_t SizeBound(const T&) noexcept { return FieldSize(sizeof(T)); }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const T& value, PtrRemapper&) noexcept {
        if (FitsShortForm(value)) return StoreShort(StoreHead(at, number, kShortSize), value);
        return StorePacked(StoreHead(at, number, sizeof(T)), value);
    }
    static bool Read(Bytes bytes, T& value, PtrRemapper&) noexcept {
        if (bytes.size() == kShortSize)
            LoadShort(bytes.data(), value);
        else if (bytes.size() == sizeof(T))
            LoadPacked(bytes.data(), value);
        else
            return false;
        return true;
    }
};

template <IsRecord T>
struct Codec<T> {
    static bool IsDefault(const T&, const T&) noexcept { return false; }
    static std::size_t SizeBound(const T& record) noexcept { return kSizedHead + FieldsBound(record); }
    /// Nothing when all fields hold the default.
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const T& record, PtrRemapper& remapper) {
        std::uint8_t* const end = WriteRecord(at, number, record, remapper);
        return end == at + kSizedHead ? at : end;
    }
    static bool Read(Bytes bytes, T& record, PtrRemapper& remapper) {
        return ReadFields(bytes, record, remapper);
    }
};

template <class T>
struct Codec<LazyRecord<T>> {
    static bool IsDefault(const LazyRecord<T>& record, const LazyRecord<T>&) noexcept {
        return !record.IsAllocated();
    }
    static std::size_t SizeBound(const LazyRecord<T>& record) noexcept {
        return Codec<T>::SizeBound(record.Read());
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const LazyRecord<T>& record,
                               PtrRemapper& remapper) {
        return Codec<T>::Write(at, number, record.Read(), remapper);
    }
    static bool Read(Bytes bytes, LazyRecord<T>& record, PtrRemapper& remapper) {
        return Codec<T>::Read(bytes, record.Edit(), remapper);
    }
};

template <class T>
struct Codec<SharedRecord<T>> {
    static bool IsDefault(const SharedRecord<T>& record, const SharedRecord<T>&) noexcept {
        return record.IsDefault();
    }
    static std::size_t SizeBound(const SharedRecord<T>& record) noexcept {
        return record.IsDefault() ? 0 : Codec<T>::SizeBound(record.Read());
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const SharedRecord<T>& record,
                               PtrRemapper& remapper) {
        return Codec<T>::Write(at, number, record.Read(), remapper);
    }
    static bool Read(Bytes bytes, SharedRecord<T>& record, PtrRemapper& remapper) {
        T value;
        if (!Codec<T>::Read(bytes, value, remapper)) return false;
        record.Set(std::move(value));
        return true;
    }
};

/// The field is there when the value is.
template <IsRecord T>
struct Codec<std::optional<T>> {
    using Optional = std::optional<T>;

    static bool IsDefault(const Optional& record, const Optional&) noexcept { return !record; }
    static std::size_t SizeBound(const Optional& record) noexcept {
        return record ? kSizedHead + FieldsBound(*record) : 0;
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const Optional& record,
                               PtrRemapper& remapper) {
        return WriteRecord(at, number, *record, remapper);
    }
    static bool Read(Bytes bytes, Optional& record, PtrRemapper& remapper) {
        return ReadFields(bytes, record.emplace(), remapper);
    }
};

/// A u16 step, then the values, each `step` bytes after the one before.
template <IsPacked T>
struct Codec<std::vector<T>> {
    using Vector = std::vector<T>;
    static constexpr std::size_t kHead = sizeof(std::uint16_t);

    static bool IsDefault(const Vector& values, const Vector&) noexcept { return values.empty(); }
    static std::size_t SizeBound(const Vector& values) noexcept {
        return kSizedHead + kHead + values.size() * sizeof(T);
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const Vector& values, PtrRemapper&) {
        return WriteSized(at, number, [&](std::uint8_t* to) { return WriteValues(to, values); });
    }
    static bool Read(Bytes bytes, Vector& values, PtrRemapper&) {
        if (bytes.size() < kHead) return false;
        const std::size_t step = LoadLittle<std::uint16_t>(bytes.data());
        const bool isShort = IsShortStep(step);
        bytes = bytes.subspan(kHead);
        if ((step < sizeof(T) && !isShort) || bytes.size() % step != 0) return false;
        values.resize(bytes.size() / step);
        const std::uint8_t* at = bytes.data();
        for (T& value : values) {
            LoadValue(at, value, isShort);
            at += step;
        }
        return true;
    }

private:
    static constexpr bool IsShortStep(std::size_t step) noexcept {
        if constexpr (HasShortForm<T>)
            return step == Packed<T>::kShortSize;
        else
            return false;
    }
    static std::uint8_t* WriteValues(std::uint8_t* at, const Vector& values) noexcept {
        if constexpr (HasShortForm<T>) {
            if (std::all_of(values.begin(), values.end(), FitsShortForm<T>)) {
                at = StoreLittle(at, static_cast<std::uint16_t>(Packed<T>::kShortSize));
                for (const T& value : values)
                    at = StoreShort(at, value);
                return at;
            }
        }
        at = StoreLittle(at, static_cast<std::uint16_t>(sizeof(T)));
        for (const T& value : values)
            at = StorePacked(at, value);
        return at;
    }
    static void LoadValue(const std::uint8_t* at, T& value, [[maybe_unused]] bool isShort) noexcept {
        if constexpr (HasShortForm<T>) {
            if (isShort) return LoadShort(at, value);
        }
        LoadPacked(at, value);
    }
};

/// For each element a u32 size and its fields.
template <IsRecord T>
struct Codec<std::vector<T>> {
    using Vector = std::vector<T>;
    static constexpr std::size_t kHead = sizeof(std::uint32_t);

    static bool IsDefault(const Vector& records, const Vector&) noexcept { return records.empty(); }
    static std::size_t SizeBound(const Vector& records) noexcept {
        std::size_t bound = kSizedHead;
        for (const T& record : records)
            bound += kHead + FieldsBound(record);
        return bound;
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const Vector& records,
                               PtrRemapper& remapper) {
        return WriteSized(at, number, [&](std::uint8_t* to) {
            for (const T& record : records) {
                std::uint8_t* const end = WriteFields<true>(to + kHead, record, remapper);
                StoreLittle(to, static_cast<std::uint32_t>(end - (to + kHead)));
                to = end;
            }
            return to;
        });
    }
    static bool Read(Bytes bytes, Vector& records, PtrRemapper& remapper) {
        // What a list takes is bounded by the input: docs/formats/bodies.md.
        static_assert(sizeof(T) <= 9 * (kHead + LeastElementSize<T>()));
        const std::optional<std::size_t> count = Count(bytes);
        if (!count) return false;
        records.resize(*count);
        for (T& record : records)
            if (!ReadFields(TakeElement(bytes), record, remapper)) return false;
        return true;
    }

private:
    /// Null when the bytes do not begin with a whole element.
    static Bytes TakeElement(Bytes& bytes) noexcept {
        if (bytes.size() < kHead) return {};
        const std::size_t size = LoadLittle<std::uint32_t>(bytes.data());
        if (size < LeastElementSize<T>() || size > bytes.size() - kHead) return {};
        const Bytes element = bytes.subspan(kHead, size);
        bytes = bytes.subspan(kHead + size);
        return element;
    }
    static std::optional<std::size_t> Count(Bytes bytes) noexcept {
        std::size_t count = 0;
        for (; !bytes.empty(); ++count)
            if (TakeElement(bytes).data() == nullptr) return std::nullopt;
        return count;
    }
};

/// UTF-16 units up to the last one that is not 0.
template <std::size_t N>
struct Codec<FixedName<N>> {
    static bool IsDefault(const FixedName<N>& name, const FixedName<N>&) noexcept {
        return Length(name) == 0;
    }
    static std::size_t SizeBound(const FixedName<N>&) noexcept {
        return kSizedHead + (N - 1) * sizeof(char16_t);
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const FixedName<N>& name, PtrRemapper&) {
        return WriteSized(at, number, [&](std::uint8_t* to) {
            for (std::size_t i = 0; i < Length(name); ++i)
                to = StoreLittle(to, name.Units()[i]);
            return to;
        });
    }
    static bool Read(Bytes bytes, FixedName<N>& name, PtrRemapper&) noexcept {
        if (bytes.size() % sizeof(char16_t) != 0 || bytes.size() > (N - 1) * sizeof(char16_t)) return false;
        for (std::size_t i = 0; i < bytes.size() / sizeof(char16_t); ++i)
            name.Units()[i] = LoadLittle<char16_t>(bytes.data() + i * sizeof(char16_t));
        return true;
    }

private:
    /// The terminating 0 never counts.
    static std::size_t Length(const FixedName<N>& name) noexcept {
        std::size_t length = N - 1;
        while (length != 0 && name.Units()[length - 1] == 0)
            --length;
        return length;
    }
};

/// A reference to something that stands elsewhere in the stream or in the host: the remapper's number.
template <class Pointer, int kind>
struct ReferenceCodec {
    static constexpr std::size_t kSize = FieldSize(sizeof(std::uint32_t));

    static bool IsDefault(const Pointer& object, const Pointer&) noexcept { return object == nullptr; }
    static std::size_t SizeBound(const Pointer&) noexcept { return kSize; }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const Pointer& object,
                               PtrRemapper& remapper) {
        return StoreLittle(StoreHead(at, number, sizeof(std::uint32_t)), remapper.MapPtr(object, kind));
    }
    static bool Read(Bytes bytes, Pointer& object, PtrRemapper& remapper) {
        if (bytes.size() != sizeof(std::uint32_t)) return false;
        object = static_cast<Pointer>(remapper.UnmapPtr(LoadLittle<std::uint32_t>(bytes.data()), kind));
        return true;
    }
};
template <>
struct Codec<HMEM> : ReferenceCodec<HMEM, udi::kPtrBlock> {};
template <>
struct Codec<void*> : ReferenceCodec<void*, 0> {};

}  // namespace host::detail
