#include "xml/entities.h"

#include <map>
#include <string>
#include <string_view>

namespace host::detail {
namespace {

constexpr std::size_t kFreeExpansion = std::size_t{64} << 10;
constexpr std::string_view kBlanks = " \t\r\n";

struct Entity {
    std::string_view value;
    bool external = false;
};

using EntityTable = std::map<std::string_view, Entity>;

/// Reads the internal subset of a document type, from `at` to its closing bracket.
class SubsetReader {
public:
    SubsetReader(std::string_view text, std::size_t at) : m_text(text), m_at(at) {}

    EntityTable Read() {
        EntityTable table;
        while (m_at < m_text.size() && m_text[m_at] != ']') {
            const std::string_view rest = m_text.substr(m_at);
            if (rest.starts_with("<!--")) {
                SkipPast("-->");
            } else if (rest.starts_with("<?")) {
                SkipPast("?>");
            } else if (rest.starts_with("<!ENTITY")) {
                m_at += 8;
                ReadEntity(table);
            } else if (rest.starts_with("<!")) {
                SkipDeclaration();
            } else {
                ++m_at;
            }
        }
        return table;
    }

    std::size_t Position() const { return m_at; }

private:
    void SkipPast(std::string_view mark) {
        const std::size_t end = m_text.find(mark, m_at);
        m_at = end == std::string_view::npos ? m_text.size() : end + mark.size();
    }

    void SkipBlanks() { m_at = std::min(m_text.find_first_not_of(kBlanks, m_at), m_text.size()); }

    std::string_view Word() {
        SkipBlanks();
        const std::size_t end = std::min(m_text.find_first_of(" \t\r\n\"'>", m_at), m_text.size());
        const std::string_view word = m_text.substr(m_at, end - m_at);
        m_at = end;
        return word;
    }

    std::string_view Literal() {
        const std::size_t end = m_text.find(m_text[m_at], m_at + 1);
        if (end == std::string_view::npos) {
            m_at = m_text.size();
            return {};
        }
        const std::string_view literal = m_text.substr(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        return literal;
    }

    /// Past the '>' that ends a declaration; quoted literals may hold one of their own.
    void SkipDeclaration() {
        while (m_at < m_text.size() && m_text[m_at] != '>') {
            if (m_text[m_at] == '"' || m_text[m_at] == '\'') {
                Literal();
            } else {
                ++m_at;
            }
        }
        if (m_at < m_text.size()) ++m_at;
    }

    void ReadEntity(EntityTable& table) {
        const std::string_view name = Word();
        SkipBlanks();
        const bool parameter = name == "%";
        const bool literal = m_at < m_text.size() && (m_text[m_at] == '"' || m_text[m_at] == '\'');
        if (!parameter && !name.empty()) {
            const Entity entity = literal ? Entity{Literal(), false} : Entity{{}, true};
            table.emplace(name, entity);
        }
        SkipDeclaration();
    }

    std::string_view m_text;
    std::size_t m_at;
};

/// Where the internal subset starts, just behind its bracket; npos when the text has none.
std::size_t FindSubset(std::string_view text) {
    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t at = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    for (;;) {
        at = text.find('<', at);
        if (at == kNone) return kNone;
        const std::string_view rest = text.substr(at, 9);
        if (rest.starts_with("<?")) {
            at = text.find("?>", at);
        } else if (rest.starts_with("<!--")) {
            at = text.find("-->", at);
        } else {
            if (rest != "<!DOCTYPE") return kNone;
            break;
        }
        if (at == kNone) return kNone;
    }
    while (at < text.size() && text[at] != '>' && text[at] != '[') {
        if (text[at] == '"' || text[at] == '\'') {
            at = text.find(text[at], at + 1);
            if (at == kNone) return kNone;
        }
        ++at;
    }
    return at < text.size() && text[at] == '[' ? at + 1 : kNone;
}

bool IsPlain(std::string_view value) {
    static constexpr std::string_view kKnown[] = {"&#", "&lt;", "&gt;", "&amp;", "&quot;", "&apos;"};
    if (value.find('<') != std::string_view::npos) return false;
    for (std::size_t at = value.find('&'); at != std::string_view::npos; at = value.find('&', at + 1)) {
        bool known = false;
        for (const std::string_view start : kKnown)
            known = known || value.substr(at).starts_with(start);
        if (!known) return false;
    }
    return true;
}

std::string Escaped(std::string_view value) {
    std::string result;
    for (const char c : value) {
        if (c == '"') {
            result += "&quot;";
        } else if (c == '\'') {
            result += "&apos;";
        } else {
            result += c == '\n' || c == '\r' ? ' ' : c;
        }
    }
    return result;
}

class Expander {
public:
    Expander(std::string_view text, const EntityTable& table) : m_text(text), m_table(table) {}

