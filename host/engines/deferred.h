#pragma once

#include <cassert>
#include <functional>
#include <optional>
#include <thread>
#include <utility>

namespace host {

/// A result that is worked out in the background from the moment it is asked for until it is needed. Used by
/// one thread; only the work itself runs on another. What throws there, or finds no thread to run on, is done
/// again by who waits for the result, and throws there.
template <class T>
class Deferred {
public:
    using Work = std::function<T()>;

    Deferred() = default;
    ~Deferred() { Reset(); }
    Deferred(const Deferred&) = delete;
    Deferred& operator=(const Deferred&) = delete;

    bool IsStarted() const noexcept { return static_cast<bool>(m_work); }

    /// Requires !IsStarted(). `work` may be called twice, and by another thread.
    void Start(Work work) noexcept {
        assert(!IsStarted() && work);
        m_work = std::move(work);
        try {
            m_thread = std::thread(&Deferred::Run, this);
        } catch (...) {  // no thread or no memory for one now: left to Get
        }
    }

    /// Requires IsStarted(). Waits the first time; the same object until Reset. What `work` throws leaves all
    /// as it was: the next call tries again.
    T& Get() {
        assert(IsStarted());
        if (m_thread.joinable()) m_thread.join();
        if (!m_result) m_result.emplace(m_work());
        return *m_result;
    }

    /// Waits until the work is done and drops its result; as new.
    void Reset() noexcept {
        if (m_thread.joinable()) m_thread.join();
        m_result.reset();
        m_work = nullptr;
    }

private:
    void Run() noexcept {
        try {
            m_result.emplace(m_work());
        } catch (...) {
        }
    }

    Work m_work;
    std::optional<T> m_result;  // the background thread's own until it is joined
    std::thread m_thread;
};

}  // namespace host
