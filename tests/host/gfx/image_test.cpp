#include "host/gfx/image.h"

#include <array>
#include <thread>
#include <utility>
#include <vector>

#include "host/base/temp_data.h"

#include "support/leak_check.h"

namespace {

class Image : public testing_support::LeakCheckedTest {};

/// Sets one sample through the tiles: what a maker of images does.
void SetSample(RIMAGE& image, int x, int y, unsigned plane, unsigned value) {
    for (std::size_t i = 0; i < image.GetNumTiles(); ++i) {
        const auto [box, data, stride] = image.EditTile(i);
        if (x < box.left || y < box.top || x >= box.right || y >= box.bottom) continue;
        const unsigned bits = image.GetBitsPerPlane();
        const unsigned bit = (static_cast<unsigned>(x - box.left) * image.GetPlanes() + plane) * bits;
        std::uint8_t* at = data + static_cast<std::size_t>(y - box.top) * stride + bit / 8;
        const unsigned shift = bits == 16 ? 0 : 8 - bits - bit % 8;
        *at = static_cast<std::uint8_t>(*at | value << shift);
        if (bits == 16) at[1] = static_cast<std::uint8_t>(value >> 8);
    }
}

TEST_F(Image, UnreasonableSizesAreRefused) {
    using Arguments = std::array<std::uint32_t, 5>;
    for (const auto& [width, height, planes, bits, edge] : {Arguments{0, 1, 1, 8, 256},
                                                            {1, 0, 1, 8, 256},
                                                            {65536, 1, 1, 8, 256},
                                                            {65535, 65535, 1, 8, 256},
                                                            {65535, 65535, 1, 1, 1},
                                                            {1, 1, 0, 8, 256},
                                                            {1, 1, 5, 8, 256},
                                                            {1, 1, 1, 3, 256},
                                                            {1, 1, 1, 8, 0}})
        EXPECT_FALSE(RIMAGE::Create(width, height, planes, bits, edge))
            << width << ' ' << planes << ' ' << bits;
    EXPECT_TRUE(RIMAGE::Create(65535, 1, 1, 1, 4000000000u));
}

TEST_F(Image, TilesOfEveryFormatCoverTheImageOnce) {
    for (unsigned format = 0; format < 20; ++format) {
        const unsigned planes = format % 4 + 1, bits = 1u << format / 4;
        const auto image = RIMAGE::Create(13, 6, planes, bits, 5);
        const auto value = [&](int x, int y, unsigned p) {
            return (static_cast<unsigned>(x * 7919 + y * 104729) + p * 31) & ((1u << bits) - 1);
        };
        RIPTileParser parser(*image);
        const std::uint8_t* next = image->GetTile(0).data;
        while (const auto tile = parser.Next()) {
            EXPECT_EQ(tile->data, next) << "tiles overlap or leave a gap";
            next += tile->stride * static_cast<std::size_t>(tile->bounds.bottom - tile->bounds.top);
            for (int y = tile->bounds.top; y < tile->bounds.bottom; ++y)
                for (int x = tile->bounds.left; x < tile->bounds.right; ++x)
                    for (unsigned p = 0; p < planes; ++p)
                        SetSample(*image, x, y, p, value(x, y, p));
        }
        for (unsigned at = 0; at < 13 * 6 * planes; ++at) {
            const unsigned x = at / planes % 13, y = at / planes / 13;
            ASSERT_EQ(image->GetSample(x, y, at % planes),
                      value(static_cast<int>(x), static_cast<int>(y), at % planes))
                << planes << ' ' << bits;
        }
        EXPECT_EQ(image->GetSample(13, 0, 0) | image->GetSample(0, 6, 0) | image->GetSample(0, 0, planes), 0);
        EXPECT_EQ(image->GetTile(image->GetNumTiles()).data, nullptr);
    }
}

TEST_F(Image, RowsReadAsRgba) {
    const auto row = [](const RIMAGE& image) {
        std::array<std::uint8_t, 8> rgba{};
        image.ReadRowRGBA(0, rgba);
        return rgba;
    };
    const auto rgb = RIMAGE::Create(3, 1, 3, 8, 2);
    rgb->WriteRow(0, std::array<std::uint8_t, 9>{1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(row(*rgb), (std::array<std::uint8_t, 8>{1, 2, 3, 255, 4, 5, 6, 255}));
    const RIMAGE before(*rgb);
    rgb->WriteRow(0, std::array<std::uint8_t, 8>{});
    rgb->WriteRow(1, std::array<std::uint8_t, 9>{});
    EXPECT_EQ(rgb->CompareTo(before), 0) << "a row of another length or place";
    const auto rgba = RIMAGE::Create(1, 1, 4, 8);
    rgba->WriteRow(0, std::array<std::uint8_t, 4>{1, 2, 3, 4});
    EXPECT_EQ(row(*rgba), (std::array<std::uint8_t, 8>{1, 2, 3, 4}));
    const auto deep = RIMAGE::Create(1, 1, 2, 16);
    SetSample(*deep, 0, 0, 0, 0x8080);
    SetSample(*deep, 0, 0, 1, 0xFFFF);
    EXPECT_EQ(row(*deep), (std::array<std::uint8_t, 8>{128, 128, 128, 255}));
    const auto mono = RIMAGE::Create(2, 1, 1, 1);
    SetSample(*mono, 1, 0, 0, 1);
    EXPECT_EQ(row(*mono), (std::array<std::uint8_t, 8>{0, 0, 0, 255, 255, 255, 255, 255}));
    mono->SetPalette({{9, 8, 7}});
    EXPECT_EQ(row(*mono), (std::array<std::uint8_t, 8>{9, 8, 7, 255, 0, 0, 0, 255})) << "entry 1 is missing";
}

TEST_F(Image, ComparisonIsOfPixelsNotOfTiles) {
    for (const unsigned bits : {1u, 8u, 16u}) {
        const auto base = RIMAGE::Create(13, 4, 1, bits, 5);
        const auto whole = RIMAGE::Create(13, 4, 1, bits, 64);
        const auto same = RIMAGE::Create(13, 4, 1, bits, 5);
        EXPECT_EQ(RCF_CompareRImage(base.get(), whole.get()), 0);
        if (bits == 1) {
            same->EditTile(2).data[0] |= 0x0F;  // beside the three pixels of the last tile
            EXPECT_EQ(RCF_CompareRImage(base.get(), same.get()), 0);
        }
        SetSample(*whole, 4, 3, 0, 1);  // later by rows, earlier by tiles
        SetSample(*same, 12, 0, 0, 1);
        EXPECT_LT(RCF_CompareRImage(base.get(), whole.get()), 0);
        EXPECT_LT(RCF_CompareRImage(whole.get(), same.get()), 0);
        EXPECT_GT(RCF_CompareRImage(same.get(), base.get()), 0);
    }
    const auto low = RIMAGE::Create(1, 1, 1, 16), high = RIMAGE::Create(1, 1, 1, 16, 1);
    SetSample(*low, 0, 0, 0, 0x00FF);
    SetSample(*high, 0, 0, 0, 0x0100);
    EXPECT_GT(low->CompareTo(*high), 0) << "the same order whether or not the tiles agree";
}

TEST_F(Image, ComparisonReadsFormatAndPalette) {
    std::vector<std::unique_ptr<RIMAGE>> rising;
    rising.push_back(nullptr);
    for (const auto& [w, h, planes, bits] : {std::array{1u, 9u, 4u, 8u},
                                             {2u, 1u, 4u, 8u},
                                             {2u, 2u, 1u, 16u},
                                             {2u, 2u, 3u, 1u},
                                             {2u, 2u, 3u, 8u},
                                             {2u, 2u, 3u, 8u},
                                             {2u, 2u, 3u, 8u}})
        rising.push_back(RIMAGE::Create(w, h, planes, bits));
    rising[6]->SetPalette({{0, 0, 1}});
    rising[7]->SetPalette({{1, 0, 0}});
    for (std::size_t i = 0; i < rising.size(); ++i)
        for (std::size_t j = 0; j < rising.size(); ++j) {
            EXPECT_EQ(RCF_CompareRImage(rising[i].get(), rising[j].get()) < 0, i < j) << i << ' ' << j;
            EXPECT_EQ(RCF_CompareRImage(rising[i].get(), rising[j].get()) > 0, i > j) << i << ' ' << j;
        }
}

TEST_F(Image, ViewsLeadToTheBaseAndKeepIt) {
    auto raster = RIMAGE::Create(1, 1, 1, 8);
    RIMAGE* const pixels = raster.get();
    const std::size_t before = host::LiveImages();
    HUDIIMAGE last = UDIIMGCreateFromRIMAGE(std::move(raster));
    for (int i = 0; i < 200000; ++i)
        UDIIMGRelease(std::exchange(last, UDIIMGCreateView(last)));
    EXPECT_EQ(UDIIMGGetBaseImage(last), pixels);
    EXPECT_EQ(host::LiveImages(), before + 200001);
    UDIIMGRelease(last);
    for (const HUDIIMAGE none :
         {UDIIMGCreateFromRIMAGE(nullptr), UDIIMGCreateView(nullptr), UDIIMGDuplicate(nullptr)})
        EXPECT_EQ(UDIIMGGetBaseImage(none), nullptr);
}

TEST_F(Image, TemporaryDataHoldsOneReferenceEach) {
    std::uint32_t first = TMPRegisterPrivateData(UDIIMGCreateFromRIMAGE(RIMAGE::Create(1, 1, 1, 8)));
    const HUDIIMAGE image = UDIIMGFromTmpFile(first);
    const std::uint32_t second = UDIIMGDuplicateTmpFile(first);
    EXPECT_NE(second, first);
    FILLD_ZapTmpFileUdiImage(first);
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(UDIIMGFromTmpFile(second), image);
    EXPECT_NE(UDIIMGGetBaseImage(image), nullptr);
    for (std::uint32_t id : {second, second, 0u}) {
        FILLD_ZapTmpFileUdiImage(id);
        EXPECT_EQ(UDIIMGDuplicateTmpFile(second), 0u);
    }
}

TEST_F(Image, CountsAreAtomic) {
    const HUDIIMAGE image = UDIIMGCreateFromRIMAGE(RIMAGE::Create(1, 1, 1, 8));
    const auto work = [image] {
        for (int i = 0; i < 20000; ++i)
            UDIIMGRelease(UDIIMGDuplicate(image));
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_NE(UDIIMGGetBaseImage(image), nullptr);
    UDIIMGRelease(image);
}

}  // namespace