    std::optional<XmlTextFault> Run(std::size_t from) {
        m_out.assign(m_text.substr(0, from));
        for (m_at = from; m_at < m_text.size();) {
            const std::size_t mark = std::min(m_text.find_first_of("<&", m_at), m_text.size());
            m_out.append(m_text.substr(m_at, mark - m_at));
            m_at = mark;
            if (m_at == m_text.size()) break;
            if (m_text[m_at] == '<') {
                CopyMarkup();
            } else if (auto fault = Reference()) {
                return fault;
            }
        }
        return std::nullopt;
    }

    std::string_view Result() const { return m_out; }

private:
    void CopyTo(std::size_t end) {
        end = std::min(end, m_text.size());
        m_out.append(m_text.substr(m_at, end - m_at));
        m_at = end;
    }

    /// Comments and CDATA sections are copied whole: an ampersand in them refers to nothing.
    void CopyMarkup() {
        const std::string_view rest = m_text.substr(m_at, 9);
        if (rest.starts_with("<!--")) {
            CopyTo(m_text.find("-->", m_at));
        } else if (rest == "<![CDATA[") {
            CopyTo(m_text.find("]]>", m_at));
        } else {
            CopyTo(m_at + 1);
        }
    }

    std::optional<XmlTextFault> Reference() {
        const std::size_t end = m_text.find_first_of(";<&\"' \t\r\n", m_at + 1);
        const bool closed = end != std::string_view::npos && m_text[end] == ';';
        const auto found = closed ? m_table.find(m_text.substr(m_at + 1, end - m_at - 1)) : m_table.end();
        if (found == m_table.end() || found->second.external) {
            CopyTo(m_at + 1);
            return std::nullopt;
        }
        const std::string name(found->first.substr(0, 40));
        if (!IsPlain(found->second.value)) {
            return XmlTextFault{"entity '" + name + "' holds markup or other entities", m_at};
        }
        const std::string value = Escaped(found->second.value);
        m_expanded += value.size();
        if (m_expanded > kFreeExpansion + m_text.size()) {
            return XmlTextFault{"entity '" + name + "' swells the text beyond its limit", m_at};
        }
        m_out += value;
        m_at = end + 1;
        return std::nullopt;
    }

    std::string_view m_text;
    const EntityTable& m_table;
    std::string m_out;
    std::size_t m_at = 0;
    std::size_t m_expanded = 0;
};

}  // namespace

std::optional<XmlTextFault> ExpandXmlEntities(XmlText& text) {
    const std::string_view view = text.View();
    const std::size_t start = FindSubset(view);
    if (start == std::string_view::npos) return std::nullopt;
    SubsetReader reader(view, start);
    const EntityTable table = reader.Read();
    if (table.empty()) return std::nullopt;
    Expander expander(view, table);
    if (auto fault = expander.Run(reader.Position())) return fault;
    text = XmlText::Copy(expander.Result());
    return std::nullopt;
}

}  // namespace host::detail
