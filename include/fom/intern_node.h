#pragma once

#include <atomic>
#include <cstdint>

namespace VyrFOM {

class InternOrder;
class InternPoolBase;
class PendingDuplicatesBase;

/// What a pool keeps in each of its entries: the count of holders and the entry's place in the pool, so that
/// removal needs neither a comparison nor a hash. Copying an entry copies none of it.
class InternNode {
public:
    InternNode() noexcept = default;
    InternNode(const InternNode&) noexcept {}
    InternNode& operator=(const InternNode&) noexcept { return *this; }

protected:
    ~InternNode() = default;

    /// Atomic, wrapping; the new count.
    std::int32_t AddToCount(std::int32_t n) noexcept {
        return static_cast<std::int32_t>(
            static_cast<std::uint32_t>(m_count.fetch_add(n, std::memory_order_acq_rel)) +
            static_cast<std::uint32_t>(n));
    }

    std::atomic<std::int32_t> m_count{0};

private:
    friend class InternOrder;
    friend class InternPoolBase;
    friend class PendingDuplicatesBase;

    // Written under the pool's exclusive lock only, while the entry is pooled.
    std::uint32_t m_place = 0;  // of the entry in its pool's order
    std::uint64_t m_hash = 0;
    std::atomic<InternPoolBase*> m_pool{nullptr};  // null while the entry is in no pool
    bool m_parked = false;                         // waits for the end of a load in a table of duplicates
    bool m_givenOut = false;                       // was taken out of a pool
};

}  // namespace VyrFOM
