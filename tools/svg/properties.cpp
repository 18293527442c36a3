#include "svg/properties.h"

#include <array>

#include "svg/name_table.h"
#include "svg/scanner.h"
#include "svg/values.h"

namespace svg {
namespace {

template <auto kMember, auto kRead>
bool Apply(Style& style, const Style& parent, std::string_view value, Omissions& omissions) {
    return kRead(value, ValueContext{parent, omissions}, style.*kMember);
}

template <auto kMember>
void Copy(Style& to, const Style& from) {
    to.*kMember = from.*kMember;
}

template <auto kMember, auto kRead>
constexpr Property Row(std::string_view name, bool inherited) {
    return {name, inherited, true, Apply<kMember, kRead>, Copy<kMember>};
}

constexpr Property Carried(std::string_view name, bool inherited, bool attribute = true) {
    return {name, inherited, attribute, nullptr, nullptr};
}

bool ApplyMarkers(Style& style, const Style& parent, std::string_view value, Omissions& omissions) {
    if (!ReadReference(value, ValueContext{parent, omissions}, style.markerStart)) return false;
    style.markerMid = style.markerEnd = style.markerStart;
    return true;
}

void CopyMarkers(Style& to, const Style& from) {
    to.markerStart = from.markerStart;
    to.markerMid = from.markerMid;
    to.markerEnd = from.markerEnd;
}

constexpr auto kProperties = std::to_array<Property>({
    Row<&Style::fill, ReadPaint>("fill", true),
    Row<&Style::fillOpacity, ReadOpacity>("fill-opacity", true),
    Row<&Style::fillRule, ReadFillRule>("fill-rule", true),
    Row<&Style::stroke, ReadPaint>("stroke", true),
    Row<&Style::strokeOpacity, ReadOpacity>("stroke-opacity", true),
    Row<&Style::strokeWidth, ReadStrokeWidth>("stroke-width", true),
    Row<&Style::lineCap, ReadLineCap>("stroke-linecap", true),
    Row<&Style::lineJoin, ReadLineJoin>("stroke-linejoin", true),
    Row<&Style::miterLimit, ReadMiterLimit>("stroke-miterlimit", true),
    Row<&Style::dashArray, ReadText>("stroke-dasharray", true),
    Row<&Style::dashOffset, ReadLength>("stroke-dashoffset", true),
    {"marker", true, true, ApplyMarkers, CopyMarkers},
    Row<&Style::markerStart, ReadReference>("marker-start", true),
    Row<&Style::markerMid, ReadReference>("marker-mid", true),
    Row<&Style::markerEnd, ReadReference>("marker-end", true),
    Row<&Style::strokeFirst, ReadPaintOrder>("paint-order", true),
    Row<&Style::color, ReadColor>("color", true),
    Row<&Style::fontSize, ReadFontSize>("font-size", true),
    Row<&Style::visible, ReadVisibility>("visibility", true),
    Row<&Style::displayed, ReadDisplay>("display", false),
    Row<&Style::opacity, ReadOpacity>("opacity", false),
    Row<&Style::stopColor, ReadStopColor>("stop-color", false),
    Row<&Style::stopOpacity, ReadOpacity>("stop-opacity", false),
    Row<&Style::clipPath, ReadText>("clip-path", false),
    Row<&Style::mask, ReadText>("mask", false),
    Row<&Style::filter, ReadText>("filter", false),
    Row<&Style::blendMode, ReadText>("mix-blend-mode", false),
    Row<&Style::nonScalingStroke, ReadVectorEffect>("vector-effect", false),
    Row<&Style::overflowVisible, ReadOverflow>("overflow", false),
    Carried("font", true, false),
    Carried("font-family", true),
    Carried("font-style", true),
    Carried("font-variant", true),
    Carried("font-weight", true),
    Carried("font-stretch", true),
    Carried("font-size-adjust", true),
    Carried("text-align", true, false),
    Carried("text-anchor", true),
    Carried("text-decoration", false),
    Carried("text-indent", true, false),
    Carried("text-transform", true, false),
    Carried("text-rendering", true),
    Carried("line-height", true, false),
    Carried("letter-spacing", true),
    Carried("word-spacing", true),
    Carried("white-space", true, false),
    Carried("block-progression", true, false),
    Carried("writing-mode", true),
    Carried("direction", true),
    Carried("unicode-bidi", false),
    Carried("dominant-baseline", true),
    Carried("alignment-baseline", false),
    Carried("baseline-shift", false),
    Carried("kerning", true),
    Carried("glyph-orientation-horizontal", true),
    Carried("glyph-orientation-vertical", true),
    Carried("clip", false),
    Carried("clip-rule", true),
    Carried("enable-background", false),
    Carried("flood-color", false),
    Carried("flood-opacity", false),
    Carried("lighting-color", false),
    Carried("color-interpolation", true),
    Carried("color-interpolation-filters", true),
    Carried("color-profile", true),
    Carried("color-rendering", true),
    Carried("image-rendering", true),
    Carried("shape-rendering", true),
    Carried("pointer-events", true),
    Carried("cursor", true),
});

constexpr auto PropertyNames() {
    std::array<std::string_view, kProperties.size()> names;
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = kProperties[i].name;
    return names;
}

constexpr NameTable kTable(PropertyNames());

const Style kInitial;

}  // namespace

const Property* FindProperty(std::string_view name) {
    const std::size_t index = kTable.Find(name);
    return index == kTable.kMissing ? nullptr : &kProperties[index];
}

void ApplyProperty(const Property& property, std::string_view value, const Style& parent, Style& style,
                   Omissions& omissions) {
    if (property.apply == nullptr) return;
    value = Trim(value);
    if (!value.empty() && ToLower(value.front()) <= 'u' && ToLower(value.front()) >= 'i') {
        const bool unset = EqualsNoCase(value, "unset");
        if (EqualsNoCase(value, "inherit") || (unset && property.inherited))
            return property.copy(style, parent);
        if (EqualsNoCase(value, "initial") || unset) return property.copy(style, kInitial);
    }
    if (value.empty() || !property.apply(style, parent, value, omissions)) {
        omissions.Count(value.starts_with("var(") ? "CSS variable"
                                                  : "invalid value of " + std::string(property.name));
    }
}

}  // namespace svg
