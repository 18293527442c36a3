#include <array>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>

#include "fom/block_writer.h"
#include "fom/document_stream.h"
#include "fom/drawing_name.h"
#include "fom/entry_table.h"
#include "fom/stored_shapes.h"

namespace command {
namespace {

/// Blocks are written when there is so much: what a damaged one takes along is little.
constexpr std::size_t kChapter = std::size_t{1} << 16;
constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max() - 1;

/// Writes blocks in chapters: entries that are new, the drawings, and the shapes that lead to them.
class DocumentWriter {
public:
    DocumentWriter(const PaintDocument& document, AbstractFileStream& stream, DocumentVersion version)
        : m_document(document), m_stream(stream), m_fillTable(version), m_outlineTable(version) {
        WriteDocumentHead(stream, version);
    }

    bool Write() {
        if (m_document.ShapeCount() > kMost || m_document.Drawings().size() > kMost)
            return Fail("too many shapes");
        for (const SourceDrawing& drawing : m_document.Drawings())
            if (!AddDrawing(drawing)) return false;
        if (m_shapes != m_document.ShapeCount()) return Fail("there are shapes of no drawing");
        if (!EndChapter()) return false;
        BlockBuilder end(kEndTag, 0);
        for (const std::uint32_t count :
             {m_before.fills, m_before.outlines, m_before.drawings, m_before.shapes})
            end.Add(count);
        return WriteBlock(end, {});
    }
    const std::string& Reason() const noexcept { return m_reason; }

private:
    bool Fail(std::string reason) {
        if (m_reason.empty()) m_reason = std::move(reason);
        return false;
    }

    bool AddDrawing(const SourceDrawing& drawing);
    bool AddShape(const ShapePaints& shape);
    bool AddStrokeFill(const WFillHandle& fill);
    std::uint32_t MatrixNumber(const MATRIX& matrix);
    bool EndChapter();
    bool IsChapterFull() const noexcept;
    bool WriteBlock(BlockBuilder& block, std::initializer_list<std::uint32_t> words);

