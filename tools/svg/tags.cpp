#include "svg/tags.h"

#include <array>
#include <utility>

#include "svg/name_table.h"

namespace svg {
namespace {

using Entry = std::pair<std::string_view, Tag>;

constexpr auto kTags = std::to_array<Entry>({
    {"g", Tag::Group},
    {"a", Tag::Anchor},
    {"svg", Tag::Svg},
    {"switch", Tag::Switch},
    {"use", Tag::Use},
    {"path", Tag::Path},
    {"rect", Tag::Rect},
    {"circle", Tag::Circle},
    {"ellipse", Tag::Ellipse},
    {"line", Tag::Line},
    {"polyline", Tag::Polyline},
    {"polygon", Tag::Polygon},
    {"text", Tag::Text},
    {"tspan", Tag::TextSpan},
    {"textPath", Tag::TextSpan},
    {"altGlyph", Tag::TextSpan},
    {"image", Tag::Image},
    {"foreignObject", Tag::ForeignObject},
    {"flowRoot", Tag::FlowedText},
    {"flow", Tag::FlowedText},
    {"linearGradient", Tag::LinearGradient},
    {"radialGradient", Tag::RadialGradient},
    {"pattern", Tag::Pattern},
    {"stop", Tag::Stop},
    {"symbol", Tag::Symbol},
    {"defs", Tag::Definitions},
    {"clipPath", Tag::ClipPath},
    {"mask", Tag::Mask},
    {"marker", Tag::Marker},
    {"filter", Tag::Filter},
    {"font", Tag::Font},
    {"font-face", Tag::Font},
    {"style", Tag::StyleSheet},
    {"script", Tag::Script},
    {"animate", Tag::Animation},
    {"animateColor", Tag::Animation},
    {"animateMotion", Tag::Animation},
    {"animateTransform", Tag::Animation},
    {"set", Tag::Animation},
    {"metadata", Tag::Metadata},
    {"title", Tag::Metadata},
    {"desc", Tag::Metadata},
    {"view", Tag::Metadata},
    {"cursor", Tag::Metadata},
    {"color-profile", Tag::Metadata},
});

constexpr auto TagNames() {
    std::array<std::string_view, kTags.size()> names;
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = kTags[i].first;
    return names;
}

constexpr NameTable kTable(TagNames());

}  // namespace

Tag FindTag(std::string_view localName) {
    const std::size_t index = kTable.Find(localName);
    return index == kTable.kMissing ? Tag::Unknown : kTags[index].second;
}

}  // namespace svg
