#include "host/gfx/pattern_fills.h"

#include <cstring>
#include <new>
#include <utility>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

namespace {

constexpr std::size_t kOwnerOffset = kPatternDataSize - sizeof(void*);

bool HasOwner(HMEM block) noexcept {
    return MEMMANGetSize(block) == kPatternDataSize;
}

}  // namespace

// Delegates first, so that the destructor frees the block when the temporary data cannot be duplicated.
CGE_PATTERNFILL::CGE_PATTERNFILL(const CGE_PATTERNFILL& other) : CGE_PATTERNFILL(other.m_holdsImage) {
    tiling = other.tiling;
    boundingBox = other.boundingBox;
    originalBoundingBox = other.originalBoundingBox;
    instance = other.instance;
    if (other.patternData) {
        patternData = MEMMANDuplicate(other.patternData);
        if (!patternData) throw std::bad_alloc();
    }
    tmpFile = m_holdsImage ? UDIIMGDuplicateTmpFile(other.tmpFile) : TMPDuplicateTmpFile(other.tmpFile);
}

CGE_PATTERNFILL& CGE_PATTERNFILL::operator=(const CGE_PATTERNFILL& other) {
    if (this == &other) return *this;
    CGE_PATTERNFILL copy(other);
    AdoptPatternData(std::exchange(copy.patternData, nullptr));
    AdoptTmpFile(std::exchange(copy.tmpFile, 0));
    tiling = copy.tiling;
    boundingBox = copy.boundingBox;
    originalBoundingBox = copy.originalBoundingBox;
    instance = copy.instance;
    return *this;
}

CGE_PATTERNFILL::~CGE_PATTERNFILL() {
    FreeMemory();
}

void CGE_PATTERNFILL::Clear() noexcept {
    FreeMemory();
    tiling = CGE_TILING();
    boundingBox = originalBoundingBox = RECT();
    instance = nullptr;
}

void CGE_PATTERNFILL::FreeMemory() noexcept {
    AdoptPatternData(nullptr);
    AdoptTmpFile(0);
}

void CGE_PATTERNFILL::AdoptPatternData(HMEM block) noexcept {
    if (block == patternData) return;
    MEMMANFree(std::exchange(patternData, block));
}

void CGE_PATTERNFILL::AdoptTmpFile(std::uint32_t id) noexcept {
    if (id == tmpFile) return;
    std::uint32_t old = std::exchange(tmpFile, id);
    if (m_holdsImage)
        FILLD_ZapTmpFileUdiImage(old);
    else
        TMPDeleteTmpFile(old);
}

void* CGE_PATTERNFILL::GetOwner() const noexcept {
    void* owner = nullptr;
    if (!HasOwner(patternData)) return owner;
    if (const auto* bytes = static_cast<const std::byte*>(MEMMANLock(patternData))) {
        std::memcpy(&owner, bytes + kOwnerOffset, sizeof owner);
        MEMMANUnlock(patternData);
    }
    return owner;
}

void CGE_PATTERNFILL::SetOwner(const void* owner) noexcept {
    if (!HasOwner(patternData)) return;
    if (auto* bytes = static_cast<std::byte*>(MEMMANLock(patternData))) {
        std::memcpy(bytes + kOwnerOffset, &owner, sizeof owner);
        MEMMANUnlock(patternData);
    }
}
