#pragma once

#include <cstddef>

#include "host/base/export.h"

/// Reader-writer lock: many readers or one writer. Not recursive. A base class of what it protects.
///
/// Readers on different threads do not disturb one another; a waiting writer keeps new readers out, so that
/// readers cannot starve it. A lock is released by the thread that took it, and is destroyed only when no
/// thread is inside any of its functions. Takes under one KB: meant for pools and other few and large things.
class FOM_API ThreadLock {
public:
    ThreadLock();
    ~ThreadLock();
    ThreadLock(const ThreadLock&) = delete;
    ThreadLock& operator=(const ThreadLock&) = delete;

    void LockRead() const noexcept;
    void UnlockRead() const noexcept;
    void LockWrite() const noexcept;
    void UnlockWrite() const noexcept;

private:
    static constexpr std::size_t kCacheLine = 64;

    // The lock of the platform, in place (checked against its size and alignment in the source).
    alignas(kCacheLine) mutable std::byte m_native[12 * kCacheLine];
};

class ReadLock {
public:
    explicit ReadLock(const ThreadLock& lock) noexcept : m_lock(lock) { m_lock.LockRead(); }
    ~ReadLock() { m_lock.UnlockRead(); }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    const ThreadLock& m_lock;
};

class WriteLock {
public:
    explicit WriteLock(const ThreadLock& lock) noexcept : m_lock(lock) { m_lock.LockWrite(); }
    ~WriteLock() { m_lock.UnlockWrite(); }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

private:
    const ThreadLock& m_lock;
};
