#include "fom/demo_result.h"

#include <algorithm>
#include <tuple>

namespace command {
namespace {

double Share(std::size_t part, std::size_t whole) noexcept {
    return whole == 0 ? 0 : double(part) / double(whole);
}

/// Ascending for what comes first.
auto Rank(const DemoDrawing& drawing) noexcept {
    const PictureDifference& difference = drawing.difference;
    return std::tuple(drawing.outcome, -Share(difference.excess, difference.pixels),
                      -Share(difference.differing, difference.pixels), -int(difference.worst));
}

}  // namespace

const char* OutcomeName(Outcome outcome) noexcept {
    switch (outcome) {
        case Outcome::Failed:
            return "failed";
        case Outcome::Outside:
            return "outside";
        case Outcome::Within:
            return "within";
        case Outcome::NotDrawn:
            return "notDrawn";
        case Outcome::Identical:
            return "identical";
    }
    return "unknown";
}

void SortByDifference(std::vector<DemoDrawing>& drawings) {
    std::sort(drawings.begin(), drawings.end(), [](const DemoDrawing& a, const DemoDrawing& b) {
        const auto rankA = Rank(a), rankB = Rank(b);
        return rankA != rankB ? rankA < rankB : a.name < b.name;
    });
}

DemoTotals Sum(const std::vector<DemoDrawing>& drawings) {
    DemoTotals totals;
    for (const DemoDrawing& drawing : drawings) {
        ++totals.outcomes[static_cast<std::size_t>(drawing.outcome)];
        if (drawing.IsUnexplained()) ++totals.unexplained;
        totals.painted += drawing.painted;
        for (const std::string& name : drawing.kept)
            ++totals.kept[name];
        if (drawing.outcome != Outcome::Outside && drawing.outcome != Outcome::Within) continue;
        for (const std::string& reason : drawing.reasons) {
            DemoTotals::Reason& total = totals.reasons[reason];
            ++(drawing.outcome == Outcome::Outside ? total.outside : total.within);
        }
    }
    return totals;
}

bool HasPassed(const DemoResult& result, const DemoTotals& totals) noexcept {
    return result.notRead == 0 && totals.Compared() > 0 && totals.Of(Outcome::Failed) == 0 &&
           totals.unexplained == 0 && result.selfCheck.passed;
}

}  // namespace command
