#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/base/error.h"

namespace command {

/// The folder that a demo writes. Its summary marks it as such from the start, also of a demo that does not
/// come to its end, and tells which rewritten drawings in it are the demo's.
class DemoFolder {
public:
    explicit DemoFolder(std::filesystem::path path) : m_path(std::move(path)) {}

    std::filesystem::path Document() const { return m_path / "art.fomdoc"; }
    std::filesystem::path DamagedDocument() const { return m_path / "self-check.fomdoc"; }
    /// What the rewriting tells, for a while.
    std::filesystem::path RewriteReport() const { return m_path / "rewrite.json"; }
    std::filesystem::path Page() const { return m_path / "index.html"; }
    std::filesystem::path Summary() const { return m_path / "summary.json"; }
    std::filesystem::path Rewritten() const { return m_path / "rewritten"; }
    /// Rewritten with a wrong paint; taken away in the end.
    std::filesystem::path Damaged() const { return m_path / "self-check"; }
    std::filesystem::path Pictures() const { return m_path / "pictures"; }

    /// Makes the folder, or looks at one that exists: an empty one will do, and with `force` one of a former
    /// demo, whose files are removed then; nothing else is. False, with `error` filled, when it cannot be
    /// used.
    bool Prepare(bool force, host::Error& error);
    /// Marks it as that of an unfinished demo about these drawings.
    bool Mark(const std::vector<std::string>& names, host::Error& error);
    /// Takes away what only the demo itself needs.
    void Tidy(const std::vector<std::string>& damaged) const;

    /// What the name of the pictures begins with for the drawing at this place of the document.
    static std::string PictureName(std::size_t place);

private:
    std::optional<std::vector<std::string>> FormerNames() const;
    void RemovePictures() const;
    void RemoveDrawings(const std::filesystem::path& folder, const std::vector<std::string>& names) const;

    std::filesystem::path m_path;
};

}  // namespace command
