#include "host/engines/fill_container.h"

#include <fstream>
#include <gtest/gtest.h>

#include "host/engines/image_codecs.h"

#include "engines/fill_containers.h"
#include "hex_bytes.h"
#include "support/temp_folder.h"

namespace {

using host::FillContainer;
using testing_support::FromHex;

// Signature, version 1, subtype 2 (fountain), header of 20 bytes, payload of 3.
constexpr std::string_view kGolden = "464f4d46494c4c0a010002001400000003000000aabbcc";

TEST(FillContainerTest, BytesStandAsDocumented) {
    const FillContainer fountain{host::FillContainerSubtype::Fountain, FromHex("aabbcc")};
    EXPECT_EQ(host::EncodeFillContainer(fountain), FromHex(kGolden));
    host::Error error;
    const std::optional<FillContainer> back = host::DecodeFillContainer(FromHex(kGolden), error);
    ASSERT_TRUE(back) << error.reason;
    EXPECT_EQ(host::EncodeFillContainer(*back), FromHex(kGolden));
    // A newer writer's longer header is skipped.
    const auto longer = FromHex("464f4d46494c4c0a010001001600000001000000eeeeaa");
    const std::optional<FillContainer> skipped = host::DecodeFillContainer(longer, error);
    ASSERT_TRUE(skipped) << error.reason;
    EXPECT_EQ(skipped->payload, FromHex("aa"));
}

TEST(FillContainerTest, DamagedOnesAreRefused) {
    const std::vector<std::byte> good = FromHex(kGolden);
    host::Error error;
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_FALSE(host::DecodeFillContainer(std::span(good).first(size), error)) << size;
    for (std::size_t at = 0; at < 20; ++at) {
        std::vector<std::byte> bad = good;
        bad[at] ^= std::byte{0x80};
        EXPECT_FALSE(host::DecodeFillContainer(bad, error)) << at;
        EXPECT_FALSE(error.reason.empty());
    }
}

class SubtypeTest : public ::testing::Test {
protected:
    std::optional<int> Subtype(std::span<const std::byte> bytes) {
        std::ofstream file(m_folder / "f", std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        file.close();
        return host::StandaloneFillContainers().ReadSubtype(host::FromPath(m_folder / "f"));
    }
    std::optional<int> Subtype(std::string_view text) { return Subtype(std::as_bytes(std::span(text))); }

    testing_support::TempFolder m_folder;
};

TEST_F(SubtypeTest, TheContentTells) {
    EXPECT_EQ(Subtype(FromHex(kGolden)), 2);
    EXPECT_EQ(Subtype(FromHex(kGolden.substr(0, 44))), std::nullopt);
    EXPECT_EQ(Subtype("<?xml version='1.0'?>\n<!-- <x> -->\n<!DOCTYPE svg>\n<svg/>"), 1);
    EXPECT_EQ(Subtype("\xEF\xBB\xBF<s:svg xmlns:s='x'>"), 1);
    EXPECT_EQ(Subtype("<html><svg/></html>"), std::nullopt);
    EXPECT_EQ(Subtype("<?xml "), std::nullopt);
    EXPECT_EQ(Subtype("<"), std::nullopt);
    EXPECT_EQ(Subtype(""), std::nullopt);
    if (host::CanReadPng()) {
        EXPECT_EQ(Subtype(FromHex("89504e470d0a1a0a00")), 0);
    }
}

TEST_F(SubtypeTest, WhatIsNoFileHasNone) {
    host::StandaloneFillContainers containers;
    EXPECT_FALSE(containers.ReadSubtype(host::FromPath(m_folder / "missing.fill")));
    EXPECT_FALSE(containers.ReadSubtype(host::FromPath(m_folder.Path())));
}

TEST_F(SubtypeTest, FilesAreWrittenAndReadBack) {
    host::Error error;
    const std::filesystem::path path = m_folder / host::ToPath(L"\u00E9.fill");
    ASSERT_TRUE(host::WriteFillContainer(path, {host::FillContainerSubtype::Vector, FromHex("01")}, error));
    EXPECT_EQ(host::StandaloneFillContainers().ReadSubtype(host::FromPath(path)), 1);
    EXPECT_EQ(host::ReadFillContainer(path, error)->payload, FromHex("01"));
    EXPECT_FALSE(host::ReadFillContainer(m_folder / "missing", error));
    EXPECT_FALSE(host::WriteFillContainer(m_folder / "no" / "such", {}, error));
}

}  // namespace
