#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <utility>
#include <variant>

namespace command {

/// Named facts in their order, for people and for programs. Names are those in JSON ("documentVersion");
/// people read them as words.
class Facts {
public:
    /// `text` is what people read where a number alone says too little; empty: the number.
    void Add(std::string name, std::uint64_t number, std::string text = {});
    void Add(std::string name, std::string value);
    void Add(std::string name, const char* value) { Add(std::move(name), std::string(value)); }
    void AddFraction(std::string name, double value);
    void AddFlag(std::string name, bool value);
    /// Facts within a fact.
    Facts& AddGroup(std::string name);
    /// An empty list; rows follow.
    void AddList(std::string name) { List(std::move(name)); }
    /// Facts that are one of a list; the list is made by the first one.
    Facts& AddRow(const std::string& list);

    bool IsEmpty() const noexcept { return m_facts.empty(); }

    /// A line for each fact; groups are indented, lists are tables.
    std::string ToText() const;
    /// One object, indented.
    std::string ToJson() const;

private:
    struct Number {
        std::uint64_t value;
        std::string text;
    };
    struct Fact;
    using Rows = std::list<Facts>;

    Rows& List(std::string name);
    void AppendTo(std::string& out, std::size_t indent) const;
    static void AppendTable(std::string& out, const Rows& rows, std::size_t indent);
    static std::string TextOf(const Fact& fact);
    friend struct FactsJson;

    std::list<Fact> m_facts;
};

struct Facts::Fact {
    std::string name;
    std::variant<Number, std::string, double, bool, Facts, Rows> value;
};

}  // namespace command
