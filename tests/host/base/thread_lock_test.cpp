#include "host/base/thread_lock.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

// Plain values under the lock: a reader that overlaps a writer sees them differ, and thread sanitizer sees
// the race.
struct Guarded : ThreadLock {
    long first = 0;
    long second = 0;
};

TEST(ThreadLockTest, ReadersNeverOverlapAWriter) {
    constexpr long kWrites = 3000;
    constexpr int kWriters = 2;
    Guarded guarded;
    std::atomic<long> torn{0};
    std::atomic<int> writersLeft{kWriters};
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 10; ++i)  // more readers than slots
            threads.emplace_back([&] {
                while (writersLeft != 0) {
                    ReadLock lock(guarded);
                    if (guarded.first != guarded.second) ++torn;
                }
            });
        for (int i = 0; i < kWriters; ++i)
            threads.emplace_back([&] {
                for (long n = 0; n < kWrites; ++n) {
                    WriteLock lock(guarded);
                    ++guarded.first;
                    if (n % 64 == 0) std::this_thread::yield();
                    ++guarded.second;
                }
                --writersLeft;
            });
    }
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(guarded.first, kWriters * kWrites);
}

TEST(ThreadLockTest, ReadersShareAndKeepAWriterOut) {
    Guarded guarded;
    std::atomic<int> inside{0};
    std::atomic<bool> wrote{false};
    std::vector<std::jthread> threads;
    guarded.LockRead();
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&] {
            ReadLock lock(guarded);
            ++inside;
            while (inside != 3)
                std::this_thread::yield();  // ends only when all three are inside together
        });
    threads.clear();
    std::jthread writer([&] {
        WriteLock lock(guarded);
        wrote = true;
    });
    for (int i = 0; i < 100; ++i)
        std::this_thread::yield();
    EXPECT_FALSE(wrote);
    guarded.UnlockRead();
    writer.join();
    EXPECT_TRUE(wrote);
}

}  // namespace
