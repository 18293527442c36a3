#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace command {

/// Whether it is UTF-8 without control characters, and not empty.
bool IsPlainText(std::string_view text);

/// Names of drawings in documents: relative paths in UTF-8 with "/" between their parts, of at most
/// kLongestDrawingName bytes, without parts that are empty or lead elsewhere ("." and ".."), without
/// backslashes and control characters.
inline constexpr std::size_t kLongestDrawingName = 1024;

/// Whether a name may stand in a document. One that is taken as a path below a folder stays below it.
bool IsDrawingName(std::string_view name);

/// The name for a drawing found at the relative `path`; what names may not have becomes "_", and what is too
/// long loses its beginning.
std::string ToDrawingName(const std::filesystem::path& path);

/// Keeps the names of one document apart.
class DrawingNames {
public:
    /// `name`, which is a drawing's, or that with " (2)", " (3)" … before its extension. It is taken then.
    std::string Take(std::string name);

private:
    // How often each was asked for.
    std::unordered_map<std::string, std::size_t> m_taken;
};

}  // namespace command
