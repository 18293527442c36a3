#pragma once

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <new>
#include <random>
#include <vector>

#include "host/base/hash.h"

namespace gfx_test {

template <class T>
unsigned char* BytesOf(T& object) {
    return reinterpret_cast<unsigned char*>(&object);
}

/// Which bytes of a T its default constructor writes: all but the padding, whatever fields T has.
template <class T>
std::vector<bool> WrittenBytes() {
    // Behind a volatile pointer, so that the bytes written before construction count as alive. Not T(): that
    // would clear the padding too.
    void (*volatile construct)(void*) = [](void* at) { ::new (at) T; };
    alignas(T) unsigned char zeros[sizeof(T)], ones[sizeof(T)];
    std::memset(zeros, 0, sizeof zeros);
    std::memset(ones, 0xFF, sizeof ones);
    construct(zeros);
    construct(ones);
    std::vector<bool> written(sizeof(T));
    for (std::size_t i = 0; i < sizeof(T); ++i)
        written[i] = zeros[i] == ones[i];
    std::launder(reinterpret_cast<T*>(zeros))->~T();
    std::launder(reinterpret_cast<T*>(ones))->~T();
    return written;
}

inline void Exclude(std::vector<bool>& bytes, std::size_t from, std::size_t count) {
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(from), count, false);
}

template <class T>
std::uint64_t HashOf(const T& record) {
    host::Hasher hasher;
    record.HashInto(hasher);
    return hasher.Finish();
}

template <class T, class Compare>
void ExpectDifferent(const T& a, const T& b, Compare compare) {
    EXPECT_NE(compare(a, b), 0);
    EXPECT_EQ(compare(a, b) < 0, compare(b, a) > 0);
    EXPECT_NE(HashOf(a), HashOf(b));
}

/// Changes the bytes one at a time, and calls `check` with each.
template <class T, class Check>
void ForEachChange(T& record, const std::vector<bool>& bytes, Check check) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!bytes[i]) continue;
        SCOPED_TRACE(i);
        BytesOf(record)[i] ^= 1;
        check();
        BytesOf(record)[i] ^= 1;
    }
}

/// Sorting must give one consistent order, in which equal records have equal hashes.
template <class T, class Compare>
void ExpectTotalOrder(std::vector<T> records, Compare compare) {
    std::sort(records.begin(), records.end(), [&](const T& a, const T& b) { return compare(a, b) < 0; });
    int equal = 0;
    for (std::size_t i = 0; i < records.size(); ++i)
        for (std::size_t j = i; j < records.size(); ++j) {
            const int forward = compare(records[i], records[j]), back = compare(records[j], records[i]);
            ASSERT_LE(forward, 0);
            ASSERT_EQ(forward<0, back> 0);
            if (forward != 0) continue;
            ASSERT_EQ(HashOf(records[i]), HashOf(records[j]));
            equal += i != j;
        }
    EXPECT_GT(equal, 0) << "the generator made no equal pair";
}

}  // namespace gfx_test
