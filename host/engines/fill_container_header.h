#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "host/engines/fill_container.h"

namespace host {

/// What stands before the payload of a fill container.
struct FillContainerHeader {
    FillContainerSubtype subtype;
    std::uint32_t size;         ///< of the header, what a newer writer added included
    std::uint32_t payloadSize;  ///< as stated; whether it is there has to be seen
};

/// From the first bytes of a file. Empty, with `error` filled, when they are no header of a known version.
std::optional<FillContainerHeader> ReadFillContainerHeader(std::span<const std::byte> bytes, Error& error);

}  // namespace host
