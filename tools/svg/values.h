#pragma once

#include <string_view>

#include "svg/omissions.h"
#include "svg/style.h"

namespace svg {

/// What a value parser may look at beside the value.
struct ValueContext {
    const Style& parent;
    Omissions& omissions;
};

// Each reads one property value with no blanks around it; false when it is not valid, `out` is then
// unchanged.
bool ReadPaint(std::string_view value, const ValueContext& context, PaintValue& out);
bool ReadColor(std::string_view value, const ValueContext& context, Color& out);
bool ReadStopColor(std::string_view value, const ValueContext& context, StopColor& out);
bool ReadOpacity(std::string_view value, const ValueContext& context, double& out);
bool ReadMiterLimit(std::string_view value, const ValueContext& context, double& out);
bool ReadFontSize(std::string_view value, const ValueContext& context, double& out);
bool ReadLength(std::string_view value, const ValueContext& context, Length& out);
/// A length that is not negative.
bool ReadStrokeWidth(std::string_view value, const ValueContext& context, Length& out);
bool ReadFillRule(std::string_view value, const ValueContext& context, FillRule& out);
bool ReadLineCap(std::string_view value, const ValueContext& context, LineCap& out);
bool ReadLineJoin(std::string_view value, const ValueContext& context, LineJoin& out);
bool ReadDisplay(std::string_view value, const ValueContext& context, bool& out);
bool ReadVisibility(std::string_view value, const ValueContext& context, bool& out);
/// Whether the stroke comes before the fill.
bool ReadPaintOrder(std::string_view value, const ValueContext& context, bool& out);
/// Whether it names the stroke that does not scale.
bool ReadVectorEffect(std::string_view value, const ValueContext& context, bool& out);
/// Whether it is visible.
bool ReadOverflow(std::string_view value, const ValueContext& context, bool& out);
/// Keeps what stands in "url()"; "none" becomes empty.
bool ReadReference(std::string_view value, const ValueContext& context, std::string_view& out);
/// Keeps the text; "none" and "normal" become empty.
bool ReadText(std::string_view value, const ValueContext& context, std::string_view& out);

/// The URL in "url(...)" at the scanner, without quotes. False when there is none.
bool ScanUrl(class Scanner& in, std::string_view& url);

}  // namespace svg
