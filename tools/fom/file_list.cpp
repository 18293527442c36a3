#include "fom/file_list.h"

#include <algorithm>
#include <set>
#include <string>
#include <system_error>

#include "host/base/wstring.h"

#include "fom/drawing_name.h"
#include "fom/file_identity.h"
#include "fom/path_text.h"

namespace command {
namespace {

namespace fs = std::filesystem;

bool HasExtension(const fs::path& path, std::wstring_view extension) {
    return host::CompareFolded(host::FromPath(path.extension()), extension) == 0;
}

class Lister {
public:
    explicit Lister(const std::vector<fs::path>& paths) : m_paths(paths) {
        for (const fs::path& path : paths) {
            std::error_code unknown;
            fs::path real = fs::canonical(path, unknown);
            if (!unknown) m_roots.push_back(std::move(real));
        }
    }

    FileList List() {
        for (const fs::path& path : m_paths)
            AddPath(path);
        return std::move(m_list);
    }

private:
    void AddPath(const fs::path& path) {
        std::error_code unknown;
        const fs::file_status status = fs::status(path, unknown);
        if (status.type() == fs::file_type::not_found) return Fail(path, "no such file or folder");
        if (status.type() == fs::file_type::none) return Fail(path, unknown.message());
        if (fs::is_directory(status)) return AddFolder(path);
        if (IsNew(path)) Add(path, path.filename());
    }

    void AddFolder(const fs::path& folder) {
        m_files.clear();
        m_links.clear();
        const std::size_t errors = m_list.errors.size();
        Collect(folder);
        if (m_files.empty() && m_links.empty() && m_list.errors.size() == errors)
            return Fail(folder, "no SVG drawings in this folder");
        // Links after files: what can be called by its own name is.
        std::vector<fs::path> found;
        for (const auto* paths : {&m_files, &m_links}) {
            std::vector<fs::path> sorted = *paths;
            std::sort(sorted.begin(), sorted.end());
            std::copy_if(sorted.begin(), sorted.end(), std::back_inserter(found),
                         [this](const fs::path& path) { return IsNew(path); });
        }
        std::sort(found.begin(), found.end());
        for (const fs::path& path : found)
            Add(path, path.lexically_relative(folder));
    }

    void Add(const fs::path& path, const fs::path& name) {
        m_list.files.push_back(path);
        m_list.names.push_back(ToDrawingName(name));
    }

    void Collect(const fs::path& top) {
        std::vector<fs::path> folders{top};
        while (!folders.empty()) {
            const fs::path folder = std::move(folders.back());
            folders.pop_back();
            std::error_code failed;
            fs::directory_iterator at(folder, failed);
            for (; !failed && at != fs::directory_iterator(); at.increment(failed))
                Sort(*at, folders);
            if (failed) Fail(folder, failed.message());
        }
    }

    void Sort(const fs::directory_entry& entry, std::vector<fs::path>& folders) {
        std::error_code unknown;
        const bool isLink = entry.is_symlink(unknown);
        if (!isLink && entry.is_directory(unknown)) {
            folders.push_back(entry.path());
        } else if (entry.is_regular_file(unknown)) {
            if (HasExtension(entry.path(), L".svgz")) ++m_list.compressed;
            if (!HasExtension(entry.path(), L".svg")) return;
            if (!isLink)
                m_files.push_back(entry.path());
            else if (IsWithin(entry.path()))
                m_links.push_back(entry.path());
        }
    }

    /// Whether a link leads to something at or below one of the given paths.
    bool IsWithin(const fs::path& link) const {
        std::error_code unknown;
        const fs::path real = fs::canonical(link, unknown);
        if (unknown) return false;
        return std::any_of(m_roots.begin(), m_roots.end(), [&](const fs::path& root) {
            return std::mismatch(root.begin(), root.end(), real.begin(), real.end()).first == root.end();
        });
    }

    bool IsNew(const fs::path& path) {
        const std::optional<FileIdentity> identity = IdentifyFile(path);
        return !identity || m_met.insert(*identity).second;
    }

    void Fail(const fs::path& path, std::string reason) {
        m_list.errors.push_back(
            {.what = PathText(path), .offset = 0, .line = 0, .reason = std::move(reason)});
    }

    const std::vector<fs::path>& m_paths;
    std::vector<fs::path> m_roots;
    std::set<FileIdentity> m_met;
    FileList m_list;
    std::vector<fs::path> m_files;
    std::vector<fs::path> m_links;
};

}  // namespace

FileList ListDrawings(const std::vector<fs::path>& paths) {
    return Lister(paths).List();
}

}  // namespace command
