#include <cstring>
#include <gtest/gtest.h>

#include "host/base/temp_data.h"

#include "fom/legacy_records.h"

#include "pool/legacy_bytes.h"
#include "support/alloc_faults.h"
#include "support/golden.h"
#include "support/leak_check.h"

namespace {

using legacy_test::FakeRemapper;
using legacy_test::FillRandom;
using Bytes = std::vector<std::uint8_t>;

const ColorSystem::ColorContext kContext = ColorSystem::ColorContext::Uncalibrated();
constexpr std::uint32_t kBlockId = 0x01020304;
constexpr std::uint32_t kOtherId = 0x05060708;
constexpr std::uint32_t kInstanceId = 0x11121314;

CLR_COLORSPEC Rgb(int r, int g, int b) {
    CLR_COLORSPEC color;
    color.MakeRGB(r, g, b);
    return color;
}

class LegacyFillTest : public testing_support::LeakCheckedTest {
protected:
    LegacyFillTest() {
        std::memset(MEMMANLock(m_block), 0xEE, kPatternDataSize);  // some other record's, owner word included
        MEMMANUnlock(m_block);
        m_remapper.known[{kBlockId, udi::kPtrBlock}] = m_block;
        m_remapper.known[{kOtherId, udi::kPtrBlock}] = m_short;
        m_remapper.known[{kInstanceId, 0}] = this;
    }
    ~LegacyFillTest() override {
        MEMMANFree(m_block);
        MEMMANFree(m_short);
    }

    template <class Legacy>
    bool ToCurrent(CGE_FILL& fill, Legacy& legacy) {
        return FOMIO12Conv::ConvertCGE_FILL(true, fill, legacy, kContext, m_remapper);
    }
    template <class Legacy>
    bool ToLegacy(CGE_FILL& fill, Legacy& legacy) {
        return FOMIO12Conv::ConvertCGE_FILL(false, fill, legacy, kContext, m_remapper);
    }

    /// A fill of every kind that has a layout, each field with a value of its own.
    CGE_FILL Make(CgeFillType kind);

    HMEM m_block = MEMMANAlloc(kPatternDataSize, true);
    HMEM m_short = MEMMANAlloc(kPatternDataSize - 1, true);
    FakeRemapper m_remapper;
};

constexpr CLR_SCREENSPEC kScreen{0x0201, 0, 1, -2, 0x0A0B};
constexpr CGE_TILING kTiling{0x11, -2, 0x22, 0x33, 0x44, 0x55};

CGE_FILL LegacyFillTest::Make(CgeFillType kind) {
    CGE_FILL fill(kind);
    fill.EditUniform() = {Rgb(1, 2, 3), kScreen};
    CGE_FOUNTAINFILL& fountain = fill.EditFountain();
    fountain.SetFountainType(FountainConical);
    fountain.SetScreen(kScreen);
    fountain.SetPadding(-3);
    fountain.SetAngle(-4);
    fountain.SetCenterOffset(5, 6);
    fountain.SetNumSteps(7);
    fountain.SetLegacyBlendMode(BlendCustom);
    fountain.SetBlendRateMethod(BlendRateCustom);
    fountain.SetBlendRateValue(70);
    fountain.SetColors({{128, 9, Rgb(1, 2, 3)}, {0, 100, Rgb(4, 5, 6)}});
    fill.EditPostScript() = {0x0102, 0x0304, {-1, 2, 3, 4, 5}};
    CGE_MONOBMPFILL& mono = fill.EditMonoBitmap();
    mono = {m_short, kTiling, Rgb(1, 2, 3), Rgb(4, 5, 6), kScreen, 1};
    if (CGE_PATTERNFILL* pattern = fill.EditPattern()) {
        pattern->patternData = MEMMANDuplicate(m_block);
        pattern->tiling = kTiling;
        pattern->boundingBox = pattern->originalBoundingBox = {1, 2, -3, 4};
        pattern->instance = this;
        pattern->tmpFile = kind == FillVector ? TMPCreateTmpFile() : TMPRegisterPrivateData(nullptr);
    }
    CGE_TXRINFO& info = fill.EditTexture().info;
    info.present = 1;
    info.resolution = 300;
    info.maxEdge = 2049;
    info.library.Set(L"L");
    info.texture.Set(L"T");
    info.style.Set(L"S");
    info.parameters.back() = 0x77;
    CGE_HATCHFILL& hatch = fill.EditHatch();
    hatch.background = Rgb(1, 2, 3);
    hatch.screen = kScreen;
    hatch.modification = 0x0103;
    hatch.spacingMultiplier = 1;
    hatch.thicknessMultiplier = -2;
    hatch.library.Set(L"L");
    hatch.name.Set(L"N");
    hatch.SetHatchArraySize(2);
    hatch.lines[1].angle = 8;
    return fill;
}

constexpr CgeFillType kKinds[] = {FillUniform,    FillFountain,      FillPostScript,
                                  FillMonoBitmap, FillMonoBitmapAlt, FillColorBitmap,
                                  FillVector,     FillTexture,       FillHatch};

/// What Make makes as that version has it, the number of temporary data left 0.
Bytes Golden(CgeFillType kind, unsigned version) {
    static const auto goldens = testing_support::ReadGolden("legacy_records.txt");
    Bytes bytes = goldens.at("fill-" + std::to_string(kind));
    if (version == 1250) bytes.insert(bytes.begin() + 4, 4, 0);
    return bytes;
}

/// Where the number of temporary data stands, which differs from run to run.
template <class Legacy>
Bytes WithoutTmpFile(const Legacy& legacy) {
    Bytes bytes = legacy.bytes;
    const std::size_t at = legacy.kHeaderSize + 40;
    const CgeFillType kind = legacy.GetType();
    if (kind < FillColorBitmap || kind > FillTexture || bytes.size() < at + 4) return bytes;
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), 4, std::uint8_t{0});
    return bytes;
}

