#pragma once

#include "host/services/services.h"

#include "engines/arrowhead_set.h"
#include "engines/deferred.h"

namespace host {

/// The built-in arrowheads and those of "arrows.txt" (docs/formats/arrowheads.md) in the user's custom folder
/// or else in the application's folder, by the folders installed when loading begins. They are read in the
/// background. Who first needs one waits for them, and then the installed interface layer warns of what could
/// not be read. Handles are good until Free.
class StandaloneArrowheads final : public ArrowheadList {
public:
    /// Returns at once.
    void Load() override;
    /// Waits for a load that is under way, whose warnings are dropped.
    void Free() override { m_set.Reset(); }
    /// These throw bad_alloc when memory runs out while loading; the next call tries again.
    unsigned GetCount() override;
    /// Null for an index out of range.
    HMEM GetHandle(unsigned index) override;
    /// By their bytes; two null handles are the same.
    bool AreSame(HMEM a, HMEM b) override;

private:
    const std::vector<MemoryBlock>& WaitForBlocks();

    Deferred<ArrowheadSet> m_set;
};

}  // namespace host
