#pragma once

#include <vector>

#include "host/services/services.h"

#include "engines/memory_block.h"

namespace host {

/// The built-in arrowheads: polygons in blocks of memory (docs/formats/arrowheads.md). They are made when
/// first asked for, also after Free; handles from before Free are gone.
class BuiltInArrowheads final : public ArrowheadList {
public:
    void Load() override;
    void Free() override { m_blocks.clear(); }
    unsigned GetCount() override;
    /// Null for an index out of range.
    HMEM GetHandle(unsigned index) override;
    bool AreSame(HMEM a, HMEM b) override { return HaveSameBytes(a, b); }

private:
    std::vector<MemoryBlock> m_blocks;
};

}  // namespace host
