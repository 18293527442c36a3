#include "pool/fill_digest.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "host/base/temp_data.h"

#include "fom/fill_list.h"

#include "support/leak_check.h"

namespace {

using Digest = host::Md5::Digest;
using Bytes = std::vector<std::uint8_t>;

Digest DigestOf(const Bytes& bytes) {
    host::Md5 md5;
    md5.Update(bytes.data(), bytes.size());
    return md5.Finish();
}

/// The entry's digest after it has been computed; empty when there is none.
std::optional<Digest> ComputedDigest(WRefCountFill& entry) {
    entry.CalculateDigestKey();
    if (!entry.GetDigestKey()) return std::nullopt;
    Digest digest;
    std::memcpy(digest.data(), entry.GetDigestKey(), digest.size());
    return digest;
}

CGE_FILL Vector(const Bytes& bytes) {
    CGE_FILL fill(FillVector);
    fill.EditVector().AdoptTmpFile(TMPCreateTmpFile(std::as_bytes(std::span(bytes))));
    return fill;
}

/// Takes the image over.
CGE_FILL Bitmap(CgeFillType kind, std::unique_ptr<RIMAGE> image) {
    CGE_FILL fill(kind);
    fill.EditPattern()->AdoptTmpFile(TMPRegisterPrivateData(UDIIMGCreateFromRIMAGE(std::move(image))));
    return fill;
}

/// An image whose pixel bytes count up; they come back in the order in which they are hashed.
std::unique_ptr<RIMAGE> Counting(std::uint32_t width, std::uint32_t height, unsigned bits,
                                 std::uint32_t tileEdge, Bytes& hashed) {
    auto image = RIMAGE::Create(width, height, 1, bits, tileEdge);
    std::uint8_t next = 1;
    for (std::size_t i = 0; i < image->GetNumTiles(); ++i) {
        const RIMAGE::MutableTile tile = image->EditTile(i);
        const auto across = static_cast<std::size_t>(tile.bounds.right - tile.bounds.left);
        for (std::int32_t y = tile.bounds.top; y < tile.bounds.bottom; ++y) {
            std::uint8_t* row = tile.data + static_cast<std::size_t>(y - tile.bounds.top) * tile.stride;
            for (std::size_t x = 0; x < (across * bits + 7) / 8; ++x)
                row[x] = next++;
            hashed.insert(hashed.end(), row, row + across * bits / 8);
        }
    }
    return image;
}

class FillDigestTest : public testing_support::LeakCheckedTest {};

TEST_F(FillDigestTest, OfAVectorIsThatOfItsBytes) {
    Bytes bytes(40000);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 31 >> 4);
    const CGE_FILL fill = Vector(bytes);
    WRefCountFill entry(&fill);
    EXPECT_EQ(ComputedDigest(entry), DigestOf(bytes));

    // One that is there is kept, whatever has become of the data.
    entry.GetCGEFill()->EditVector().AdoptTmpFile(0);
    EXPECT_EQ(ComputedDigest(entry), DigestOf(bytes));
    const WRefCountFill copy(entry);
    EXPECT_EQ(std::memcmp(copy.GetDigestKey(), entry.GetDigestKey(), 16), 0);
}

TEST_F(FillDigestTest, IsZeroWithoutDataAndMissingForOtherKinds) {
    for (const CgeFillType kind : {FillColorBitmap, FillVector, FillTexture}) {
        const CGE_FILL fill(kind);
        WRefCountFill without(&fill);
        EXPECT_EQ(without.GetDigestKey(), nullptr);
        WRefCountFill computed(&fill);
        EXPECT_EQ(ComputedDigest(computed), Digest{});
        EXPECT_EQ(without.Compare(&computed, false), 0);
        EXPECT_EQ(without.GetHash(), computed.GetHash());
    }
    const CGE_FILL empty = Vector({});
    WRefCountFill entry(&empty);
    TMPDeleteTmpFile(entry.GetCGEFill()->Vector().tmpFile);
    EXPECT_EQ(ComputedDigest(entry), Digest{}) << "data that does not open";
    for (const CgeFillType kind : {FillNone, FillUniform, FillFountain, FillMonoBitmap, FillHatch}) {
        const CGE_FILL fill(kind);
        WRefCountFill other(&fill);
        EXPECT_EQ(ComputedDigest(other), std::nullopt) << kind;
    }
}

TEST_F(FillDigestTest, OfAnImageGoesTileByTileThenOverThePalette) {
    Bytes hashed;
    auto image = Counting(11, 5, 8, 4, hashed);  // three tiles across, the last ones cut
    CGE_FILL fill = Bitmap(FillColorBitmap, std::move(image));
    WRefCountFill plain(&fill);
    EXPECT_EQ(ComputedDigest(plain), DigestOf(hashed));

    Bytes packed;
    image = Counting(10, 3, 1, 256, packed);  // the last two bits of each row are no whole byte
    image->SetPalette({{1, 2, 3}, {4, 5, 6}});
    ASSERT_EQ(packed.size(), 3u);
    packed.insert(packed.end(), {1, 2, 3, 4, 5, 6});
    fill = Bitmap(FillTexture, std::move(image));
    WRefCountFill withPalette(&fill);
    EXPECT_EQ(ComputedDigest(withPalette), DigestOf(packed));
}

TEST_F(FillDigestTest, MergesEqualImagesAndKeepsVectorsApart) {
    const auto list = std::make_shared<WRCFillList>();
    Bytes hashed;
    const CGE_FILL first = Bitmap(FillColorBitmap, Counting(8, 2, 8, 256, hashed));
    const CGE_FILL second = Bitmap(FillColorBitmap, Counting(8, 2, 8, 256, hashed));
    EXPECT_EQ(list->AddOrGetCopy(first), list->AddOrGetCopy(second));
    const CGE_FILL other = Bitmap(FillColorBitmap, Counting(8, 3, 8, 256, hashed));
    EXPECT_NE(list->AddOrGetCopy(first), list->AddOrGetCopy(other));

    const CGE_FILL vector = Vector({1, 2, 3});
    EXPECT_NE(list->AddOrGetCopy(vector), list->AddOrGetCopy(vector)) << "the copies' identifiers differ";
    const CGE_FILL without(FillVector);
    EXPECT_EQ(list->AddOrGetCopy(without), list->AddOrGetCopy(without));
}

// The block of a pattern names its entry, through copies too.
TEST_F(FillDigestTest, PatternBlocksNameTheirEntry) {
    CGE_FILL fill = Vector({1});
    fill.EditVector().AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
    const WRefCountFill entry(&fill);
    EXPECT_EQ(entry.GetCGEFill()->Vector().GetOwner(), &entry);
    auto* copy = new WRefCountFill(entry);
    EXPECT_EQ(copy->GetCGEFill()->Vector().GetOwner(), copy);
    copy->GetCGEFill()->EditVector().SetOwner(nullptr);
    const auto list = std::make_shared<WRCFillList>();
    EXPECT_EQ(list->AddOrGetDuplicate(copy, nullptr)->GetCGEFill()->Vector().GetOwner(), copy);
}

}  // namespace
