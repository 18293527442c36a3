#include "fom/demo_compare.h"

#include <fstream>
#include <optional>
#include <span>
#include <stdexcept>

#include "host/base/atomic_file.h"

#include "fom/path_text.h"
#include "fom/surface_png.h"

namespace command {
namespace {

namespace fs = std::filesystem;

/// Made again at will, so that there is no need to wait for the disk.
void WritePicture(const fs::path& path, std::span<const std::byte> png) {
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
    stream.close();
    if (!stream) throw std::runtime_error(PathText(path) + " cannot be written");
}

bool AreEqualFiles(const fs::path& a, const fs::path& b) {
    host::Error ignored;
    const auto bytesA = host::ReadWholeFile(a, ignored), bytesB = host::ReadWholeFile(b, ignored);
    return bytesA && bytesB && *bytesA == *bytesB;
}

Outcome OutcomeOf(const PictureDifference& difference) {
    if (difference.IsIdentical()) return Outcome::Identical;
    return difference.IsWithin() ? Outcome::Within : Outcome::Outside;
}

}  // namespace

void WritePictures(const Rendering& before, const Rendering& after, const std::string& name,
                   const fs::path& folder) {
    WritePicture(folder / (name + "-before.png"), before.png);
    WritePicture(folder / (name + "-after.png"), after.png);
    const SurfacePointer difference = DrawDifference(*before.picture, *after.picture);
    const std::optional<std::vector<std::byte>> png = EncodePng(*difference);
    if (!png) throw std::runtime_error("the picture of a difference cannot be encoded");
    WritePicture(folder / (name + "-difference.png"), *png);
}

void CompareDrawing(const fs::path& original, const fs::path& rewrite, const std::string& name,
                    const CompareOptions& options, DemoDrawing& drawing) {
    const auto end = [&drawing](Outcome outcome, std::string fault) {
        drawing.outcome = outcome;
        drawing.fault = std::move(fault);
    };
    if (drawing.shapes > 0 && AreEqualFiles(original, rewrite))
        return end(Outcome::Failed, "the rewrite is the original text");
    const Rendering before = RenderDrawing(original, options.size);
    if (!before.picture) return end(Outcome::NotDrawn, before.fault);
    const Rendering after = RenderDrawing(rewrite, options.size);
    if (!after.picture) return end(Outcome::Failed, "the rewrite is not drawn: " + after.fault);
    drawing.difference = ComparePictures(*before.picture, *after.picture);
    drawing.outcome = OutcomeOf(drawing.difference);
    if (!drawing.difference.sameSize) return end(Outcome::Failed, "the pictures have different sizes");
    if (drawing.outcome == Outcome::Identical) {
        if (!options.keepsIdentical) return;
        WritePicture(options.pictures / (name + "-before.png"), before.png);
    } else {
        WritePictures(before, after, name, options.pictures);
    }
    drawing.pictures = name;
}

}  // namespace command
