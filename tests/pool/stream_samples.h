#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/base/temp_data.h"
#include "host/gfx/arrowhead.h"
#include "host/gfx/image.h"
#include "host/stream/file_stream.h"

#include "fom/mono_bitmap_manager.h"
#include "fom/refcount_fill.h"
#include "fom/refcount_outline.h"

#include "support/blocks.h"
#include "support/golden.h"
#include "support/leak_check.h"

/// Entries as documents hold them, and their bytes. The samples are the golden ones: each kind of fill with a
/// value of its own in every field that is stored.
namespace stream_test {

using testing_support::BlockOf;
using Bytes = std::vector<std::byte>;
using Version = std::optional<std::uint32_t>;

/// Registered before any test counts blocks: arrowheads stay as long as the process.
inline const HMEM kArrow = SUDIRegisterArrow(BlockOf("arrow"));
inline const HMEM kOtherArrow = SUDIRegisterArrow(BlockOf("other arrow"));
/// What a size that is cut off reads as.
inline const HMEM kEmptyArrow = SUDIRegisterArrow(BlockOf(""));

class StreamTest : public testing_support::LeakCheckedTest {
protected:
    ~StreamTest() override { FOMMonoBmpMgr::GetInst()->FreeAllBitmaps(); }
};

inline MemoryFileStream StreamOf(Bytes bytes, Version version = {}) {
    MemoryFileStream stream(std::move(bytes));
    stream.RegisterDocumentVersion(version);
    return stream;
}

template <class Entry>
Bytes Written(const Entry& entry, Version version = {}) {
    MemoryFileStream stream = StreamOf({}, version);
    entry.WriteTo(stream);
    EXPECT_TRUE(stream.IsGood());
    return {stream.GetBytes().begin(), stream.GetBytes().end()};
}

/// The test fails when the stream is not good or not all of it was read.
template <class Entry>
std::unique_ptr<Entry> Read(Bytes bytes, Version version = {}) {
    MemoryFileStream stream = StreamOf(std::move(bytes), version);
    auto entry = std::make_unique<Entry>(true);
    entry->AddReference(3);
    entry->ReadFrom(stream);
    EXPECT_TRUE(stream.IsGood());
    EXPECT_EQ(stream.GetRemaining(), 0u);
    EXPECT_EQ(entry->GetReference(), 0);
    return entry;
}

/// By name, with "-1200" behind it for the form of documents before 12.50.
using Goldens = std::map<std::string, Bytes>;
inline Goldens ReadGoldens(const char* file) {
    Goldens goldens;
    for (const auto& [name, golden] : testing_support::ReadGolden(file)) {
        const auto bytes = std::as_bytes(std::span(golden));
        goldens.emplace(name, Bytes(bytes.begin(), bytes.end()));
    }
    return goldens;
}
inline const Goldens& GoldenFills() {
    static const Goldens goldens = ReadGoldens("fill_stream_records.txt");
    return goldens;
}
inline const Goldens& GoldenOutlines() {
    static const Goldens goldens = ReadGoldens("outline_stream_records.txt");
    return goldens;
}

inline const std::string kFillSamples[] = {
    "none",  "uniform",  "fountain", "PostScript",          "mono",    "mono-without-bitmap",
    "image", "no-image", "vector",   "vector-without-data", "texture", "hatch"};
/// Bytes that the sections' sizes announce and that are not there.
inline unsigned MissingBytes(const std::string& sample) {
    return sample.find("without") != std::string::npos ? 4 : 0;
}
inline CGE_FILL FillSample(const std::string& name) {
    return *Read<WRefCountFill>(GoldenFills().at(name))->GetCGEFill();
}
inline CGE_OUTLINE OutlineSample(const std::string& name = "solid") {
    return *Read<WRefCountOutline>(GoldenOutlines().at(name))->GetCGEOutline();
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

}  // namespace stream_test
