#include "svg/dash_array.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "svg/length.h"
#include "svg/scanner.h"

namespace svg {
namespace {

std::string_view TakeEntry(Scanner& in) {
    const std::string_view rest = in.Rest();
    while (!in.AtEnd() && in.Peek() != ',' && !IsSpace(in.Peek()))
        in.Take();
    return rest.substr(0, rest.size() - in.Rest().size());
}

/// Reads the entries as they stand; false when one is not valid.
bool ReadEntries(std::string_view text, double fontSize, double whole, DashArray& out) {
    Scanner in(text);
    in.SkipSpace();
    while (!in.AtEnd()) {
        out.isCut = out.dashes.size() == DashArray::kMostEntries;
        if (out.isCut) return true;
        const std::optional<Length> length = ParseLength(TakeEntry(in));
        const double value = length ? length->Resolve(fontSize, whole) : -1;
        if (!std::isfinite(value) || value < 0) return false;
        out.dashes.push_back(value);
        in.SkipSpace();
        if (!in.Accept(',')) continue;
        in.SkipSpace();
        if (in.AtEnd()) return false;
    }
    return !out.dashes.empty();
}

}  // namespace

DashArray ReadDashArray(std::string_view text, double fontSize, double whole) {
    DashArray result;
    result.isValid = ReadEntries(text, fontSize, whole, result);
    std::vector<double>& dashes = result.dashes;
    const bool anyDrawn = std::any_of(dashes.begin(), dashes.end(), [](double entry) { return entry > 0; });
    if (!result.isValid || !anyDrawn) {
        dashes.clear();
    } else if (const std::size_t count = dashes.size(); count % 2 == 1) {
        dashes.resize(2 * count);
        std::copy_n(dashes.begin(), count, dashes.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return result;
}

}  // namespace svg
