#pragma once

#include <cstdio>
#include <string>

namespace command {

/// A number as `format` of printf says it.
inline std::string Fixed(double number, const char* format) {
    char text[64];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

/// Appends a line of a table for people.
inline void AppendRow(std::string& out, const char* name, const std::string& value,
                      const std::string& note = {}) {
    char row[160];
    std::snprintf(row, sizeof row, "%-22s %12s", name, value.c_str());
    out.append(row);
    if (!note.empty()) out.append("  ").append(note);
    out += '\n';
}

}  // namespace command
