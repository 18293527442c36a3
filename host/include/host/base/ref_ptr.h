#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace host::detail {

/// Counts the RefPtrs that hold an object. Starts at 1, for the pointer that adopts it.
class RefCounted {
public:
    RefCounted() = default;
    RefCounted(const RefCounted&) = delete;
    RefCounted& operator=(const RefCounted&) = delete;

    void AddRef() const noexcept { m_refs.fetch_add(1, std::memory_order_relaxed); }
    /// True for the last one: the caller destroys the object.
    bool DropRef() const noexcept { return m_refs.fetch_sub(1, std::memory_order_acq_rel) == 1; }
    /// True when the caller's pointer is the only one; then what other holders did to the object has happened
    /// before.
    bool IsSole() const noexcept { return m_refs.load(std::memory_order_acquire) == 1; }

protected:
    ~RefCounted() = default;

private:
    mutable std::atomic<std::uint32_t> m_refs{1};
};

/// A pointer that shares ownership of a RefCounted object.
template <class T>
class RefPtr {
public:
    RefPtr() = default;
    /// Takes over the reference that a new object starts with.
    static RefPtr Adopt(T* fresh) noexcept {
        RefPtr pointer;
        pointer.m_object = fresh;
        return pointer;
    }
    RefPtr(const RefPtr& other) noexcept : m_object(other.m_object) {
        if (m_object) m_object->AddRef();
    }
    RefPtr(RefPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    RefPtr& operator=(RefPtr other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~RefPtr() {
        if (m_object && m_object->DropRef()) delete m_object;
    }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};

}  // namespace host::detail
