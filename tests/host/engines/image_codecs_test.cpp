#include "host/engines/image_codecs.h"

#include <gtest/gtest.h>
#include <random>

#include "hex_bytes.h"

namespace {

using testing_support::FromHex;
using Reader = std::unique_ptr<RIMAGE> (*)(std::span<const std::byte>, host::Error&);

// Images of one or two pixels, and two whose headers claim 8,192 and 65,000 pixels an edge.
constexpr const char* kGrayPng =
    "89504e470d0a1a0a0000000d4948445200000002000000010100000000dc5942270000000a4944415478da6370000000"
    "42004184bf8e620000000049454e44ae426082";
constexpr const char* kRgbPng =
    "89504e470d0a1a0a0000000d49484452000000020000000108020000007b40e8dd0000000f4944415478da63f8cfc0c0"
    "c8c40c00060b0106bd70256a0000000049454e44ae426082";
constexpr const char* kRgbaPng =
    "89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c4890000000d4944415478da63e01291d3"
    "000000cd0065b5c796520000000049454e44ae426082";
constexpr const char* kPalettePng =
    "89504e470d0a1a0a0000000d4948445200000002000000010803000000c3fc8fb800000006504c5445090807c8643279"
    "35a3a40000000b4944415478da63606400000005000242c2449f0000000049454e44ae426082";
constexpr const char* kGrayAlphaPng =
    "89504e470d0a1a0a0000000d4948445200000001000000010804000000b51c0c020000000b4944415478da63886a0000"
    "013700db22943dfd0000000049454e44ae426082";
constexpr const char* kGray16Png =
    "89504e470d0a1a0a0000000d49484452000000010000000110000000006aee47160000000b4944415478da6368680000"
    "018301018b9155f20000000049454e44ae426082";
constexpr const char* kHugePng =
    "89504e470d0a1a0a0000000d4948445200002000000020000802000000fdc85d0e0000000c4944415478da6360a00c00"
    "000040000189c9af430000000049454e44ae426082";
constexpr const char* kVastPng =
    "89504e470d0a1a0a0000000d494844520000fde80000fde801000000008a2ce4a70000000c4944415478da6360a00c00"
    "000040000189c9af430000000049454e44ae426082";
constexpr const char* kGrayJpeg =
    "ffd8ffe000104a46494600010100000100010000ffdb0043000101010101010101010101010101010101010101010101"
    "0101010101010101010101010101010101010101010101010101010101010101010101010101010101ffc0000b080008"
    "000801011100ffc40014000100000000000000000000000000000009ffc4001410010000000000000000000000000000"
    "0000ffda0008010100003f0019dfffd9";
constexpr const char* kRgbJpeg =
    "ffd8ffe000104a46494600010100000100010000ffdb0043000101010101010101010101010101010101010101010101"
    "0101010101010101010101010101010101010101010101010101010101010101010101010101010101ffdb0043010101"
    "010101010101010101010101010101010101010101010101010101010101010101010101010101010101010101010101"
    "0101010101010101010101010101ffc00011080008000803011100021101031101ffc400140001000000000000000000"
    "00000000000006ffc40014100100000000000000000000000000000000ffc40014010100000000000000000000000000"
    "000009ffc40014110100000000000000000000000000000000ffda000c03010002110311003f003e2bcd83ffd9";
constexpr const char* kCmykJpeg =
    "ffd8ffee000e41646f626500640000000000ffdb00430001010101010101010101010101010101010101010101010101"
    "010101010101010101010101010101010101010101010101010101010101010101010101010101ffc000140800080008"
    "044311004d11005911004b1100ffc4001600010101000000000000000000000000000a040bffc4001410010000000000"
    "0000000000000000000000ffda000e0443004d0059004b00003f007f09d9ff009fc3ffd9";

std::string Describe(Reader read, const char* hex) {
    host::Error error;
    const std::unique_ptr<RIMAGE> image = read(FromHex(hex), error);
    if (!image) return "error";
    std::vector<std::uint8_t> row(std::size_t{image->GetWidth()} * 4);
    image->ReadRowRGBA(0, row);
    std::string text =
        std::to_string(image->GetPlanes()) + "x" + std::to_string(image->GetBitsPerPlane()) + ":";
    for (std::size_t i = 0; i < std::min<std::size_t>(row.size(), 8); ++i)
        text += " " + std::to_string(row[i]);
    return text;
}

TEST(ImageCodecsTest, PngKeepsItsKind) {
    if (!host::CanReadPng()) GTEST_SKIP();
    EXPECT_EQ(Describe(host::ReadPng, kGrayPng), "1x8: 0 0 0 255 255 255 255 255");
    EXPECT_EQ(Describe(host::ReadPng, kRgbPng), "3x8: 255 0 0 255 1 2 3 255");
    EXPECT_EQ(Describe(host::ReadPng, kRgbaPng), "4x8: 10 20 30 40");
    EXPECT_EQ(Describe(host::ReadPng, kPalettePng), "1x8: 200 100 50 255 9 8 7 255");
    EXPECT_EQ(Describe(host::ReadPng, kGrayAlphaPng), "4x8: 90 90 90 128");
    EXPECT_EQ(Describe(host::ReadPng, kGray16Png), "1x8: 128 128 128 255");
}

TEST(ImageCodecsTest, JpegKeepsGrayAndTurnsTheRestIntoRgb) {
    if (!host::CanReadJpeg()) GTEST_SKIP();
    EXPECT_EQ(Describe(host::ReadJpeg, kGrayJpeg), "1x8: 77 77 77 255 77 77 77 255");
    EXPECT_EQ(Describe(host::ReadJpeg, kRgbJpeg), "3x8: 200 100 50 255 200 100 50 255");
    EXPECT_EQ(Describe(host::ReadJpeg, kCmykJpeg), "3x8: 255 127 0 255 255 127 0 255");
}

TEST(ImageCodecsTest, AFileThatCannotHoldItsPixelsIsRefused) {
    if (!host::CanReadPng()) GTEST_SKIP();
    host::Error error;
    EXPECT_FALSE(host::ReadPng(FromHex(kHugePng), error));
    EXPECT_NE(error.reason.find("too short"), std::string::npos) << error.reason;
    EXPECT_FALSE(host::ReadPng(FromHex(kVastPng), error));
    EXPECT_NE(error.reason.find("too large"), std::string::npos) << error.reason;
}

struct Sample {
    Reader read;
    bool (*available)() noexcept;
    const char* hex;
};

class HostileImageTest : public ::testing::TestWithParam<Sample> {};

TEST_P(HostileImageTest, CutOrDamagedBytesNeverHarm) {
    if (!GetParam().available()) GTEST_SKIP();
    const std::vector<std::byte> good = FromHex(GetParam().hex);
    host::Error error;
    // The last bytes only say that the image is over.
    for (std::size_t size = 0; size + 20 < good.size(); ++size) {
        error.reason.clear();
        EXPECT_FALSE(GetParam().read(std::span(good).first(size), error)) << size;
        EXPECT_FALSE(error.reason.empty());
    }
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::byte> bad = good;
        for (auto count = 1 + random() % 3; count > 0; --count)
            bad[random() % bad.size()] = static_cast<std::byte>(random() & 0xFF);
        const std::unique_ptr<RIMAGE> image = GetParam().read(bad, error);
        const std::uint64_t pixels = image ? std::uint64_t{image->GetWidth()} * image->GetHeight() : 0;
        EXPECT_LE(pixels, (bad.size() + 64) * 1032 * 8);
    }
}

INSTANTIATE_TEST_SUITE_P(All, HostileImageTest,
                         ::testing::Values(Sample{host::ReadPng, host::CanReadPng, kRgbaPng},
                                           Sample{host::ReadPng, host::CanReadPng, kPalettePng},
                                           Sample{host::ReadJpeg, host::CanReadJpeg, kRgbJpeg},
                                           Sample{host::ReadJpeg, host::CanReadJpeg, kCmykJpeg}));

}  // namespace
