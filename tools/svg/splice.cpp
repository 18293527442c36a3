#include "svg/splice.h"

#include <algorithm>
#include <utility>

namespace svg {

void Splice::Insert(std::size_t place, std::string ascii) {
    if (!ascii.empty()) m_pieces.push_back({place, std::move(ascii)});
}

std::string Splice::Apply(const DrawingText& text) {
    std::stable_sort(m_pieces.begin(), m_pieces.end(),
                     [](const Piece& a, const Piece& b) { return a.place < b.place; });
    const std::string& bytes = text.Bytes();
    std::string result;
    std::size_t done = 0;
    for (const Piece& piece : m_pieces) {
        const std::size_t at = text.ByteOf(piece.place);
        result.append(bytes, done, at - done);
        text.Append(result, piece.ascii);
        done = at;
    }
    return result.append(bytes, done);
}

}  // namespace svg
