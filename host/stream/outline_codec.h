#pragma once

#include "gfx/outline_fields.h"
#include "gfx/wideline_fields.h"
#include "stream/field_codec.h"

namespace host::detail {

/// The count, then the lengths up to the last one that is not 0.
template <>
struct Codec<CGE_DOTDASHSPEC> {
    static constexpr std::size_t kHead = sizeof(std::uint16_t), kStep = sizeof(std::int32_t);

    static bool IsDefault(const CGE_DOTDASHSPEC& dots, const CGE_DOTDASHSPEC&) noexcept {
        return dots.count == 0 && Length(dots) == 0;
    }
    static std::size_t SizeBound(const CGE_DOTDASHSPEC& dots) noexcept {
        return kSizedHead + kHead + dots.element.size() * kStep;
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const CGE_DOTDASHSPEC& dots, PtrRemapper&) {
        return WriteSized(at, number, [&](std::uint8_t* to) {
            to = StoreLittle(to, dots.count);
            for (std::size_t i = 0; i < Length(dots); ++i)
                to = StoreLittle(to, dots.element[i]);
            return to;
        });
    }
    static bool Read(Bytes bytes, CGE_DOTDASHSPEC& dots, PtrRemapper&) noexcept {
        if (bytes.size() < kHead || (bytes.size() - kHead) % kStep != 0) return false;
        const std::size_t length = (bytes.size() - kHead) / kStep;
        if (length > dots.element.size()) return false;
        dots.count = LoadLittle<std::uint16_t>(bytes.data());
        for (std::size_t i = 0; i < length; ++i)
            dots.element[i] = LoadLittle<std::int32_t>(bytes.data() + kHead + i * kStep);
        return true;
    }

private:
    static std::size_t Length(const CGE_DOTDASHSPEC& dots) noexcept {
        std::size_t length = dots.element.size();
        while (length != 0 && dots.element[length - 1] == 0)
            --length;
        return length;
    }
};

/// The u16 type code, then the fields. A class without a stored form is left out.
template <>
struct Codec<std::shared_ptr<const CGE_WIDELINE>> {
    using Wideline = std::shared_ptr<const CGE_WIDELINE>;
    static constexpr std::size_t kHead = sizeof(std::uint16_t);

    static bool IsDefault(const Wideline& wideline, const Wideline&) noexcept {
        return !wideline || wideline->GetType() != WidelineDes9;
    }
    static std::size_t SizeBound(const Wideline& wideline) noexcept {
        return IsDefault(wideline, nullptr) ? 0 : kSizedHead + kHead + FieldsBound(Des9(wideline));
    }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, const Wideline& wideline,
                               PtrRemapper& remapper) {
        return WriteSized(at, number, [&](std::uint8_t* to) {
            to = StoreLittle(to, static_cast<std::uint16_t>(wideline->GetType()));
            return WriteFields<false>(to, Des9(wideline), remapper);
        });
    }
    static bool Read(Bytes bytes, Wideline& wideline, PtrRemapper& remapper) {
        if (bytes.size() < kHead || LoadLittle<std::uint16_t>(bytes.data()) != WidelineDes9) return false;
        const auto des9 = std::make_shared<CGE_DES9_WIDELINE>();
        if (!ReadFields(bytes.subspan(kHead), *des9, remapper)) return false;
        wideline = des9;
        return true;
    }

private:
    static const CGE_DES9_WIDELINE& Des9(const Wideline& wideline) noexcept {
        return static_cast<const CGE_DES9_WIDELINE&>(*wideline);
    }
};

}  // namespace host::detail
