#include "color/pixels.h"

#include <algorithm>
#include <cstring>

#include "color/cie.h"

namespace host::detail {
namespace {

constexpr int kFull = 65535;

std::size_t ChannelsOf(Family family) noexcept {
    return family == Family::Gray ? 1 : family == Family::Cmyk ? 4 : 3;
}

template <std::size_t Channels>
void PackBytes(std::span<CLR_COLORSPEC* const> colors, void* out) noexcept {
    auto* at = static_cast<std::uint8_t*>(out);
    for (const CLR_COLORSPEC* color : colors) {
        for (unsigned i = 0; i < Channels; ++i) {
            at[i] = static_cast<std::uint8_t>(std::min<int>(color->GetComponent(i), 255));
        }
        at += Channels;
    }
}

std::uint16_t WordOfPercent(std::uint16_t percent) noexcept {
    return static_cast<std::uint16_t>((std::min<std::uint32_t>(percent, 100) * kFull + 50) / 100);
}

void PackWords(std::span<CLR_COLORSPEC* const> colors, std::size_t channels, void* out) noexcept {
    auto* at = static_cast<std::uint16_t*>(out);
    for (const CLR_COLORSPEC* color : colors) {
        if (color->GetModel() == ClrModel::CMYK && !color->IsNamedPalette()) {
            // The commonest colour of print work gets by without real numbers.
            for (unsigned i = 0; i < 4; ++i)
                *at++ = WordOfPercent(color->GetComponent(i));
            continue;
        }
        const DeviceColor device = Decode(*color).value_or(DeviceColor());
        for (std::size_t i = 0; i < channels; ++i) {
            *at++ = static_cast<std::uint16_t>(Quantise(device.v[i] * kFull, 0, kFull));
        }
    }
}

void PackLab(std::span<CLR_COLORSPEC* const> colors, void* out) noexcept {
    auto* at = static_cast<double*>(out);
    for (const CLR_COLORSPEC* color : colors) {
        const DeviceColor device = Decode(*color).value_or(DeviceColor());
        for (const double value : LabD50FromXyz({device.v[0], device.v[1], device.v[2]}))
            *at++ = value;
    }
}

/// A part of 65535 as a part of `full` (at most 65535), rounded; there are no halves, 65535 being odd.
std::uint16_t Rescaled(std::uint32_t value, std::uint32_t full) noexcept {
    const std::uint32_t sum = value * full + kFull / 2;
    return static_cast<std::uint16_t>((sum + (sum >> 16) + 1) >> 16);  // exactly sum / 65535
}

/// `blank` is any plain colour of the model to make, whose components are parts of `Full`.
template <std::size_t Channels, std::uint32_t Full>
void UnpackParts(std::span<CLR_COLORSPEC* const> colors, const CLR_COLORSPEC& blank,
                 const std::uint16_t* in) noexcept {
    for (CLR_COLORSPEC* color : colors) {
        Replace(*color, blank);
        for (unsigned i = 0; i < Channels; ++i)
            color->SetComponent(i, Rescaled(in[i], Full));
        in += Channels;
    }
}

void UnpackWords(std::span<CLR_COLORSPEC* const> colors, Family family, ClrModel model,
                 const std::uint16_t* in) noexcept {
    const std::size_t channels = ChannelsOf(family);
    DeviceColor device{family, {}};
    for (CLR_COLORSPEC* color : colors) {
        for (std::size_t i = 0; i < channels; ++i)
            device.v[i] = static_cast<double>(*in++) / kFull;
        Replace(*color, Encode(device, model));
    }
}

void UnpackLab(std::span<CLR_COLORSPEC* const> colors, ClrModel model, const double* in) noexcept {
    for (CLR_COLORSPEC* color : colors) {
        const Vector3 xyz = XyzFromLabD50({in[0], in[1], in[2]});
        Replace(*color, Encode({Family::Xyz, {xyz[0], xyz[1], xyz[2], 0}}, model));
        in += 3;
    }
}

}  // namespace

void Pack(std::span<CLR_COLORSPEC* const> colors, PixelFormat format, void* out) noexcept {
    switch (format) {
        case PixelFormat::Rgb8:
            return PackBytes<3>(colors, out);
        case PixelFormat::Cmyk8:
            return PackBytes<4>(colors, out);
        case PixelFormat::Gray8:
            return PackBytes<1>(colors, out);
        case PixelFormat::Rgb16:
        case PixelFormat::Cmyk16:
        case PixelFormat::Gray16:
            return PackWords(colors, ChannelsOf(FamilyOf(format)), out);
        case PixelFormat::Lab:
            return PackLab(colors, out);
    }
}

void Unpack(std::span<CLR_COLORSPEC* const> colors, Family family, ClrModel model, const void* in) noexcept {
    if (family == Family::Xyz) return UnpackLab(colors, model, static_cast<const double*>(in));
    const auto* words = static_cast<const std::uint16_t*>(in);
    CLR_COLORSPEC blank;
    if (model == ClrModel::RGB) {
        blank.MakeRGBBlack();
        UnpackParts<3, 255>(colors, blank, words);
    } else if (model == ClrModel::CMYK) {
        blank.MakeCMYKWhite();
        UnpackParts<4, 100>(colors, blank, words);
    } else if (model == ClrModel::CMYK255) {
        blank.MakeCMYK255(0, 0, 0, 0);
        UnpackParts<4, 255>(colors, blank, words);
    } else {
        UnpackWords(colors, family, model, words);
    }
}

}  // namespace host::detail
