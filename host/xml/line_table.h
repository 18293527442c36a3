#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace host::detail {

/// Where the lines of a text end. Taken before parsing, because parsing in place overwrites line ends.
class LineTable {
public:
    explicit LineTable(std::string_view text);

    /// Line, counted from 1, that holds the byte at `offset`.
    std::uint32_t LineOf(std::size_t offset) const noexcept;

private:
    std::vector<std::uint32_t> m_ends;
};

}  // namespace host::detail
