#include "fom/drawing_finder.h"

#include <system_error>

namespace command {
namespace {

template <class Map>
DrawingFinder::Files Values(const Map& map, const typename Map::key_type& key) {
    DrawingFinder::Files files;
    for (auto [at, end] = map.equal_range(key); at != end; ++at)
        files.push_back(at->second);
    return files;
}

}  // namespace

DrawingFinder::DrawingFinder(const FileList& list) {
    for (std::size_t i = 0; i < list.files.size(); ++i) {
        m_byName.emplace(list.names[i], list.files[i]);
        std::error_code failure;
        const std::uintmax_t size = std::filesystem::file_size(list.files[i], failure);
        if (!failure) m_bySize.emplace(size, list.files[i]);
    }
}

DrawingFinder::Files DrawingFinder::FindNamed(const SourceDrawing& drawing) const {
    return Values(m_byName, drawing.name);
}

DrawingFinder::Files DrawingFinder::FindSized(const SourceDrawing& drawing) const {
    return Values(m_bySize, drawing.bytes);
}

}  // namespace command
