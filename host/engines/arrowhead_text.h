#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "host/gfx/arrowhead.h"

namespace host {

/// What one line of an arrowhead text says.
struct ArrowheadLine {
    std::uint32_t number = 0;  ///< from 1
    std::string_view name;     ///< without blanks around it
    CGE_ARROWHEAD head;
    std::string_view fault;  ///< why there is no arrowhead; empty when there is one
};

/// Walks through the arrowheads of a text in the form of docs/formats/arrowheads.md.
class ArrowheadText {
public:
    /// `text`, which must outlive the names, may hold any bytes.
    explicit ArrowheadText(std::string_view text) noexcept;
    /// The next line that is not empty but for blanks and a comment; empty after the last. Throws bad_alloc,
    /// the line then unread.
    std::optional<ArrowheadLine> Next();

private:
    std::string_view m_rest;
    std::uint32_t m_number = 0;
};

}  // namespace host
