#include "host/color/context.h"

#include <utility>

#include "color/context_data.h"

namespace ColorSystem {
namespace {

// Never destroyed: static destructors of the application may still convert colours.
ColorContext& ActiveSlot() {
    static auto& slot = *new ColorContext();
    return slot;
}
ColorContext& DefaultSlot() {
    static auto& slot = *new ColorContext(ColorContext::Uncalibrated());
    return slot;
}

}  // namespace

std::optional<ColorContext> ColorContext::FromProfiles(std::span<const std::byte> rgb,
                                                       std::span<const std::byte> cmyk,
                                                       std::span<const std::byte> gray, host::Error& error) {
    if (rgb.empty() && cmyk.empty() && gray.empty()) return Uncalibrated();
    auto data = std::make_shared<Data>();
    data->engine = host::detail::IccEngine::Open({rgb, cmyk, gray}, error);
    if (!data->engine) return std::nullopt;
    ColorContext context;
    context.m_data = std::move(data);
    return context;
}

ColorContext ColorContext::Uncalibrated() {
    static const auto& data = *new std::shared_ptr<const Data>(std::make_shared<Data>());
    ColorContext context;
    context.m_data = data;
    return context;
}

const ColorContext& ColorContext::GetActiveColorContext() {
    const ColorContext& active = ActiveSlot();
    return active.IsValid() ? active : DefaultSlot();
}
void ColorContext::SetActiveColorContext(const ColorContext& context) {
    ActiveSlot() = context;
}

const ColorContext& ColorContext::GetApplicationDefaultColorContext() {
    return DefaultSlot();
}
void ColorContext::SetApplicationDefaultColorContext(const ColorContext& context) {
    DefaultSlot() = context.IsValid() ? context : Uncalibrated();
}

}  // namespace ColorSystem
