#pragma once

#include <cstddef>

namespace VyrFOM {

/// Values inside legacy records. `Io` is LegacyReader or LegacyWriter; what it writes may be const.

template <class Io, class Screen>
void ScreenAt(const Io& io, std::size_t at, Screen& screen) {
    io.Number(at, screen.screenId);
    io.Number(at + 2, screen.reserved);
    io.Number(at + 4, screen.overprint);
    io.Number(at + 8, screen.angle);
    io.Number(at + 12, screen.frequency);
}

template <class Io, class Tiling>
void TilingAt(const Io& io, std::size_t at, Tiling& tiling) {
    io.Number(at, tiling.width);
    io.Number(at + 4, tiling.height);
    io.Number(at + 8, tiling.xOffset);
    io.Number(at + 10, tiling.yOffset);
    io.Number(at + 12, tiling.interTileOffset);
    io.Number(at + 14, tiling.flags);
}

template <class Io, class Rect>
void RectAt(const Io& io, std::size_t at, Rect& rect) {
    io.Number(at, rect.left);
    io.Number(at + 4, rect.top);
    io.Number(at + 8, rect.right);
    io.Number(at + 12, rect.bottom);
}

template <class Io, class Matrix>
void MatrixAt(const Io& io, std::size_t at, Matrix& matrix) {
    io.Number(at, matrix.a);
    io.Number(at + 8, matrix.b);
    io.Number(at + 16, matrix.c);
    io.Number(at + 24, matrix.d);
    io.Number(at + 32, matrix.tx);
    io.Number(at + 40, matrix.ty);
}

template <class Io, class Numbers>
void NumbersAt(const Io& io, std::size_t at, Numbers& numbers) {
    for (auto& number : numbers) {
        io.Number(at, number);
        at += sizeof number;
    }
}

/// A name that is read always ends, whatever the bytes are.
template <class Io, class Name>
void NameAt(const Io& io, std::size_t at, Name& name) {
    NumbersAt(io, at, name.Units());
    if constexpr (Io::kReads) name.Units().back() = 0;
}

}  // namespace VyrFOM
