#include "fom/document_inspect.h"

#include <cstdio>

#include "fom/document_walk.h"
#include "fom/grouped.h"
#include "fom/kind_counts.h"
#include "fom/record_facts.h"

namespace command {
namespace {

const char* ContentName(std::uint32_t tag) noexcept {
    switch (tag) {
        case kFillsTag:
            return "fills";
        case kOutlinesTag:
            return "outlines";
        case kDrawingsTag:
            return "drawings";
        case kShapesTag:
            return "shapes";
        case kEndTag:
            return "the end";
        default:
            return "unknown";
    }
}

/// Tells what was asked for while the blocks go by.
class Inspector {
public:
    Inspector(const InspectChoice& choice, DocumentVersion version, Facts& facts)
        : m_choice(choice), m_version(version), m_facts(facts), m_kinds(version) {
        if (choice.IsOfBlocks()) {
            m_visitor.entry = [this](const StoredEntry& entry) { m_kinds.Count(entry); };
            m_visitor.drawing = [this](const StoredDrawing&) { ++m_drawings; };
        } else {
            m_visitor.entry = [this](const StoredEntry& entry) { ShowEntry(entry); };
            m_visitor.drawing = [this](const StoredDrawing& drawing) { ShowDrawing(drawing); };
        }
        m_visitor.shapes = [this](const StoredShapes& shapes) { VisitShapes(shapes); };
    }

    bool Walk(const Block& block, host::Error& fault) {
        BlockRun run;
        const bool isWhole = WalkBlock(block, m_visitor, run, fault);
        AddBlock(block, run, isWhole ? "" : "faulty");
        return isWhole;
    }
    void AddBlock(const Block& block, const BlockRun& run, const char* state) {
        if (!m_choice.IsOfBlocks()) return;
        Facts& row = m_facts.AddRow("blocks");
        row.Add("offset", block.offset);
        row.Add("tag", TagName(block.tag));
        row.Add("bytes", block.payload.size() + kBlockFrame);
        row.Add("holds", ContentName(block.tag));
        row.Add("first", run.first, run.count == 0 ? "-" : "");
        row.Add("count", run.count);
        row.Add("state", *state ? state : "whole");
    }
    /// False when what was asked for was not there.
    bool Finish() {
        if (!m_choice.IsOfBlocks()) return m_found;
        m_kinds.AddFills(m_facts.AddGroup("fills"));
        m_kinds.AddOutlines(m_facts.AddGroup("outlines"));
        m_facts.Add("drawings", m_drawings);
        m_facts.Add("shapes", m_shapes);
        return true;
    }

private:
    void ShowEntry(const StoredEntry& stored) {
        if (stored.number != (stored.isFill ? m_choice.fill : m_choice.outline)) return;
        m_found = true;
        stored.isFill ? AddFillFacts(stored, m_version, m_facts)
                      : AddOutlineFacts(stored, m_version, m_facts);
        if (m_choice.hex) AddHexFacts(stored.record, stored.offset, m_facts);
    }

    void ShowDrawing(const StoredDrawing& stored) {
        if (stored.drawing.name != m_choice.drawing) return;
        m_found = true;
        m_first = stored.firstShape;
        m_end = m_first + stored.drawing.shapes;
        AddDrawingFacts(stored, m_facts);
    }

    void VisitShapes(const StoredShapes& stored) {
        m_shapes += stored.run.count;
        std::uint32_t strokeFill = 0;
        for (std::uint32_t i = 0; i < stored.run.count; ++i) {
            const std::uint64_t number = std::uint64_t{stored.run.first} + i;
            while (strokeFill < stored.StrokeFillCount() && stored.StrokeFill(strokeFill).shape < i)
                ++strokeFill;
            if (number >= m_first && number < m_end) ShowShape(stored, i, number, strokeFill);
        }
    }

    /// The fill of its stroke is at `strokeFill`, if it has one.
    void ShowShape(const StoredShapes& stored, std::uint32_t index, std::uint64_t number,
                   std::uint32_t strokeFill) {
        const StoredShape shape = stored.Shape(index);
        Facts& row = m_facts.AddRow("shapeRecords");
        row.Add("shape", number);
        row.Add("offset", stored.offset + std::uint64_t{index} * kShapeSize);
        const auto add = [&row](const char* name, std::uint32_t reference) {
            row.Add(name, reference == 0 ? std::string("none") : Grouped(reference - 1));
        };
        add("fill", shape.fill);
        add("outline", shape.outline);
        row.Add("matrix", MatrixText(stored, shape.matrix));
        const bool hasStrokeFill =
            strokeFill < stored.StrokeFillCount() && stored.StrokeFill(strokeFill).shape == index;
        const StoredStrokeFill stroke = hasStrokeFill ? stored.StrokeFill(strokeFill) : StoredStrokeFill();
        add("strokeFill", stroke.fill);
        row.Add("strokeMatrix", hasStrokeFill ? MatrixText(stored, stroke.matrix) : "none");
    }

    static std::string MatrixText(const StoredShapes& stored, std::uint32_t number) {
        if (number == 0 || number > stored.MatrixCount()) return number == 0 ? "identity" : "missing";
        const MATRIX m = stored.Matrix(number);
        char text[160];
        std::snprintf(text, sizeof text, "%.9g %.9g %.9g %.9g %.9g %.9g", m.a, m.b, m.c, m.d, m.tx, m.ty);
        return text;
    }

    const InspectChoice& m_choice;
    DocumentVersion m_version;
    Facts& m_facts;
    BlockVisitor m_visitor;
    KindCounts m_kinds;
    std::uint64_t m_drawings = 0, m_shapes = 0;
    std::uint64_t m_first = 0, m_end = 0;  // shapes of the drawing
    bool m_found = false;
};

}  // namespace

bool InspectDocument(AbstractFileStream& stream, const InspectChoice& choice, Facts& facts,
                     host::Error& fault) {
    BlockReader reader(stream);
    facts.Add("fileBytes", reader.Remaining());
    const std::optional<DocumentVersion> version = reader.ReadHead(fault);
    if (!version) return false;
    facts.Add("formatVersion", kFormatVersion);
    facts.Add("documentVersion", static_cast<std::uint32_t>(*version), VersionName(*version));
    Inspector inspector(choice, *version, facts);
    std::optional<host::Error> first;
    Block block;
    for (auto result = BlockReader::Result::Block;
         result != BlockReader::Result::Broken &&
         !(result == BlockReader::Result::Block && block.tag == kEndTag);) {
        host::Error found;
        result = reader.Next(block, found);
        if (result == BlockReader::Result::Damaged) inspector.AddBlock(block, {}, "damaged");
        const bool isWhole = result == BlockReader::Result::Block && inspector.Walk(block, found);
        if (!isWhole && !first) first = std::move(found);
    }
    if (!first && reader.Remaining() != 0)
        first = DocumentFault(reader.Offset(), "something follows the end block");
    const bool isThere = inspector.Finish();
    if (!first && !isThere) first = DocumentFault(0, "there is no such thing in the document");
    if (!first) return true;
    fault = *std::move(first);
    return false;
}

}  // namespace command
