#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace svg {

/// One "name: value" of a style.
struct RawDeclaration {
    std::string_view name;
    std::string_view value;
    bool important = false;
};

/// Reads the declarations of a style attribute or of a rule's braces, one after the other. What is malformed
/// is skipped up to the next semicolon, as the style language demands.
class DeclarationReader {
public:
    explicit DeclarationReader(std::string_view text) : m_rest(text) {}

    /// The next declaration; nothing at the end.
    std::optional<RawDeclaration> Next();

    /// How many pieces were no declarations.
    std::size_t Malformed() const { return m_malformed; }

private:
    std::string_view m_rest;
    std::size_t m_malformed = 0;
    bool m_unbalanced = false;
};

}  // namespace svg
