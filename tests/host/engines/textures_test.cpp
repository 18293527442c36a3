#include <gtest/gtest.h>
#include <set>

#include "host/engines/texture_parameters.h"

#include "engines/texture_engine.h"

namespace {

CGE_TXRINFO Describe(std::wstring_view texture) {
    CGE_TXRINFO info;
    EXPECT_TRUE(host::ProceduralTextures().GetLastUsedTexture(L"STANDARD", info));
    info.texture.Set(texture);
    info.parameters = {};
    return info;
}

std::vector<std::uint8_t> Pixels(const CGE_TXRINFO& info, std::uint32_t width, std::uint32_t height) {
    const std::unique_ptr<RIMAGE> image = host::ProceduralTextures().Render(info, width, height);
    std::vector<std::uint8_t> pixels(std::size_t{width} * height * 4);
    for (std::uint32_t y = 0; image && y < height; ++y)
        image->ReadRowRGBA(y, std::span(pixels).subspan(std::size_t{y} * width * 4, std::size_t{width} * 4));
    return pixels;
}

std::uint32_t Checksum(const std::vector<std::uint8_t>& bytes) {
    std::uint32_t sum = 2166136261u;
    for (const std::uint8_t byte : bytes)
        sum = (sum ^ byte) * 16777619u;
    return sum;
}

TEST(TexturesTest, EveryPlatformRendersTheSamePixels) {
    const std::vector<std::pair<const wchar_t*, std::uint32_t>> kExpected = {{L"Clouds", 3033218307u},
                                                                             {L"Marble", 3785900312u},
                                                                             {L"Wood", 1517727594u},
                                                                             {L"Checker", 2048246213u},
                                                                             {L"Speckle", 1597029733u}};
    ASSERT_EQ(host::GetTextureNames().size(), kExpected.size());
    for (const auto& [name, sum] : kExpected)
        EXPECT_EQ(Checksum(Pixels(Describe(name), 48, 32)), sum) << host::ToUtf8(name);
}

TEST(TexturesTest, ParametersDecideThePicture) {
    for (const std::wstring_view name : host::GetTextureNames()) {
        CGE_TXRINFO info = Describe(name);
        const host::TextureParameters own = *host::GetTextureDefaults(name);
        std::set<std::vector<std::uint8_t>> pictures{Pixels(info, 64, 64)};
        info.parameters = host::EncodeTextureParameters(own);
        EXPECT_FALSE(pictures.insert(Pixels(info, 64, 64)).second)
            << "a block of zeros means the texture's own";
        host::TextureParameters changed = own;
        changed.second = {1, 2, 3};
        info.parameters = host::EncodeTextureParameters(changed);
        EXPECT_TRUE(pictures.insert(Pixels(info, 64, 64)).second);
        changed = own;
        changed.scale = 25;
        info.parameters = host::EncodeTextureParameters(changed);
        EXPECT_TRUE(pictures.insert(Pixels(info, 64, 64)).second);
    }
}

TEST(TexturesTest, TheBlockKeepsParametersAndClampsForeignOnes) {
    const host::TextureParameters some{0xDEADBEEF, {1, 2, 3}, {4, 5, 6}, 250, 3, 75};
    host::TextureBlock block = host::EncodeTextureParameters(some);
    EXPECT_EQ(host::DecodeTextureParameters(block), some);
    block[2] = block[3] = block[16] = block[17] = block[18] = block[19] = 0xFF;
    const std::optional<host::TextureParameters> clamped = host::DecodeTextureParameters(block);
    ASSERT_TRUE(clamped);
    EXPECT_EQ(clamped->scale, 1000);
    EXPECT_EQ(clamped->detail, 8);
    EXPECT_EQ(clamped->contrast, 1000);
    block[0] = 2;
    EXPECT_FALSE(host::DecodeTextureParameters(block));
}

TEST(TexturesTest, TilesJoinWithoutASeam) {
    // Neighbouring pixels of a smooth texture differ little, and the opposite edges are neighbours.
    CGE_TXRINFO info = Describe(L"Clouds");
    constexpr std::size_t kEdge = 512;
    const std::vector<std::uint8_t> pixels = Pixels(info, kEdge, kEdge);
    for (std::size_t i = 0; i < kEdge; ++i) {
        EXPECT_NEAR(pixels[i * kEdge * 4], pixels[(i * kEdge + kEdge - 1) * 4], 12) << "row " << i;
        EXPECT_NEAR(pixels[i * 4], pixels[((kEdge - 1) * kEdge + i) * 4], 12) << "column " << i;
    }
}

TEST(TexturesTest, WhatIsNotKnownIsNotRendered) {
    host::ProceduralTextures engine;
    CGE_TXRINFO info = Describe(L"Velvet");
    EXPECT_FALSE(engine.Render(info, 8, 8));
    info.texture.Set(L"wood");
    EXPECT_TRUE(engine.Render(info, 8, 8));
    EXPECT_FALSE(engine.Render(info, 0, 8));
    EXPECT_FALSE(engine.Render(info, 70000, 70000));
    info.library.Set(L"Other");
    EXPECT_FALSE(engine.Render(info, 8, 8));
    info = Describe(L"Wood");
    info.present = 0;
    EXPECT_FALSE(engine.Render(info, 8, 8));
}

}  // namespace
