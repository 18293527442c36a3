#include <cmath>

#include "host/base/little_endian.h"
#include "host/color/colorspec.h"

#include "color/device.h"

using host::LittleReader;
using host::LittleWriter;

namespace {

/// `color` by nothing but model, palette type and components; as it is where those already say all, or where
/// it has no look to keep.
CLR_COLORSPEC PlainLook(const CLR_COLORSPEC& color) noexcept {
    const bool named = color.IsNamedPalette() && color.GetIdentity() != std::array<std::uint8_t, 16>{};
    const bool thinned = color.IsInk() && color.GetInkDensity() < 100;
    if (!named && !thinned) return color;
    CLR_COLORSPEC plain = color;
    if (plain.SetDensity(static_cast<int>(std::lround(host::detail::TintOf(color) * 100)))) {
        if (color.IsNamedPalette()) plain.SetPaletteType(0);
        return plain;
    }
    const auto look = host::detail::Decode(color);
    return look ? host::detail::Encode(*look, color.GetModel()) : color;
}

}  // namespace

void CLR_COLORSPEC::SaveIn12(CLR_COLORSPEC_125X& out, const ColorSystem::ColorContext&, bool keepLook) const {
    const CLR_COLORSPEC color = keepLook ? PlainLook(*this) : *this;
    LittleWriter writer(out.bytes.data());
    writer.Write(color.m_model);
    writer.Write(color.m_palette);
    for (const std::uint16_t component : color.m_component)
        writer.Write(component);
}

void CLR_COLORSPEC::LoadFrom12(const CLR_COLORSPEC_125X& in) noexcept {
    *this = CLR_COLORSPEC();
    LittleReader reader(in.bytes);
    reader.Read(m_model);
    reader.Read(m_palette);
    for (std::uint16_t& component : m_component)
        reader.Read(component);
}
