#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/base/temp_data.h"
#include "host/gfx/arrowhead.h"
#include "host/gfx/image.h"
#include "host/stream/file_stream.h"

#include "fom/mono_bitmap_manager.h"
#include "fom/refcount_fill.h"
#include "fom/refcount_outline.h"

#include "support/leak_check.h"

/// Records with a value of its own in every field that is stored, and their bytes.
namespace stream_test {

using Bytes = std::vector<std::byte>;
using Version = std::optional<std::uint32_t>;

inline HMEM BlockOf(std::string_view bytes) {
    const HMEM block = MEMMANAlloc(bytes.size(), false);
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(MEMMANLock(block)));
    MEMMANUnlock(block);
    return block;
}

/// Registered before any test counts blocks: arrowheads stay as long as the process.
inline const HMEM kArrow = SUDIRegisterArrow(BlockOf("arrow"));
inline const HMEM kOtherArrow = SUDIRegisterArrow(BlockOf("other arrow"));
/// What a size that is cut off reads as.
inline const HMEM kEmptyArrow = SUDIRegisterArrow(BlockOf(""));

inline CGE_OUTLINE OutlineSample() {
    CGE_OUTLINE outline;
    outline.type = OutlineSolid | 32;
    outline.width = 70;
    outline.join = 1;
    outline.color.MakeCMYK(1, 2, 3, 4);
    outline.leftArrow = kArrow;
    outline.rightArrow = kOtherArrow;
    outline.SetMiterLimit(5000000);
    return outline;
}

inline VyrUtils::Guid GuidSample() {
    std::array<std::uint8_t, 16> bytes;
    bytes.fill(0x5A);
    return VyrUtils::Guid(bytes);
}

struct Sample {
    const char* name;
    CGE_FILL fill;
    /// Bytes that the sections' sizes announce and that are not there.
    unsigned missing = 0;
};

/// Makes the samples, owns what they name and frees what is loaded.
class SampleMaker {
protected:
    ~SampleMaker() {
        MEMMANFree(m_bitmap);
        FOMMonoBmpMgr::GetInst()->FreeAllBitmaps();
    }

    CGE_FILL MonoSample(CgeFillType kind, HMEM bitmap) const {
        CGE_FILL fill(kind);
        CGE_MONOBMPFILL& mono = fill.EditMonoBitmap();
        mono.bitmap = bitmap;
        mono.tiling = {100, 200, 3, 4, 5, 6};
        mono.foreground.MakeRGB(1, 2, 3);
        mono.background.MakeGray(9);
        mono.screen.overprint = 1;
        return fill;
    }

    template <class Pattern>
    static void SetPattern(Pattern& pattern) {
        pattern.tiling = {100, -200, 3, 4, 5, 6};
        pattern.boundingBox = pattern.originalBoundingBox = {1, 2, 30, 40};
    }
    static CGE_FILL VectorSample(std::string_view content) {
        CGE_FILL fill(FillVector);
        SetPattern(fill.EditVector());
        if (!content.empty())
            fill.EditVector().AdoptTmpFile(TMPCreateTmpFile(std::as_bytes(std::span(content))));
        return fill;
    }
    static std::uint32_t NewImage() {
        auto raster = RIMAGE::Create(2, 1, 3, 8);
        raster->WriteRow(0, std::array<std::uint8_t, 6>{1, 2, 3, 4, 5, 6});
        return TMPRegisterPrivateData(UDIIMGCreateFromRIMAGE(std::move(raster)));
    }
    static CGE_FILL ImageSample() {
        CGE_FILL fill(FillColorBitmap);
        SetPattern(fill.EditColorBitmap());
        fill.EditColorBitmap().AdoptTmpFile(NewImage());
        return fill;
    }
    static CGE_FILL TextureSample() {
        CGE_FILL fill(FillTexture);
        CGE_TEXTUREFILL& texture = fill.EditTexture();
        SetPattern(texture);
        texture.AdoptTmpFile(NewImage());
        texture.AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
        std::memset(MEMMANLock(texture.patternData), 7, 3);
        MEMMANUnlock(texture.patternData);
        texture.info.present = 1;
        texture.info.resolution = 72;
        texture.info.maxEdge = 8;
        texture.info.library.Set(L"Standard");
        texture.info.texture.Set(L"Checker");
        return fill;
    }
    static CGE_FILL HatchSample() {
        CGE_FILL fill(FillHatch);
        CGE_HATCHFILL& hatch = fill.EditHatch();
        hatch.background.MakeCMYKWhite();
        hatch.modification = 5;
        hatch.spacingMultiplier = 1.5;
        hatch.thicknessMultiplier = 0.5;
        hatch.name.Set(L"Bricks");
        hatch.lines = {{{1, 2}, 3, 4, 5, OutlineSample()}, {{6, 7}, 8, 9, 10, {}}};
        return fill;
    }
    static CGE_FILL FountainSample() {
        CGE_FILL fill(FillFountain);
        CGE_FOUNTAINFILL& fountain = fill.EditFountain();
        fountain.SetFountainType(FountainRadial);
        fountain.SetAngle(45000000);
        fountain.SetCenterOffset(10, -10);
        fountain.SetBlendRateValue(70);
        fountain.SetNumColors(2);
        CLR_FOUNTCOLOR stop;
        stop.color.MakeRGB(1, 2, 3);
        stop.position = 100;
        fountain.SetColor(1, stop);
        return fill;
    }

