// Documents. The clip art's one is saved to a file and loaded from it, against copying that file: the C
// library's calls in pieces of 64 KiB, flushed to the disk as a save is. Made ones have many shapes that
// share few fills, each time in memory.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <unistd.h>
#include <vector>

#include "fom/document_file.h"
#include "fom/document_stream.h"
#include "fom/file_list.h"
#include "fom/importer.h"

#include "ratio.h"

namespace {

namespace fs = std::filesystem;
using command::DocumentVersion;
using command::PaintDocument;

/// A folder that goes with the program.
const fs::path& Folder() {
    static const struct Made {
        Made() : path(fs::temp_directory_path() / ("fom-bench-" + std::to_string(getpid()))) {
            fs::create_directories(path);
        }
        ~Made() { fs::remove_all(path); }
        fs::path path;
    } folder;
    return folder.path;
}

void Require(bool holds, const host::Error& error) {
    if (holds) return;
    std::fprintf(stderr, "%s: %s\n", error.what.c_str(), error.reason.c_str());
    std::abort();
}

/// The drawings' document: of a folder that FOM_ART names, or of what the package openclipart-svg installs.
const PaintDocument& Art() {
    static command::Importer& importer = *[] {
        auto* made = new command::Importer;
        const char* folder = std::getenv("FOM_ART");
        host::Error error;
        const command::FileList list = command::ListDrawings({folder ? folder : "/usr/share/openclipart"});
        for (std::size_t i = 0; i < list.files.size(); ++i)
            made->ImportFile(list.files[i], error, list.names[i]);
        return made;
    }();
    return importer.Document();
}

/// Its file.
const fs::path& ArtFile() {
    static const fs::path file = [] {
        fs::path path = Folder() / "art.fomdoc";
        host::Error error;
        Require(SaveDocument(Art(), path, DocumentVersion::Current, error), error);
        return path;
    }();
    return file;
}

void CountBytes(benchmark::State& state) {
    const auto size = static_cast<std::int64_t>(fs::file_size(ArtFile()));
    state.SetBytesProcessed(size * static_cast<std::int64_t>(state.iterations()));
}

void SaveArt(benchmark::State& state) {
    const fs::path path = ArtFile().parent_path() / "saved.fomdoc";
    host::Error error;
    for (auto _ : state)
        Require(SaveDocument(Art(), path, DocumentVersion::Current, error), error);
    CountBytes(state);
}
BENCHMARK(SaveArt)->UseRealTime();

void LoadArt(benchmark::State& state) {
    host::Error error;
    for (auto _ : state) {
        auto document = command::LoadDocument(ArtFile(), error);
        Require(document.has_value(), error);
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    CountBytes(state);
}
BENCHMARK(LoadArt)->UseRealTime();

void CopyArt(benchmark::State& state) {
    const fs::path path = ArtFile().parent_path() / "copied.fomdoc";
    std::vector<char> piece(std::size_t{1} << 16);
    for (auto _ : state) {
        std::FILE* const from = std::fopen(ArtFile().c_str(), "rb");
        std::FILE* const to = std::fopen(path.c_str(), "wb");
        if (!from || !to) return state.SkipWithError("the file cannot be copied");
        while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), from))
            std::fwrite(piece.data(), 1, got, to);
        std::fflush(to);
        fsync(fileno(to));
        std::fclose(from);
        std::fclose(to);
    }
    CountBytes(state);
}
BENCHMARK(CopyArt)->UseRealTime();

/// A document in memory: so many shapes, of 10,000 fills.
std::unique_ptr<MemoryFileStream> Made(std::size_t shapes) {
    constexpr unsigned kFills = 10000;
    PaintDocument document;
    for (std::size_t i = 0; i < shapes; ++i) {
        if (i >= kFills) {
            document.AddShape(document.Shape(i % kFills).fill);
            continue;
        }
        CGE_FILL fill(FillUniform);
        fill.EditUniform().color.MakeSpot(static_cast<unsigned>(i), 100);
        document.AddShape(new WRefCountFill(&fill), document.Pool());
    }
    command::SourceDrawing drawing;
    drawing.name = "made.svg";
    drawing.shapes = shapes;
    document.AddDrawing(std::move(drawing));
    auto stream = std::make_unique<MemoryFileStream>();
    host::Error error;
    Require(WriteDocument(document, *stream, DocumentVersion::Current, error), error);
    return stream;
}

void LoadShapes(benchmark::State& state) {
    const auto stream = Made(static_cast<std::size_t>(state.range(0)));
    host::Error error;
    for (auto _ : state) {
        stream->Rewind();
        auto document = command::ReadDocument(*stream, error);
        Require(document.has_value(), error);
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(LoadShapes)->Arg(100000)->Arg(300000)->Arg(1000000);

std::vector<bench::Row> Rows() {
    std::vector<bench::Row> rows;
    for (const auto& [label, count] : {std::pair("3e5", 300000), {"1e6", 1000000}})
        rows.push_back({.label = std::string("load a shape of ") + label + "; of 1e5",
                        .ours = "LoadShapes/" + std::to_string(count),
                        .rival = "LoadShapes/100000",
                        .reach = 1.2,
                        .operations = static_cast<double>(count),
                        .rivalOperations = 100000});
    if (Art().ShapeCount() == 0) return rows;
    const double megabytes = static_cast<double>(fs::file_size(ArtFile())) / 1e6;
    for (const char* work : {"Save", "Load"})
        rows.push_back({.label = std::string(work) + " a megabyte; copy it",
                        .ours = std::string(work) + "Art/real_time",
                        .rival = "CopyArt/real_time",
                        .reach = 0,
                        .operations = megabytes});
    return rows;
}

}  // namespace

int main(int argc, char** argv) {
    return bench::RunAndCompare(argc, argv, Rows());
}
