#include "host/base/singleton.h"

#include <mutex>

namespace VyrUtils {

/// A list through the singletons themselves: registering cannot fail.
class SingletonList {
public:
    void Push(SingletonBase* object) noexcept {
        object->m_next = m_first;
        m_first = object;
    }
    SingletonBase* Pop() noexcept {
        SingletonBase* object = m_first;
        if (object) m_first = object->m_next;
        return object;
    }
    void Remove(const SingletonBase* object) noexcept {
        for (SingletonBase** link = &m_first; *link; link = &(*link)->m_next) {
            if (*link != object) continue;
            *link = object->m_next;
            return;
        }
    }

private:
    SingletonBase* m_first = nullptr;
};

namespace {

// Constant-initialised: singletons are made before main and die in static destructors. A singleton's own lock
// is taken before this one, never after it.
constinit std::mutex g_lock;
constinit SingletonList g_alive;
constinit bool g_closed = false;

SingletonBase* TakeLatest() noexcept {
    std::lock_guard lock(g_lock);
    return g_alive.Pop();
}

void SetClosed(bool closed) noexcept {
    std::lock_guard lock(g_lock);
    g_closed = closed;
}

}  // namespace

SingletonBase::~SingletonBase() {
    std::lock_guard lock(g_lock);
    g_alive.Remove(this);
}

void SingletonBase::Register() noexcept {
    std::lock_guard lock(g_lock);
    g_alive.Push(this);
}

void SingletonBase::Unregister() noexcept {
    std::lock_guard lock(g_lock);
    g_alive.Remove(this);
}

void SingletonBase::DestroyAll() {
    SetClosed(true);
    while (SingletonBase* object = TakeLatest())
        object->Destroy();
}

void SingletonBase::AllowRecreation() {
    SetClosed(false);
}

bool SingletonBase::MayBeMade() noexcept {
    std::lock_guard lock(g_lock);
    return !g_closed;
}

}  // namespace VyrUtils
