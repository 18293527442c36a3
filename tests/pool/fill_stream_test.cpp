#include <gtest/gtest.h>

#include "host/services/calls.h"

#include "fom/fill_compare.h"
#include "fom/fill_list.h"
#include "fom/outline_list.h"
#include "fom/serialization.h"

#include "pool/stream_samples.h"
#include "support/fill_generator.h"
#include "support/recording_services.h"

namespace {

using namespace stream_test;

class FillStream : public StreamTest {};

/// Where the sections of a stream record begin, and its end. Both sizes are as large as they say, but for
/// `missing` bytes.
struct Places {
    std::size_t current = 4, legacy = 0, end = 0;
};
Places PlacesOf(const Bytes& bytes, unsigned missing) {
    Places places;
    EXPECT_EQ(WordAt(bytes, places.current), 2u);
    places.legacy = places.current + 8 + WordAt(bytes, places.current + 4) - missing;
    EXPECT_EQ(WordAt(bytes, places.legacy), 1u);
    places.end = places.legacy + 8 + WordAt(bytes, places.legacy + 4) - missing;
    EXPECT_EQ(WordAt(bytes, places.end), 0u);
    EXPECT_EQ(WordAt(bytes, places.end + 4), 0u);
    EXPECT_EQ(bytes.size(), places.end + 8);
    return places;
}

/// Numbers of temporary data are the process's own; legacy records hold them as they are.
void HideTmpFile(Bytes& bytes, std::size_t recordAt, std::size_t tmpFileAt) {
    const std::uint32_t kind = WordAt(bytes, recordAt) & 0xFFFF;
    if (kind < FillColorBitmap || kind > FillTexture) return;
    if (WordAt(bytes, recordAt + tmpFileAt) != 0) SetWord(bytes, recordAt + tmpFileAt, 1);
}

Bytes WrittenCurrent(const WRefCountFill& entry, unsigned missing) {
    Bytes bytes = Written(entry);
    HideTmpFile(bytes, PlacesOf(bytes, missing).legacy + 16, 48);
    return bytes;
}

Bytes Written1200(const WRefCountFill& entry) {
    Bytes bytes = Written(entry, 1200);
    HideTmpFile(bytes, 12, 44);
    return bytes;
}

/// As the pool compares them, but for what gives each entry an identity of its own: the temporary data of a
/// vector fill, whose contents count here, and the preview of a texture.
bool AreSame(WRefCountFill& a, WRefCountFill& b) {
    if (a.GetUserData() != b.GetUserData()) return false;
    if (a.GetFillType() == FillVector || a.GetFillType() == FillTexture)
        return RCF_CompareCGEFills(a.GetCGEFill(), b.GetCGEFill(), false) == 0;
    a.CalculateDigestKey();
    b.CalculateDigestKey();
    return a.IsEquivalentTo(&b, false);
}

TEST_F(FillStream, EveryKindHasItsBytes) {
    for (const std::string& sample : kFillSamples) {
        SCOPED_TRACE(sample);
        const Bytes& current = GoldenFills().at(sample);
        const auto read = Read<WRefCountFill>(current);
        WRefCountFill& entry = *read;
        EXPECT_EQ(ToHex(WrittenCurrent(entry, MissingBytes(sample))), ToHex(current));
        EXPECT_EQ(ToHex(Written1200(entry)), ToHex(GoldenFills().at(sample + "-1200")));

        // A section alone gives the same fill.
        const Places places = PlacesOf(current, MissingBytes(sample));
        const auto cut = [&](std::size_t from, std::size_t to) {
            return Bytes(current.begin() + static_cast<std::ptrdiff_t>(from),
                         current.begin() + static_cast<std::ptrdiff_t>(to));
        };
        Bytes only1250 = cut(0, 4);
        const Bytes legacy = cut(places.legacy, current.size());
        only1250.insert(only1250.end(), legacy.begin(), legacy.end());
        const auto old = Read<WRefCountFill>(only1250);
        EXPECT_TRUE(AreSame(*old, entry));
        const Bytes again = WrittenCurrent(*old, MissingBytes(sample));
        EXPECT_EQ(Bytes(again.end() - static_cast<std::ptrdiff_t>(legacy.size()), again.end()), legacy);

        const auto older = Read<WRefCountFill>(Written1200(entry), 1200);
        EXPECT_EQ(Written1200(*older), Written1200(entry));
        EXPECT_EQ(older->GetFillType(), entry.GetFillType() == FillHatch ? 0 : entry.GetFillType());
    }
}

// What a record does not hold itself; tests/golden/bodies.txt has the fields.
TEST_F(FillStream, WhatFollowsTheRecordIsWhatItWas) {
    const auto uniform = Read<WRefCountFill>(GoldenFills().at("uniform"));
    EXPECT_EQ(uniform->GetUserData(), 0x01020304u);
    EXPECT_EQ(testing_support::BytesOf(FillSample("mono").MonoBitmap().bitmap),
              (std::vector<std::uint8_t>{8, 0, 1, 0, 0xF0}));
    const CGE_FILL vector = FillSample("vector"), image = FillSample("image"), hatch = FillSample("hatch");
    char svg[7] = {};
    EXPECT_EQ(TMPOpenTmpFile(vector.Vector().tmpFile)->Read(svg, sizeof svg), 6u);
    EXPECT_STREQ(svg, "<svg/>");
    const RIMAGE* raster = UDIIMGGetBaseImage(UDIIMGFromTmpFile(image.ColorBitmap().tmpFile));
    ASSERT_TRUE(raster && raster->GetWidth() == 2 && raster->GetHeight() == 1);
    for (unsigned i = 0; i < 6; ++i)
        EXPECT_EQ(raster->GetSample(i / 3, 0, i % 3), i + 1);
    EXPECT_EQ(hatch.Hatch().lines.at(0).pen.leftArrow, kArrow);
    EXPECT_EQ(hatch.Hatch().lines.at(0).pen.rightArrow, kOtherArrow);
}

TEST_F(FillStream, GeneratedFillsComeBackAsTheyWere) {
    testing_support::FillGenerator generator(7);
    for (int i = 0; i < 600; ++i) {
        CGE_FILL fill = generator.Make();
        if (CGE_TXRINFO* info = fill.GetType() == FillTexture ? &fill.EditTexture().info : nullptr) {
            info->maxEdge = static_cast<std::uint16_t>(info->maxEdge % 3 + 1);
            info->resolution = static_cast<std::uint16_t>(info->resolution % 3 + 1);
        }
        WRefCountFill entry(&fill);
        entry.SetUserData(generator.Pick(9));
        udi::PersistentPtrRemapper remapper;
        MemoryFileStream stream;
        entry.WriteTo(stream, remapper);
        const bool mono = fill.GetType() == FillMonoBitmap || fill.GetType() == FillMonoBitmapAlt;
        const bool bare = (mono && !fill.MonoBitmap().bitmap) ||
                          (fill.GetType() == FillVector && fill.Vector().tmpFile == 0);
        PlacesOf({stream.GetBytes().begin(), stream.GetBytes().end()}, bare ? 4 : 0);

        // Objects that are still there are found again.
        auto read = std::make_unique<WRefCountFill>(false);
        read->ReadFrom(stream, remapper);
        ASSERT_TRUE(stream.IsGood());
        ASSERT_TRUE(AreSame(*read, entry)) << fill.GetType();
        EXPECT_EQ(read->GetReference(), 0);
        const CGE_PATTERNFILL* pattern = read->GetCGEFill()->Pattern();
        if (pattern && pattern->patternData) {
            EXPECT_EQ(pattern->GetOwner(), read.get());
        }
        if (fill.GetType() == FillVector || fill.GetType() == FillTexture) continue;
        const auto pool = std::make_shared<WRCFillList>();
        auto copy = std::make_unique<WRefCountFill>(&fill);
        copy->SetUserData(entry.GetUserData());
        const WRefCountFill* first = pool->AddOrGetDuplicate(copy.release(), nullptr);
        EXPECT_EQ(pool->AddOrGetDuplicate(read.release(), nullptr), first);
    }
}

TEST_F(FillStream, TheVersionOfTheDocumentChoosesTheForm) {
    const WRefCountFill entry(true);
    EXPECT_EQ(Written(entry, 1250), Written(entry));
    EXPECT_EQ(Written(entry, 1300), Written(entry));
    EXPECT_EQ(Written(entry, 1249), Written(entry, 1200));
    EXPECT_EQ(Written(entry, 1249).size(), 12u + 32);
    const CGE_FILL unknown(static_cast<CgeFillType>(13));
    Bytes none;
    Append(none, {0, 4, 0, 0});
    EXPECT_EQ(Written(WRefCountFill(&unknown), 1200), none);
    Bytes hatch = Written(entry, 1200);
    SetWord(hatch, 0, FillHatch);
    EXPECT_EQ(Read<WRefCountFill>(hatch, 1200)->GetFillType(), FillNone);
}

/// The parts of a stream that a test puts together.
struct Section {
    Bytes bytes;
    static Section Of(const WRefCountFill& entry, bool current) {
        const Bytes all = Written(entry);
        const Places places = PlacesOf(all, 0);
        const auto at = [&](std::size_t n) { return all.begin() + static_cast<std::ptrdiff_t>(n); };
        return {current ? Bytes(at(places.current), at(places.legacy))
                        : Bytes(at(places.legacy), at(places.end))};
    }
};
Bytes Joined(std::initializer_list<Section> sections) {
    Bytes bytes(4);
    for (const Section& section : sections)
        bytes.insert(bytes.end(), section.bytes.begin(), section.bytes.end());
    Append(bytes, {0, 0});
    return bytes;
}

TEST_F(FillStream, TheFirstKnownSectionWins) {
    const WRefCountFill black(true);
    const auto vectorEntry = Read<WRefCountFill>(GoldenFills().at("vector"));
    const auto monoEntry = Read<WRefCountFill>(GoldenFills().at("mono"));
    const WRefCountFill &vector = *vectorEntry, &mono = *monoEntry;
    const auto current = [](const WRefCountFill& entry) { return Section::Of(entry, true); };
    const auto legacy = [](const WRefCountFill& entry) { return Section::Of(entry, false); };
    Section unknown, empty, emptyLegacy;
    Append(unknown.bytes, {3, 40000});
    unknown.bytes.resize(8 + 40000, std::byte{2});
    Append(empty.bytes, {2, 8, FillUniform, 0});
    Append(emptyLegacy.bytes, {1, 8, FillUniform, 0});

    const auto kindOf = [](std::initializer_list<Section> sections) {
        return Read<WRefCountFill>(Joined(sections))->GetFillType();
    };
    EXPECT_EQ(kindOf({}), FillNone);
    EXPECT_EQ(kindOf({unknown, unknown, current(black)}), FillUniform);
    EXPECT_EQ(kindOf({current(mono), legacy(vector), current(vector), legacy(mono), unknown}),
              FillMonoBitmap);
    EXPECT_EQ(kindOf({legacy(vector), current(mono), current(black), legacy(black)}), FillVector);
    EXPECT_EQ(kindOf({empty, current(black), legacy(vector)}), FillNone);
    EXPECT_EQ(kindOf({emptyLegacy, current(mono)}), FillNone);
}

TEST_F(FillStream, AKindThatIsNotKnownIsNoFill) {
    const WRefCountFill black(true);
    for (const std::uint32_t kind : {3u, 4u, 5u, 13u, 0x00010001u, 0xFFFFFFFFu})
        for (const bool current : {true, false}) {
            Section section = Section::Of(black, current);
            SetWord(section.bytes, 8, kind);
            EXPECT_EQ(Read<WRefCountFill>(Joined({section, Section::Of(black, false)}))->GetFillType(),
                      FillNone);
        }
}

TEST_F(FillStream, ABodyThatCannotBeReadIsNoFillAndSaysSo) {
    for (const std::string& sample : kFillSamples) {
        SCOPED_TRACE(sample);
        Bytes bytes = GoldenFills().at(sample);
        bytes[20] = bytes[21] = std::byte{0};  // the body's version
        MemoryFileStream stream = StreamOf(bytes);
        WRefCountFill read(true);
        read.ReadFrom(stream);
        EXPECT_FALSE(stream.IsGood());
        EXPECT_EQ(read.GetFillType(), FillNone);
        EXPECT_EQ(stream.GetRemaining(), 0u);
    }
}

TEST_F(FillStream, ExternalDataThatIsGoneOrUnwantedKeepsTheStreamInStep) {
    WRefCountFill dangling(false);
    *dangling.GetCGEFill() = CGE_FILL(FillVector);
    dangling.GetCGEFill()->EditVector().tmpFile = 0x7FFFFFFF;
    const Bytes bytes = Written(dangling);
    EXPECT_EQ(WordAt(bytes, 8), WordAt(bytes, 16) + 12);
    EXPECT_EQ(Read<WRefCountFill>(bytes)->GetCGEFill()->Vector().tmpFile, 0u);

    // An image for a record that names none, what is no image, and a texture's bytes.
    const CGE_FILL image = FillSample("image"), none(FillColorBitmap);
    Section unnamed = Section::Of(WRefCountFill(&none), true);
    SetWord(unnamed.bytes, unnamed.bytes.size() - 4, 3);
    unnamed.bytes.resize(unnamed.bytes.size() + 3);
    EXPECT_EQ(Read<WRefCountFill>(Joined({unnamed}))->GetCGEFill()->ColorBitmap().tmpFile, 0u);
    Section damaged = Section::Of(WRefCountFill(&image), true);
    damaged.bytes.at(damaged.bytes.size() - 6 - 28) ^= std::byte{1};
    MemoryFileStream stream = StreamOf(Joined({damaged}));
    WRefCountFill read(true);
    read.ReadFrom(stream);
    EXPECT_FALSE(stream.IsGood());
    EXPECT_EQ(stream.GetRemaining(), 0u);
    EXPECT_EQ(read.GetFillType(), FillColorBitmap);
    EXPECT_EQ(read.GetCGEFill()->ColorBitmap().tmpFile, 0u);
    const CGE_FILL texture = FillSample("texture");
    Section preview = Section::Of(WRefCountFill(&texture), true);
    SetWord(preview.bytes, preview.bytes.size() - 4, 2);
    preview.bytes.resize(preview.bytes.size() + 2);
    const auto unrendered = Read<WRefCountFill>(Joined({preview}));
    EXPECT_EQ(unrendered->GetCGEFill()->Texture().tmpFile, 0u);
    EXPECT_NE(unrendered->GetCGEFill()->Texture().patternData, nullptr);
}

TEST_F(FillStream, TexturesAreRenderedAgain) {
    testing_support::RecordingServices services;
    services.rasterResolution = 144;
    const testing_support::ServicesScope scope(services);
    CGE_FILL fill = FillSample("texture");
    fill.EditTexture().AdoptPatternData(nullptr);
    FOMSerialization::SetTextureLoaded(false);
    struct Case {
        std::uint16_t edge, resolution, loadedEdge, loadedResolution;
        std::uint32_t side;
    };
    for (const Case& c : {Case{0, 0, 2049, 144, 256}, {100, 0, 100, 144, 100}, {300, 72, 300, 72, 256}}) {
        fill.EditTexture().info.maxEdge = c.edge;
        fill.EditTexture().info.resolution = c.resolution;
        const auto read = Read<WRefCountFill>(Written(WRefCountFill(&fill)));
        const CGE_TEXTUREFILL& texture = read->GetCGEFill()->Texture();
        EXPECT_EQ(texture.info.maxEdge, c.loadedEdge);
        EXPECT_EQ(texture.info.resolution, c.loadedResolution);
        EXPECT_EQ(TMPGetTmpFileTag(texture.tmpFile), 128u);
        const RIMAGE* preview = UDIIMGGetBaseImage(UDIIMGFromTmpFile(texture.tmpFile));
        ASSERT_TRUE(preview);
        EXPECT_EQ(preview->GetWidth(), c.side);
        EXPECT_EQ(preview->GetHeight(), c.side);
        EXPECT_EQ(MEMMANGetSize(texture.patternData), kPatternDataSize);
        EXPECT_EQ(texture.GetOwner(), read.get());
    }
    EXPECT_TRUE(FOMSerialization::WasTextureLoaded());
    fill.EditTexture().info.texture.Set(L"no such texture");
    EXPECT_EQ(Read<WRefCountFill>(Written(WRefCountFill(&fill)))->GetCGEFill()->Texture().tmpFile, 0u);
}

TEST_F(FillStream, ArrowheadsOfHatchPensComeFromTheOldSection) {
    const CGE_FILL hatch = FillSample("hatch");
    const auto alone = Read<WRefCountFill>(Joined({Section::Of(WRefCountFill(&hatch), true)}));
    EXPECT_EQ(alone->GetCGEFill()->Hatch().lines.at(0).pen.leftArrow, nullptr);
    EXPECT_EQ(alone->GetCGEFill()->Hatch().lines.at(0).pen.width, 70);
}

TEST_F(FillStream, EqualBitmapsAreSharedAfterLoading) {
    CGE_FILL fill(FillMonoBitmap);
    const HMEM own = fill.EditMonoBitmap().bitmap = BlockOf("bitmap");
    const Bytes bytes = Written(WRefCountFill(&fill));
    const auto first = Read<WRefCountFill>(bytes), second = Read<WRefCountFill>(bytes);
    EXPECT_NE(first->GetCGEFill()->MonoBitmap().bitmap, own);
    EXPECT_EQ(first->GetCGEFill()->MonoBitmap().bitmap, second->GetCGEFill()->MonoBitmap().bitmap);
    MEMMANFree(own);
}

TEST_F(FillStream, TheContextIsHandedBack) {
    const ColorContext other = ColorContext::Uncalibrated();
    EXPECT_EQ(FOMSerialization::GetColorContext(), ColorContext::GetApplicationDefaultColorContext());
    const ColorContext& before = FOMSerialization::SetColorContext(ColorContext());
    EXPECT_EQ(before, other);
    EXPECT_FALSE(FOMSerialization::GetColorContext().IsValid());
    EXPECT_FALSE(FOMSerialization::SetColorContext(before).IsValid());
    EXPECT_EQ(FOMSerialization::GetColorContext(), other);
}

TEST_F(FillStream, TheRecordFunctionsMakeAndReplaceRecords) {
    CGE_FILL source = FillSample("vector");
    udi::PersistentPtrRemapper remapper;
    MemoryFileStream stream;
    FOMFillSerialization::WriteTo(stream, source, remapper);
    CGE_FILL* record = nullptr;
    FOMFillSerialization::ReadFrom(stream, record, remapper);
    ASSERT_TRUE(record);
    WRefCountFill read(record), written(&source);
    EXPECT_TRUE(AreSame(read, written));
    MemoryFileStream nothing;
    FOMFillSerialization::ReadFrom(nothing, record, remapper);
    EXPECT_FALSE(nothing.IsGood());
    EXPECT_EQ(record->GetType(), FillNone);
    EXPECT_EQ(record->Vector().tmpFile, 0u);
    delete record;
}

TEST_F(FillStream, LosersWaitForTheEndOfTheLoad) {
    const auto fills = std::make_shared<WRCFillList>();
    WRCOutlineList outlines;
    MemoryFileStream stream;
    const CGE_FILL fill = FillSample("image");
    const std::size_t entries = host::LiveTmpEntries();
    for (int i = 0; i < 2; ++i) {
        fills->AddOrGetDuplicate(new WRefCountFill(&fill), &stream);
        outlines.AddOrGetDuplicate(new WRefCountOutline(true), &stream);
    }
    EXPECT_EQ(host::LiveTmpEntries(), entries + 2);
    FOMGREndLoad(stream);
    EXPECT_EQ(host::LiveTmpEntries(), entries + 1);
}

}  // namespace
