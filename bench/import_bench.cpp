#include <cstdlib>
#include <filesystem>
#include <pugixml.hpp>
#include <vector>

#include "fom/file_list.h"
#include "fom/importer.h"

#include "ratio.h"

// A whole import (reading, styles, fills, strokes, pooling) against reading and parsing the same files and
// nothing else.

namespace {

/// The drawings: a folder that FOM_ART names, or the clip art that the package openclipart-svg installs.
const std::vector<std::filesystem::path>& Drawings() {
    static const std::vector<std::filesystem::path> files = [] {
        const char* folder = std::getenv("FOM_ART");
        return command::ListDrawings({folder ? folder : "/usr/share/openclipart"}).files;
    }();
    return files;
}

void ImportDrawings(benchmark::State& state) {
    for (auto _ : state) {
        command::Importer importer;
        host::Error error;
        for (const auto& file : Drawings())
            benchmark::DoNotOptimize(importer.ImportFile(file, error));
        state.counters["shapes"] = static_cast<double>(importer.Document().ShapeCount());
    }
}
BENCHMARK(ImportDrawings);

void ParseDrawings(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& file : Drawings()) {
            pugi::xml_document document;
            benchmark::DoNotOptimize(document.load_file(file.c_str()));
        }
    }
}
BENCHMARK(ParseDrawings);

}  // namespace

int main(int argc, char** argv) {
    if (Drawings().empty()) {
        std::printf("import: no drawings; install openclipart-svg or set FOM_ART\n");
        return 0;
    }
    return bench::RunAndCompare(argc, argv,
                                {{.label = "import a drawing; read and parse it",
                                  .ours = "ImportDrawings",
                                  .rival = "ParseDrawings",
                                  .reach = 6.0,
                                  .operations = static_cast<double>(Drawings().size())}});
}
