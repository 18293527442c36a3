#pragma once

#include <string>
#include <vector>

#include "svg/drawing_text.h"

namespace svg {

/// Pieces to be put into a drawing's text.
class Splice {
public:
    /// Puts `ascii` before the unit at `place`, behind what was put there earlier.
    void Insert(std::size_t place, std::string ascii);
    /// The bytes of the text with all pieces, in its own encoding. No place may be beyond its end.
    std::string Apply(const DrawingText& text);

private:
    struct Piece {
        std::size_t place;
        std::string ascii;
    };

    std::vector<Piece> m_pieces;
};

}  // namespace svg
