#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

#include "fill/byte_order.h"
#include "fill/fill_compare.h"

namespace {

constexpr std::size_t kPieceSize = 16384;

std::unique_ptr<std::byte[]> NewPiece() noexcept {
    return std::unique_ptr<std::byte[]>(new (std::nothrow) std::byte[kPieceSize]);
}

int CompareStreams(TmpStream& a, TmpStream& b) {
    const auto first = NewPiece();
    const auto second = NewPiece();
    if (!first || !second) return 0;
    for (;;) {
        const std::size_t sizeA = a.Read(first.get(), kPieceSize);
        const std::size_t sizeB = b.Read(second.get(), kPieceSize);
        const int order = std::memcmp(first.get(), second.get(), std::min(sizeA, sizeB));
        if (order != 0) return order;
        // Lengths were equal, so only a read that fails half way gets here.
        if (sizeA != sizeB) return sizeA < sizeB ? -1 : 1;
        if (sizeA == 0) return 0;
    }
}

}  // namespace

int VyrFOM::CompareTmpContents(unsigned a, unsigned b) {
    if (a == b) return 0;
    const auto first = TMPOpenTmpFile(a);
    const auto second = TMPOpenTmpFile(b);
    const std::uint64_t size = first ? first->GetSize() : 0;
    if (const int order = CompareValues(size, second ? second->GetSize() : 0); order != 0) return order;
    return size == 0 ? 0 : CompareStreams(*first, *second);
}

int VyrFOM::CompareTmpImages(unsigned a, unsigned b) noexcept {
    if (a == b) return 0;
    const HUDIIMAGE first = UDIIMGFromTmpFile(a);
    const HUDIIMAGE second = UDIIMGFromTmpFile(b);
    if (first == second) return 0;
    const RIMAGE* firstRaster = UDIIMGGetBaseImage(first);
    const RIMAGE* secondRaster = UDIIMGGetBaseImage(second);
    return firstRaster == secondRaster ? 0 : RCF_CompareRImage(firstRaster, secondRaster);
}
