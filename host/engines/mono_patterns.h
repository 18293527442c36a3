#pragma once

#include <vector>

#include "host/services/services.h"

#include "engines/memory_block.h"

namespace host {

/// The built-in two-colour patterns of 8 by 8 pixels (docs/formats/mono_patterns.md), made when first asked
/// for.
class BuiltInMonoPatterns final : public MonoPatterns {
public:
    static constexpr unsigned kCount = 20;
    /// Null for an index out of range.
    HMEM GetPattern(unsigned index) override;

private:
    std::vector<MemoryBlock> m_blocks;
};

}  // namespace host
