#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace svg {

/// The bytes of a drawing that is to be changed at some places and to stay what it is elsewhere, whatever its
/// encoding: UTF-16 with a byte order mark, or one whose markup is ASCII.
class DrawingText {
public:
    explicit DrawingText(std::string bytes);

    /// One character for each unit of the encoding, 16-bit ones beyond ASCII as some character beyond it.
    /// Places count these units.
    std::string_view Units() const noexcept { return m_isWide ? m_narrow : m_bytes; }
    const std::string& Bytes() const noexcept { return m_bytes; }

private:
    friend class Splice;

    void Append(std::string& out, std::string_view ascii) const;
    std::size_t ByteOf(std::size_t place) const noexcept { return m_isWide ? place * 2 : place; }

    std::string m_bytes;
    std::string m_narrow;
    bool m_isWide = false;
    bool m_isBigEndian = false;
};

}  // namespace svg
