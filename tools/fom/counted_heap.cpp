#include "fom/counted_heap.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

thread_local std::int64_t heldBytes = 0;

std::int64_t SizeOf(void* block) noexcept {
#ifdef _WIN32
    return static_cast<std::int64_t>(_msize(block));
#else
    return static_cast<std::int64_t>(malloc_usable_size(block));
#endif
}

void* Allocate(std::size_t size) noexcept {
    void* block = std::malloc(size != 0 ? size : 1);
    if (block) heldBytes += SizeOf(block);
    return block;
}

void Free(void* block) noexcept {
    if (!block) return;
    heldBytes -= SizeOf(block);
    std::free(block);
}

}  // namespace

std::int64_t command::CountedHeap() noexcept {
    return heldBytes;
}

// All forms but those for over-aligned types, which are not counted: whichever one code calls, its partner is
// here too.
void* operator new(std::size_t size) {
    for (;;) {
        if (void* block = Allocate(size)) return block;
        const std::new_handler handler = std::get_new_handler();
        if (!handler) throw std::bad_alloc();
        handler();
    }
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* block) noexcept {
    Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    Free(block);
}
void operator delete[](void* block) noexcept {
    Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    Free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    Free(block);
}
