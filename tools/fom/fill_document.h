#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "fom/fill_handle.h"
#include "fom/fill_list.h"

namespace command {

/// The fills of drawings as a document holds them: one pool, and for each shape the handle of its fill.
class FillDocument {
public:
    FillDocument() : m_pool(std::make_shared<WRCFillList>()) {}

    const std::shared_ptr<WRCFillList>& Pool() const noexcept { return m_pool; }
    std::size_t ShapeCount() const noexcept { return m_count; }

    /// Takes the memory that the next shape needs in the document itself.
    void ReserveShape() {
        if (m_blocks.empty() || m_blocks.back().size() == kBlock) AddBlock();
    }

    /// Appends a shape; the arguments are those of a WFillHandle.
    template <class... Arguments>
    WFillHandle& AddShape(Arguments&&... arguments) {
        ReserveShape();
        m_blocks.back().emplace_back(std::forward<Arguments>(arguments)...);
        ++m_count;
        return m_blocks.back().back();
    }

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
        std::vector<WFillHandle> block;
        block.reserve(kBlock);
        m_blocks.push_back(std::move(block));
    }

    std::shared_ptr<WRCFillList> m_pool;
    // Blocks never grow, so that handles stay where they are.
    std::vector<std::vector<WFillHandle>> m_blocks;
    std::size_t m_count = 0;
};

}  // namespace command
