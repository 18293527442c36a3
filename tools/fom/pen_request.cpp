#include "fom/pen_request.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "fom/document_units.h"
#include "fom/dot_dash.h"

#include "svg/scanner.h"

namespace command {
namespace {

constexpr double kUnitsPerInch = 254000;
constexpr double kDefaultWidth = 2 * kUnitsPerInch / 72;
constexpr double kMostLength = std::numeric_limits<std::int32_t>::max();
constexpr double kMostStretch = std::numeric_limits<std::int16_t>::max();
constexpr double kMostDegrees = 360;

struct LengthUnit {
    std::string_view name;
    double units;
};
constexpr LengthUnit kLengthUnits[] = {{"", 1},
                                       {"mm", kUnitsPerInch / 25.4},
                                       {"cm", kUnitsPerInch / 2.54},
                                       {"in", kUnitsPerInch},
                                       {"pt", kUnitsPerInch / 72},
                                       {"px", kUnitsPerPixel}};

/// The one number in `text`, and nothing else.
std::optional<double> ReadNumber(std::string_view text) {
    svg::Scanner in(svg::Trim(text));
    double number = 0;
    if (!in.Number(number) || !in.AtEnd()) return std::nullopt;
    return number;
}

/// In document units, rounded.
std::optional<std::int32_t> ReadLength(std::string_view text) {
    svg::Scanner in(svg::Trim(text));
    double number = 0;
    if (!in.Number(number)) return std::nullopt;
    in.SkipSpace();
    for (const LengthUnit& unit : kLengthUnits) {
        if (in.Rest() != unit.name) continue;
        const double length = std::round(number * unit.units);
        if (length >= 0 && length <= kMostLength) return static_cast<std::int32_t>(length);
    }
    return std::nullopt;
}

std::optional<CGE_DOTDASHSPEC> ReadDashes(std::string_view text) {
    CGE_DOTDASHSPEC dashes;
    svg::Scanner in(svg::Trim(text));
    while (!in.AtEnd()) {
        double number = 0;
        if (dashes.count == dashes.element.size() || !in.Number(number)) return std::nullopt;
        if (!(number >= 0 && number <= kMostLength) || number != std::round(number)) return std::nullopt;
        dashes.element[dashes.count++] = static_cast<std::int32_t>(number);
        in.SkipSeparator();
    }
    if (!OUTIsValidDotDash(dashes)) return std::nullopt;
    return dashes;
}

std::optional<CgeOutlineType> ReadKind(std::string_view text) {
    if (text == "none") return OutlineNone;
    if (text == "solid") return OutlineSolid;
    if (text == "dot-dash") return OutlineDotDash;
    return std::nullopt;
}

/// Reads one text after another; the first mistake stays.
class Reader {
public:
    explicit Reader(std::string& mistake) : m_mistake(mistake) { mistake.clear(); }

    bool IsGood() const { return m_mistake.empty(); }

    /// The value of a text, or `otherwise` for an empty one; `should` says what it should be.
    template <class Value, class Read>
    Value Take(const char* option, const std::string& text, Value otherwise, Read&& read,
               const char* should) {
        if (text.empty() || !IsGood()) return otherwise;
        const std::optional<Value> value = read(text);
        if (value) return *value;
        m_mistake = std::string(option) + ": '" + text + "' is not " + should;
        return otherwise;
    }

private:
    std::string& m_mistake;
};

std::optional<std::int16_t> ReadStretch(std::string_view text) {
    const std::optional<double> number = ReadNumber(text);
    if (!number || *number < 1 || *number > kMostStretch || *number != std::round(*number))
        return std::nullopt;
    return static_cast<std::int16_t>(*number);
}

std::optional<std::int32_t> ReadAngle(std::string_view text) {
    const std::optional<double> number = ReadNumber(text);
    if (!number || std::abs(*number) > kMostDegrees) return std::nullopt;
    return static_cast<std::int32_t>(std::lround(*number * 1e6));
}

std::optional<MATRIX> ReadTransform(std::string_view text) {
    const std::optional<svg::Matrix> matrix = svg::ParseTransform(text);
    if (!matrix) return std::nullopt;
    return ToDocumentUnits(ToMatrix(*matrix));
}

}  // namespace

std::optional<PenRequest> ReadPenRequest(const PenTexts& texts, std::string& mistake) {
    constexpr const char* length = "a length (a number with mm, cm, in, pt, px, or in document units)";
    Reader reader(mistake);
    PenRequest request;
    CGE_OUTLINE& pen = request.pen;
    request.under = reader.Take("--under", texts.under, MATRIX(), ReadTransform,
                                "a transformation, as in \"scale(2) rotate(30)\"");
    pen.width = reader.Take("--width", texts.width, static_cast<std::int32_t>(std::lround(kDefaultWidth)),
                            ReadLength, length);
    pen.nibStretch = reader.Take("--stretch", texts.stretch, pen.nibStretch, ReadStretch,
                                 "a whole number of per cent from 1 to 32767");
    pen.nibAngle = reader.Take("--angle", texts.angle, 0, ReadAngle, "an angle from -360 to 360 degrees");
    pen.dotDash = reader.Take("--dashes", texts.dashes, CGE_DOTDASHSPEC(), ReadDashes,
                              "an even number, up to ten, of whole dot lengths, not all of them 0");
    const std::int32_t dotLength = reader.Take("--dot-length", texts.dotLength,
                                               texts.dashes.empty() ? 0 : pen.width, ReadLength, length);
    pen.dotLength = static_cast<std::uint32_t>(dotLength);
    pen.type = reader.Take("--kind", texts.kind, texts.dashes.empty() ? OutlineSolid : OutlineDotDash,
                           ReadKind, "\"none\", \"solid\" or \"dot-dash\"");
    if (reader.IsGood() && pen.type == OutlineDotDash && texts.dashes.empty())
        mistake = "--kind: a dot-dash pen needs --dashes";
    if (!reader.IsGood()) return std::nullopt;
    pen.color.MakeRGB(0, 0, 0);
    return request;
}

}  // namespace command
