#include "svg/length.h"

#include "svg/scanner.h"

namespace svg {
namespace {

struct UnitName {
    std::string_view name;
    Length::Unit unit;
    double factor;
};

constexpr UnitName kUnits[] = {
    {"", Length::Unit::User, 1},           {"px", Length::Unit::User, 1},
    {"%", Length::Unit::Percent, 1},       {"em", Length::Unit::Em, 1},
    {"ex", Length::Unit::Ex, 1},           {"pt", Length::Unit::User, 96.0 / 72},
    {"pc", Length::Unit::User, 16},        {"mm", Length::Unit::User, 96 / 25.4},
    {"cm", Length::Unit::User, 96 / 2.54}, {"q", Length::Unit::User, 96 / 101.6},
    {"in", Length::Unit::User, 96},        {"rem", Length::Unit::User, 16},
};

}  // namespace

double Length::Resolve(double fontSize, double whole) const {
    switch (unit) {
        case Unit::Percent:
            return value * whole / 100;
        case Unit::Em:
            return value * fontSize;
        case Unit::Ex:
            return value * fontSize / 2;
        case Unit::User:
            break;
    }
    return value;
}

std::optional<Length> ParseLength(std::string_view text) {
    Scanner in(text);
    in.SkipSpace();
    Length length;
    if (!in.Number(length.value)) return std::nullopt;
    const std::string_view name = Trim(in.Rest());
    for (const UnitName& unit : kUnits) {
        if (!EqualsNoCase(name, unit.name)) continue;
        length.value *= unit.factor;
        length.unit = unit.unit;
        return length;
    }
    return std::nullopt;
}

std::optional<double> ParseFraction(std::string_view text) {
    Scanner in(text);
    in.SkipSpace();
    double value = 0;
    if (!in.Number(value)) return std::nullopt;
    if (in.Accept('%')) value /= 100;
    in.SkipSpace();
    if (!in.AtEnd()) return std::nullopt;
    return value;
}

}  // namespace svg
