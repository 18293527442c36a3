#include "svg/matrix.h"

#include <cmath>
#include <cstddef>
#include <numbers>

#include "svg/scanner.h"

namespace svg {
namespace {

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

Matrix Rotation(const double* v, std::size_t count) {
    const double sine = std::sin(Radians(v[0]));
    const double cosine = std::cos(Radians(v[0]));
    const Matrix turn{cosine, sine, -sine, cosine, 0, 0};
    return count == 1 ? turn : Matrix::Translation(v[1], v[2]) * turn * Matrix::Translation(-v[1], -v[2]);
}

std::optional<Matrix> MakeStep(std::string_view name, const double* v, std::size_t count) {
    if (name == "matrix" && count == 6) return Matrix{v[0], v[1], v[2], v[3], v[4], v[5]};
    if (name == "translate" && (count == 1 || count == 2))
        return Matrix::Translation(v[0], count == 2 ? v[1] : 0);
    if (name == "scale" && (count == 1 || count == 2)) return Matrix::Scale(v[0], count == 2 ? v[1] : v[0]);
    if (name == "rotate" && (count == 1 || count == 3)) return Rotation(v, count);
    if (name == "skewX" && count == 1) return Matrix{1, 0, std::tan(Radians(v[0])), 1, 0, 0};
    if (name == "skewY" && count == 1) return Matrix{1, std::tan(Radians(v[0])), 0, 1, 0, 0};
    return std::nullopt;
}

}  // namespace

bool Matrix::IsFinite() const {
    return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) && std::isfinite(e) &&
           std::isfinite(f);
}

bool Matrix::HasInverse() const {
    const double determinant = a * d - b * c;
    return std::isfinite(determinant) && determinant != 0;
}

Matrix operator*(const Matrix& outer, const Matrix& inner) {
    return {outer.a * inner.a + outer.c * inner.b,           outer.b * inner.a + outer.d * inner.b,
            outer.a * inner.c + outer.c * inner.d,           outer.b * inner.c + outer.d * inner.d,
            outer.a * inner.e + outer.c * inner.f + outer.e, outer.b * inner.e + outer.d * inner.f + outer.f};
}

std::optional<Matrix> ParseTransform(std::string_view text) {
    Scanner in(text);
    Matrix result;
    in.SkipSpace();
    while (!in.AtEnd()) {
        const std::string_view name = in.Identifier();
        if (name == "none" && in.Rest().empty()) return result;
        in.SkipSpace();
        if (!in.Accept('(')) return std::nullopt;
        double values[6];
        std::size_t count = 0;
        in.SkipSpace();
        while (count < 6 && in.Number(values[count])) {
            ++count;
            in.SkipSeparator();
        }
        if (!in.Accept(')')) return std::nullopt;
        const std::optional<Matrix> step = MakeStep(name, values, count);
        if (!step) return std::nullopt;
        result = result * *step;
        in.SkipSeparator();
    }
    if (!result.IsFinite()) return std::nullopt;
    return result;
}

}  // namespace svg
