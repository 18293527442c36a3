#pragma once

#include <utility>

#include "host/base/temp_data.h"

namespace VyrFOM {

/// Owns an entry of temporary data, but not the image that it may hold.
class TempEntry {
public:
    explicit TempEntry(unsigned id) noexcept : m_id(id) {}
    ~TempEntry() { TMPDeleteTmpFile(m_id); }
    TempEntry(const TempEntry&) = delete;
    TempEntry& operator=(const TempEntry&) = delete;

    unsigned Get() const noexcept { return m_id; }
    unsigned Release() noexcept { return std::exchange(m_id, 0); }

private:
    unsigned m_id;
};

}  // namespace VyrFOM
