#include "fom/document_walk.h"

#include "fom/stored_drawing.h"

namespace command {
namespace {

template <class Visit, class Thing>
void Show(const Visit& visit, const Thing& thing) {
    if (visit) visit(thing);
}

bool WalkEntries(PayloadReader& reader, bool isFill, const BlockVisitor& visitor, BlockRun& run) {
    if (!reader.Read(run.first, run.count)) return false;
    for (std::uint32_t i = 0; i < run.count; ++i) {
        StoredEntry entry{.isFill = isFill, .number = run.first + i, .offset = 0, .record = {}};
        std::uint32_t length = 0;
        if (!reader.Read(length)) return false;
        entry.offset = reader.Offset();
        if (!reader.ReadBytes(length, entry.record)) return false;
        Show(visitor.entry, entry);
    }
    return reader.Ends();
}

bool WalkDrawings(PayloadReader& reader, const BlockVisitor& visitor, BlockRun& run) {
    std::uint32_t shape = 0;
    if (!reader.Read(run.first, run.count, shape)) return false;
    for (std::uint32_t i = 0; i < run.count; ++i) {
        StoredDrawing stored{.number = run.first + i,
                             .offset = reader.Offset(),
                             .bytes = 0,
                             .firstShape = shape,
                             .drawing = {}};
        if (!ReadDrawing(reader, stored.drawing)) return false;
        stored.bytes = reader.Offset() - stored.offset;
        shape += static_cast<std::uint32_t>(stored.drawing.shapes);
        Show(visitor.drawing, stored);
    }
    return reader.Ends();
}

bool WalkShapes(PayloadReader& reader, const BlockVisitor& visitor, BlockRun& run) {
    StoredShapes stored;
    const bool isWhole = ReadShapes(reader, stored);
    run = stored.run;
    if (isWhole) Show(visitor.shapes, stored);
    return isWhole;
}

}  // namespace

bool WalkBlock(const Block& block, const BlockVisitor& visitor, BlockRun& run, host::Error& fault) {
    PayloadReader reader(block, fault);
    run = {};
    switch (block.tag) {
        case kFillsTag:
        case kOutlinesTag:
            return WalkEntries(reader, block.tag == kFillsTag, visitor, run);
        case kDrawingsTag:
            return WalkDrawings(reader, visitor, run);
        case kShapesTag:
            return WalkShapes(reader, visitor, run);
        default:
            return true;
    }
}

}  // namespace command
