#include "host/xml/xml_document.h"

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <utility>

#include "xml/entities.h"
#include "xml/line_table.h"
#include "xml/text_source.h"
#include "xml/unique_attributes.h"
#include "xml/weight.h"

namespace host {
namespace {

constexpr unsigned kParseFlags = pugi::parse_default | pugi::parse_pi | pugi::parse_embed_pcdata;

/// Bytes of a name that a message shows at the most.
constexpr std::size_t kShownName = 64;

std::string DescribeParseFault(const pugi::xml_parse_result& result, std::size_t size) {
    const bool atEnd = static_cast<std::size_t>(result.offset) + 1 >= size;
    switch (result.status) {
        case pugi::status_no_document_element:
            return "no document element";
        case pugi::status_out_of_memory:
            throw std::bad_alloc();
        case pugi::status_end_element_mismatch:
            return atEnd ? "cut off: an element is not closed" : "start and end tags do not match";
        default:
            return std::string(atEnd ? "cut off: " : "malformed: ") + result.description();
    }
}

std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

}  // namespace

struct XmlDocument::Content {
    detail::XmlText text;
    std::optional<detail::LineTable> lines;
    pugi::xml_document tree;
};

XmlDocument::XmlDocument() noexcept = default;
XmlDocument::~XmlDocument() = default;
XmlDocument::XmlDocument(XmlDocument&& other) noexcept = default;
XmlDocument& XmlDocument::operator=(XmlDocument&& other) noexcept = default;

bool XmlDocument::LoadFile(const std::filesystem::path& path) {
    m_content.reset();
    m_error = {.what = PathText(path), .offset = 0, .line = 0, .reason = {}};
    auto content = std::make_unique<Content>();
    if (const auto fault = detail::ReadXmlFile(path, content->text)) return Fail(fault->reason, 0, 0);
    return Parse(std::move(content));
}

bool XmlDocument::LoadText(std::string_view text, std::string_view name) {
    m_content.reset();
    m_error = {.what = std::string(name), .offset = 0, .line = 0, .reason = {}};
    if (text.empty()) return Fail("the text is empty", 0, 0);
    if (text.size() > kMaxBytes) return Fail("longer than 512 MiB", 0, 0);
    auto content = std::make_unique<Content>();
    content->text = detail::XmlText::Copy(text);
    return Parse(std::move(content));
}

bool XmlDocument::Parse(std::unique_ptr<Content> content) {
    const auto lineIn = [&](std::size_t offset) {
        return detail::LineTable(content->text.View()).LineOf(offset);
    };
    if (const auto fault = detail::NormalizeXmlEncoding(content->text)) {
        return Fail(fault->reason, fault->offset, fault->offset == 0 ? 0 : lineIn(fault->offset));
    }
    if (const auto fault = detail::ExpandXmlEntities(content->text)) {
        return Fail(fault->reason, fault->offset, lineIn(fault->offset));
    }
    if (!detail::IsXmlTreeAffordable(content->text.View())) {
        return Fail("too much markup for the length of the text", 0, 0);
    }
    content->lines.emplace(content->text.View());
    const pugi::xml_parse_result result = content->tree.load_buffer_inplace(
        content->text.data.get(), content->text.size, kParseFlags, pugi::encoding_utf8);
    if (!result) {
        const auto offset = static_cast<std::size_t>(result.offset);
        return Fail(DescribeParseFault(result, content->text.size), offset, content->lines->LineOf(offset));
    }
    const XmlNode root(content->tree.document_element().internal_object());
    if (const XmlNode second = root.NextElement()) {
        return Fail("a second document element", second.Offset(), content->lines->LineOf(second.Offset()));
    }
    if (const char* const repeated = detail::FindRepeatedAttribute(content->tree.document_element())) {
        const std::string name(std::string_view(repeated).substr(0, kShownName));
        const auto offset = static_cast<std::size_t>(repeated - content->text.data.get());
        return Fail("attribute '" + name + "' stands twice in an element", offset,
                    content->lines->LineOf(offset));
    }
    m_content = std::move(content);
    return true;
}

bool XmlDocument::Fail(std::string_view reason, std::uint64_t offset, std::uint32_t line) {
    m_error.reason = reason;
    m_error.offset = offset;
    m_error.line = line;
    return false;
}

XmlNode XmlDocument::Root() const noexcept {
    return m_content ? XmlNode(m_content->tree.document_element().internal_object()) : XmlNode();
}

XmlNode XmlDocument::Top() const noexcept {
    return m_content ? XmlNode(m_content->tree.internal_object()) : XmlNode();
}

std::uint32_t XmlDocument::LineOf(std::size_t offset) const noexcept {
    return m_content ? m_content->lines->LineOf(offset) : 0;
}

std::size_t XmlDocument::Size() const noexcept {
    return m_content ? m_content->text.size : 0;
}

}  // namespace host
