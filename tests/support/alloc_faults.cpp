#include "support/alloc_faults.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <limits>
#include <malloc.h>

namespace testing_support {
namespace {

// Plain values: they are used while threads begin and end.
constinit thread_local std::size_t t_untilFailure = 0;
constinit thread_local bool t_failed = false;
constinit thread_local std::ptrdiff_t t_bytes = 0;
constinit thread_local std::ptrdiff_t t_peak = 0;
constinit std::atomic<std::ptrdiff_t> g_bytes{0};

constexpr std::size_t kBookkeeping = sizeof(std::size_t);

void Count(std::ptrdiff_t bytes) noexcept {
    t_bytes += bytes;
    t_peak = std::max(t_peak, t_bytes);
    g_bytes.fetch_add(bytes, std::memory_order_relaxed);
}

bool MustFail() noexcept {
    if (t_untilFailure == 0 || --t_untilFailure != 0) return false;
    t_failed = true;
    return true;
}

#ifdef _WIN32
void* RawAllocate(std::size_t size, std::size_t alignment) noexcept {
    return alignment == 0 ? std::malloc(size) : _aligned_malloc(size, alignment);
}
std::size_t RawSize(void* memory, std::size_t alignment) noexcept {
    return alignment == 0 ? _msize(memory) : _aligned_msize(memory, alignment, 0);
}
void RawFree(void* memory, std::size_t alignment) noexcept {
    alignment == 0 ? std::free(memory) : _aligned_free(memory);
}
#else
void* RawAllocate(std::size_t size, std::size_t alignment) noexcept {
    if (alignment == 0) return std::malloc(size);
    if (size > std::numeric_limits<std::size_t>::max() - alignment) return nullptr;
    return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}
std::size_t RawSize(void* memory, std::size_t) noexcept {
    return malloc_usable_size(memory);
}
void RawFree(void* memory, std::size_t) noexcept {
    std::free(memory);
}
#endif

void* Allocate(std::size_t size, std::size_t alignment = 0) noexcept {
    if (MustFail()) return nullptr;
    void* memory = RawAllocate(std::max<std::size_t>(size, 1), alignment);
    if (memory) Count(static_cast<std::ptrdiff_t>(RawSize(memory, alignment) + kBookkeeping));
    return memory;
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment = 0) {
    if (void* memory = Allocate(size, alignment)) return memory;
    throw std::bad_alloc();
}

void Free(void* memory, std::size_t alignment = 0) noexcept {
    if (!memory) return;
    Count(-static_cast<std::ptrdiff_t>(RawSize(memory, alignment) + kBookkeeping));
    RawFree(memory, alignment);
}

std::size_t Number(std::align_val_t alignment) noexcept {
    return static_cast<std::size_t>(alignment);
}

}  // namespace

FailAllocation::FailAllocation(std::size_t n) noexcept {
    t_failed = false;
    t_untilFailure = n;
}

FailAllocation::~FailAllocation() {
    t_untilFailure = 0;
}

bool FailAllocation::HasFailed() const noexcept {
    return t_failed;
}

HeapMeter::HeapMeter() noexcept : m_thread(t_bytes), m_process(g_bytes.load(std::memory_order_relaxed)) {
    t_peak = t_bytes;
}

std::ptrdiff_t HeapMeter::ThreadBytes() const noexcept {
    return t_bytes - m_thread;
}

std::ptrdiff_t HeapMeter::ProcessBytes() const noexcept {
    return g_bytes.load(std::memory_order_relaxed) - m_process;
}

std::ptrdiff_t HeapMeter::ThreadPeak() const noexcept {
    return t_peak - m_thread;
}

}  // namespace testing_support

using testing_support::Allocate;
using testing_support::AllocateOrThrow;
using testing_support::Free;
using testing_support::Number;

// Every form is replaced, also those that forward to another one by default: a sanitizer's runtime has its
// own.
void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return AllocateOrThrow(size, Number(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return AllocateOrThrow(size, Number(alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Allocate(size, Number(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Allocate(size, Number(alignment));
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::align_val_t alignment) noexcept {
    Free(memory, Number(alignment));
}
void operator delete[](void* memory, std::align_val_t alignment) noexcept {
    Free(memory, Number(alignment));
}
void operator delete(void* memory, std::size_t, std::align_val_t alignment) noexcept {
    Free(memory, Number(alignment));
}
void operator delete[](void* memory, std::size_t, std::align_val_t alignment) noexcept {
    Free(memory, Number(alignment));
}
void operator delete(void* memory, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    Free(memory, Number(alignment));
}
void operator delete[](void* memory, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    Free(memory, Number(alignment));
}
