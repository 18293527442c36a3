#pragma once

#include <cstddef>

namespace fuzzing {

/// Ends the process with a message, as a finding, when the calling thread holds more heap than an input of so
/// many bytes may cost, counted from here: 16 times its size and 1 MiB. One at a time.
class HeapBound {
public:
    explicit HeapBound(std::size_t inputSize) noexcept;
    ~HeapBound();
    HeapBound(const HeapBound&) = delete;
    HeapBound& operator=(const HeapBound&) = delete;
};

}  // namespace fuzzing