TEST_F(LegacyFillTest, BytesOfEveryKind) {
    for (const CgeFillType kind : kKinds) {
        CGE_FILL fill = Make(kind);
        CGE_FILL_1250 later{Bytes(400, 0xEE), {CGE_HATCHLINE()}};
        ASSERT_TRUE(ToLegacy(fill, later));
        EXPECT_EQ(WithoutTmpFile(later), Golden(kind, 1250)) << kind;
        EXPECT_EQ(FOMIO12Conv::GetFillSize(later), later.bytes.size()) << kind;
        EXPECT_EQ(later.lines.size(), kind == FillHatch ? 2u : 0u);
        EXPECT_EQ(FOMIO12Conv::GetNumHatchLines(later), later.lines.size());
        if (kind == FillHatch) continue;
        CGE_FILL_1200 earlier{Bytes(400, 0xEE), {}};
        ASSERT_TRUE(ToLegacy(fill, earlier));
        EXPECT_EQ(WithoutTmpFile(earlier), Golden(kind, 1200)) << kind;
        EXPECT_EQ(FOMIO12Conv::GetFillSize(earlier), earlier.bytes.size()) << kind;
        if (fill.Pattern()) {
            const std::uint32_t file = fill.Pattern()->tmpFile;
            EXPECT_EQ(std::memcmp(&earlier.bytes[44], &file, 4), 0);
            EXPECT_EQ(std::memcmp(&later.bytes[48], &file, 4), 0);
        }
    }
}

TEST_F(LegacyFillTest, LengthsByTheTables) {
    const std::pair<std::uint32_t, std::uint32_t> lengths[] = {
        {4, 8},   {32, 36}, {52, 56}, {4, 8},   {4, 8},     {4, 8},   {18, 22},
        {64, 68}, {64, 68}, {48, 52}, {48, 52}, {352, 356}, {4, 192}, {4, 8}};
    for (std::size_t kind = 0; kind < std::size(lengths); ++kind) {
        CGE_FILL_1200 earlier;
        CGE_FILL_1250 later;
        earlier.SetType(static_cast<CgeFillType>(kind));
        later.SetType(static_cast<CgeFillType>(kind));
        EXPECT_EQ(FOMIO12Conv::GetFillSize(earlier), lengths[kind].first) << kind;
        EXPECT_EQ(FOMIO12Conv::GetFillSize(later), lengths[kind].second) << kind;
    }
    EXPECT_EQ(FOMIO12Conv::GetFillSize(CGE_FILL_1200()), 4u);
    EXPECT_EQ(FOMIO12Conv::GetFillSize(CGE_FILL_1250()), 8u);
}

