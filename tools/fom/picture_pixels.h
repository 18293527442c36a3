#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "fom/cairo_pointers.h"

namespace command {

/// The pixels of a surface of 32-bit pixels with opacity, row by row: opacity, red, green and blue from the
/// highest byte on, colours multiplied by the opacity. The surface must outlive it.
class Pixels {
public:
    explicit Pixels(CairoSurface& surface);

    std::size_t Width() const noexcept { return m_width; }
    std::size_t Height() const noexcept { return m_height; }
    std::span<std::uint32_t> Row(std::size_t y) const noexcept {
        return {reinterpret_cast<std::uint32_t*>(m_data + y * m_stride), m_width};
    }

private:
    std::size_t m_width, m_height, m_stride;
    unsigned char* m_data;
};

}  // namespace command
