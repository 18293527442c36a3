#include "xml/weight.h"

#include <cstring>

namespace host::detail {
namespace {

// Sizes of the parser's own node and attribute on a 64-bit machine.
constexpr std::size_t kNodeBytes = 64;
constexpr std::size_t kAttributeBytes = 40;

// The rest of what a document may take goes to its text, its lines and its reader.
constexpr std::size_t kTreeFactor = 12;
constexpr std::size_t kTreeAllowance = std::size_t{768} << 10;

// No text builds more than this many bytes of tree per byte: "x<a/>" is a text node and an element.
constexpr std::size_t kWorstFactor = 2 * kNodeBytes / 4;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Whether a text node of its own lies before the '<' at `at`. Text right after a start tag is kept in its
/// element.
bool HasTextBefore(std::string_view text, std::size_t at, std::size_t previousTag) {
    std::size_t end = at;
    while (end > 0 && IsBlank(text[end - 1]))
        --end;
    if (end == 0 || text[end - 1] == '>') return false;
    const std::size_t close = text.find('>', previousTag);
    if (close == std::string_view::npos || close >= at || close == 0) return false;
    const bool startTag =
        text[previousTag + 1] != '/' && text[previousTag + 1] != '!' && text[close - 1] != '/';
    return !startTag;
}

}  // namespace

std::size_t EstimateXmlTree(std::string_view text) {
    std::size_t nodes = 0;
    std::size_t previousTag = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const bool isLast = at + 1 == text.size();
        if (isLast || text[at + 1] != '/') ++nodes;
        if (HasTextBefore(text, at, previousTag)) ++nodes;
        if (!isLast) previousTag = at;
    }
    std::size_t attributes = 0;
    for (const char c : text)
        attributes += c == '=' ? 1U : 0U;
    return nodes * kNodeBytes + attributes * kAttributeBytes;
}

bool IsXmlTreeAffordable(std::string_view text) {
    if (text.size() * kWorstFactor <= text.size() * kTreeFactor + kTreeAllowance) return true;
    return EstimateXmlTree(text) <= text.size() * kTreeFactor + kTreeAllowance;
}

}  // namespace host::detail
