#include "svg/splice.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace svg {

void Splice::Insert(std::size_t place, std::string ascii) {
    if (!ascii.empty()) m_pieces.push_back({place, place, std::move(ascii), false});
}

void Splice::InsertBytes(std::size_t place, std::string bytes) {
    if (!bytes.empty()) m_pieces.push_back({place, place, std::move(bytes), true});
}

void Splice::Replace(std::size_t begin, std::size_t end, std::string ascii) {
    m_pieces.push_back({begin, end, std::move(ascii), false});
}

std::string Splice::Apply(const DrawingText& text) {
    // Half a unit may be left at the end.
    const std::size_t end = text.Units().size();
    return Apply(text, 0, end).append(text.Bytes(), text.ByteOf(end));
}

std::string Splice::Apply(const DrawingText& text, std::size_t begin, std::size_t end) {
    // What is put before a unit stands before what replaces the unit.
    std::stable_sort(m_pieces.begin(), m_pieces.end(), [](const Piece& a, const Piece& b) {
        return std::tie(a.begin, a.end) < std::tie(b.begin, b.end);
    });
    const std::string& bytes = text.Bytes();
    std::string result;
    std::size_t done = text.ByteOf(begin);
    for (const Piece& piece : m_pieces) {
        const std::size_t at = text.ByteOf(piece.begin);
        result.append(bytes, done, at - done);
        if (piece.isEncoded) {
            result += piece.text;
        } else {
            text.Append(result, piece.text);
        }
        done = text.ByteOf(piece.end);
    }
    return result.append(bytes, done, text.ByteOf(end) - done);
}

}  // namespace svg
