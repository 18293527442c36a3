#include "fom/facts.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "fom/grouped.h"

namespace command {
namespace {

/// "documentVersion" as "document version".
std::string Words(const std::string& name) {
    std::string words;
    for (const char c : name) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        if (isCapital) words += ' ';
        words += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return words;
}

void Pad(std::string& out, std::size_t width) {
    if (out.size() < width) out.append(width - out.size(), ' ');
}

}  // namespace

void Facts::Add(std::string name, std::uint64_t number, std::string text) {
    m_facts.push_back({std::move(name), Number{number, std::move(text)}});
}

void Facts::Add(std::string name, std::string value) {
    m_facts.push_back({std::move(name), std::move(value)});
}

void Facts::AddFraction(std::string name, double value) {
    m_facts.push_back({std::move(name), value});
}

void Facts::AddFlag(std::string name, bool value) {
    m_facts.push_back({std::move(name), value});
}

Facts& Facts::AddGroup(std::string name) {
    m_facts.push_back({std::move(name), Facts()});
    return std::get<Facts>(m_facts.back().value);
}

Facts::Rows& Facts::List(std::string name) {
    for (Fact& fact : m_facts)
        if (fact.name == name)
            if (Rows* rows = std::get_if<Rows>(&fact.value)) return *rows;
    m_facts.push_back({std::move(name), Rows()});
    return std::get<Rows>(m_facts.back().value);
}

Facts& Facts::AddRow(const std::string& list) {
    return List(list).emplace_back();
}

std::string Facts::TextOf(const Fact& fact) {
    if (const auto* number = std::get_if<Number>(&fact.value))
        return number->text.empty() ? Grouped(number->value) : number->text;
    if (const auto* text = std::get_if<std::string>(&fact.value)) return *text;
    if (const bool* flag = std::get_if<bool>(&fact.value)) return *flag ? "yes" : "no";
    if (const double* fraction = std::get_if<double>(&fact.value)) {
        char text[32];
        std::snprintf(text, sizeof text, "%.2f", *fraction);
        return text;
    }
    return {};
}

std::string Facts::ToText() const {
    std::string out;
    AppendTo(out, 0);
    return out;
}

void Facts::AppendTo(std::string& out, std::size_t indent) const {
    constexpr std::size_t kIndent = 2, kNameWidth = 22;
    for (const Fact& fact : m_facts) {
        const auto* rows = std::get_if<Rows>(&fact.value);
        const auto* group = std::get_if<Facts>(&fact.value);
        if ((rows && rows->empty()) || (group && group->m_facts.empty())) continue;
        std::string line(indent, ' ');
        line += Words(fact.name);
        if (!rows && !group) {
            Pad(line, indent + kNameWidth);
            line.append("  ").append(TextOf(fact));
        }
        out.append(line) += '\n';
        if (group) group->AppendTo(out, indent + kIndent);
        if (rows) AppendTable(out, *rows, indent + kIndent);
    }
}

/// Columns are named by the first row; later rows have the same facts. Numbers stand to the right.
void Facts::AppendTable(std::string& out, const Rows& rows, std::size_t indent) {
    const auto& first = rows.front().m_facts;
    std::vector<std::vector<std::string>> cells(1);
    for (const Fact& fact : first)
        cells.front().push_back(Words(fact.name));
    for (const Facts& row : rows) {
        cells.emplace_back();
        for (const Fact& fact : row.m_facts)
            cells.back().push_back(TextOf(fact));
    }
    std::vector<std::size_t> widths(first.size());
    for (const auto& row : cells)
        for (std::size_t i = 0; i < row.size() && i < widths.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    for (const auto& row : cells) {
        std::string line(indent, ' ');
        auto column = first.begin();
        for (std::size_t i = 0; i < row.size() && i < widths.size(); ++i, ++column) {
            const std::string padding(widths[i] - row[i].size(), ' ');
            const bool isNumber = std::holds_alternative<Number>(column->value);
            line.append(i == 0 ? "" : "  ").append(isNumber ? padding + row[i] : row[i] + padding);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out.append(line) += '\n';
    }
}

}  // namespace command
