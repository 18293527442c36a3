#include "host/base/temp_data.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "base/temp_table.h"
#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

using Bytes = std::vector<std::byte>;

constexpr std::size_t kMiB = std::size_t{1} << 20;

Bytes Pattern(std::size_t size, unsigned seed = 1) {
    Bytes bytes(size);
    for (auto& byte : bytes)
        byte = static_cast<std::byte>((seed = seed * 1103515245u + 12345u) >> 16);
    return bytes;
}

Bytes ReadAll(TmpStream& stream) {
    Bytes bytes(static_cast<std::size_t>(stream.GetSize()) + 3);
    stream.Seek(0);
    bytes.resize(stream.Read(bytes.data(), bytes.size()));
    return bytes;
}

Bytes ContentOf(unsigned id) {
    const auto stream = TMPOpenTmpFile(id);
    return stream ? ReadAll(*stream) : Bytes();
}

void Overwrite(unsigned id, std::uint64_t position, const Bytes& bytes) {
    const auto stream = TMPOpenTmpFile(id, TmpMode::Write);
    stream->Seek(position);
    EXPECT_EQ(stream->Write(bytes.data(), bytes.size()), bytes.size());
}

// The same laws hold for what stays in memory and for what is spilled to a file.
class TempData : public testing_support::LeakCheckedTest,
                 public ::testing::WithParamInterface<std::size_t> {};

TEST_P(TempData, DuplicatesShareUntilOneIsWritten) {
    Bytes expected = Pattern(GetParam());
    const Bytes original = expected;
    const unsigned id = TMPCreateTmpFile(expected);
    TMPSetTmpFileTag(id, 77);
    auto early = TMPOpenTmpFile(id, TmpMode::Write);
    testing_support::HeapMeter meter;
    const unsigned copy = TMPDuplicateTmpFile(id);
    EXPECT_LT(meter.ThreadBytes(), 400);
    EXPECT_EQ(TMPGetTmpFileTag(copy), 77u);
    EXPECT_EQ(ContentOf(copy), original);

    const Bytes patch = Pattern(5, 9);
    std::copy(patch.begin(), patch.end(), expected.begin() + 10);
    early->Seek(10);
    EXPECT_EQ(early->Write(patch.data(), patch.size()), patch.size());
    EXPECT_EQ(ContentOf(id), expected);
    EXPECT_EQ(ContentOf(copy), original);
    EXPECT_TRUE(TMPDeleteTmpFile(copy));
    EXPECT_FALSE(TMPDeleteTmpFile(copy));
    EXPECT_EQ(ReadAll(*early), expected);
    EXPECT_TRUE(TMPDeleteTmpFile(id));
}

TEST_P(TempData, StreamsOutliveTheirEntry) {
    const Bytes original = Pattern(GetParam());
    const unsigned id = TMPCreateTmpFile(original);
    const auto reader = TMPOpenTmpFile(id);
    const auto writer = TMPOpenTmpFile(id, TmpMode::Write);
    EXPECT_EQ(reader->Write("x", 1), 0u);
    EXPECT_EQ(writer->Write("x", 1), 1u);
    EXPECT_TRUE(TMPDeleteTmpFile(id));
    EXPECT_EQ(TMPOpenTmpFile(id), nullptr);
    EXPECT_EQ(ReadAll(*reader), original);
    EXPECT_EQ(ReadAll(*writer)[0], std::byte{'x'});
    writer->Seek(original.size() + 4);
    EXPECT_EQ(writer->Read(nullptr, 0), 0u);
    EXPECT_EQ(writer->Write("y", 1), 1u);
    const Bytes grown = ReadAll(*writer);
    ASSERT_EQ(grown.size(), original.size() + 5);
    EXPECT_EQ(grown[original.size() + 3], std::byte{0});
    EXPECT_EQ(grown.back(), std::byte{'y'});
}

INSTANTIATE_TEST_SUITE_P(Sizes, TempData, ::testing::Values(std::size_t{100}, kMiB, kMiB + 1, 3 * kMiB));

using TempDataEntries = testing_support::LeakCheckedTest;

