#include "fom/svg_content.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "host/xml/xml_document.h"

#include "fom/svg_definitions.h"

#include "svg/properties.h"
#include "svg/scanner.h"
#include "svg/values.h"

namespace command {
namespace {

/// The bytes of a sequence of valid UTF-8 that begins with `lead`.
std::size_t SequenceLength(unsigned char lead) noexcept {
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

std::uint32_t Decode(std::string_view sequence) noexcept {
    const auto lead = static_cast<unsigned char>(sequence.front());
    std::uint32_t code = sequence.size() == 1 ? lead : lead & (0xFFU >> (sequence.size() + 1));
    for (const char c : sequence.substr(1))
        code = code << 6 | (static_cast<unsigned char>(c) & 0x3FU);
    return code;
}

/// Characters that an XML text may have, also as references.
bool IsAllowed(std::uint32_t code) noexcept {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code < 0xD800 || (code >= 0xE000 && code < 0xFFFE) || (code >= 0x10000 && code < 0x110000);
}

/// The next character, which is taken from the text; something not allowed where it is damaged.
std::uint32_t TakeCharacter(std::string_view& text) noexcept {
    const std::size_t length = SequenceLength(static_cast<unsigned char>(text.front()));
    const std::uint32_t code = length <= text.size() ? Decode(text.substr(0, length)) : 0;
    text.remove_prefix(std::min(length, text.size()));
    return code;
}

bool IsAllowed(std::string_view text) noexcept {
    while (!text.empty())
        if (!IsAllowed(TakeCharacter(text))) return false;
    return true;
}

/// Everything but plain ASCII as a reference; kIdMark stays.
void AppendEscaped(std::string& out, std::string_view text) {
    while (!text.empty()) {
        const std::uint32_t code = TakeCharacter(text);
        const bool plain = code >= ' ' && code < 0x7F && code != '&' && code != '<' && code != '"';
        if (plain || code == static_cast<unsigned char>(kIdMark)) {
            out += static_cast<char>(code);
        } else {
            char reference[16];
            std::snprintf(reference, sizeof reference, "&#%u;", static_cast<unsigned>(code));
            out += reference;
        }
    }
}

/// Prefixes but those that every drawing knows would have to be declared.
bool IsName(std::string_view name) noexcept {
    if (name == "xml:space" || name == "xml:lang" || name == "xlink:href") return true;
    for (const char c : name)
        if (!svg::IsLetter(c) && !svg::IsDigit(c) && c != '-' && c != '_' && c != '.') return false;
    return !name.empty() && (svg::IsLetter(name.front()) || name.front() == '_');
}

std::string Renamed(std::string_view reference) {
    return reference.starts_with('#') ? std::string("#") + kIdMark + '-' + std::string(reference.substr(1))
                                      : std::string(reference);
}

std::string RenameUrls(std::string_view value) {
    std::string result;
    for (;;) {
        const std::size_t at = value.find("url(");
        if (at == std::string_view::npos) return result.append(value);
        result.append(value.substr(0, at));
        svg::Scanner in(value.substr(at));
        std::string_view url;
        if (!svg::ScanUrl(in, url)) return result;
        result.append("url(").append(Renamed(url)) += ')';
        value = in.Rest();
    }
}

/// Writes elements as text, without recursion: content may nest deeply.
class Writer {
public:
    /// Everything within `top`; empty for names and characters that no drawing may have.
    std::optional<std::string> Write(host::XmlNode top) {
        host::XmlNode node = top;
        while (m_good) {
            if (node != top) Start(node);
            host::XmlNode next = SkipToElement(node.FirstChild());
            while (!next) {
                if (node == top) return m_good ? std::optional(std::move(m_out)) : std::nullopt;
                m_out.append("</").append(node.Name()) += '>';
                next = SkipToElement(node.NextSibling());
                if (!next) node = node.Parent();
            }
            node = next;
        }
        return std::nullopt;
    }

private:
    host::XmlNode SkipToElement(host::XmlNode node) {
        for (; node && !node.IsElement(); node = node.NextSibling())
            if (node.GetKind() == host::XmlNode::Kind::Text) Text(node.Value());
        return node;
    }

    void Start(host::XmlNode element) {
        Name(element.Name());
        std::string style, declared;
        std::string_view reference;
        for (host::XmlAttribute at = element.FirstAttribute(); at; at = at.Next()) {
            m_good = m_good && IsAllowed(at.Value());
            const std::string_view name = at.Name();
            if (name == "href" || name.ends_with(":href")) {
                reference = at.Value();
            } else if (name == "style") {
                style += at.Value();
            } else if (!TakeDeclaration(at, declared)) {
                Attribute(name, name == "id" ? std::string(1, kIdMark) + '-' + std::string(at.Value())
                                             : RenameUrls(at.Value()));
            }
        }
        if (!reference.empty()) Attribute("xlink:href", Renamed(reference));
        if (const std::string whole = declared + style; !whole.empty()) Attribute("style", whole);
        m_out += '>';
        Text(element.Value());
    }

    /// A value that could end its declaration stays an attribute.
    static bool TakeDeclaration(host::XmlAttribute attribute, std::string& declared) {
        const std::string_view value = attribute.Value();
        if (!svg::FindProperty(attribute.Name()) || value.find_first_of(";!") != std::string_view::npos)
            return false;
        declared.append(attribute.Name()).append(":").append(RenameUrls(value)) += ';';
        return true;
    }

    void Name(std::string_view name) {
        m_good = m_good && IsName(name);
        m_out.append("<").append(name);
    }

    void Text(std::string_view text) {
        m_good = m_good && IsAllowed(text);
        AppendEscaped(m_out, text);
    }

    void Attribute(std::string_view name, std::string_view value) {
        m_good = m_good && IsName(name);
        m_out.append(" ").append(name).append("=\"");
        AppendEscaped(m_out, value);
        m_out += '"';
    }

    std::string m_out;
    bool m_good = true;
};

}  // namespace

std::optional<std::string> AdoptContent(std::string_view content) {
    host::XmlDocument document;
    if (content.empty() || !document.LoadText("<g>" + std::string(content) + "</g>")) return std::nullopt;
    return Writer().Write(document.Root());
}

}  // namespace command
