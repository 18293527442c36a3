#include "host/color/convert.h"

#include <algorithm>

#include "color/batch.h"
#include "color/context_data.h"
#include "color/device.h"

namespace {

const host::detail::IccEngine* EngineOf(const ColorContext& context) noexcept {
    return context.IsValid() ? context.GetData()->engine.get() : nullptr;
}

}  // namespace

bool WClrConvert::IsProcessModel(ClrModel model) noexcept {
    return host::detail::FamilyOf(model).has_value();
}

bool WClrConvert::ConvertColorSpec(const ColorContext& context, CLR_COLORSPEC& out, ClrModel model,
                                   const CLR_COLORSPEC& in) {
    CLR_COLORSPEC color = in;
    if (ConvertColorSpecs(context, {&color, 1}, model) == 0) return false;
    out = color;
    return true;
}

std::size_t WClrConvert::ConvertColorSpecs(const ColorContext& context, std::span<CLR_COLORSPEC> colors,
                                           ClrModel model) {
    if (IsProcessModel(model))
        return host::detail::BatchConverter(EngineOf(context), model, colors).Run(colors);
    std::size_t already = 0;
    for (const CLR_COLORSPEC& color : colors)
        already += color.GetModel() == model && !color.IsInvalid();
    return already;
}

std::array<std::uint8_t, 3> WClrConvert::GetDisplayRGB(const ColorContext& context,
                                                       const CLR_COLORSPEC& color) {
    CLR_COLORSPEC rgb = color;
    // RGB to RGB would be a copy, tint and all.
    const bool tintedRgb = color.GetModel() == ClrModel::RGB && host::detail::TintOf(color) < 1;
    if (tintedRgb) ConvertColorSpec(context, rgb, ClrModel::RGB48, color);
    const bool known = ConvertColorSpec(context, rgb, ClrModel::RGB, rgb);
    if (!known) {
        const double tint = color.IsInvalid() ? 1 : host::detail::TintOf(color);
        const int light = host::detail::Quantise((1 - tint) * 255, 0, 255);
        rgb.MakeRGB(light, light, light);
    }
    std::array<std::uint8_t, 3> shown{};
    for (unsigned i = 0; i < 3; ++i)
        shown[i] = static_cast<std::uint8_t>(rgb.GetComponent(i));
    return shown;
}
