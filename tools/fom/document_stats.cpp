#include "fom/document_stats.h"

#include <map>

#include "fom/document_walk.h"
#include "fom/kind_counts.h"

namespace command {
namespace {

struct Measures {
    std::uint64_t drawings = 0, fileBytes = 0;
    std::uint64_t shapes = 0, stroked = 0, filledStrokes = 0, transformed = 0, matrices = 0;
    std::map<std::uint32_t, std::uint64_t> blocks, bytes;  // by tag
};

double Share(std::uint64_t whole, std::uint64_t parts) noexcept {
    return parts == 0 ? 0 : double(whole) / double(parts);
}

BlockVisitor MakeVisitor(Measures& measures, KindCounts& kinds) {
    BlockVisitor visitor;
    visitor.entry = [&kinds](const StoredEntry& stored) { kinds.Count(stored); };
    visitor.drawing = [&measures](const StoredDrawing& stored) {
        ++measures.drawings;
        measures.fileBytes += stored.drawing.bytes;
    };
    visitor.shapes = [&measures](const StoredShapes& stored) {
        measures.shapes += stored.run.count;
        measures.matrices += stored.MatrixCount();
        measures.filledStrokes += stored.StrokeFillCount();
        for (std::uint32_t i = 0; i < stored.run.count; ++i) {
            const StoredShape shape = stored.Shape(i);
            measures.stroked += shape.outline != 0;
            measures.transformed += shape.matrix != 0;
        }
    };
    return visitor;
}

void AddMeasures(const Measures& measures, const KindCounts& kinds, std::uint64_t bytes, Facts& facts) {
    facts.Add("drawings", measures.drawings);
    facts.Add("drawingBytes", measures.fileBytes);
    facts.Add("shapes", measures.shapes);
    facts.AddFraction("bytesPerShape", Share(bytes, measures.shapes));
    kinds.AddFills(facts.AddGroup("fills"));
    facts.AddFraction("shapesPerFill", Share(measures.shapes, kinds.Fills()));
    kinds.AddOutlines(facts.AddGroup("outlines"));
    facts.Add("strokedShapes", measures.stroked);
    facts.Add("filledStrokes", measures.filledStrokes);
    facts.AddFraction("shapesPerOutline", Share(measures.stroked, kinds.Outlines()));
    facts.Add("transformedShapes", measures.transformed);
    facts.Add("matrices", measures.matrices);
    for (const auto& [tag, count] : measures.blocks) {
        Facts& row = facts.AddRow("blocks");
        row.Add("tag", TagName(tag));
        row.Add("blocks", count);
        row.Add("bytes", measures.bytes.at(tag));
        row.AddFraction("bytesPerShape", Share(measures.bytes.at(tag), measures.shapes));
    }
}

}  // namespace

bool MeasureDocument(AbstractFileStream& stream, Facts& facts, host::Error& fault) {
    BlockReader reader(stream);
    const std::uint64_t bytes = reader.Remaining();
    const std::optional<DocumentVersion> version = reader.ReadHead(fault);
    if (!version) return false;
    facts.Add("formatVersion", kFormatVersion);
    facts.Add("documentVersion", static_cast<std::uint32_t>(*version), VersionName(*version));
    facts.Add("fileBytes", bytes);
    Measures measures;
    KindCounts kinds(*version);
    const BlockVisitor visitor = MakeVisitor(measures, kinds);
    Block block;
    BlockRun run;
    do {
        if (reader.Next(block, fault) != BlockReader::Result::Block) return false;
        if (!WalkBlock(block, visitor, run, fault)) return false;
        ++measures.blocks[block.tag];
        measures.bytes[block.tag] += block.payload.size() + kBlockFrame;
    } while (block.tag != kEndTag);
    AddMeasures(measures, kinds, bytes, facts);
    return true;
}

}  // namespace command
