#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

#include "host/base/error.h"
#include "host/base/export.h"
#include "host/xml/xml_node.h"

namespace host {

/// A parsed XML document. It owns the text and all nodes; nodes and the views they give end with it.
///
/// The text may be UTF-8, UTF-16 with a byte order mark, or ISO-8859-1 that says so. Nothing outside the text
/// is ever opened: external entities stay unresolved, and an entity declared in the document type stands for
/// plain characters only; one that is built from other entities or would swell the text is an error when it
/// is used. A document takes at most sixteen times the size of its text plus 1 MiB; one that would take more
/// is refused.
///
/// Not safe for concurrent change; reading one document from several threads is.
class FOM_API XmlDocument {
public:
    /// Longest text that is read, in bytes.
    static constexpr std::uint64_t kMaxBytes = std::uint64_t{512} << 20;

    XmlDocument() noexcept;
    ~XmlDocument();
    XmlDocument(XmlDocument&& other) noexcept;
    XmlDocument& operator=(XmlDocument&& other) noexcept;

    /// Reads a regular file. On failure answers false, GetError() says why, and the document is empty.
    bool LoadFile(const std::filesystem::path& path);

    /// Reads a copy of `text`; `name` stands for the file in errors. Fails as LoadFile does.
    bool LoadText(std::string_view text, std::string_view name = {});

    const Error& GetError() const noexcept { return m_error; }

    /// The document element; null when nothing is loaded.
    XmlNode Root() const noexcept;
    /// The node above the document element, whose other children are instructions.
    XmlNode Top() const noexcept;

    /// Line, counted from 1, of a byte offset of the text; 0 when nothing is loaded.
    std::uint32_t LineOf(std::size_t offset) const noexcept;

    /// Length of the text in bytes.
    std::size_t Size() const noexcept;

private:
    struct Content;

    bool Parse(std::unique_ptr<Content> content);
    bool Fail(std::string_view reason, std::uint64_t offset, std::uint32_t line);

    std::unique_ptr<Content> m_content;
    Error m_error;
};

}  // namespace host
