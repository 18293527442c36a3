#include "svg/drawing_text.h"

#include <utility>

namespace svg {
namespace {

constexpr char kBeyondAscii = '\x80';

}  // namespace

DrawingText::DrawingText(std::string bytes) : m_bytes(std::move(bytes)) {
    m_isBigEndian = m_bytes.starts_with("\xFE\xFF");
    m_isWide = m_isBigEndian || m_bytes.starts_with("\xFF\xFE");
    if (!m_isWide) return;
    m_narrow.reserve(m_bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < m_bytes.size(); i += 2) {
        const char low = m_bytes[i + (m_isBigEndian ? 1 : 0)];
        const char high = m_bytes[i + (m_isBigEndian ? 0 : 1)];
        m_narrow += high == 0 ? low : kBeyondAscii;
    }
}

void DrawingText::Append(std::string& out, std::string_view ascii) const {
    if (!m_isWide) {
        out += ascii;
        return;
    }
    for (const char c : ascii) {
        if (m_isBigEndian) out += '\0';
        out += c;
        if (!m_isBigEndian) out += '\0';
    }
}

}  // namespace svg