void Put16(Bytes& bytes, std::size_t at, unsigned value) {
    bytes[at] = static_cast<std::uint8_t>(value);
    bytes[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

/// Random bytes wherever a layout says that they are kept.
template <class Legacy>
Legacy RandomRecord(CgeFillType kind, std::mt19937& random) {
    constexpr std::size_t shift = Legacy::kHeaderSize - 4;
    const std::size_t colors = kind == FillFountain ? random() % 4 : 0;
    Legacy legacy;
    legacy.SetType(kind);
    legacy.bytes.resize(FOMIO12Conv::GetFillSize(legacy) + colors * 16);
    FillRandom(legacy.bytes, random);
    const auto zero = [&](std::size_t at, std::size_t size) {
        std::fill_n(legacy.bytes.begin() + static_cast<std::ptrdiff_t>(at), size, std::uint8_t{0});
    };
    zero(0, Legacy::kHeaderSize);
    legacy.SetType(kind);
    if (kind == FillFountain) {
        zero(shift + 6, 2), zero(shift + 26, 2), zero(shift + 50, 2);
        const bool even = random() % 2;
        if (even) Put16(legacy.bytes, shift + 46, 50);
        if (shift == 0) Put16(legacy.bytes, 44, !even);
        Put16(legacy.bytes, shift + 48, static_cast<unsigned>(colors));
        for (std::size_t i = 0; i < colors; ++i)
            zero(shift + 52 + i * 16 + 14, 2);
    }
    if (kind == FillMonoBitmap || kind == FillMonoBitmapAlt)
        Put16(legacy.bytes, shift + 4, 0), Put16(legacy.bytes, shift + 6, 0);
    if (kind >= FillColorBitmap && kind <= FillTexture) zero(shift + 4, 4), zero(shift + 40, 4);
    if (kind == FillTexture) zero(shift + 118, 2), zero(shift + 182, 2), zero(shift + 246, 2);
    if (kind == FillHatch) {
        zero(118, 2), zero(182, 2), zero(184, 8);
        legacy.bytes[184] = static_cast<std::uint8_t>(random() % 3);
        legacy.bytes[188] = legacy.bytes[184] != 0;
        legacy.lines.resize(legacy.bytes[184]);
        for (CGE_HATCHLINE& line : legacy.lines)
            line.spacing = static_cast<int>(random() % 100);
    }
    return legacy;
}

bool SameLines(const std::vector<CGE_HATCHLINE>& a, const std::vector<CGE_HATCHLINE>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& x, const auto& y) { return x.spacing == y.spacing; });
}

TEST_F(LegacyFillTest, WhatHasAPlaceSurvives) {
    std::mt19937 random(21);
    const auto there = [&]<class Legacy>(Legacy legacy) {
        CGE_FILL fill;
        ASSERT_TRUE(ToCurrent(fill, legacy));
        Legacy again;
        ASSERT_TRUE(ToLegacy(fill, again));
        EXPECT_EQ(WithoutTmpFile(again), WithoutTmpFile(legacy)) << legacy.GetType();
        EXPECT_TRUE(SameLines(again.lines, legacy.lines));
        if (const CGE_PATTERNFILL* pattern = fill.Pattern()) {
            EXPECT_EQ(std::memcmp(&pattern->originalBoundingBox, &pattern->boundingBox, sizeof(RECT)), 0);
        }
    };
    for (int i = 0; i < 100; ++i) {
        for (const CgeFillType kind : kKinds) {
            there(RandomRecord<CGE_FILL_1250>(kind, random));
            if (kind != FillHatch) there(RandomRecord<CGE_FILL_1200>(kind, random));
        }
    }
}

TEST_F(LegacyFillTest, BlendFlagOf1200) {
    const auto load = [&](unsigned flag, unsigned rate) {
        CGE_FILL_1200 legacy;
        legacy.SetType(FillFountain);
        legacy.bytes.resize(52);
        Put16(legacy.bytes, 44, flag);
        Put16(legacy.bytes, 46, rate);
        CGE_FILL fill;
        fill.EditFountain().SetBlendRateMethod(BlendRateCustom);
        fill.EditFountain().SetBlendRateValue(33);
        EXPECT_TRUE(ToCurrent(fill, legacy));
        EXPECT_EQ(fill.Fountain().GetBlendRateMethod(), BlendRateDefault);
        return fill.Fountain().GetBlendRateValue();
    };
    EXPECT_EQ(load(0, 70), 50);
    EXPECT_EQ(load(1, 70), 70);
    EXPECT_EQ(load(2, 70), 33);
    EXPECT_EQ(load(0xFFFF, 70), 33);
    CGE_FILL even(FillFountain);
    even.EditFountain().SetBlendRateMethod(BlendRateCustom);
    CGE_FILL_1200 legacy;
    EXPECT_TRUE(ToLegacy(even, legacy));
    EXPECT_EQ(Bytes(legacy.bytes.begin() + 44, legacy.bytes.begin() + 48), (Bytes{0, 0, 50, 0}));
}

