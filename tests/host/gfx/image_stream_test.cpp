#include "host/gfx/image_stream.h"

#include <gtest/gtest.h>
#include <random>

#include "support/alloc_faults.h"
#include "support/golden.h"
#include "support/leak_check.h"

namespace {

class ImageStream : public testing_support::LeakCheckedTest {
protected:
    using Bytes = std::vector<std::uint8_t>;

    /// Random pixels, padding included.
    static std::unique_ptr<RIMAGE> Noise(std::uint32_t width, std::uint32_t height, unsigned planes,
                                         unsigned bits, std::uint32_t tileEdge) {
        static std::mt19937 random(1);
        auto raster = RIMAGE::Create(width, height, planes, bits, tileEdge);
        for (std::size_t i = 0; i < raster->GetNumTiles(); ++i) {
            const RIMAGE::MutableTile tile = raster->EditTile(i);
            const auto rows = static_cast<std::size_t>(tile.bounds.bottom - tile.bounds.top);
            for (std::size_t at = 0; at < rows * tile.stride; ++at)
                tile.data[at] = static_cast<std::uint8_t>(random());
        }
        return raster;
    }
    static Bytes Write(HUDIIMAGE image, int format = kUdiImageFormat) {
        const unsigned id = TMPCreateTmpFile();
        const bool written = UDII_WriteImage(*TMPOpenTmpFile(id, TmpMode::Write), image, format, {});
        const auto stream = TMPOpenTmpFile(id);
        Bytes bytes(static_cast<std::size_t>(stream->GetSize()));
        stream->Read(bytes.data(), bytes.size());
        TMPDeleteTmpFile(id);
        EXPECT_EQ(written, !bytes.empty());
        return bytes;
    }
    static HUDIIMAGE Read(const Bytes& bytes) {
        const unsigned id = TMPCreateTmpFile(std::as_bytes(std::span(bytes)));
        const auto stream = TMPOpenTmpFile(id);
        TMPDeleteTmpFile(id);
        return UDII_ReadImage(*stream, {});
    }
};

TEST_F(ImageStream, EveryImageComesBackWhateverItsTiles) {
    for (const unsigned planes : {1u, 2u, 3u, 4u})
        for (const unsigned bits : {1u, 2u, 4u, 8u, 16u})
            for (const std::uint32_t edge : {3u, 8u, 256u})
                for (const std::uint32_t width : {1u, 13u, 300u}) {
                    auto raster = Noise(width, 11, planes, bits, edge);
                    if (planes == 1) raster->SetPalette({{1, 2, 3}, {4, 5, 6}});
                    const HUDIIMAGE image = UDIIMGCreateFromRIMAGE(std::move(raster));
                    const HUDIIMAGE view = UDIIMGCreateView(image);
                    const Bytes bytes = Write(view);
                    const HUDIIMAGE read = Read(bytes);
                    ASSERT_TRUE(read);
                    EXPECT_EQ(RCF_CompareRImage(UDIIMGGetBaseImage(read), UDIIMGGetBaseImage(image)), 0)
                        << planes << " planes of " << bits << " bits, " << width << " wide, tiles " << edge;
                    EXPECT_EQ(Write(read), bytes);
                    for (const HUDIIMAGE each : {view, image, read})
                        UDIIMGRelease(each);
                }
}

TEST_F(ImageStream, HasItsBytesAndReadsNoOthers) {
    auto raster = RIMAGE::Create(3, 2, 1, 4);
    raster->SetPalette({{0x11, 0x22, 0x33}});
    raster->EditTile(0).data[0] = 0x12;
    raster->EditTile(0).data[1] = 0x3F;
    const HUDIIMAGE image = UDIIMGCreateFromRIMAGE(std::move(raster));
    const Bytes bytes = Write(image);
    EXPECT_EQ(bytes, testing_support::ReadGolden("image.txt").at("indexed"));
    EXPECT_TRUE(Write(image, 1).empty());
    EXPECT_TRUE(Write(nullptr).empty());
    UDIIMGRelease(image);

    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(Read({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)}));
    for (std::size_t at = 0; at < 28; ++at)
        for (const int change : {1, 2, 0x80, 0xFF}) {
            Bytes changed = bytes;
            changed[at] = static_cast<std::uint8_t>(changed[at] ^ change);
            const testing_support::HeapMeter meter;
            UDIIMGRelease(Read(changed));
            EXPECT_LT(meter.ThreadPeak(), 4000) << at;
        }
    Bytes longer = bytes;
    longer.push_back(0);
    EXPECT_FALSE(Read(longer));
    longer[6] = 29;  // a longer header
    const HUDIIMAGE read = Read(longer);
    EXPECT_TRUE(read);
    UDIIMGRelease(read);
}

TEST_F(ImageStream, LeavesNothingBehindWhenMemoryRunsOut) {
    const HUDIIMAGE image = UDIIMGCreateFromRIMAGE(Noise(5, 5, 3, 8, 256));
    const Bytes bytes = Write(image);
    const unsigned id = TMPCreateTmpFile(std::as_bytes(std::span(bytes)));
    const auto read = [&] { UDIIMGRelease(UDII_ReadImage(*TMPOpenTmpFile(id), {})); };
    EXPECT_GT(testing_support::FailEachAllocation(read, [] {}), 0u);
    TMPDeleteTmpFile(id);
    UDIIMGRelease(image);
}

}  // namespace