    const PaintDocument& m_document;
    AbstractFileStream& m_stream;
    std::string m_reason;
    EntryTable<WRefCountFill, WRCFillList> m_fillTable;
    EntryTable<WRefCountOutline, WRCOutlineList> m_outlineTable;
    DrawingNames m_names;
    std::uint32_t m_drawings = 0, m_shapes = 0;
    // Of the chapter, and what stands before it.
    BlockBuilder m_fillBlock{kFillsTag, 2}, m_outlineBlock{kOutlinesTag, 2};
    BlockBuilder m_drawingBlock{kDrawingsTag, 3}, m_shapeBlock{kShapesTag, 4};
    DocumentCounts m_before;
    std::uint32_t m_announced = 0, m_announcedBefore = 0;  // shapes of the drawings
    std::map<MatrixBytes, std::uint32_t> m_matrixNumbers;
    std::vector<std::uint8_t> m_shapeRecords, m_strokeFillRecords;  // follow the matrices
};

bool DocumentWriter::AddDrawing(const SourceDrawing& drawing) {
    constexpr std::size_t kMostOmissions = std::numeric_limits<std::uint16_t>::max();
    constexpr std::size_t kLongestOmission = std::numeric_limits<std::uint8_t>::max();
    const svg::Omissions::Map& omissions = drawing.omissions.Counts();
    if (!IsDrawingName(drawing.name)) return Fail("not a name of a drawing: '" + drawing.name + "'");
    if (m_names.Take(drawing.name) != drawing.name)
        return Fail("two drawings are called '" + drawing.name + "'");
    if (drawing.shapes > m_document.ShapeCount() - m_shapes) return Fail("shapes of a drawing are missing");
    if (omissions.size() > kMostOmissions) return Fail("too many omissions");
    m_drawingBlock.Add(drawing.bytes);
    m_drawingBlock.Add(drawing.digest);
    m_drawingBlock.Add(static_cast<std::uint32_t>(drawing.shapes));
    m_drawingBlock.Add(static_cast<std::uint16_t>(drawing.name.size()));
    m_drawingBlock.Add(std::string_view(drawing.name));
    m_drawingBlock.Add(static_cast<std::uint16_t>(omissions.size()));
    for (const auto& [name, times] : omissions) {
        if (!IsPlainText(name) || name.size() > kLongestOmission)
            return Fail("not a name of an omission: '" + name + "'");
        m_drawingBlock.Add(std::uint64_t{times});
        m_drawingBlock.Add(static_cast<std::uint8_t>(name.size()));
        m_drawingBlock.Add(std::string_view(name));
    }
    ++m_drawings;
    m_announced += static_cast<std::uint32_t>(drawing.shapes);
    while (m_shapes < m_announced)
        if (!AddShape(m_document.Shape(m_shapes))) return false;
    return !IsChapterFull() || EndChapter();
}

bool DocumentWriter::AddShape(const ShapePaints& shape) {
    bool isFillWhole = true, isOutlineWhole = true;
    std::array<std::uint32_t, 3> words{0, 0, MatrixNumber(shape.fill.GetTilingMatrix())};
    if (const WRefCountFill* fill = shape.fill.GetRefCountFill())
        words[0] = m_fillTable.Find(*fill, m_fillBlock.Bytes(), isFillWhole) + 1;
    if (const WRefCountOutline* outline = shape.outline.GetRefCountOutline())
        words[1] = m_outlineTable.Find(*outline, m_outlineBlock.Bytes(), isOutlineWhole) + 1;
    if (!isFillWhole || !isOutlineWhole)
        return Fail(std::string(isFillWhole ? "an outline" : "a fill") +
                    " cannot be stored whole: that of shape " + std::to_string(m_shapes));
    for (const std::uint32_t word : words)
        Append(m_shapeRecords, word);
    if (shape.strokeFill && words[1] != 0 && !AddStrokeFill(*shape.strokeFill)) return false;
    ++m_shapes;
    return !IsChapterFull() || EndChapter();
}

/// Of the shape that is being added. Nothing is written for a handle that holds no fill.
bool DocumentWriter::AddStrokeFill(const WFillHandle& fill) {
    bool isWhole = true;
    const WRefCountFill* entry = fill.GetRefCountFill();
    if (!entry) return true;
    const std::uint32_t number = m_fillTable.Find(*entry, m_fillBlock.Bytes(), isWhole) + 1;
    if (!isWhole)
        return Fail("a fill cannot be stored whole: that of the stroke of shape " + std::to_string(m_shapes));
    for (const std::uint32_t word :
         {m_shapes - m_before.shapes, number, MatrixNumber(fill.GetTilingMatrix())})
        Append(m_strokeFillRecords, word);
    return true;
}

/// From 1, in the chapter; 0 for the identity.
std::uint32_t DocumentWriter::MatrixNumber(const MATRIX& matrix) {
    static const MatrixBytes kIdentity = StoredMatrix({});
    const MatrixBytes bytes = StoredMatrix(matrix);
    if (bytes == kIdentity) return 0;
    const auto [known, isNew] =
        m_matrixNumbers.try_emplace(bytes, static_cast<std::uint32_t>(m_matrixNumbers.size() + 1));
    if (isNew) m_shapeBlock.Add(bytes);
    return known->second;
}

bool DocumentWriter::IsChapterFull() const noexcept {
    return m_fillBlock.Size() + m_outlineBlock.Size() + m_drawingBlock.Size() + m_shapeBlock.Size() +
               m_shapeRecords.size() + m_strokeFillRecords.size() >=
           kChapter;
}

bool DocumentWriter::EndChapter() {
    const DocumentCounts now{m_fillTable.Count(), m_outlineTable.Count(), m_drawings, m_shapes};
    const auto matrices = static_cast<std::uint32_t>(m_matrixNumbers.size());
    const auto strokeFills = static_cast<std::uint32_t>(m_strokeFillRecords.size() / kStrokeFillSize);
    m_shapeBlock.Add(m_shapeRecords);
    m_shapeBlock.Add(m_strokeFillRecords);
    const bool written =
        WriteBlock(m_fillBlock, {m_before.fills, now.fills - m_before.fills}) &&
        WriteBlock(m_outlineBlock, {m_before.outlines, now.outlines - m_before.outlines}) &&
        WriteBlock(m_drawingBlock,
                   {m_before.drawings, now.drawings - m_before.drawings, m_announcedBefore}) &&
        WriteBlock(m_shapeBlock, {m_before.shapes, now.shapes - m_before.shapes, matrices, strokeFills});
    m_before = now;
    m_announcedBefore = m_announced;
    m_matrixNumbers.clear();
    m_shapeRecords.clear();
    m_strokeFillRecords.clear();
    return written;
}

bool DocumentWriter::WriteBlock(BlockBuilder& block, std::initializer_list<std::uint32_t> words) {
    if (block.IsEmpty()) return true;
    if (!block.Write(m_stream, words)) return Fail("a fill or an outline is too large");
    return m_stream.IsGood() || Fail("cannot be written");
}

}  // namespace

bool WriteDocument(const PaintDocument& document, AbstractFileStream& stream, DocumentVersion version,
                   host::Error& error) {
    DocumentWriter writer(document, stream, version);
    if (writer.Write()) return true;
    error = {.what = {}, .offset = 0, .line = 0, .reason = writer.Reason()};
    return false;
}

}  // namespace command
