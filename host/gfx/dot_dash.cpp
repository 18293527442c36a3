#include "host/gfx/dot_dash.h"

#include <limits>
#include <numeric>

CGE_DOTDASHSPEC CGEDotDashFrom16(const CGE_DOTDASHSPEC16& narrow) noexcept {
    CGE_DOTDASHSPEC wide;
    wide.count = narrow.count;
    std::copy(narrow.element.begin(), narrow.element.end(), wide.element.begin());
    return wide;
}

CGE_DOTDASHSPEC16 CGEDotDashTo16(const CGE_DOTDASHSPEC& wide) noexcept {
    using Limits = std::numeric_limits<std::int16_t>;
    CGE_DOTDASHSPEC16 narrow;
    narrow.count = wide.count;
    std::transform(wide.element.begin(), wide.element.end(), narrow.element.begin(), [](std::int32_t length) {
        return static_cast<std::int16_t>(std::clamp<std::int32_t>(length, Limits::min(), Limits::max()));
    });
    return narrow;
}

std::int64_t CGEDotDashDotCount(const CGE_DOTDASHSPEC& pattern) noexcept {
    return std::accumulate(pattern.element.begin(), pattern.element.begin() + pattern.Used(),
                           std::int64_t{0});
}
