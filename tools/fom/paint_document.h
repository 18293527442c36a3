#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/base/md5.h"

#include "fom/fill_handle.h"
#include "fom/fill_list.h"
#include "fom/outline_handle.h"
#include "fom/outline_list.h"

#include "svg/omissions.h"

namespace command {

/// What one shape is painted with; the outline's handle is empty where nothing is stroked. An outline has one
/// colour: what else its contour is painted with is a fill.
struct ShapePaints {
    template <class... FillArguments>
    explicit ShapePaints(WRCOutlineList* outlines, FillArguments&&... arguments)
        : fill(std::forward<FillArguments>(arguments)...), outline(false, outlines) {}

    WFillHandle fill;
    WOutlineHandle outline;
    /// In place of the outline's colour; null where that is it, as with most shapes.
    std::unique_ptr<WFillHandle> strokeFill;
};

/// Where a run of shapes comes from.
struct SourceDrawing {
    /// Relative, with "/" between its parts and no "..", in UTF-8; no two drawings of a document share one.
    std::string name;
    /// Of the file: an edited drawing is told from the one that was read.
    std::uint64_t bytes = 0;
    host::Md5::Digest digest{};
    /// How many shapes it has, in the order in which svg::Document shows them.
    std::size_t shapes = 0;
    /// What fills and outlines could not say of it.
    svg::Omissions omissions;
};

/// The paints of drawings as a document holds them: a pool of fills and one of outlines, for each shape the
/// handles of its own, and the drawings that the shapes come from.
class PaintDocument {
public:
    PaintDocument()
        : m_fills(std::make_shared<WRCFillList>()), m_outlines(std::make_unique<WRCOutlineList>()) {}

    const std::shared_ptr<WRCFillList>& Pool() const noexcept { return m_fills; }
    const WRCOutlineList& OutlinePool() const noexcept { return *m_outlines; }
    WRCOutlineList& OutlinePool() noexcept { return *m_outlines; }
    std::size_t ShapeCount() const noexcept { return m_count; }

    /// Takes the memory that the next shape needs in the document itself.
    void ReserveShape() {
        if (m_blocks.empty() || m_blocks.back().size() == kBlock) AddBlock();
    }

    const ShapePaints& Shape(std::size_t index) const { return m_blocks[index / kBlock][index % kBlock]; }
    ShapePaints& Shape(std::size_t index) { return m_blocks[index / kBlock][index % kBlock]; }

    /// In the order of their shapes, of which each has the next so many.
    const std::vector<SourceDrawing>& Drawings() const noexcept { return m_drawings; }
    /// For shapes that were added already.
    void AddDrawing(SourceDrawing drawing) { m_drawings.push_back(std::move(drawing)); }

    /// Appends a shape without an outline; the arguments are those of its WFillHandle, which is returned.
    template <class... Arguments>
    WFillHandle& AddShape(Arguments&&... arguments) {
        ReserveShape();
        m_blocks.back().emplace_back(m_outlines.get(), std::forward<Arguments>(arguments)...);
        ++m_count;
        return m_blocks.back().back().fill;
    }
    /// The shape that was added last; there must be one.
    ShapePaints& LastShape() noexcept { return m_blocks.back().back(); }

    /// Drops the shapes after the first `count`.
    void DropShapesAfter(std::size_t count) noexcept {
        while (m_count > count) {
            if (m_blocks.back().empty()) m_blocks.pop_back();
            m_blocks.back().pop_back();
            --m_count;
        }
    }

private:
    static constexpr std::size_t kBlock = 1024;

    void AddBlock() {
        std::vector<ShapePaints> block;
        block.reserve(kBlock);
        m_blocks.push_back(std::move(block));
    }

    std::shared_ptr<WRCFillList> m_fills;
    std::unique_ptr<WRCOutlineList> m_outlines;
    // Blocks never grow, so that handles stay where they are.
    std::vector<std::vector<ShapePaints>> m_blocks;
    std::size_t m_count = 0;
    std::vector<SourceDrawing> m_drawings;
};

}  // namespace command
