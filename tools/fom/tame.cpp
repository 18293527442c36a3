#include "fom/tame.h"

#include <cstddef>
#include <limits>
#include <utility>

#include "svg/document.h"

namespace command {
namespace {

constexpr std::string_view kFilter = " filter=\"";

bool ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = 0; (at = text.find(from, done)) != std::string::npos; done = at + from.size())
        result.append(text, done, at - done).append(to);
    if (done > 0) text = std::move(result.append(text, done));
    return done > 0;
}

/// As the reader counts them when a pattern has that content; without end when it has none for it.
double CountFilterSteps(const std::string& content) {
    double steps = std::numeric_limits<double>::infinity();
    svg::Document document;
    document.LoadText(
        "<svg xmlns=\"http://www.w3.org/2000/svg\"><pattern id=\"p\" width=\"1\" height=\"1\">" + content +
        "</pattern><path d=\"M0 0\" fill=\"url(#p)\"/></svg>");
    document.ForEachShape([&steps](const svg::Shape& shape) {
        if (shape.fill.pattern) steps = shape.fill.pattern->content->filterSteps;
    });
    return steps;
}

}  // namespace

// Content has these texts in markup only, for it escapes "<" and quotes elsewhere.
std::string_view Tame(std::string& content, double mostFilterSteps) {
    const bool filtered = content.find(kFilter) != std::string::npos;
    if (filtered && CountFilterSteps(content) > mostFilterSteps) {
        ReplaceAll(content, kFilter, " data-filter=\"");
        return "filters left out";
    }
    const bool octaves = ReplaceAll(content, " numOctaves=\"", " data-octaves=\"");
    bool convolutions = ReplaceAll(content, "<feConvolveMatrix", "<feOffset");
    ReplaceAll(content, "</feConvolveMatrix", "</feOffset");
    return convolutions ? "convolution left out" : octaves ? "noise of one octave" : std::string_view();
}

}  // namespace command
