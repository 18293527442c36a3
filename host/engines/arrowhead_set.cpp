#include "engines/arrowhead_set.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <string_view>
#include <system_error>

#include "host/base/atomic_file.h"
#include "host/base/wstring.h"

#include "engines/arrowhead_shapes.h"
#include "engines/arrowhead_text.h"

namespace host {
namespace {

constexpr std::uint64_t kLargestFile = std::uint64_t{4} << 20;
constexpr std::size_t kMostArrowheads = 1000;  // of a file
constexpr std::size_t kMostFaults = 10;        // that are named one by one

void AddBuiltIn(ArrowheadSet& set) {
    ArrowheadText text(BuiltInArrowheadText());
    while (const std::optional<ArrowheadLine> line = text.Next()) {
        assert(line->fault.empty());
        set.blocks.push_back(MemoryBlock(line->head.ToBlock()));
    }
}

/// Adds one file's arrowheads to a set.
class FileReader {
public:
    FileReader(ArrowheadSet& set, const std::filesystem::path& file) : m_set(set), m_name(FromPath(file)) {}

    void Add(std::string_view bytes) {
        if (bytes.find('\0') != std::string_view::npos) return Warn(L": not a text file");
        ArrowheadText text(bytes);
        std::size_t count = 0;
        while (const std::optional<ArrowheadLine> line = text.Next()) {
            if (!line->fault.empty()) {
                AddFault(*line);
            } else if (count++ == kMostArrowheads) {
                WarnOfLine(*line, L"more than 1,000 arrowheads; the rest is left out");
                break;
            } else {
                m_set.blocks.push_back(MemoryBlock(line->head.ToBlock()));
            }
        }
        if (m_faults > kMostFaults)
            Warn(L": " + std::to_wstring(m_faults - kMostFaults) + L" more lines cannot be read");
    }

    void Warn(const std::wstring& what) { m_set.warnings.push_back(m_name + what); }

private:
    void AddFault(const ArrowheadLine& line) {
        if (++m_faults <= kMostFaults) WarnOfLine(line, FromUtf8(line.fault));
    }

    void WarnOfLine(const ArrowheadLine& line, const std::wstring& reason) {
        Warn(L":" + std::to_wstring(line.number) + L": " + reason);
    }

    ArrowheadSet& m_set;
    std::wstring m_name;
    std::size_t m_faults = 0;
};

void AddFile(ArrowheadSet& set, const std::filesystem::path& file) {
    FileReader reader(set, file);
    Error error;
    const std::optional<std::vector<std::byte>> bytes = ReadWholeFile(file, error, kLargestFile);
    if (bytes)
        reader.Add({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
    else
        reader.Warn(L": " + FromUtf8(error.reason));
}

}  // namespace

ArrowheadSet LoadArrowheads(std::span<const std::filesystem::path> files) {
    ArrowheadSet set;
    AddBuiltIn(set);
    const auto file = std::find_if(files.begin(), files.end(), [](const std::filesystem::path& path) {
        std::error_code unknown;
        return std::filesystem::exists(path, unknown);
    });
    if (file != files.end()) AddFile(set, *file);
    return set;
}

}  // namespace host
