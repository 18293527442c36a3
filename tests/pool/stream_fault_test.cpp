// Fill and outline records over streams that fail or lie: whatever is there, reading ends, owns what it has
// once, takes no more memory than its bytes allow and tells when it was not whole.

#include <functional>
#include <gtest/gtest.h>

#include "fom/fill_list.h"
#include "fom/serialization.h"

#include "pool/stream_samples.h"
#include "support/alloc_faults.h"
#include "support/faulty_stream.h"

namespace {

using namespace stream_test;
using testing_support::FaultyStream;
using testing_support::HeapMeter;

constexpr std::size_t kSlack = std::size_t{1} << 20;
constexpr Version kVersions[] = {Version(), Version(1200)};

/// One stored entry of either sort.
struct Stored {
    std::string name;
    Version version;
    std::shared_ptr<ArchiveObject> entry;
    Bytes bytes;
};

/// The current section under a tag that nobody knows.
Stored WithoutCurrentSection(Stored stored) {
    SetWord(stored.bytes, 4, 3);
    // Skipped by its size, which for two samples is more than there is.
    SetWord(stored.bytes, 8, WordAt(stored.bytes, 8) - MissingBytes(stored.name));
    return stored;
}

std::vector<Stored> StoredEntries() {
    std::vector<Stored> entries;
    const auto add = [&](const std::string& name, std::shared_ptr<ArchiveObject> entry) {
        for (const Version version : kVersions)
            entries.push_back({name, version, entry, Written(*entry, version)});
    };
    for (const std::string& name : kFillSamples) {
        add(name, Read<WRefCountFill>(GoldenFills().at(name)));
        entries.push_back(WithoutCurrentSection(entries.end()[-2]));
    }
    add("outline", Read<WRefCountOutline>(GoldenOutlines().at("solid")));
    return entries;
}

bool IsFill(const Stored& stored) {
    return std::string_view(stored.entry->getClassName()) == "WRefCountFill";
}

std::unique_ptr<ArchiveObject> Empty(const Stored& stored) {
    if (IsFill(stored)) return std::make_unique<WRefCountFill>(true);
    return std::make_unique<WRefCountOutline>(true);
}

class StreamFaults : public StreamTest {};

TEST_F(StreamFaults, ReadingACutStreamEndsAndSaysSo) {
    for (const Stored& stored : StoredEntries())
        for (std::size_t size = 0; size < stored.bytes.size(); ++size)
            for (const bool hides : {false, true}) {
                MemoryFileStream whole = StreamOf(stored.bytes, stored.version);
                FaultyStream stream(whole);
                stream.EndAfter(size);
                if (hides) stream.HideRemaining();
                Empty(stored)->ReadFrom(stream);
                ASSERT_FALSE(stream.IsGood()) << stored.name << " cut at " << size;
            }
}

TEST_F(StreamFaults, AFailedCallIsNotLost) {
    for (const Stored& stored : StoredEntries()) {
        SCOPED_TRACE(stored.name);
        for (std::uint64_t call = 1;; ++call) {
            MemoryFileStream whole = StreamOf(stored.bytes, stored.version);
            FaultyStream stream(whole);
            stream.FailCall(call);
            Empty(stored)->ReadFrom(stream);
            if (stream.GetCalls() < call) break;
            ASSERT_FALSE(stream.IsGood()) << "reading, call " << call;
        }
        for (std::uint64_t call = 1;; ++call) {
            MemoryFileStream disk = StreamOf({}, stored.version);
            FaultyStream stream(disk);
            stream.FailCall(call);
            stored.entry->WriteTo(stream);
            if (stream.GetCalls() < call) break;
            ASSERT_FALSE(stream.IsGood()) << "writing, call " << call;
        }
        const Bytes written = Written(*stored.entry, stored.version);
        for (std::size_t size = 0; size < written.size(); ++size) {
            MemoryFileStream disk = StreamOf({}, stored.version);
            FaultyStream stream(disk);
            stream.EndAfter(size);
            stored.entry->WriteTo(stream);
            ASSERT_FALSE(stream.IsGood()) << "full after " << size;
            ASSERT_TRUE(std::ranges::equal(disk.GetBytes(), std::span(written).first(size)));
        }
    }
}

/// Reads the bytes with a bound on memory; the entry must be good for writing and comparing whatever it is.
void ReadAnything(const Bytes& bytes, Version version, ArchiveObject& entry, bool hides = false) {
    MemoryFileStream memory = StreamOf(bytes, version);
    FaultyStream stream(memory);
    if (hides) stream.HideRemaining();
    const HeapMeter meter;
    entry.ReadFrom(stream);
    ASSERT_LE(meter.ThreadPeak(), static_cast<std::ptrdiff_t>(16 * bytes.size() + kSlack));
    MemoryFileStream again;
    entry.WriteTo(again);
    ASSERT_TRUE(again.IsGood());
}

/// Arrowheads with other bytes stay registered: blocks are counted by the tests above.
class HostileStream : public testing::Test {
protected:
    ~HostileStream() override {
        FOMMonoBmpMgr::GetInst()->FreeAllBitmaps();
        EXPECT_EQ(host::LiveTmpEntries(), m_entries);
        EXPECT_EQ(host::LiveImages(), m_images);
    }
    void ReadEach(const std::function<void(Bytes&, std::size_t)>& change, std::size_t step) {
        for (const Stored& stored : StoredEntries())
            for (std::size_t at = 0; at < stored.bytes.size(); at += step) {
                Bytes bytes = stored.bytes;
                change(bytes, at);
                const auto entry = Empty(stored);
                SCOPED_TRACE(stored.name + " changed at " + std::to_string(at));
                ASSERT_NO_FATAL_FAILURE(ReadAnything(bytes, stored.version, *entry, at % 2 != 0));
            }
    }

private:
    const std::size_t m_entries = host::LiveTmpEntries();
    const std::size_t m_images = host::LiveImages();
};

TEST_F(HostileStream, AnyBitMayBeWrong) {
    for (int bit = 0; bit < 8; ++bit)
        ReadEach([bit](Bytes& bytes, std::size_t at) { bytes[at] ^= static_cast<std::byte>(1 << bit); }, 1);
}

TEST_F(HostileStream, AnyNumberMayBeHuge) {
    for (const std::byte last : {std::byte{0xFF}, std::byte{0x7F}})
        ReadEach(
            [last](Bytes& bytes, std::size_t at) {
                for (std::size_t i = at; i < std::min(at + 4, bytes.size()); ++i)
                    bytes[i] = i == at + 3 ? last : std::byte{0xFF};
            },
            1);
}

TEST_F(HostileStream, AnyByteMayBeAnyKind) {
    for (std::uint8_t kind = FillNone; kind <= FillHatch + 1; ++kind)
        ReadEach([kind](Bytes& bytes, std::size_t at) { bytes[at] = std::byte{kind}; }, 1);
}

TEST_F(HostileStream, WhatFollowsTheRecordIsLeftAlone) {
    for (const Stored& stored : StoredEntries())
        for (const Bytes& more : {Bytes(40, std::byte{0xFF}), stored.bytes}) {
            SCOPED_TRACE(stored.name);
            Bytes bytes = stored.bytes;
            bytes.insert(bytes.end(), more.begin(), more.end());
            MemoryFileStream stream = StreamOf(bytes, stored.version);
            Empty(stored)->ReadFrom(stream);
            EXPECT_TRUE(stream.IsGood());
            EXPECT_EQ(stream.GetRemaining(), more.size());
        }
}

TEST_F(HostileStream, EntriesOfThePoolStayAsTheyAre) {
    const auto pool = std::make_shared<WRCFillList>();
    const auto pooled = [&](const Stored& stored, const Bytes& bytes) {
        MemoryFileStream stream = StreamOf(bytes, stored.version);
        auto entry = std::make_unique<WRefCountFill>(true);
        entry->ReadFrom(stream);
        const WRefCountFill* survivor = pool->AddOrGetDuplicate(entry.release(), &stream);
        FOMGREndLoad(stream);
        return survivor;
    };
    std::vector<Stored> fills = StoredEntries();
    std::erase_if(fills, [](const Stored& stored) { return !IsFill(stored); });
    std::map<const WRefCountFill*, Bytes> kept;
    for (const Stored& stored : fills) {
        const WRefCountFill* const entry = pooled(stored, stored.bytes);
        kept.emplace(entry, Written(*entry));
    }
    for (const Stored& stored : fills)
        for (std::size_t at = 0; at < stored.bytes.size(); ++at) {
            Bytes bytes = stored.bytes;
            bytes[at] ^= static_cast<std::byte>(1 << at % 8);
            pool->RemoveInstance(pooled(stored, bytes));
        }
    EXPECT_EQ(pool->GetCount(), kept.size());
    for (const auto& [entry, bytes] : kept)
        EXPECT_EQ(Written(*entry), bytes);
}

TEST_F(StreamFaults, ManyThingsTakeNoMoreThanTheirBytesAllow) {
    constexpr std::size_t kMany = 20000;
    std::vector<CGE_FILL> fills;
    fills.emplace_back(FillHatch).EditHatch().SetHatchArraySize(kMany);
    fills.emplace_back(FillFountain).EditFountain().SetNumColors(kMany);
    fills.emplace_back(FillVector).EditVector().AdoptTmpFile(TMPCreateTmpFile(Bytes(3000000)));
    fills.emplace_back(FillColorBitmap)
        .EditColorBitmap()
        .AdoptTmpFile(TMPRegisterPrivateData(UDIIMGCreateFromRIMAGE(RIMAGE::Create(2000, 1500, 1, 8))));
    for (const CGE_FILL& fill : fills)
        for (const bool legacyOnly : {false, true}) {
            SCOPED_TRACE(fill.GetType());
            Bytes bytes = Written(WRefCountFill(&fill));
            if (legacyOnly) bytes.erase(bytes.begin() + 4, bytes.begin() + 12 + WordAt(bytes, 8));
            WRefCountFill entry(true);
            ASSERT_NO_FATAL_FAILURE(ReadAnything(bytes, {}, entry));
            EXPECT_EQ(entry.GetFillType(), fill.GetType());
            if (fill.GetType() == FillHatch) {
                EXPECT_EQ(entry.GetCGEFill()->Hatch().lines.size(), kMany);
            }
        }
}

TEST_F(StreamFaults, AnEntryKeepsWhatItHasWhenMemoryRunsOut) {
    const std::vector<Stored> entries = StoredEntries();
    // Writing: either nothing is written or all that the stream has room for.
    for (const Stored& stored : entries) {
        SCOPED_TRACE(stored.name);
        testing_support::FailEachAllocation(
            [&] {
                MemoryFileStream stream = StreamOf({}, stored.version);
                try {
                    stored.entry->WriteTo(stream);
                } catch (const std::bad_alloc&) {
                    EXPECT_TRUE(stream.GetBytes().empty());
                    throw;
                }
            },
            [] {});
    }
    // Reading; the bitmaps of all that was read go along.
    for (const Stored& stored : entries) {
        SCOPED_TRACE(stored.name);
        const CGE_FILL vector = FillSample("vector");
        const std::unique_ptr<ArchiveObject> entry =
            IsFill(stored) ? std::make_unique<WRefCountFill>(&vector) : Empty(stored);
        Bytes before = Written(*entry);
        bool threw = false;
        const auto read = [&] {
            MemoryFileStream stream = StreamOf(stored.bytes, stored.version);
            threw = true;
            entry->ReadFrom(stream);
            threw = false;
        };
        const std::size_t failed = testing_support::FailEachAllocation(read, [&] {
            EXPECT_TRUE(!threw || Written(*entry) == before);
            FOMMonoBmpMgr::GetInst()->FreeAllBitmaps();
            if (IsFill(stored)) static_cast<WRefCountFill&>(*entry).Copy(WRefCountFill(&vector));
            before = Written(*entry);
        });
        EXPECT_GT(failed, 0u);
    }
}

}  // namespace
