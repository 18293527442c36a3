#include "svg/style_sheet.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "svg/declarations.h"
#include "svg/scanner.h"

namespace svg {
namespace {

std::string WithoutComments(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = std::min(text.find("/*", at), text.size());
        result.append(text, at, start - at);
        const std::size_t end = start == text.size() ? start : text.find("*/", start + 2);
        at = end == std::string::npos || end == text.size() ? text.size() : end + 2;
        result += ' ';
    }
    return result;
}

/// Where an at-rule that starts at `at` ends: behind its semicolon or its braces.
std::size_t EndOfAtRule(std::string_view text, std::size_t at) {
    const std::size_t mark = text.find_first_of(";{", at);
    if (mark == std::string_view::npos) return text.size();
    if (text[mark] == ';') return mark + 1;
    int depth = 0;
    for (std::size_t i = mark; i < text.size(); ++i) {
        if (text[i] == '{') ++depth;
        if (text[i] == '}' && --depth == 0) return i + 1;
    }
    return text.size();
}

/// One selector; nothing when it asks for more than one element's type, id and classes.
std::optional<StyleSheet::Rule> ParseSelector(std::string_view text) {
    StyleSheet::Rule rule;
    Scanner in(text);
    std::uint32_t ids = 0, classes = 0, types = 0;
    if (in.Accept('*')) {
        if (in.AtEnd()) return rule;
    } else {
        rule.type = in.Identifier();
        types = rule.type.empty() ? 0 : 1;
    }
    while (!in.AtEnd()) {
        const char mark = in.Take();
        const std::string_view name = in.Identifier();
        if (name.empty() || (mark != '.' && mark != '#')) return std::nullopt;
        if (mark == '.') {
            // Classes that follow each other are kept as one view; ".a#i.b" is not worth more.
            const std::string_view word(name.data() - 1, name.size() + 1);
            const std::string_view before = rule.classes.empty() ? word.substr(0, 0) : rule.classes;
            if (before.data() + before.size() != word.data()) return std::nullopt;
            rule.classes = std::string_view(before.data(), before.size() + word.size());
            ++classes;
        } else {
            if (!rule.id.empty() && rule.id != name) return std::nullopt;
            rule.id = name;
            ++ids;
        }
    }
    if (ids + classes + types == 0) return std::nullopt;
    const auto capped = [](std::uint32_t count) { return std::min(count, std::uint32_t{255}); };
    rule.specificity = capped(ids) << 16 | capped(classes) << 8 | types;
    return rule;
}

bool HasClass(std::string_view classes, std::string_view wanted) {
    bool found = false;
    ForEachClass(classes, [&](std::string_view name) { found = found || name == wanted; });
    return found;
}

bool Holds(const StyleSheet::Rule& rule, const SelectorSubject& subject) {
    if (!rule.type.empty() && rule.type != subject.type) return false;
    if (!rule.id.empty() && rule.id != subject.id) return false;
    Scanner in(rule.classes);
    while (in.Accept('.')) {
        if (!HasClass(subject.classes, in.Identifier())) return false;
    }
    return true;
}

}  // namespace

void StyleSheet::Add(std::string source, Omissions& omissions) {
    m_texts.push_back(WithoutComments(source));
    const std::string_view text = m_texts.back();
    m_mostRules += text.size() / kBytesPerRule;
    for (std::size_t at = 0; at < text.size();) {
        if (IsSpace(text[at])) {
            ++at;
        } else if (text[at] == '@') {
            omissions.Count("at-rule in style sheet");
            at = EndOfAtRule(text, at);
        } else if (text.substr(at, 4) == "<!--") {
            at += 4;
        } else if (text.substr(at, 3) == "-->") {
            at += 3;
        } else {
            const std::size_t open = text.find('{', at);
            if (open == std::string_view::npos) break;
            const std::size_t close = std::min(text.find('}', open), text.size());
            AddRule(text.substr(at, open - at), text.substr(open + 1, close - open - 1), omissions);
            at = std::min(close + 1, text.size());
        }
    }
}

void StyleSheet::AddRule(std::string_view selectors, std::string_view body, Omissions& omissions) {
    const std::size_t first = m_declarations.size();
    DeclarationReader reader(body);
    while (const auto raw = reader.Next()) {
        const Property* property = FindProperty(raw->name);
        if (property != nullptr) {
            m_declarations.push_back({property, raw->value, raw->important});
        } else if (!raw->name.starts_with('-')) {
            omissions.Count("unknown property");
        }
    }
    omissions.Count("malformed style", reader.Malformed());
    if (m_declarations.size() == first) return;
    Scanner in(selectors);
    while (!in.AtEnd()) {
        std::optional<Rule> rule = ParseSelector(Trim(in.Until(',')));
        if (!rule) {
            omissions.Count("unsupported selector");
            continue;
        }
        if (m_rules.size() == m_mostRules) {
            omissions.Count("style rule beyond what the sheet's length allows");
            return;
        }
        rule->firstDeclaration = static_cast<std::uint32_t>(first);
        rule->lastDeclaration = static_cast<std::uint32_t>(m_declarations.size());
        rule->order = static_cast<std::uint32_t>(m_rules.size());
        File(*rule);
    }
}

void StyleSheet::File(Rule rule) {
    std::string_view key = rule.type;
    Index* index = &m_byType;
    if (!rule.id.empty()) {
        index = &m_byId;
        key = rule.id;
    } else if (!rule.classes.empty()) {
        Scanner in(rule.classes.substr(1));
        index = &m_byClass;
        key = in.Identifier();
    }
    const auto [last, isNew] = index->try_emplace(key, rule.order);
    rule.previous = isNew ? kNoRule : last->second;
    last->second = rule.order;
    m_rules.push_back(rule);
}

void StyleSheet::Collect(const Index& index, std::string_view key, const SelectorSubject& subject,
                         std::vector<const Rule*>& rules, Budget& budget) const {
    const auto found = index.find(key);
    if (found == index.end()) return;
    for (std::uint32_t i = found->second; i != kNoRule; i = m_rules[i].previous) {
        budget.Spend(1 + subject.classes.size() / 16);
        if (budget.IsExhausted()) return;
        if (Holds(m_rules[i], subject)) rules.push_back(&m_rules[i]);
    }
}

void StyleSheet::Match(const SelectorSubject& subject, std::vector<const Rule*>& rules,
                       Budget& budget) const {
    rules.clear();
    if (!subject.id.empty()) Collect(m_byId, subject.id, subject, rules, budget);
    std::vector<std::string_view> classes;
    ForEachClass(subject.classes, [&](std::string_view name) { classes.push_back(name); });
    // A class that is named twice must not bring its rules twice.
    std::sort(classes.begin(), classes.end());
    classes.erase(std::unique(classes.begin(), classes.end()), classes.end());
    for (const std::string_view name : classes)
        Collect(m_byClass, name, subject, rules, budget);
    if (!subject.type.empty()) Collect(m_byType, subject.type, subject, rules, budget);
    Collect(m_byType, {}, subject, rules, budget);
    std::sort(rules.begin(), rules.end(), [](const Rule* a, const Rule* b) {
        return std::tie(a->specificity, a->order) < std::tie(b->specificity, b->order);
    });
    // Applying a declaration costs several times what looking at a rule does.
    for (const Rule* rule : rules)
        budget.Spend(8 * std::uint64_t{rule->lastDeclaration - rule->firstDeclaration});
}

}  // namespace svg
