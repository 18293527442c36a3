#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fom/picture_difference.h"

namespace command {

/// What the comparison of a drawing with its rewrite came to; in the order of their weight.
enum class Outcome : unsigned char {
    Failed,    ///< no rewrite, none that can be drawn, or one that is the original text
    Outside,   ///< of the tolerance
    Within,    ///< the tolerance, and not the same
    NotDrawn,  ///< the renderer does not draw the original: nothing to compare with
    Identical  ///< every channel of every pixel
};
inline constexpr std::size_t kOutcomes = 5;

/// "failed", "outside", …
const char* OutcomeName(Outcome outcome) noexcept;

/// One drawing of the demo.
struct DemoDrawing {
    std::string name;  ///< as in the document
    std::size_t shapes = 0;
    std::size_t painted = 0;  ///< shapes with paints from the document
    Outcome outcome = Outcome::Failed;
    PictureDifference difference;
    /// Names of what fills and outlines, or SVG, cannot say of it, as far as that shows.
    std::set<std::string> reasons;
    /// Names of what it kept of its own, so that nothing of the document was seen there.
    std::set<std::string> kept;
    /// Why it failed or is not drawn.
    std::string fault;
    /// What its pictures' names begin with; empty without any. Identical ones have one picture.
    std::string pictures;

    bool IsUnexplained() const noexcept { return outcome == Outcome::Outside && reasons.empty(); }
};

/// Whether the comparison would notice a wrong paint: one was damaged to see.
struct SelfCheck {
    bool passed = false;
    std::string drawing;
    /// What was done, or why nothing could be.
    std::string text;
    PictureDifference difference;
    std::string pictures;
};

/// All that a demo found.
struct DemoResult {
    /// Largest difference first, once they are sorted.
    std::vector<DemoDrawing> drawings;
    std::size_t found = 0;    ///< drawings in the folders, those outside the sample too
    std::size_t notRead = 0;  ///< paths and drawings that cannot be read, each told on the console
    std::size_t size = 0;     ///< longer side of the pictures, in pixels
    std::size_t shapes = 0;
    std::size_t distinctFills = 0;
    std::size_t distinctOutlines = 0;
    std::uint64_t documentBytes = 0;
    SelfCheck selfCheck;
    /// Steps in their order.
    std::vector<std::pair<std::string, double>> seconds;
};

/// Sums over the drawings.
struct DemoTotals {
    struct Reason {
        std::size_t outside = 0, within = 0;  ///< drawings
    };

    std::size_t outcomes[kOutcomes] = {};
    std::size_t unexplained = 0;
    std::size_t painted = 0;  ///< shapes with paints from the document
    std::map<std::string, Reason> reasons;
    /// Drawings that kept something of their own, by its name.
    std::map<std::string, std::size_t> kept;

    std::size_t Of(Outcome outcome) const noexcept { return outcomes[static_cast<std::size_t>(outcome)]; }
    /// Drawings of which both pictures were compared.
    std::size_t Compared() const noexcept {
        return Of(Outcome::Outside) + Of(Outcome::Within) + Of(Outcome::Identical);
    }
    /// Identical ones included, 0 to 1.
    double ShareWithin() const noexcept {
        const std::size_t compared = Compared();
        return compared == 0 ? 0 : double(compared - Of(Outcome::Outside)) / double(compared);
    }
};

/// By weight, then by how much differs, then by name.
void SortByDifference(std::vector<DemoDrawing>& drawings);
DemoTotals Sum(const std::vector<DemoDrawing>& drawings);
/// Whether everything that should hold does: all drawings were read, something was compared, nothing failed,
/// every difference has a reason, and the self-check passed.
bool HasPassed(const DemoResult& result, const DemoTotals& totals) noexcept;

}  // namespace command
