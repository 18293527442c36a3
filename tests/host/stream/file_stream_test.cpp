#include "host/stream/file_stream.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

#include "host/stream/archive_object.h"
#include "host/stream/disk_file_stream.h"

#include "support/alloc_faults.h"
#include "support/temp_folder.h"

namespace {

std::vector<std::byte> AsBytes(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

TEST(MemoryStream, AShortReadClearsTheFlagAndTheRest) {
    MemoryFileStream stream(AsBytes("abc"));
    std::array<char, 5> to{'x', 'x', 'x', 'x', 'x'};
    EXPECT_EQ(stream.Read(to.data(), 2), 2u);
    EXPECT_TRUE(stream.IsGood());
    EXPECT_EQ(stream.GetRemaining(), 1u);
    EXPECT_EQ(stream.Read(to.data(), 5), 1u);
    EXPECT_FALSE(stream.IsGood());
    EXPECT_EQ(to, (std::array<char, 5>{'c', 0, 0, 0, 0}));
    stream.Rewind();
    EXPECT_EQ(stream.Read(to.data(), 3), 3u);
    EXPECT_FALSE(stream.IsGood());
}

TEST(MemoryStream, AFailedWriteClearsTheFlag) {
    MemoryFileStream stream;
    EXPECT_EQ(stream.Write("ab", 2), 2u);
    const std::array<char, 100> more{};
    {
        testing_support::FailAllocation guard(1);
        EXPECT_EQ(stream.Write(more.data(), more.size()), 0u);
    }
    EXPECT_FALSE(stream.IsGood());
    EXPECT_EQ(stream.GetBytes().size(), 2u);
}

TEST(MemoryStream, ReadsOnAfterWritingAndMoving) {
    MemoryFileStream stream(AsBytes("abc"));
    char c = 0;
    EXPECT_TRUE(stream.Read(&c, 1) == 1 && c == 'a');
    const std::string more(1000, 'd');
    stream.Write(more.data(), more.size());
    EXPECT_TRUE(stream.Read(&c, 1) == 1 && c == 'b');
    MemoryFileStream other = std::move(stream);
    EXPECT_EQ(stream.GetRemaining(), 0u);
    EXPECT_TRUE(other.Read(&c, 1) == 1 && c == 'c');
    EXPECT_EQ(other.GetPosition(), 3u);
    EXPECT_EQ(other.GetRemaining(), 1000u);
    other.Rewind();
    EXPECT_EQ(other.GetRemaining(), 1003u);
}

TEST(DiskStream, CarriesWhatWasWritten) {
    testing_support::TempFolder folder;
    std::string text;
    {
        DiskFileStream out(folder / "file", DiskFileStream::Mode::Write);
        for (std::size_t size = 1; text.size() < 300'000; size = size * 3 % 70'001) {
            const std::string piece(size, static_cast<char>('a' + size % 26));
            EXPECT_EQ(out.Write(piece.data(), piece.size()), piece.size());
            text += piece;
            ASSERT_EQ(out.GetPosition(), text.size());
        }
        char c = 0;
        EXPECT_TRUE(out.Close());
        EXPECT_EQ(out.Write(&c, 1), 0u);
        EXPECT_FALSE(out.IsGood());
    }
    DiskFileStream in(folder / "file", DiskFileStream::Mode::Read);
    EXPECT_EQ(in.GetRemaining(), text.size());
    std::string back(text.size(), '\0');
    for (std::size_t at = 0, size = 1; at < back.size(); at += size, size = size * 5 % 80'021) {
        size = std::min(size, back.size() - at);
        ASSERT_EQ(in.Read(back.data() + at, size), size);
        ASSERT_EQ(in.GetRemaining(), back.size() - at - size);
    }
    EXPECT_EQ(back, text);
    char c = 'x';
    EXPECT_TRUE(in.IsGood());
    EXPECT_EQ(in.Read(&c, 1), 0u);
    EXPECT_FALSE(in.IsGood());
    EXPECT_EQ(in.Write(&c, 1), 0u);
}

TEST(DiskStream, WhatCannotBeOpenedIsNotGood) {
    testing_support::TempFolder folder;
    char c = 'x';
    DiskFileStream absent(folder / "absent", DiskFileStream::Mode::Read);
    EXPECT_FALSE(absent.IsOpen() || absent.IsGood());
    EXPECT_EQ(absent.Read(&c, 1), 0u);
    DiskFileStream directory(folder.Path(), DiskFileStream::Mode::Write);
    EXPECT_FALSE(directory.IsGood());
    EXPECT_EQ(directory.Write(&c, 1), 0u);
    EXPECT_FALSE(directory.Close());
}

class Number final : public ArchiveObject {
public:
    explicit Number(std::uint8_t value = 0) : value(value) { ++alive; }
    ~Number() override { --alive; }
    void ReadFrom(AbstractFileStream& stream) override { stream.Read(&value, 1); }
    void WriteTo(AbstractFileStream& stream) const override { stream.Write(&value, 1); }
    const char* getClassName() const override { return name.c_str(); }

    std::uint8_t value;
    std::string name = "Number";
    static inline int alive = 0;
};

ArchiveObject* MakeNumber(const std::string& name) {
    return name == "Number" ? new Number : nullptr;
}

struct Outcome {
    std::unique_ptr<ArchiveObject> object;
    bool good;
};

Outcome Read(std::string_view bytes) {
    MemoryFileStream stream(AsBytes(bytes));
    std::unique_ptr<ArchiveObject> object(ArchiveCreator::ReadObject(stream, &MakeNumber));
    return {std::move(object), stream.IsGood()};
}

TEST(Archive, ObjectsHaveOneStoredForm) {
    MemoryFileStream stream;
    const Number number(42);
    ArchiveCreator::WriteObject(stream, &number);
    ArchiveCreator::WriteObject(stream, nullptr);
    const auto expected = AsBytes(std::string_view("\6\0Number*\0\0", 11));
    EXPECT_TRUE(
        std::equal(expected.begin(), expected.end(), stream.GetBytes().begin(), stream.GetBytes().end()));

    const Outcome back = Read(std::string_view("\6\0Number*", 9));
    ASSERT_TRUE(back.object && back.good);
    EXPECT_EQ(static_cast<const Number&>(*back.object).value, 42);
    const Outcome none = Read(std::string_view("\0\0", 2));
    EXPECT_TRUE(!none.object && none.good);
}

TEST(Archive, FaultsClearTheFlag) {
    for (const std::string& bytes : {std::string(), std::string("\6"), std::string("\6\0Num", 5),
                                     std::string("\5\0Other*", 8), "\x00\x01" + std::string(300, 'x')}) {
        const Outcome outcome = Read(bytes);
        EXPECT_FALSE(outcome.object || outcome.good) << bytes.size();
    }
    const Outcome shortBody = Read(std::string_view("\6\0Number", 8));
    EXPECT_TRUE(shortBody.object && !shortBody.good);

    MemoryFileStream stream;
    Number named;
    named.name.assign(256, 'x');
    ArchiveCreator::WriteObject(stream, &named);
    EXPECT_FALSE(stream.IsGood());
    EXPECT_TRUE(stream.GetBytes().empty());
}

TEST(Archive, AnObjectThatThrowsIsNotLeaked) {
    struct Throwing final : ArchiveObject {
        void ReadFrom(AbstractFileStream&) override { throw std::bad_alloc(); }
        void WriteTo(AbstractFileStream&) const override {}
        const char* getClassName() const override { return "Throwing"; }
        Number part;
    };
    const int before = Number::alive;
    MemoryFileStream stream(AsBytes(std::string_view("\1\0T", 3)));
    EXPECT_THROW(
        ArchiveCreator::ReadObject(stream, [](const std::string&) -> ArchiveObject* { return new Throwing; }),
        std::bad_alloc);
    EXPECT_EQ(Number::alive, before);
}

}  // namespace