TEST_F(LegacyFillTest, KindsWithoutALayout) {
    const auto check = [&]<class Legacy>(Legacy legacy, unsigned kind, bool converts) {
        const Bytes rest(legacy.bytes.begin() + 2, legacy.bytes.end());
        CGE_FILL fill = Make(FillUniform);
        legacy.SetType(static_cast<CgeFillType>(kind));
        EXPECT_EQ(ToCurrent(fill, legacy), converts) << kind;
        EXPECT_EQ(fill.GetType(), kind);
        EXPECT_EQ(fill.Uniform().color, Rgb(1, 2, 3)) << "nothing else is touched";
        legacy.SetType(FillUniform);
        EXPECT_EQ(ToLegacy(fill, legacy), converts) << kind;
        EXPECT_EQ(legacy.GetType(), kind);
        EXPECT_EQ(Bytes(legacy.bytes.begin() + 2, legacy.bytes.end()), rest);
        Legacy fresh;
        EXPECT_EQ(ToLegacy(fill, fresh), converts);
        EXPECT_EQ(fresh.bytes.size(), fresh.kHeaderSize);
    };
    for (const unsigned kind : {0u, 3u, 4u, 5u, 13u, 0x102u, 0xFFFFu}) {
        check(CGE_FILL_1200{Bytes(40, 0xEE), {}}, kind, kind < 12);
        check(CGE_FILL_1250{Bytes(40, 0xEE), {}}, kind, kind < 12);
    }
    check(CGE_FILL_1200{Bytes(40, 0xEE), {}}, FillHatch, false);
}

TEST_F(LegacyFillTest, ALoadedPatternOwnsWhatItHolds) {
    for (const CgeFillType kind : {FillColorBitmap, FillVector, FillTexture}) {
        CGE_FILL source = Make(kind);
        const std::uint32_t foreign = source.Pattern()->tmpFile;
        CGE_FILL_1250 legacy;
        ASSERT_TRUE(ToLegacy(source, legacy));
        const auto loadWithBlock = [&](std::uint32_t id) {
            std::memcpy(&legacy.bytes[8], &id, 4);
            CGE_FILL fill = Make(kind);  // stale data of its own
            EXPECT_TRUE(ToCurrent(fill, legacy));
            return fill;
        };
        const CGE_FILL fill = loadWithBlock(kBlockId);
        const CGE_PATTERNFILL& pattern = *fill.Pattern();
        EXPECT_EQ(MEMMANGetSize(pattern.patternData), kPatternDataSize);
        EXPECT_NE(pattern.patternData, m_block);
        EXPECT_EQ(pattern.GetOwner(), nullptr);
        EXPECT_EQ(pattern.instance, this);
        EXPECT_NE(pattern.tmpFile, 0u);
        EXPECT_NE(pattern.tmpFile, foreign);
        EXPECT_EQ(TMPOpenTmpFile(pattern.tmpFile) != nullptr, kind == FillVector);
        EXPECT_EQ(TMPGetPrivateData(pattern.tmpFile), nullptr);
        m_remapper.unknownBlock = m_short;
        for (const std::uint32_t id : {0u, kOtherId, 12345u})
            EXPECT_EQ(loadWithBlock(id).Pattern()->patternData, nullptr) << id;
        std::fill_n(legacy.bytes.begin() + 48, 4, std::uint8_t{0});
        EXPECT_EQ(loadWithBlock(kBlockId).Pattern()->tmpFile, 0u);
    }
    CGE_FILL_1200 mono{Golden(FillMonoBitmap, 1200), {}};
    CGE_FILL fill;
    EXPECT_TRUE(ToCurrent(fill, mono));
    EXPECT_EQ(fill.MonoBitmap().bitmap, m_short);
}

