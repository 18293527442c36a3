#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "svg/budget.h"
#include "svg/omissions.h"
#include "svg/properties.h"

namespace svg {

struct Declaration {
    const Property* property = nullptr;
    std::string_view value;
    bool important = false;
};

/// What a selector looks at. `classes` is the attribute's text.
struct SelectorSubject {
    std::string_view type;
    std::string_view id;
    std::string_view classes;
};

/// The rules of a document's style elements: selectors of a type, "*", an id, classes and combinations of
/// them for one element. Selectors that look at other elements or at states are counted as omitted.
class StyleSheet {
public:
    struct Rule {
        std::string_view type;
        std::string_view id;
        /// As in the selector: ".first.second".
        std::string_view classes;
        std::uint32_t specificity = 0;
        std::uint32_t order = 0;
        std::uint32_t firstDeclaration = 0;
        std::uint32_t lastDeclaration = 0;
        /// The rule filed before it under the same key; kNoRule ends the list.
        std::uint32_t previous = 0;
    };

    bool Empty() const { return m_rules.empty(); }
    /// Whether some rule is for elements of that id.
    bool AsksForId(std::string_view id) const { return m_byId.contains(id); }

    /// Adds the text of one style element.
    void Add(std::string text, Omissions& omissions);

    /// Puts the rules that hold for `subject` into `rules`, weakest first; none once the budget is exhausted.
    void Match(const SelectorSubject& subject, std::vector<const Rule*>& rules, Budget& budget) const;

    const Declaration* begin(const Rule& rule) const { return m_declarations.data() + rule.firstDeclaration; }
    const Declaration* end(const Rule& rule) const { return m_declarations.data() + rule.lastDeclaration; }

private:
    static constexpr std::uint32_t kNoRule = static_cast<std::uint32_t>(-1);
    // A rule takes many times the bytes of the shortest selector: sheets of nothing else are cut.
    static constexpr std::size_t kBytesPerRule = 8;
    static constexpr std::size_t kFewRules = 1024;

    // The last rule of each key. A sheet of many short rules must stay small in memory.
    using Index = std::unordered_map<std::string_view, std::uint32_t>;

    void AddRule(std::string_view selectors, std::string_view body, Omissions& omissions);
    void File(Rule rule);
    void Collect(const Index& index, std::string_view key, const SelectorSubject& subject,
                 std::vector<const Rule*>& rules, Budget& budget) const;

    std::deque<std::string> m_texts;
    std::vector<Declaration> m_declarations;
    std::vector<Rule> m_rules;
    std::size_t m_mostRules = kFewRules;
    Index m_byId, m_byClass, m_byType;
};

/// Calls `visit` with each word of a class attribute.
template <class Visit>
void ForEachClass(std::string_view classes, Visit&& visit) {
    constexpr std::string_view kBlanks = " \t\r\n\f";
    for (std::size_t at = classes.find_first_not_of(kBlanks); at < classes.size();) {
        const std::size_t end = std::min(classes.find_first_of(kBlanks, at), classes.size());
        visit(classes.substr(at, end - at));
        at = classes.find_first_not_of(kBlanks, end);
    }
}

}  // namespace svg
