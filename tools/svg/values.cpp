#include "svg/values.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "svg/scanner.h"

namespace svg {
namespace {

/// A colour with the profile colour that may follow it, which is not used.
bool ScanColorWithProfile(Scanner& in, const ValueContext& context, Color& out) {
    const std::optional<Color> color = ScanColor(in);
    if (!color) return false;
    in.SkipSpace();
    if (in.AcceptWord("icc-color(")) {
        in.Until(')');
        context.omissions.Count("icc-color");
        in.SkipSpace();
    }
    if (!in.AtEnd()) return false;
    out = *color;
    return true;
}

bool ScanSimplePaint(Scanner& in, const ValueContext& context, PaintValue::Kind& kind, Color& color) {
    const std::string_view word = in.Rest();
    if (EqualsNoCase(word, "none") || EqualsNoCase(word, "context-fill")) {
        kind = PaintValue::Kind::None;
        return true;
    }
    if (EqualsNoCase(word, "context-stroke")) {
        kind = PaintValue::Kind::ContextStroke;
        return true;
    }
    if (EqualsNoCase(word, "currentcolor")) {
        kind = PaintValue::Kind::CurrentColor;
        return true;
    }
    if (!ScanColorWithProfile(in, context, color)) return false;
    kind = PaintValue::Kind::Color;
    return true;
}

template <class Enum, std::size_t kCount>
bool ReadKeyword(std::string_view value, const std::pair<std::string_view, Enum> (&words)[kCount],
                 Enum& out) {
    for (const auto& [word, meaning] : words) {
        if (!EqualsNoCase(value, word)) continue;
        out = meaning;
        return true;
    }
    return false;
}

}  // namespace

bool ScanUrl(Scanner& in, std::string_view& url) {
    if (!in.AcceptWord("url(")) return false;
    url = Trim(in.Until(')'));
    const bool quoted =
        url.size() >= 2 && (url.front() == '"' || url.front() == '\'') && url.back() == url.front();
    if (quoted) url = Trim(url.substr(1, url.size() - 2));
    return !url.empty();
}

bool ReadPaint(std::string_view value, const ValueContext& context, PaintValue& out) {
    Scanner in(value);
    PaintValue paint;
    if (ToLower(in.Peek()) != 'u' || !ScanUrl(in, paint.reference)) {
        in = Scanner(value);
        if (!ScanSimplePaint(in, context, paint.kind, paint.color)) return false;
    } else {
        paint.kind = PaintValue::Kind::Reference;
        in.SkipSpace();
        if (!in.AtEnd() && !ScanSimplePaint(in, context, paint.fallback, paint.color)) return false;
    }
    out = paint;
    return true;
}

bool ReadColor(std::string_view value, const ValueContext& context, Color& out) {
    if (EqualsNoCase(value, "currentcolor")) {
        out = context.parent.color;
        return true;
    }
    Scanner in(value);
    return ScanColorWithProfile(in, context, out);
}

bool ReadStopColor(std::string_view value, const ValueContext& context, StopColor& out) {
    if (EqualsNoCase(value, "currentcolor")) {
        out.current = true;
        return true;
    }
    Scanner in(value);
    if (!ScanColorWithProfile(in, context, out.color)) return false;
    out.current = false;
    return true;
}

bool ReadOpacity(std::string_view value, const ValueContext&, double& out) {
    const std::optional<double> fraction = ParseFraction(value);
    if (!fraction) return false;
    out = std::clamp(*fraction, 0.0, 1.0);
    return true;
}

bool ReadMiterLimit(std::string_view value, const ValueContext&, double& out) {
    const std::optional<double> limit = ParseFraction(value);
    if (!limit || *limit < 1) return false;
    out = *limit;
    return true;
}

bool ReadFontSize(std::string_view value, const ValueContext& context, double& out) {
    static constexpr std::pair<std::string_view, double> kSizes[] = {
        {"xx-small", 9}, {"x-small", 10}, {"small", 13},    {"medium", 16},
        {"large", 18},   {"x-large", 24}, {"xx-large", 32},
    };
    const double whole = context.parent.fontSize;
    if (const std::optional<Length> length = ParseLength(value)) {
        if (length->value < 0) return false;
        out = length->Resolve(whole, whole);
        return true;
    }
    if (EqualsNoCase(value, "larger") || EqualsNoCase(value, "smaller")) {
        out = EqualsNoCase(value, "larger") ? whole * 1.2 : whole / 1.2;
        return true;
    }
    return ReadKeyword(value, kSizes, out);
}

bool ReadLength(std::string_view value, const ValueContext&, Length& out) {
    const std::optional<Length> length = ParseLength(value);
    if (!length || !std::isfinite(length->value)) return false;
    out = *length;
    return true;
}

bool ReadStrokeWidth(std::string_view value, const ValueContext& context, Length& out) {
    Length width;
    if (!ReadLength(value, context, width) || width.value < 0) return false;
    out = width;
    return true;
}

bool ReadFillRule(std::string_view value, const ValueContext&, FillRule& out) {
    static constexpr std::pair<std::string_view, FillRule> kWords[] = {{"nonzero", FillRule::NonZero},
                                                                       {"evenodd", FillRule::EvenOdd}};
    return ReadKeyword(value, kWords, out);
}

bool ReadLineCap(std::string_view value, const ValueContext&, LineCap& out) {
    static constexpr std::pair<std::string_view, LineCap> kWords[] = {
        {"butt", LineCap::Butt}, {"round", LineCap::Round}, {"square", LineCap::Square}};
    return ReadKeyword(value, kWords, out);
}

bool ReadLineJoin(std::string_view value, const ValueContext&, LineJoin& out) {
    static constexpr std::pair<std::string_view, LineJoin> kWords[] = {{"miter", LineJoin::Miter},
                                                                       {"miter-clip", LineJoin::Miter},
                                                                       {"arcs", LineJoin::Miter},
                                                                       {"round", LineJoin::Round},
                                                                       {"bevel", LineJoin::Bevel}};
    return ReadKeyword(value, kWords, out);
}

bool ReadDisplay(std::string_view value, const ValueContext&, bool& out) {
    out = !EqualsNoCase(value, "none");
    return true;
}

bool ReadVisibility(std::string_view value, const ValueContext&, bool& out) {
    static constexpr std::pair<std::string_view, bool> kWords[] = {
        {"visible", true}, {"hidden", false}, {"collapse", false}};
    return ReadKeyword(value, kWords, out);
}

bool ReadPaintOrder(std::string_view value, const ValueContext&, bool& out) {
    if (EqualsNoCase(value, "normal")) {
        out = false;
        return true;
    }
    // What is not named follows in the usual order.
    std::optional<bool> strokeFirst;
    Scanner in(value);
    for (in.SkipSpace(); !in.AtEnd(); in.SkipSpace()) {
        const std::string_view word = in.Identifier();
        const bool stroke = EqualsNoCase(word, "stroke");
        if (!stroke && !EqualsNoCase(word, "fill") && !EqualsNoCase(word, "markers")) return false;
        if (!strokeFirst && !EqualsNoCase(word, "markers")) strokeFirst = stroke;
    }
    out = strokeFirst.value_or(false);
    return true;
}

bool ReadVectorEffect(std::string_view value, const ValueContext&, bool& out) {
    static constexpr std::string_view kOthers[] = {"none",           "non-scaling-size", "non-rotation",
                                                   "fixed-position", "viewport",         "screen"};
    bool found = false;
    Scanner in(value);
    for (in.SkipSpace(); !in.AtEnd(); in.SkipSpace()) {
        const std::string_view word = in.Identifier();
        const auto means = [word](std::string_view other) { return EqualsNoCase(word, other); };
        if (means("non-scaling-stroke")) {
            found = true;
        } else if (std::none_of(std::begin(kOthers), std::end(kOthers), means)) {
            return false;
        }
    }
    out = found;
    return true;
}

bool ReadOverflow(std::string_view value, const ValueContext&, bool& out) {
    static constexpr std::pair<std::string_view, bool> kWords[] = {
        {"visible", true}, {"auto", true}, {"hidden", false}, {"scroll", false}};
    return ReadKeyword(value, kWords, out);
}

bool ReadReference(std::string_view value, const ValueContext&, std::string_view& out) {
    if (EqualsNoCase(value, "none")) {
        out = {};
        return true;
    }
    Scanner in(value);
    std::string_view url;
    if (!ScanUrl(in, url)) return false;
    in.SkipSpace();
    if (in.AtEnd()) out = url;
    return in.AtEnd();
}

bool ReadText(std::string_view value, const ValueContext&, std::string_view& out) {
    const bool empty = EqualsNoCase(value, "none") || EqualsNoCase(value, "normal");
    out = empty ? std::string_view() : value;
    return true;
}

}  // namespace svg
