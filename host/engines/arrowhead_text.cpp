#include "engines/arrowhead_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace host {
namespace {

constexpr std::size_t kMostSteps = 1000;
constexpr double kFarthest = 1e6;  // a thousand widths of the line

constexpr std::string_view kNoName = "an arrowhead's line begins with its name and a colon";
constexpr std::string_view kNoPath = "the arrowhead has no path";
constexpr std::string_view kUnknownStep = "a path has the steps M, L, C, Z and E";
constexpr std::string_view kBadNumber = "a number is missing, not understood or beyond 1,000,000";
constexpr std::string_view kNoMove = "each part of a path begins with M";
constexpr std::string_view kLoneMove = "nothing is drawn after an M";
constexpr std::string_view kTooLong = "the path has more than 1,000 steps";

constexpr bool IsBlank(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\r';
}

constexpr bool IsSeparator(char c) noexcept {
    return IsBlank(c) || c == ',';
}

constexpr bool BeginsNumber(char c) noexcept {
    return (c >= '0' && c <= '9') || c == '-' || c == '.';
}

std::string_view Trim(std::string_view text) noexcept {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Reads one path from left to right, up to the first thing that is wrong: what meets it sets m_fault and is
/// false.
class PathParser {
public:
    PathParser(std::string_view path, CGE_ARROWHEAD& head) noexcept : m_rest(path), m_head(head) {}

    /// Why the path is none; empty when all is well.
    std::string_view Parse() {
        ParseSteps();
        if (m_fault.empty() && m_head.steps.empty()) m_fault = kNoPath;
        if (m_fault.empty() && EndsWithMove()) m_fault = kLoneMove;
        return m_fault;
    }

private:
    void ParseSteps() {
        while (!AtEnd()) {
            char letter = m_rest.front();
            m_rest.remove_prefix(1);
            if (!ParseStep(letter)) return;
            // More points make more steps; those after an M are lines.
            if (letter == 'M') letter = 'L';
            while ((letter == 'L' || letter == 'C') && !AtEnd() && BeginsNumber(m_rest.front()))
                if (!ParseStep(letter)) return;
        }
    }

    bool ParseStep(char letter) {
        CGE_ARROWSTEP step;
        switch (letter) {
            case 'E':
                return ReadNumber(m_head.lineEnd);
            case 'M':
                return ReadPoint(step.to) && Append(kArrowMove, step);
            case 'L':
                return ReadPoint(step.to) && Append(kArrowLine, step);
            case 'C':
                return ReadPoint(step.control1) && ReadPoint(step.control2) && ReadPoint(step.to) &&
                       Append(kArrowCurve, step);
            case 'Z':
                return Append(kArrowClose, step);
            default:
                return Fail(kUnknownStep);
        }
    }

    bool Append(CgeArrowStep kind, CGE_ARROWSTEP& step) {
        const bool inside = !m_head.steps.empty() && m_head.steps.back().kind != kArrowClose;
        if (kind != kArrowMove && !inside) return Fail(kNoMove);
        if ((kind == kArrowMove || kind == kArrowClose) && EndsWithMove()) return Fail(kLoneMove);
        if (m_head.steps.size() == kMostSteps) return Fail(kTooLong);
        step.kind = kind;
        m_head.steps.push_back(step);
        return true;
    }

    bool ReadPoint(POINT& point) { return ReadNumber(point.x) && ReadNumber(point.y); }

    bool ReadNumber(std::int32_t& number) {
        if (AtEnd() || !BeginsNumber(m_rest.front())) return Fail(kBadNumber);
        double value = 0;
        const char* const end = m_rest.data() + m_rest.size();
        const auto [next, failure] = std::from_chars(m_rest.data(), end, value);
        if (failure != std::errc() || !(std::abs(value) <= kFarthest)) return Fail(kBadNumber);
        number = static_cast<std::int32_t>(std::lround(value));
        m_rest.remove_prefix(static_cast<std::size_t>(next - m_rest.data()));
        return true;
    }

    bool AtEnd() noexcept {
        while (!m_rest.empty() && IsSeparator(m_rest.front()))
            m_rest.remove_prefix(1);
        return m_rest.empty();
    }

    bool EndsWithMove() const noexcept {
        return !m_head.steps.empty() && m_head.steps.back().kind == kArrowMove;
    }

    bool Fail(std::string_view fault) noexcept {
        m_fault = fault;
        return false;
    }

    std::string_view m_rest;
    CGE_ARROWHEAD& m_head;
    std::string_view m_fault;
};

}  // namespace

ArrowheadText::ArrowheadText(std::string_view text) noexcept : m_rest(text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (m_rest.starts_with(kByteOrderMark)) m_rest.remove_prefix(kByteOrderMark.size());
}

std::optional<ArrowheadLine> ArrowheadText::Next() {
    while (!m_rest.empty()) {
        const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
        std::string_view text = m_rest.substr(0, end);
        text = Trim(text.substr(0, text.find('#')));
        ArrowheadLine line;
        if (!text.empty()) {
            const std::size_t colon = text.find(':');
            line.name = Trim(text.substr(0, colon));
            if (colon == std::string_view::npos || line.name.empty())
                line.fault = kNoName;
            else
                line.fault = PathParser(text.substr(colon + 1), line.head).Parse();
        }
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        line.number = ++m_number;
        if (!text.empty()) return line;
    }
    return std::nullopt;
}

}  // namespace host
