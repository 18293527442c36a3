#include "fom/import_report.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "fom/grouped.h"
#include "fom/report_rows.h"

namespace command {
namespace {

std::string DescribeKinds(const std::map<std::string, std::size_t>& kinds) {
    std::string text;
    for (const auto& [name, count] : kinds) {
        if (!text.empty()) text += ", ";
        text.append(Grouped(count)).append(" ").append(name);
    }
    return text;
}

void AppendOmissions(std::string& out, const ImportReport& report) {
    if (report.omissions.empty()) return;
    std::vector<std::pair<std::string, std::size_t>> rows(report.omissions.begin(), report.omissions.end());
    std::stable_sort(rows.begin(), rows.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    out += "\nnot carried over\n";
    for (const auto& [name, count] : rows)
        out.append("  ").append(name).append(": ").append(Grouped(count)) += '\n';
}

}  // namespace

const char* FillKindName(CgeFillType kind) noexcept {
    switch (kind) {
        case FillNone:
            return "none";
        case FillUniform:
            return "uniform";
        case FillFountain:
            return "fountain";
        case FillPostScript:
            return "PostScript";
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return "mono bitmap";
        case FillColorBitmap:
            return "colour bitmap";
        case FillVector:
            return "vector";
        case FillTexture:
            return "texture";
        case FillHatch:
            return "hatch";
    }
    return "unknown";
}

const char* PenKindName(CgeOutlineType kind) noexcept {
    switch (kind) {
        case OutlineNone:
            return "none";
        case OutlineSolid:
            return "solid";
        case OutlineDotDash:
            return "dot-dash";
        case OutlineWideline:
            return "wideline";
    }
    return "unknown";
}

ImportReport MakeReport(const Importer& importer) {
    ImportReport report;
    const ImportTally& tally = importer.Tally();
    report.shapes = importer.Document().ShapeCount();
    importer.Document().Pool()->Enumerate([&report](const WRefCountFill* fill) {
        ++report.distinctFills;
        ++report.kinds[FillKindName(fill->GetFillType())];
        return true;
    });
    importer.Document().OutlinePool().Enumerate([&report](const WRefCountOutline* outline) {
        const CGE_OUTLINE& record = *outline->GetCGEOutline();
        ++report.distinctOutlines;
        ++report.penKinds[PenKindName(static_cast<CgeOutlineType>(record.type & 15))];
        if (record.leftArrow || record.rightArrow) ++report.arrowOutlines;
        report.strokedShapes += static_cast<std::size_t>(outline->GetReference());
        return true;
    });
    report.paintTexts = tally.texts.Count();
    report.paintColors = tally.texts.Colors();
    report.paintReferences = tally.texts.References();
    report.unusedDefinitions = tally.unusedDefinitions;
    report.filledStrokes = tally.filledStrokes;
    if (tally.fillBytes > 0 && report.distinctFills > 0)
        report.bytesPerFill = double(tally.fillBytes) / double(report.distinctFills);
    if (tally.outlineBytes > 0 && report.distinctOutlines > 0)
        report.bytesPerOutline = double(tally.outlineBytes) / double(report.distinctOutlines);
    report.omissions.insert(tally.omissions.Counts().begin(), tally.omissions.Counts().end());
    return report;
}

std::string ToText(const ImportReport& report) {
    std::string out;
    AppendRow(out, "files", Grouped(report.files),
              report.failedFiles == 0 ? std::string() : Grouped(report.failedFiles) + " failed");
    AppendRow(out, "shapes", Grouped(report.shapes));
    AppendRow(out, "paint texts", Grouped(report.paintTexts),
              Grouped(report.paintColors) + " colours, " + Grouped(report.paintReferences) + " references");
    AppendRow(out, "distinct fills", Grouped(report.distinctFills), DescribeKinds(report.kinds));
    AppendRow(out, "shapes per fill", Fixed(report.Sharing(), "%.2f"));
    AppendRow(out, "unused definitions", Grouped(report.unusedDefinitions));
    if (report.bytesPerFill) AppendRow(out, "heap bytes per fill", Fixed(*report.bytesPerFill, "%.0f"));
    AppendRow(out, "stroked shapes", Grouped(report.strokedShapes),
              report.filledStrokes == 0 ? "" : Grouped(report.filledStrokes) + " by gradients and patterns");
    AppendRow(out, "distinct outlines", Grouped(report.distinctOutlines), DescribeKinds(report.penKinds));
    AppendRow(out, "shapes per outline", Fixed(report.OutlineSharing(), "%.2f"));
    AppendRow(out, "with arrowheads", Grouped(report.arrowOutlines));
    if (report.bytesPerOutline)
        AppendRow(out, "heap bytes per outline", Fixed(*report.bytesPerOutline, "%.0f"));
    AppendRow(out, "seconds", Fixed(report.seconds, "%.2f"));
    AppendOmissions(out, report);
    return out;
}

}  // namespace command
