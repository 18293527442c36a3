#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/base/error.h"

#include "fom/block_reader.h"
#include "fom/byte_streams.h"
#include "fom/drawing_name.h"
#include "fom/paint_document.h"
#include "fom/payload_reader.h"
#include "fom/stored_shapes.h"

namespace command {

/// Makes a document of the blocks of its file, in their order. Main thread only.
class DocumentLoader {
public:
    explicit DocumentLoader(DocumentVersion version);
    /// Ends the load.
    ~DocumentLoader();
    DocumentLoader(const DocumentLoader&) = delete;
    DocumentLoader& operator=(const DocumentLoader&) = delete;

    /// False, with `fault` filled, for a block that is not what may come next; what stands before the fault
    /// in it is taken over. Throws bad_alloc.
    bool Take(const Block& block, host::Error& fault);
    /// So many bytes of the file are lost: from now on entries, drawings and shapes may be missing, as many
    /// as can have been in what is lost.
    void Lose(std::uint64_t bytes) noexcept { m_lost += bytes; }
    /// Whether the end block was taken, after which nothing may come.
    bool IsAtEnd() const noexcept { return m_end.has_value(); }
    /// How many there are so far, with those that are missing in between.
    DocumentCounts Counts() const noexcept;
    /// What is missing, a line for each kind of thing.
    std::vector<std::string> DescribeMissing() const;
    /// The document; its drawings account for its shapes. The loader is spent. Throws bad_alloc.
    PaintDocument Finish();

private:
    template <class Entry>
    struct Slot {
        const Entry* entry = nullptr;  // null where it is missing
        std::uint32_t shape = 0;       // from 1, the first one that has it
    };
    /// By number, from 1; null for none and for a missing one.
    template <class Entry>
    static Slot<Entry>* FindSlot(std::vector<Slot<Entry>>& slots, std::uint32_t number) noexcept {
        return number != 0 && number <= slots.size() && slots[number - 1].entry ? &slots[number - 1]
                                                                                : nullptr;
    }
    bool Resume(PayloadReader& reader, std::uint64_t offset, const BlockRun& run, std::size_t have,
                std::size_t smallest, std::uint32_t& missing, const char* what);
    template <class Entry, class List>
    bool TakeEntries(PayloadReader& reader, std::vector<Slot<Entry>>& slots, List& pool,
                     std::uint32_t& missing, std::size_t smallest, const char* what);
    bool TakeDrawings(PayloadReader& reader);
    bool TakeDrawing(PayloadReader& reader);
    bool TakeShapes(PayloadReader& reader);
    bool TakeShape(PayloadReader& reader, const StoredShapes& stored, std::uint32_t index);
    bool TakeStrokeFill(PayloadReader& reader, const StoredShapes& stored, std::uint32_t index);
    bool TakeEnd(PayloadReader& reader);
    void AddShape(std::uint32_t fill, std::uint32_t outline, const MATRIX& matrix);
    void AddStrokeFill(ShapePaints& shape, std::uint32_t fill, const MATRIX& matrix);
    void AddUnpainted(std::uint64_t count);
    void AddMissingShapes(std::uint32_t count);
    void AddPlaceholder(std::uint64_t shapes);
    void FitDrawings();

    // The pools are gone before the stream that their duplicates wait for.
    WindowStream m_stream;
    PaintDocument m_document;
    std::vector<Slot<WRefCountFill>> m_fills;
    std::vector<Slot<WRefCountOutline>> m_outlines;
    std::vector<SourceDrawing> m_drawings;
    DrawingNames m_names;
    std::uint32_t m_nextDrawing = 0;
    std::uint64_t m_announced = 0;  // shapes of the drawings
    std::uint64_t m_lost = 0;
    DocumentCounts m_missing;
    std::size_t m_unpainted = 0;  // shapes with a missing fill or outline
    std::optional<DocumentCounts> m_end;
};

}  // namespace command
