#pragma once

#include <memory>
#include <new>

namespace host {

/// The default-constructed T that absent sub-records read as. Never destroyed, so that records that die at
/// exit can still be read.
template <class T>
const T& EmptyRecord() noexcept {
    alignas(T) static unsigned char storage[sizeof(T)];
    static const T* const empty = ::new (static_cast<void*>(storage)) T();
    return *empty;
}

/// A sub-record that is allocated when it is first written; until then it reads as the empty record.
/// Copies are deep and allocate only what the source has.
template <class T>
class LazyRecord {
public:
    LazyRecord() noexcept = default;
    LazyRecord(const LazyRecord& other)
        : m_record(other.m_record ? std::make_unique<T>(*other.m_record) : nullptr) {}
    LazyRecord(LazyRecord&&) noexcept = default;
    LazyRecord& operator=(const LazyRecord& other) {
        if (this != &other) LazyRecord(other).m_record.swap(m_record);
        return *this;
    }
    LazyRecord& operator=(LazyRecord&&) noexcept = default;

    const T& Read() const noexcept { return m_record ? *m_record : EmptyRecord<T>(); }
    T& Edit() {
        if (!m_record) m_record = std::make_unique<T>();
        return *m_record;
    }
    bool IsAllocated() const noexcept { return m_record != nullptr; }
    void Reset() noexcept { m_record.reset(); }

private:
    std::unique_ptr<T> m_record;
};

}  // namespace host
