#include "color/batch.h"

#include <algorithm>

namespace host::detail {

namespace {

constexpr PixelFormatIndex kDone = kNoPixelFormat + 1;
constexpr std::size_t kFormatCount = kDone + 1;

PixelFormatIndex Classify(const CLR_COLORSPEC& color, ClrModel model) noexcept {
    return color.GetModel() == model ? kDone : PixelFormatOf(color);
}

}  // namespace

BatchConverter::BatchConverter(const IccEngine* engine, ClrModel model, std::span<const CLR_COLORSPEC> colors)
    : m_engine(engine), m_model(model), m_family(FamilyOf(model).value_or(Family::Rgb)) {
    if (engine == nullptr) return;
    std::array<bool, kFormatCount> present{};
    for (const CLR_COLORSPEC& color : colors)
        present[Classify(color, model)] = true;
    for (PixelFormatIndex format = 0; format < kPixelFormats; ++format) {
        if (present[format]) m_transforms[format] = engine->Find(static_cast<PixelFormat>(format), m_family);
        if (m_transforms[format] != nullptr) m_only = format;
    }
    if (std::count(present.begin(), present.end(), true) != 1) m_only = kNoPixelFormat;
}

std::size_t BatchConverter::Run(std::span<CLR_COLORSPEC> colors) const noexcept {
    std::size_t converted = 0;
    while (!colors.empty()) {
        const std::size_t size = std::min(colors.size(), kBlock);
        converted += RunBlock(colors.first(size));
        colors = colors.subspan(size);
    }
    return converted;
}

std::size_t BatchConverter::RunBlock(std::span<CLR_COLORSPEC> colors) const noexcept {
    Lane lane;
    if (m_only != kNoPixelFormat) {
        for (std::size_t i = 0; i < colors.size(); ++i)
            lane[i] = &colors[i];
        RunLane(static_cast<PixelFormat>(m_only), std::span(lane).first(colors.size()));
        return colors.size();
    }
    std::array<PixelFormatIndex, kBlock> formats;
    for (std::size_t i = 0; i < colors.size(); ++i)
        formats[i] = Classify(colors[i], m_model);
    for (PixelFormatIndex format = 0; format < kPixelFormats; ++format) {
        if (m_transforms[format] == nullptr) continue;
        std::size_t size = 0;
        for (std::size_t i = 0; i < colors.size(); ++i) {
            lane[size] = &colors[i];
            size += formats[i] == format;
        }
        if (size != 0) RunLane(static_cast<PixelFormat>(format), std::span(lane).first(size));
    }
    std::size_t converted = 0;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        converted += formats[i] == kDone || m_transforms[formats[i]] != nullptr || RunFormula(colors[i]);
    }
    return converted;
}

bool BatchConverter::RunFormula(CLR_COLORSPEC& color) const noexcept {
    const std::optional<DeviceColor> device = Decode(color);
    if (device) Replace(color, Encode(ToFamily(*device, m_family), m_model));
    return device.has_value();
}

void BatchConverter::RunLane(PixelFormat format, std::span<CLR_COLORSPEC* const> colors) const noexcept {
    alignas(double) std::byte in[kBlock * kLargestPixel];
    alignas(double) std::byte out[kBlock * kLargestPixel];
    Pack(colors, format, in);
    m_engine->Run(*m_transforms[static_cast<std::size_t>(format)], in, out, colors.size());
    Unpack(colors, m_family, m_model, out);
}

}  // namespace host::detail
