#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace svg {

/// The dashes of a line as far as they were read.
struct DashArray {
    /// Most entries that are looked at; even, so that what is left of a longer list is not doubled.
    static constexpr std::size_t kMostEntries = 1000;

    /// Dash, gap, dash, …: an even number, one above 0; empty for an unbroken line.
    std::vector<double> dashes;
    /// Cleared by an entry that is no length, out of range or negative: the line is unbroken.
    bool isValid = true;
    /// Entries beyond kMostEntries were left out.
    bool isCut = false;
};

/// Reads a list of lengths; `whole` is what 100 percent is.
DashArray ReadDashArray(std::string_view text, double fontSize, double whole);

}  // namespace svg
