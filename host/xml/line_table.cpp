#include "xml/line_table.h"

#include <algorithm>
#include <cstring>

namespace host::detail {

LineTable::LineTable(std::string_view text) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    for (const char* at = begin; at != end; ++at) {
        at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (at == nullptr) break;
        m_ends.push_back(static_cast<std::uint32_t>(at - begin));
    }
}

std::uint32_t LineTable::LineOf(std::size_t offset) const noexcept {
    const auto at = std::lower_bound(m_ends.begin(), m_ends.end(), offset);
    return static_cast<std::uint32_t>(at - m_ends.begin()) + 1;
}

}  // namespace host::detail
