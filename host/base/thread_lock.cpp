#include "host/base/thread_lock.h"

#include <new>

#ifdef _WIN32
#include <windows.h>
#else
#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#endif

namespace host::detail {
namespace {

#ifdef _WIN32

class NativeLock {
public:
    void LockRead() noexcept { AcquireSRWLockShared(&m_lock); }
    void UnlockRead() noexcept { ReleaseSRWLockShared(&m_lock); }
    void LockWrite() noexcept { AcquireSRWLockExclusive(&m_lock); }
    void UnlockWrite() noexcept { ReleaseSRWLockExclusive(&m_lock); }

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};

#else

constexpr unsigned kSlots = 8;

// Which slot this thread counts its reads in, from 1; 0 before its first read. A plain value in the thread's
// static block: reached without a call, and without anything to destroy.
[[gnu::tls_model("initial-exec")]] constinit thread_local unsigned t_slot = 0;

unsigned ThisThreadsSlot() noexcept {
    static constinit std::atomic<unsigned> s_threads{0};
    if (t_slot == 0) t_slot = 1 + s_threads.fetch_add(1, std::memory_order_relaxed) % kSlots;
    return t_slot - 1;
}

/// A reader counts itself in one of a few slots, each in its own cache line, so that readers on different
/// threads share nothing that either writes. The platform's lock keeps one count for all: with two threads
/// that hit a pool all the time it does less in total than one thread alone.
///
/// Why nobody is inside together with a writer. A reader first raises its slot and then looks at m_owner; a
/// writer first takes m_owner and then looks at the slots. All four are sequentially consistent, so in their
/// single order at least one of the two comes second and sees the other: the reader steps back, or the writer
/// waits for the slot.
///
/// Why no wake-up is lost. The same argument for leaving: a reader lowers its slot and then looks at m_owner.
/// Either it sees the writer and notifies under m_sleep, which the writer holds from its test of the slots
/// until it sleeps, or the writer came later and its test sees the lowered slot. Who waits for m_owner holds
/// m_sleep from the exchange that leaves Wanted there until it sleeps; whoever frees m_owner then finds
/// Wanted and notifies under m_sleep.
class NativeLock {
public:
    void LockRead() noexcept {
        std::atomic<unsigned>& readers = Readers();
        readers.fetch_add(1);
        if (m_owner.value.load() != Free) [[unlikely]]
            LockReadAfterWriter(readers);
    }

    void UnlockRead() noexcept { Leave(Readers()); }

    void LockWrite() noexcept {
        TakeOwnership();
        for (int spin = 0; spin < kSpins; ++spin)
            if (IsDrained()) return;
        std::unique_lock sleep(m_sleep);
        m_drained.wait(sleep, [this] { return IsDrained(); });
    }

    void UnlockWrite() noexcept { GiveUpOwnership(); }

private:
    enum Owner : unsigned { Free, Owned, Wanted };  // Wanted: owned, and someone sleeps until it is free
    static constexpr int kSpins = 200;

    template <class T>
    struct alignas(64) Line {
        std::atomic<T> value{};
    };

    std::atomic<unsigned>& Readers() noexcept { return m_readers[ThisThreadsSlot()].value; }

    void Leave(std::atomic<unsigned>& readers) noexcept {
        readers.fetch_sub(1);
        if (m_owner.value.load() != Free) [[unlikely]] {
            std::lock_guard sleep(m_sleep);
            m_drained.notify_one();
        }
    }

    void TakeOwnership() noexcept {
        for (int spin = 0; spin < kSpins; ++spin) {
            unsigned free = Free;
            if (m_owner.value.compare_exchange_weak(free, Owned)) return;
        }
        std::unique_lock sleep(m_sleep);
        while (m_owner.value.exchange(Wanted) != Free)
            m_freed.wait(sleep);
    }

    void GiveUpOwnership() noexcept {
        if (m_owner.value.exchange(Free) != Wanted) return;
        std::lock_guard sleep(m_sleep);
        m_freed.notify_all();
    }

    // Whoever owns the lock knows that no writer is inside and that none can come.
    void LockReadAfterWriter(std::atomic<unsigned>& readers) noexcept {
        Leave(readers);
        TakeOwnership();
        readers.fetch_add(1);
        GiveUpOwnership();
    }

    bool IsDrained() const noexcept {
        for (const auto& slot : m_readers)
            if (slot.value.load() != 0) return false;
        return true;
    }

    Line<unsigned> m_owner;
    std::array<Line<unsigned>, kSlots> m_readers;
    std::mutex m_sleep;
    std::condition_variable m_freed;    // for who waits for m_owner
    std::condition_variable m_drained;  // for the one writer that waits for the slots
};

#endif

NativeLock& Native(std::byte* storage) noexcept {
    return *std::launder(reinterpret_cast<NativeLock*>(storage));
}

}  // namespace
}  // namespace host::detail

using host::detail::Native;
using host::detail::NativeLock;

ThreadLock::ThreadLock() {
    static_assert(sizeof(NativeLock) <= sizeof(m_native) && alignof(NativeLock) <= kCacheLine);
    ::new (static_cast<void*>(m_native)) NativeLock;
}

ThreadLock::~ThreadLock() {
    Native(m_native).~NativeLock();
}

void ThreadLock::LockRead() const noexcept {
    Native(m_native).LockRead();
}
void ThreadLock::UnlockRead() const noexcept {
    Native(m_native).UnlockRead();
}
void ThreadLock::LockWrite() const noexcept {
    Native(m_native).LockWrite();
}
void ThreadLock::UnlockWrite() const noexcept {
    Native(m_native).UnlockWrite();
}
