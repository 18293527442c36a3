#pragma once

#include <cstdint>
#include <string>

namespace host {

/// Why something stored could not be read or saved: what (a path or section), where (byte offset and line, 0
/// when not known) and the reason as one plain sentence without a full stop.
struct Error {
    std::string what;
    std::uint64_t offset = 0;
    std::uint32_t line = 0;
    std::string reason;
};

}  // namespace host