    std::vector<Sample> Samples() const {
        CGE_FILL uniform(FillUniform);
        uniform.EditUniform().color.MakeCMYK(10, 20, 30, 40);
        uniform.EditUniform().screen.frequency = 75;
        CGE_FILL postScript(FillPostScript);
        postScript.EditPostScript() = {3, 4, {5, -6, 7, -8, 9}};
        std::vector<Sample> samples;
        samples.push_back({"none", CGE_FILL()});
        samples.push_back({"uniform", std::move(uniform)});
        samples.push_back({"fountain", FountainSample()});
        samples.push_back({"PostScript", std::move(postScript)});
        samples.push_back({"mono", MonoSample(FillMonoBitmap, m_bitmap)});
        samples.push_back({"mono-without-bitmap", MonoSample(FillMonoBitmapAlt, nullptr), 4});
        samples.push_back({"image", ImageSample()});
        samples.push_back({"no-image", CGE_FILL(FillColorBitmap)});
        samples.push_back({"vector", VectorSample("<svg/>")});
        samples.push_back({"vector-without-data", VectorSample(""), 4});
        samples.push_back({"texture", TextureSample()});
        samples.push_back({"hatch", HatchSample()});
        for (Sample& sample : samples)
            sample.fill.SetGuid(GuidSample());
        return samples;
    }

    const HMEM m_bitmap = BlockOf(std::string_view("\x08\0\x01\0\xF0", 5));
};

class StreamTest : public testing_support::LeakCheckedTest, protected SampleMaker {};

template <class Entry>
Bytes Written(const Entry& entry, Version version = {}) {
    MemoryFileStream stream;
    stream.RegisterDocumentVersion(version);
    entry.WriteTo(stream);
    EXPECT_TRUE(stream.IsGood());
    return {stream.GetBytes().begin(), stream.GetBytes().end()};
}

inline MemoryFileStream StreamOf(Bytes bytes, Version version = {}) {
    MemoryFileStream stream(std::move(bytes));
    stream.RegisterDocumentVersion(version);
    return stream;
}

/// Null, and the test fails, when the stream is not good or not all of it was read.
inline std::unique_ptr<WRefCountFill> ReadFill(Bytes bytes, Version version = {}) {
    MemoryFileStream stream = StreamOf(std::move(bytes), version);
    auto entry = std::make_unique<WRefCountFill>(true);
    entry->ReadFrom(stream);
    EXPECT_TRUE(stream.IsGood());
    EXPECT_EQ(stream.GetRemaining(), 0u);
    return entry;
}

inline std::uint32_t WordAt(const Bytes& bytes, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < 4; ++i)
        word |= std::to_integer<std::uint32_t>(bytes.at(at + i)) << (8 * i);
    return word;
}

inline void SetWord(Bytes& bytes, std::size_t at, std::uint32_t word) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(at + i) = static_cast<std::byte>(word >> (8 * i));
}

/// Appends numbers as the stream has them.
inline void Append(Bytes& bytes, std::initializer_list<std::uint32_t> words) {
    for (const std::uint32_t word : words) {
        bytes.resize(bytes.size() + 4);
        SetWord(bytes, bytes.size() - 4, word);
    }
}

/// As golden files have it.
inline std::string ToHex(const Bytes& bytes) {
    const char* const digits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % 48 == 0) text += '\n';
        text += digits[std::to_integer<unsigned>(bytes[i]) >> 4];
        text += digits[std::to_integer<unsigned>(bytes[i]) & 15];
    }
    return text;
}

using Goldens = std::map<std::string, std::vector<std::uint8_t>>;
inline void ExpectGolden(const Goldens& goldens, const std::string& name, const Bytes& bytes) {
    const auto golden = goldens.find(name);
    const bool same =
        golden != goldens.end() && std::ranges::equal(std::as_bytes(std::span(golden->second)), bytes);
    EXPECT_TRUE(same) << "[" << name << "]" << ToHex(bytes);
}

}  // namespace stream_test
