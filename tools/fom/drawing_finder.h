#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include "fom/file_list.h"
#include "fom/paint_document.h"

namespace command {

/// Finds the files that a document was made of among those of a list.
class DrawingFinder {
public:
    explicit DrawingFinder(const FileList& list);

    using Files = std::vector<std::filesystem::path>;
    /// The files of its name.
    Files FindNamed(const SourceDrawing& drawing) const;
    /// Those of its size: it may have got another name in the document, or since.
    Files FindSized(const SourceDrawing& drawing) const;

private:
    std::unordered_multimap<std::string, std::filesystem::path> m_byName;
    std::unordered_multimap<std::uint64_t, std::filesystem::path> m_bySize;
};

}  // namespace command
