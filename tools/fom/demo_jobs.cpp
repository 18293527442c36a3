#include "fom/demo_jobs.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace command {
namespace {

class Jobs {
public:
    Jobs(std::size_t count, const std::function<void(std::size_t)>& work) : m_count(count), m_work(work) {}

    /// Of one thread: does what nobody has begun, until nothing is left.
    void Work() {
        std::unique_lock lock(m_mutex);
        while (m_next < m_count && !m_fault) {
            const std::size_t own = m_next++;
            lock.unlock();
            const std::exception_ptr fault = Try(own);
            lock.lock();
            if (fault && !m_fault) m_fault = fault;
            ++m_done;
            m_changed.notify_one();
        }
        ++m_stopped;
        m_changed.notify_one();
    }

    void Watch(std::size_t threads, const std::function<void(std::size_t)>& progress) {
        std::unique_lock lock(m_mutex);
        for (std::size_t told = 0;;) {
            m_changed.wait(lock, [&] { return m_done != told || m_stopped == threads; });
            if (m_done == told) return;
            told = m_done;
            lock.unlock();
            progress(told);
            lock.lock();
        }
    }

    void Finish() const {
        if (m_fault) std::rethrow_exception(m_fault);
    }

private:
    std::exception_ptr Try(std::size_t number) const noexcept {
        try {
            m_work(number);
        } catch (...) {
            return std::current_exception();
        }
        return nullptr;
    }

    const std::size_t m_count;
    const std::function<void(std::size_t)>& m_work;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::size_t m_next = 0, m_done = 0, m_stopped = 0;
    std::exception_ptr m_fault;
};

}  // namespace

void RunJobs(std::size_t count, std::size_t jobs, const std::function<void(std::size_t)>& work,
             const std::function<void(std::size_t)>& progress) {
    Jobs all(count, work);
    const std::size_t threads = std::max<std::size_t>(1, std::min(jobs, count));
    {
        std::vector<std::jthread> workers;
        workers.reserve(threads);
        for (std::size_t i = 0; i < threads; ++i)
            workers.emplace_back([&all] { all.Work(); });
        all.Watch(threads, progress);
    }
    all.Finish();
}

}  // namespace command
