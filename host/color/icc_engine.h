#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "host/base/error.h"

#include "color/device.h"

namespace host::detail {

/// How the colours that go into a transform are packed, one after the other.
/// Rgb8, Cmyk8, Gray8: 3, 4 or 1 bytes; Rgb16, Cmyk16, Gray16: as many u16, 65535 full;
/// Lab: 3 doubles, relative to D50.
enum class PixelFormat : std::uint8_t { Rgb8, Cmyk8, Gray8, Rgb16, Cmyk16, Gray16, Lab };
inline constexpr std::size_t kPixelFormats = 7;

constexpr Family FamilyOf(PixelFormat format) noexcept {
    switch (format) {
        case PixelFormat::Rgb8:
        case PixelFormat::Rgb16:
            return Family::Rgb;
        case PixelFormat::Cmyk8:
        case PixelFormat::Cmyk16:
            return Family::Cmyk;
        case PixelFormat::Gray8:
        case PixelFormat::Gray16:
            return Family::Gray;
        case PixelFormat::Lab:
            break;
    }
    return Family::Xyz;
}

/// The bytes of up to three ICC profiles; an empty one is left out.
struct IccProfiles {
    std::span<const std::byte> rgb;
    std::span<const std::byte> cmyk;
    std::span<const std::byte> gray;
};

/// The profiles of one context and the transforms between them. All const functions may be called from any
/// thread.
class IccEngine {
public:
    /// One transform; owned by its engine.
    class Transform;

    /// Nothing, with `error` set, when a profile does not serve or no engine is built in.
    static std::unique_ptr<IccEngine> Open(const IccProfiles& profiles, Error& error);
    virtual ~IccEngine() = default;

    /// The transform from `from` to `to` (packed as Rgb16, Cmyk16, Gray16 or Lab), made at its first use and
    /// kept. Null when a profile is missing, both sides are the same family, or it cannot be made.
    virtual const Transform* Find(PixelFormat from, Family to) const = 0;
    virtual void Run(const Transform& transform, const void* in, void* out,
                     std::size_t count) const noexcept = 0;
};

}  // namespace host::detail
