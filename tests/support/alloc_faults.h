#pragma once

#include <cstddef>
#include <new>

namespace testing_support {

/// While it lives, allocation number `n` (from 1) that this thread makes through operator new fails, once.
/// One guard per thread at a time. Reaches everything that is linked into the program.
class FailAllocation {
public:
    explicit FailAllocation(std::size_t n) noexcept;
    ~FailAllocation();
    FailAllocation(const FailAllocation&) = delete;
    FailAllocation& operator=(const FailAllocation&) = delete;

    /// Whether the work came as far as that allocation.
    bool HasFailed() const noexcept;
};

/// Calls `work` with its first allocation failing, then its second one, and so on until none fails any more;
/// after each failed round `check` is called with memory back. Returns how many rounds failed: 0 means that
/// nothing was tested. A bad_alloc of `work` ends its round; anything else that it throws passes.
template <class Work, class Check>
std::size_t FailEachAllocation(Work work, Check check) {
    for (std::size_t n = 1;; ++n) {
        bool failed = false;
        {
            FailAllocation guard(n);
            try {
                work();
            } catch (const std::bad_alloc&) {
            }
            failed = guard.HasFailed();
        }
        if (!failed) return n - 1;
        check();
    }
}

/// Heap taken through operator new since the meter was made: what the allocator really gave, bookkeeping of 8
/// bytes per block included. What a thread frees for another counts against the one that frees.
class HeapMeter {
public:
    HeapMeter() noexcept;
    std::ptrdiff_t ThreadBytes() const noexcept;
    std::ptrdiff_t ProcessBytes() const noexcept;
    /// The highest ThreadBytes since the meter was made or since a younger meter of the same thread was.
    std::ptrdiff_t ThreadPeak() const noexcept;

private:
    std::ptrdiff_t m_thread;
    std::ptrdiff_t m_process;
};

}  // namespace testing_support