TEST_F(LegacyFillTest, AnyBytesMakeARecordThatCanBeUsed) {
    std::mt19937 random(22);
    m_remapper.unknownBlock = m_short;
    const auto load = [&]<class Legacy>(Legacy legacy, unsigned kind) {
        legacy.bytes.resize(random() % 420);
        FillRandom(legacy.bytes, random);
        if (legacy.bytes.size() >= 2) legacy.SetType(static_cast<CgeFillType>(kind));
        if (kind == FillFountain && legacy.bytes.size() > 60) legacy.bytes[48] = legacy.bytes[52] = 0xFF;
        if (random() % 2 && legacy.bytes.size() > 12)
            std::memcpy(&legacy.bytes[legacy.kHeaderSize], &kBlockId, 4);
        legacy.lines.resize(random() % 3);
        CGE_FILL fill;
        EXPECT_EQ(ToCurrent(fill, legacy), legacy.GetType() <= legacy.kLastKind);
        EXPECT_LE(fill.Fountain().GetNumColors() * 16, legacy.bytes.size());
        EXPECT_LE(fill.Hatch().lines.size(), legacy.lines.size());
        EXPECT_EQ(fill.Texture().info.library.Units().back(), 0);
        EXPECT_EQ(fill.Hatch().name.Units().back(), 0);
        const CGE_FILL copy = fill;
        legacy.bytes.clear();
        EXPECT_EQ(ToLegacy(fill, legacy), fill.GetType() <= legacy.kLastKind);
        EXPECT_EQ(legacy.bytes.size(), FOMIO12Conv::GetFillSize(legacy));
    };
    for (unsigned i = 0; i < 4000; ++i) {
        load(CGE_FILL_1200(), i % 14);
        load(CGE_FILL_1250(), i % 14);
    }
}

TEST_F(LegacyFillTest, CountsAreBoundedByWhatIsThere) {
    CGE_FILL fill(FillFountain), loaded;
    fill.EditFountain().SetNumColors(65535);
    CGE_FILL_1250 legacy;
    EXPECT_TRUE(ToLegacy(fill, legacy) && ToCurrent(loaded, legacy));
    EXPECT_EQ(legacy.bytes.size(), 56u + 16 * 65535);
    EXPECT_EQ(loaded.Fountain().GetNumColors(), 65535);
    legacy.bytes.resize(56 + 16 * 3 + 15);
    ASSERT_TRUE(ToCurrent(loaded, legacy));
    EXPECT_EQ(loaded.Fountain().GetNumColors(), 3) << "whole entries only";

    fill = Make(FillHatch);
    ASSERT_TRUE(ToLegacy(fill, legacy));
    const auto lines = [&](unsigned count, unsigned array) {
        Put16(legacy.bytes, 184, count);
        Put16(legacy.bytes, 188, 0);
        Put16(legacy.bytes, 190, array);
        EXPECT_TRUE(ToCurrent(loaded, legacy));
        EXPECT_EQ(FOMIO12Conv::GetNumHatchLines(legacy), array ? count : 0);
        return loaded.Hatch().lines.size();
    };
    EXPECT_EQ(lines(1, 0x100), 1u);
    EXPECT_EQ(lines(0xFFFF, 1), 2u);
    EXPECT_EQ(lines(2, 0), 0u);
}

TEST_F(LegacyFillTest, WhatTheRemapperThrowsPasses) {
    unsigned refused = 0;
    for (const CgeFillType kind : {FillMonoBitmap, FillColorBitmap, FillVector, FillTexture}) {
        CGE_FILL_1200 legacy{Golden(kind, 1200), {}};
        for (int questions = 0; questions < 2; ++questions) {
            for (const bool toCurrent : {true, false}) {
                CGE_FILL fill = Make(kind);
                m_remapper.throwAfter = questions;
                try {
                    FOMIO12Conv::ConvertCGE_FILL(toCurrent, fill, legacy, kContext, m_remapper);
                } catch (const FakeRemapper::Refused&) {
                    ++refused;
                }
                m_remapper.throwAfter = -1;
            }
        }
    }
    EXPECT_EQ(refused, 2u + 3 * 4);
}

TEST_F(LegacyFillTest, SurvivesWithoutMemory) {
    for (const CgeFillType kind : kKinds) {
        CGE_FILL source = Make(kind);
        CGE_FILL_1250 written;
        const auto rounds = testing_support::FailEachAllocation(
            [&] {
                CGE_FILL_1250 legacy;
                ToLegacy(source, legacy);
                written = std::move(legacy);
                CGE_FILL loaded;
                ToCurrent(loaded, written);
            },
            [] {});
        EXPECT_GT(rounds, 0u);
    }
}

}  // namespace
