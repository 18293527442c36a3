#pragma once

#include <memory>
#include <utility>

#include "host/gfx/lazy_record.h"

namespace host {

/// A sub-record that is replaced as a whole and never changed in place, so that copies share it: copying
/// allocates nothing and cannot fail, and yet no copy sees another's writes, on any thread. T has
/// `bool IsDefault() const`; a default T is not stored at all.
template <class T>
class SharedRecord {
public:
    /// Good until the next Set on this object.
    const T& Read() const noexcept { return m_record ? *m_record : EmptyRecord<T>(); }
    /// Changes nothing when memory runs out.
    void Set(T value) {
        m_record = value.IsDefault() ? nullptr : std::make_shared<const T>(std::move(value));
    }
    bool IsDefault() const noexcept { return m_record == nullptr; }
    bool IsSharedWith(const SharedRecord& other) const noexcept { return m_record == other.m_record; }

private:
    std::shared_ptr<const T> m_record;
};

}  // namespace host