TEST_F(TempDataEntries, GrowingPastTheLimitLeavesMemory) {
    const unsigned id = TMPCreateTmpFile();
    testing_support::HeapMeter meter;
    Bytes expected;
    for (unsigned i = 0; i < 40; ++i) {
        const Bytes piece = Pattern(50'000, i);
        Overwrite(id, expected.size(), piece);
        expected.insert(expected.end(), piece.begin(), piece.end());
    }
    EXPECT_EQ(ContentOf(id), expected);
    expected = Bytes();
    EXPECT_LT(meter.ThreadBytes(), 10'000);
    TMPDeleteTmpFile(id);
}

TEST_F(TempDataEntries, HoldPrivatePointers) {
    int mine = 0, other = 0;
    const unsigned id = TMPRegisterPrivateData(&mine);
    const unsigned copy = TMPDuplicateTmpFile(id);
    TMPSetPrivateData(id, &other);
    EXPECT_EQ(TMPGetPrivateData(id), &other);
    EXPECT_EQ(TMPGetPrivateData(copy), &mine);
    EXPECT_EQ(TMPOpenTmpFile(id), nullptr);
    const unsigned file = TMPCreateTmpFile(Pattern(3));
    TMPSetPrivateData(file, &mine);
    EXPECT_EQ(TMPGetPrivateData(file), nullptr);
    for (const unsigned done : {id, copy, file})
        TMPDeleteTmpFile(done);
}

TEST_F(TempDataEntries, UnknownIdentifiersDoNothing) {
    for (const unsigned id : {0u, 0xFFFFFFF0u}) {
        EXPECT_EQ(TMPDuplicateTmpFile(id), 0u);
        EXPECT_FALSE(TMPDeleteTmpFile(id));
        TMPSetTmpFileTag(id, 5);
        EXPECT_EQ(TMPGetTmpFileTag(id), 0u);
        int mine = 0;
        TMPSetPrivateData(id, &mine);
        EXPECT_EQ(TMPGetPrivateData(id), nullptr);
        EXPECT_EQ(TMPOpenTmpFile(id, TmpMode::Write), nullptr);
    }
}

TEST_F(TempDataEntries, IdentifiersWrapPastZeroAndPastLivingOnes) {
    host::detail::TempTable wrapped(0xFFFFFFFEu);
    EXPECT_EQ(wrapped.Add({}), 0xFFFFFFFFu);
    EXPECT_EQ(wrapped.Add({}), 1u);
    wrapped.RestartAfter(0xFFFFFFFEu);
    EXPECT_EQ(wrapped.Add({}), 2u);
    EXPECT_EQ(wrapped.Count(), 3u);
}

TEST_F(TempDataEntries, MemoryRunningOutChangesNothing) {
    const Bytes original = Pattern(300);
    const unsigned id = TMPCreateTmpFile(original);
    const std::size_t before = host::LiveTmpEntries();
    const auto rounds = testing_support::FailEachAllocation(
        [&] {
            const unsigned copy = TMPDuplicateTmpFile(id);
            try {
                const auto stream = TMPOpenTmpFile(copy, TmpMode::Write);
                stream->Write("changed", 7);
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(ContentOf(copy), original);
            }
            TMPDeleteTmpFile(copy);
        },
        [&] {
            EXPECT_EQ(host::LiveTmpEntries(), before);
            EXPECT_EQ(ContentOf(id), original);
        });
    EXPECT_GE(rounds, 4u);
    TMPDeleteTmpFile(id);
}

TEST_F(TempDataEntries, ThreadsMayWorkOnOneEntry) {
    const Bytes original = Pattern(64);
    const unsigned id = TMPCreateTmpFile(original);
    {
        std::vector<std::jthread> threads;
        for (unsigned t = 0; t < 3; ++t)
            threads.emplace_back([&, t] {
                for (int i = 0; i < 300; ++i) {
                    const unsigned copy = TMPDuplicateTmpFile(id);
                    Overwrite(copy, 0, Bytes(64, static_cast<std::byte>(t)));
                    EXPECT_EQ(ContentOf(copy), Bytes(64, static_cast<std::byte>(t)));
                    Overwrite(id, 0, original);
                    EXPECT_EQ(ContentOf(id), original);
                    TMPDeleteTmpFile(copy);
                }
            });
    }
    TMPDeleteTmpFile(id);
}

}  // namespace
