#include "heap_bound.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sanitizer/allocator_interface.h>

namespace {

constinit thread_local std::int64_t t_held = 0;
constinit thread_local std::int64_t t_limit = INT64_MAX;

void OnAllocation(const volatile void*, std::size_t size) {
    t_held += static_cast<std::int64_t>(size);
    if (t_held <= t_limit) return;
    const std::int64_t limit = t_limit;
    t_limit = INT64_MAX;  // what follows needs memory itself
    std::fprintf(stderr, "an allocation of %zu bytes exceeds the bound of %lld\n", size,
                 static_cast<long long>(limit));
    std::abort();
}

void OnRelease(const volatile void* memory) {
    if (memory)
        t_held -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(const_cast<const void*>(memory)));
}

}  // namespace

namespace fuzzing {

HeapBound::HeapBound(std::size_t inputSize) noexcept {
    [[maybe_unused]] static const int installed =
        __sanitizer_install_malloc_and_free_hooks(OnAllocation, OnRelease);
    t_held = 0;
    t_limit = static_cast<std::int64_t>(16 * inputSize + (std::size_t{1} << 20));
}

HeapBound::~HeapBound() {
    t_limit = INT64_MAX;
}

}  // namespace fuzzing
