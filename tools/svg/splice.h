#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "svg/drawing_text.h"

namespace svg {

/// Changes of a drawing's text, or of a part of it.
class Splice {
public:
    /// Puts `ascii` before the unit at `place`, behind what was put there earlier.
    void Insert(std::size_t place, std::string ascii);
    /// The same with bytes of the text's own encoding.
    void InsertBytes(std::size_t place, std::string bytes);
    /// Puts `ascii` in place of the units from `begin` to `end`, of which no other change is made.
    void Replace(std::size_t begin, std::size_t end, std::string ascii);

    /// The bytes of the text with all changes, in its own encoding. No place may be beyond its end.
    std::string Apply(const DrawingText& text);
    /// The same for the units from `begin` to `end`, which all changes lie within.
    std::string Apply(const DrawingText& text, std::size_t begin, std::size_t end);

private:
    struct Piece {
        std::size_t begin;
        std::size_t end;
        std::string text;
        bool isEncoded;
    };

    std::vector<Piece> m_pieces;
};

}  // namespace svg
