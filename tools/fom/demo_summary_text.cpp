#include "fom/demo_summary.h"
#include "fom/grouped.h"
#include "fom/report_rows.h"

namespace command {
namespace {

std::string Percent(std::size_t part, std::size_t whole) {
    return whole == 0 ? std::string() : Fixed(100 * double(part) / double(whole), "%.2f %%");
}

void AppendDocument(std::string& out, const DemoResult& result, const DemoTotals& totals) {
    AppendRow(out, "shapes", Grouped(result.shapes),
              Grouped(totals.painted) + " painted from the document alone");
    AppendRow(out, "distinct fills", Grouped(result.distinctFills));
    AppendRow(out, "distinct outlines", Grouped(result.distinctOutlines));
    std::string each;
    if (result.shapes > 0)
        each = Fixed(double(result.documentBytes) / double(result.shapes), "%.1f for each shape");
    AppendRow(out, "bytes of the document", Grouped(result.documentBytes), each);
}

void AppendOutcomes(std::string& out, const DemoTotals& totals) {
    const std::size_t compared = totals.Compared();
    const std::size_t within = compared - totals.Of(Outcome::Outside);
    AppendRow(out, "compared", Grouped(compared));
    AppendRow(out, "identical", Grouped(totals.Of(Outcome::Identical)),
              Percent(totals.Of(Outcome::Identical), compared));
    AppendRow(out, "within the tolerance", Grouped(within), Percent(within, compared));
    AppendRow(out, "outside", Grouped(totals.Of(Outcome::Outside)),
              Grouped(totals.unexplained) + " without a reason");
    AppendRow(out, "not drawn", Grouped(totals.Of(Outcome::NotDrawn)), "by the renderer");
    AppendRow(out, "failed", Grouped(totals.Of(Outcome::Failed)));
}

void AppendReasons(std::string& out, const DemoTotals& totals) {
    if (!totals.reasons.empty()) out += "\nreasons, by drawings outside and within\n";
    for (const auto& [name, count] : totals.reasons)
        out += "  " + name + ": " + Grouped(count.outside) + ", " + Grouped(count.within) + "\n";
    if (!totals.kept.empty()) out += "\nnot from the document, by drawings\n";
    for (const auto& [name, count] : totals.kept)
        out += "  " + name + ": " + Grouped(count) + "\n";
}

}  // namespace

std::string ToText(const DemoResult& result) {
    const DemoTotals totals = Sum(result.drawings);
    std::string out;
    AppendRow(out, "drawings", Grouped(result.drawings.size()), "of " + Grouped(result.found));
    if (result.notRead > 0) AppendRow(out, "not read", Grouped(result.notRead));
    AppendDocument(out, result, totals);
    AppendOutcomes(out, totals);
    AppendRow(out, "self-check", result.selfCheck.passed ? "passed" : "NOT PASSED", result.selfCheck.text);
    double all = 0;
    std::string steps;
    for (const auto& [step, seconds] : result.seconds) {
        all += seconds;
        steps.append(steps.empty() ? "" : ", ").append(step).append(Fixed(seconds, " %.1f"));
    }
    AppendRow(out, "seconds", Fixed(all, "%.1f"), steps);
    AppendReasons(out, totals);
    return out;
}

}  // namespace command
