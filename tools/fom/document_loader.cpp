#include "fom/document_loader.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "fom/grouped.h"
#include "fom/serialization.h"
#include "fom/stored_drawing.h"

namespace command {
namespace {

constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max() - 1;

/// Gives back the references that loading took.
template <class List, class Slots>
void Release(List& pool, Slots& slots) {
    for (const auto& slot : std::exchange(slots, {}))
        pool.RemoveInstance(slot.entry);
}

}  // namespace

DocumentLoader::DocumentLoader(DocumentVersion version) {
    m_stream.RegisterDocumentVersion(static_cast<std::uint32_t>(version));
}

DocumentLoader::~DocumentLoader() {
    FOMGREndLoad(m_stream);
}

bool DocumentLoader::Take(const Block& block, host::Error& fault) {
    PayloadReader reader(block, fault);
    switch (block.tag) {
        case kFillsTag:
            return TakeEntries(reader, m_fills, *m_document.Pool(), m_missing.fills, kSmallestFill, "fill");
        case kOutlinesTag:
            return TakeEntries(reader, m_outlines, m_document.OutlinePool(), m_missing.outlines,
                               kSmallestOutline, "outline");
        case kDrawingsTag:
            return TakeDrawings(reader);
        case kShapesTag:
            return TakeShapes(reader);
        case kEndTag:
            return TakeEnd(reader);
        default:
            return reader.Fail(block.offset, "unknown block " + TagName(block.tag));
    }
}

/// Whether a run may come after `have` others, those that are missing included.
bool DocumentLoader::Resume(PayloadReader& reader, std::uint64_t offset, const BlockRun& run,
                            std::size_t have, std::size_t smallest, std::uint32_t& missing,
                            const char* what) {
    const bool mayBeMissing = run.first >= have && (missing + run.first - have) * smallest <= m_lost;
    if (run.first != have && !mayBeMissing)
        return reader.Fail(offset, std::string("the block begins with ") + what + " " + Grouped(run.first) +
                                       " instead of " + Grouped(have));
    if (have + run.count > kMost) return reader.Fail(offset, "too many of kind " + std::string(what));
    missing += run.first - static_cast<std::uint32_t>(have);
    return true;
}

template <class Entry, class List>
bool DocumentLoader::TakeEntries(PayloadReader& reader, std::vector<Slot<Entry>>& slots, List& pool,
                                 std::uint32_t& missing, std::size_t smallest, const char* what) {
    BlockRun run;
    const std::uint64_t start = reader.Offset();
    if (!reader.Read(run.first, run.count) ||
        !Resume(reader, start, run, slots.size(), smallest, missing, what))
        return false;
    slots.resize(run.first);
    for (; run.count != 0; --run.count) {
        const std::uint64_t offset = reader.Offset();
        const auto fail = [&](const char* why) {
            return reader.Fail(offset, std::string(what) + " " + Grouped(slots.size()) + " " + why);
        };
        std::uint32_t length = 0;
        std::span<const std::uint8_t> record;
        if (!reader.Read(length)) return false;
        if (length < smallest - sizeof length) return fail("has too short a record");
        if (length > reader.Remaining()) return fail("reaches beyond its block");
        if (!reader.ReadBytes(length, record)) return false;
        m_stream.Show(record);
        auto entry = std::make_unique<Entry>(false);
        entry->ReadFrom(m_stream);
        if (!m_stream.IsGood()) return fail("is damaged");
        if (m_stream.GetRemaining() != 0) return fail("does not fill its record");
        slots.emplace_back();
        slots.back().entry = pool.AddOrGetDuplicate(entry.get(), &m_stream);
        static_cast<void>(entry.release());
    }
    return reader.Ends();
}

bool DocumentLoader::TakeDrawings(PayloadReader& reader) {
    BlockRun run;
    std::uint32_t shape = 0;
    const std::uint64_t start = reader.Offset();
    const std::size_t have = m_nextDrawing;
    if (!reader.Read(run.first, run.count, shape)) return false;
    const bool mayBeMissing = run.first > have && shape >= m_announced;
    if (!Resume(reader, start, run, have, kSmallestDrawing, m_missing.drawings, "drawing")) return false;
    if (shape != m_announced && !mayBeMissing)
        return reader.Fail("the drawings begin with shape " + Grouped(shape) + " instead of " +
                           Grouped(m_announced));
    m_nextDrawing = run.first;
    if (shape != m_announced) AddPlaceholder(shape - m_announced);
    for (; run.count != 0; --run.count)
        if (!TakeDrawing(reader)) return false;
    return reader.Ends();
}

bool DocumentLoader::TakeDrawing(PayloadReader& reader) {
    const std::uint64_t offset = reader.Offset();
    SourceDrawing drawing;
    if (!ReadDrawing(reader, drawing)) return false;
    if (m_announced + drawing.shapes > kMost) return reader.Fail(offset, "too many shapes");
    if (m_names.Take(drawing.name) != drawing.name)
        return reader.Fail(offset, "two drawings are called '" + drawing.name + "'");
    m_announced += drawing.shapes;
    ++m_nextDrawing;
    m_drawings.push_back(std::move(drawing));
    return true;
}

/// For drawings that are missing; it has no name yet.
void DocumentLoader::AddPlaceholder(std::uint64_t shapes) {
    SourceDrawing drawing;
    drawing.shapes = static_cast<std::size_t>(shapes);
    m_drawings.push_back(std::move(drawing));
    m_announced += shapes;
}

bool DocumentLoader::TakeShapes(PayloadReader& reader) {
    StoredShapes stored;
    const std::uint64_t offset = reader.Offset();
    const std::size_t have = m_document.ShapeCount();
    if (!ReadShapes(reader, stored)) return false;
    if (!Resume(reader, offset, stored.run, have, kShapeSize, m_missing.shapes, "shape")) return false;
    if (m_lost == 0 && have + stored.run.count > m_announced)
        return reader.Fail(offset, "there are more shapes than the drawings have");
    AddUnpainted(stored.run.first);
    for (std::uint32_t i = 0; i < stored.run.count; ++i)
        if (!TakeShape(reader, stored, i)) return false;
    for (std::uint32_t i = 0; i < stored.StrokeFillCount(); ++i)
        if (!TakeStrokeFill(reader, stored, i)) return false;
    return true;
}

bool DocumentLoader::TakeShape(PayloadReader& reader, const StoredShapes& stored, std::uint32_t index) {
    const StoredShape shape = stored.Shape(index);
    const auto refersTo = [&](const char* what) {
        return reader.Fail(
            stored.offset + std::uint64_t{index} * kShapeSize,
            "shape " + Grouped(m_document.ShapeCount()) + " refers to " + what + " that is not there");
    };
    if (shape.matrix > stored.MatrixCount()) return refersTo("a matrix");
    if (m_lost == 0 && shape.fill > m_fills.size()) return refersTo("a fill");
    if (m_lost == 0 && shape.outline > m_outlines.size()) return refersTo("an outline");
    AddShape(shape.fill, shape.outline, stored.Matrix(shape.matrix));
    return true;
}

/// For a shape of the block, all of which are there.
bool DocumentLoader::TakeStrokeFill(PayloadReader& reader, const StoredShapes& stored, std::uint32_t index) {
    const StoredStrokeFill stroke = stored.StrokeFill(index);
    const auto fail = [&](const std::string& reason) {
        return reader.Fail(stored.offset + stored.shapes.size() + std::uint64_t{index} * kStrokeFillSize,
                           reason);
    };
    const std::uint64_t least = index == 0 ? 0 : std::uint64_t{stored.StrokeFill(index - 1).shape} + 1;
    if (stroke.shape < least || stroke.shape >= stored.run.count)
        return fail("the fills of strokes are not in the order of the block's shapes");
    const std::string of = "the stroke of shape " + Grouped(std::uint64_t{stored.run.first} + stroke.shape);
    if (stored.Shape(stroke.shape).outline == 0) return fail(of + " has a fill and no outline");
    if (stroke.matrix > stored.MatrixCount()) return fail(of + " refers to a matrix that is not there");
    if (stroke.fill == 0 || (m_lost == 0 && stroke.fill > m_fills.size()))
        return fail(of + " refers to a fill that is not there");
    AddStrokeFill(m_document.Shape(std::size_t{stored.run.first} + stroke.shape), stroke.fill,
                  stored.Matrix(stroke.matrix));
    return true;
}

/// Numbers from 1. Handles of an entry are copies of the first one, which is quicker than making them.
void DocumentLoader::AddShape(std::uint32_t fill, std::uint32_t outline, const MATRIX& matrix) {
    const auto number = static_cast<std::uint32_t>(m_document.ShapeCount() + 1);
    Slot<WRefCountFill>* const filled = FindSlot(m_fills, fill);
    Slot<WRefCountOutline>* const stroked = FindSlot(m_outlines, outline);
    m_document.ReserveShape();
    WFillHandle& added =
        !filled         ? m_document.AddShape(false, m_document.Pool())
        : filled->shape ? m_document.AddShape(m_document.Shape(filled->shape - 1).fill)
                        : m_document.AddShape(const_cast<WRefCountFill*>(filled->entry), m_document.Pool());
    added.SetTilingMatrix(matrix);
    if (filled && !filled->shape) filled->shape = number;
    if ((fill != 0 && !filled) || (outline != 0 && !stroked)) ++m_unpainted;
    if (!stroked) return;
    m_document.LastShape().outline =
        stroked->shape
            ? m_document.Shape(stroked->shape - 1).outline
            : WOutlineHandle(const_cast<WRefCountOutline*>(stroked->entry), &m_document.OutlinePool());
    if (!stroked->shape) stroked->shape = number;
}

/// A stroke whose fill is missing has the outline's colour; one whose outline is missing is none.
void DocumentLoader::AddStrokeFill(ShapePaints& shape, std::uint32_t fill, const MATRIX& matrix) {
    if (!shape.outline.GetRefCountOutline()) return;
    const Slot<WRefCountFill>* const slot = FindSlot(m_fills, fill);
    if (!slot) {
        ++m_unpainted;
        return;
    }
    shape.strokeFill =
        std::make_unique<WFillHandle>(const_cast<WRefCountFill*>(slot->entry), m_document.Pool());
    shape.strokeFill->SetTilingMatrix(matrix);
}

bool DocumentLoader::TakeEnd(PayloadReader& reader) {
    DocumentCounts end;
    if (!reader.Read(end.fills, end.outlines, end.drawings, end.shapes) || !reader.Ends()) return false;
    const DocumentCounts have = Counts();
    if (m_lost == 0 && end != have) return reader.Fail("the end counts something else than there is");
    if (m_lost == 0 && m_announced != have.shapes)
        return reader.Fail("there are fewer shapes than the drawings have");
    AddMissingShapes(end.shapes);
    m_end = end;
    return true;
}

void DocumentLoader::AddUnpainted(std::uint64_t count) {
    while (m_document.ShapeCount() < count)
        AddShape(0, 0, {});
}

/// Those of the end, which no block shows to be missing, if that many can have been in what is lost.
void DocumentLoader::AddMissingShapes(std::uint32_t count) {
    const std::size_t have = m_document.ShapeCount();
    if (count <= have || (m_missing.shapes + count - have) * kShapeSize > m_lost) return;
    AddUnpainted(count);
    m_missing.shapes += count - static_cast<std::uint32_t>(have);
}

DocumentCounts DocumentLoader::Counts() const noexcept {
    return {static_cast<std::uint32_t>(m_fills.size()), static_cast<std::uint32_t>(m_outlines.size()),
            m_nextDrawing, static_cast<std::uint32_t>(m_document.ShapeCount())};
}

std::vector<std::string> DocumentLoader::DescribeMissing() const {
    const DocumentCounts have = Counts();
    DocumentCounts said = m_end.value_or(have);
    said.shapes = std::max(said.shapes, static_cast<std::uint32_t>(m_announced));
    std::vector<std::string> lines;
    const auto describe = [&](const char* what, std::uint32_t DocumentCounts::*count) {
        std::uint64_t missing = m_missing.*count;
        if (said.*count > have.*count) missing += said.*count - have.*count;
        if (missing != 0) lines.push_back(Grouped(missing) + " " + what);
    };
    describe("fills", &DocumentCounts::fills);
    describe("outlines", &DocumentCounts::outlines);
    describe("drawings", &DocumentCounts::drawings);
    describe("shapes", &DocumentCounts::shapes);
    if (m_unpainted != 0) lines.push_back("the fill or the outline of " + Grouped(m_unpainted) + " shapes");
    if (!m_end) lines.push_back("everything after that");
    return lines;
}

/// Drawings that are cut short, or missing, in a file with a fault.
void DocumentLoader::FitDrawings() {
    const std::size_t shapes = m_document.ShapeCount();
    if (m_announced < shapes) AddPlaceholder(shapes - m_announced);
    std::uint64_t before = 0;
    for (std::size_t i = 0; i < m_drawings.size(); ++i) {
        SourceDrawing& drawing = m_drawings[i];
        if (before + drawing.shapes > shapes) {
            m_drawings.resize(before < shapes ? i + 1 : i);
            if (before < shapes) drawing.shapes = static_cast<std::size_t>(shapes - before);
            return;
        }
        before += drawing.shapes;
    }
}

PaintDocument DocumentLoader::Finish() {
    FitDrawings();
    for (SourceDrawing& drawing : m_drawings) {
        if (drawing.name.empty()) drawing.name = m_names.Take("recovered");
        m_document.AddDrawing(std::move(drawing));
    }
    Release(*m_document.Pool(), m_fills);
    Release(m_document.OutlinePool(), m_outlines);
    FOMGREndLoad(m_stream);
    return std::move(m_document);
}

}  // namespace command
