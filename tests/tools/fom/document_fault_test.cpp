#include <cstring>
#include <functional>

#include "fom/document_inspect.h"
#include "fom/document_verify.h"

#include "support/alloc_faults.h"
#include "tools/fom/document_samples.h"

namespace {

using namespace testing_support;
using command::PaintDocument;
using command::RecoveredDocument;

class DocumentFault : public DocumentTest {};
class DocumentFaultOfAllKinds : public ArrowheadTest {};

/// 12.5 has the form of the current version.
constexpr command::DocumentVersion kForms[] = {command::DocumentVersion::V1200,
                                               command::DocumentVersion::Current};

std::optional<RecoveredDocument> Recover(const Bytes& bytes, host::Error& error) {
    MemoryFileStream stream = StreamOf(bytes);
    return command::RecoverDocument(stream, error);
}

std::vector<std::string> Findings(const Bytes& bytes) {
    MemoryFileStream stream = StreamOf(bytes);
    std::vector<std::string> reasons;
    for (const host::Error& finding : command::VerifyDocument(stream))
        reasons.push_back(finding.reason);
    return reasons;
}

/// Whether a document can be used as any other: it can be written, and read again.
void ExpectUsable(const PaintDocument& document) {
    host::Error error;
    EXPECT_TRUE(Read(Written(document), error)) << error.reason;
}

TEST_F(DocumentFault, EveryCutAndEveryFlippedBitIsRefused) {
    for (const command::DocumentVersion version : kVersions) {
        const Bytes bytes = Written(SmallDocument(), version);
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            host::Error error;
            EXPECT_FALSE(Read(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)), error))
                << size;
            EXPECT_LE(error.offset, size);
            EXPECT_FALSE(error.reason.empty());
        }
        for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
            Bytes flipped = bytes;
            flipped[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
            host::Error error;
            ASSERT_FALSE(Read(flipped, error)) << bit;
            EXPECT_LE(error.offset, bytes.size());
        }
        Bytes longer = bytes;
        longer.push_back(0);
        host::Error error;
        EXPECT_FALSE(Read(longer, error));
        EXPECT_EQ(error.offset, bytes.size());
        EXPECT_EQ(error.reason, "something follows the end block");
    }
}

// Without the protection of the digests: no bit alone does harm. Some make arrowheads.
TEST_F(DocumentFaultOfAllKinds, EveryBitThatIsFlippedUnnoticedIsBorne) {
    for (const command::DocumentVersion version : kForms) {
        const Bytes bytes = Written(SmallDocument(), version);
        const std::vector<std::size_t> offsets = BlockOffsets(bytes);
        for (std::size_t bit = 8 * command::kHeadSize; bit < 8 * bytes.size(); ++bit) {
            Bytes flipped = bytes;
            flipped[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
            Reseal(flipped, offsets);
            host::Error error;
            const HeapMeter heap;
            const std::optional<PaintDocument> document = Read(flipped, error);
            ASSERT_LE(heap.ThreadPeak(), static_cast<std::ptrdiff_t>(16 * flipped.size() + (1u << 20)))
                << bit;
            EXPECT_EQ(document.has_value(), error.reason.empty()) << bit;
            if (document && bit % 8 == 0) ExpectUsable(*document);
        }
    }
}

// Digests are no protection: whoever means harm can make them right.
TEST_F(DocumentFault, NoNumberDoesHarm) {
    for (const command::DocumentVersion version : kForms) {
        const Bytes bytes = Written(SmallDocument(), version);
        const std::vector<std::size_t> offsets = BlockOffsets(bytes);
        for (std::size_t at = command::kHeadSize; at + 4 <= bytes.size(); ++at) {
            for (const std::uint32_t number : {0u, 5u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
                Bytes changed = bytes;
                host::StoreLittle(&changed[at], number);
                Reseal(changed, offsets);
                host::Error error;
                const HeapMeter heap;
                const std::optional<PaintDocument> document = Read(changed, error);
                ASSERT_LE(heap.ThreadPeak(), static_cast<std::ptrdiff_t>(16 * changed.size() + (1u << 20)))
                    << at;
                if (document) ExpectUsable(*document);
                if (number != 5) continue;
                const std::optional<RecoveredDocument> recovered = Recover(changed, error);
                ASSERT_TRUE(recovered);
                EXPECT_EQ(recovered->fault.has_value(), !document) << at;
                ExpectUsable(recovered->document);
                if (!document) {
                    EXPECT_FALSE(Findings(changed).empty()) << at;
                }
            }
        }
    }
}

struct Mistake {
    const char* reason;
    std::function<void(Bytes&)> make;
};

TEST_F(DocumentFault, NamesWhatIsWrong) {
    const Bytes bytes = Written(SmallDocument());
    const std::size_t payload = command::kBlockHead;
    const std::size_t fills = FindBlock(bytes, command::kFillsTag) + payload;
    const std::size_t drawings = FindBlock(bytes, command::kDrawingsTag) + payload;
    const std::size_t shapes = FindBlock(bytes, command::kShapesTag) + payload;
    const std::size_t end = FindBlock(bytes, command::kEndTag) + payload;
    const auto word = [](std::size_t at, std::uint32_t value) {
        return [at, value](Bytes& changed) { host::StoreLittle(&changed[at], value); };
    };
    const auto name = [&bytes](const char* text) {
        return [text, &bytes](Bytes& changed) {
            const std::string_view known = "a.svg";
            const auto found = std::search(bytes.begin(), bytes.end(), known.begin(), known.end());
            std::memcpy(&changed[static_cast<std::size_t>(found - bytes.begin())], text, known.size());
        };
    };
    const std::size_t firstShape = shapes + 16 + 3 * command::kMatrixSize;
    const std::size_t stroke = firstShape + 5 * command::kShapeSize;
    const Mistake mistakes[] = {
        {"unknown format version 2", word(8, 2)},
        {"unknown document version 1301", word(12, 1301)},
        {"unknown block 0x00000001", word(fills - payload, 1)},
        {"the block begins with fill 1 instead of 0", word(fills, 1)},
        {"the block has more than it says", word(fills + 4, 2)},
        {"the block ends early", word(fills + 4, 5)},
        {"fill 0 reaches beyond its block", word(fills + 8, 0x10000)},
        {"fill 0 has too short a record", word(fills + 8, 15)},
        {"fill 0 is damaged", word(fills + 12 + 4 + 8 + 4, 100000)},
        {"the drawings begin with shape 1 instead of 0", word(drawings + 8, 1)},
        {"there are more shapes than the drawings have", word(drawings + 12 + 24, 2)},
        {"there are fewer shapes than the drawings have", word(drawings + 12 + 24, 4)},
        {"a drawing has no valid name", name("../a.")},
        {"a drawing has no valid name", name("/.svg")},
        {"a drawing has no valid name", name("a\\svg")},
        {"a drawing has no valid name", name("a\nsvg")},
        {"a drawing has no valid name", name("a\xC3.sv")},
        {"matrices, shapes and fills of strokes do not fill the block", word(shapes + 8, 4)},
        {"shape 0 refers to a fill that is not there", word(firstShape, 5)},
        {"shape 0 refers to an outline that is not there", word(firstShape + 4, 3)},
        {"shape 0 refers to a matrix that is not there", word(firstShape + 8, 4)},
        {"the fills of strokes are not in the order of the block's shapes", word(stroke, 4)},
        {"the fills of strokes are not in the order of the block's shapes", word(stroke + 12, 5)},
        {"the stroke of shape 0 has a fill and no outline", word(stroke, 0)},
        {"the stroke of shape 1 refers to a fill that is not there", word(stroke + 4, 0)},
        {"the stroke of shape 1 refers to a fill that is not there", word(stroke + 4, 5)},
        {"the stroke of shape 1 refers to a matrix that is not there", word(stroke + 8, 4)},
        {"the end counts something else than there is", word(end + 4, 3)},
    };
    for (const Mistake& mistake : mistakes) {
        Bytes changed = bytes;
        mistake.make(changed);
        Reseal(changed, BlockOffsets(bytes));
        host::Error error;
        EXPECT_FALSE(Read(changed, error)) << mistake.reason;
        const bool isExpected =
            error.reason == mistake.reason || std::strcmp(mistake.reason, "a drawing has no valid name") == 0;
        EXPECT_TRUE(isExpected) << error.reason << " instead of " << mistake.reason;
    }
}

// What is loaded all the same.
TEST_F(DocumentFault, VerifyNamesWhatWastesRoom) {
    const Bytes bytes = Written(SmallDocument());
    const std::size_t fills = FindBlock(bytes, command::kFillsTag) + command::kBlockHead + 8;
    const std::size_t matrices = FindBlock(bytes, command::kShapesTag) + command::kBlockHead + 16;
    const std::size_t lastShape = matrices + 3 * command::kMatrixSize + 4 * command::kShapeSize;
    const auto found = [&](const std::function<void(Bytes&)>& change) {
        Bytes changed = bytes;
        change(changed);
        Reseal(changed, BlockOffsets(bytes));
        host::Error error;
        EXPECT_TRUE(Read(changed, error)) << error.reason;
        return Findings(changed);
    };
    using Reasons = std::vector<std::string>;
    EXPECT_EQ(found([&](Bytes& changed) { std::copy_n(&bytes[matrices], 48, &changed[matrices + 48]); }),
              Reasons{"matrix 1 of the block is the identity, or there twice"});
    EXPECT_EQ(found([&](Bytes& changed) { changed[lastShape + 8] = 0; }),
              Reasons{"matrix 2 of the block is not used"});
    EXPECT_EQ(found([&](Bytes& changed) { changed[lastShape - command::kShapeSize] = 1; }),
              Reasons{"no shape has fill 3"});
    // The second section, which no reader of this version looks at, is of another kind.
    const std::size_t legacyKind =
        fills + 4 + 4 + 8 + host::LoadLittle<std::uint32_t>(&bytes[fills + 12]) + 8;
    EXPECT_EQ(found([&](Bytes& changed) { changed[legacyKind] = 3; }),
              Reasons{"fill 0 is written in another way than it is stored"});
}

TEST_F(DocumentFaultOfAllKinds, RecoversWhatStandsBeforeACut) {
    FillGenerator fills(3);
    OutlineGenerator outlines(4);
    const PaintDocument document = GeneratedDocument(fills, outlines, 400);
    const Bytes bytes = Written(document);
    const std::vector<std::size_t> offsets = BlockOffsets(bytes);
    std::size_t last = 0;
    for (const std::size_t at : offsets) {
        for (const std::size_t size : {at, at + 7}) {
            if (size >= bytes.size()) continue;
            host::Error error;
            const auto recovered =
                Recover(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)), error);
            ASSERT_TRUE(recovered);
            EXPECT_TRUE(recovered->fault);
            EXPECT_FALSE(recovered->missing.empty());
            EXPECT_GE(recovered->document.ShapeCount(), last);
            last = recovered->document.ShapeCount();
            ExpectUsable(recovered->document);
        }
    }
    EXPECT_EQ(last, document.ShapeCount()) << "all blocks but the end were there";
}

TEST_F(DocumentFaultOfAllKinds, ADamagedBlockTakesNothingElseAlong) {
    FillGenerator fills(5);
    OutlineGenerator outlines(6);
    const PaintDocument document = GeneratedDocument(fills, outlines, 400);
    const Bytes bytes = Written(document);
    const std::vector<std::size_t> offsets = BlockOffsets(bytes);
    std::size_t unpainted = 0;
    for (std::size_t i = 0; i + 2 < offsets.size(); ++i) {
        Bytes damaged = bytes;
        damaged[offsets[i] + command::kBlockHead + 20] ^= 1;
        host::Error error;
        const auto recovered = Recover(damaged, error);
        ASSERT_TRUE(recovered);
        EXPECT_EQ(recovered->fault->offset, offsets[i]);
        ASSERT_EQ(recovered->document.ShapeCount(), document.ShapeCount()) << "gaps are filled";
        std::size_t same = 0;
        for (std::size_t shape = 0; shape < document.ShapeCount(); ++shape) {
            const WFillHandle &before = document.Shape(shape).fill,
                              &after = recovered->document.Shape(shape).fill;
            same += before.GetCGEFill()->GetGuid() == after.GetCGEFill()->GetGuid();
            unpainted += before.GetCGEType() != FillNone && after.GetCGEType() == FillNone;
        }
        EXPECT_GT(same, document.ShapeCount() / 3) << i;
        ExpectUsable(recovered->document);
    }
    EXPECT_GT(unpainted, 0u);
}

/// A document of one chapter from blocks that a test fills.
Bytes MakeFile(const std::function<void(command::BlockBuilder&, AbstractFileStream&)>& fill) {
    MemoryFileStream stream;
    command::WriteDocumentHead(stream, command::DocumentVersion::Current);
    command::BlockBuilder block(command::kOutlinesTag, 2);
    fill(block, stream);
    const auto* data = reinterpret_cast<const std::uint8_t*>(stream.GetBytes().data());
    return Bytes(data, data + stream.GetBytes().size());
}

// The smallest records, all different, and shapes: what takes most memory for a byte of the file.
TEST_F(DocumentFault, MemoryIsBoundedByTheFile) {
    constexpr std::uint32_t kOutlines = 60000, kShapes = 300000;
    const Bytes bytes = MakeFile([](command::BlockBuilder& block, AbstractFileStream& stream) {
        for (std::uint32_t i = 0; i < kOutlines; ++i) {
            const std::uint8_t guid[] = {16, 4, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
            block.Add(std::uint32_t{4 + 2 + 6 + sizeof guid});
            block.Add(std::uint32_t{2 + 6 + sizeof guid});
            block.Add(std::uint16_t{1});
            block.Add(std::uint16_t{0x0205});
            block.Add(i + 1);
            block.Add(guid);
        }
        block.Write(stream, {0, kOutlines});
        command::BlockBuilder drawings(command::kDrawingsTag, 3), shapes(command::kShapesTag, 4);
        drawings.Add(std::uint64_t{0});
        drawings.Add(Bytes(16));
        drawings.Add(kShapes);
        drawings.Add(std::uint16_t{1});
        drawings.Add(std::string_view("a"));
        drawings.Add(std::uint16_t{0});
        drawings.Write(stream, {0, 1, 0});
        shapes.Add(Bytes(command::kShapeSize * kShapes));
        shapes.Write(stream, {0, kShapes, 0, 0});
        command::BlockBuilder end(command::kEndTag, 4);
        end.Add(Bytes());
        end.Write(stream, {0, kOutlines, 1, kShapes});
    });
    host::Error error;
    MemoryFileStream stream = StreamOf(bytes);
    const HeapMeter heap;
    const std::optional<PaintDocument> document = command::ReadDocument(stream, error);
    ASSERT_TRUE(document) << error.offset << ": " << error.reason;
    EXPECT_EQ(document->ShapeCount(), kShapes);
    EXPECT_EQ(document->OutlinePool().GetCount(), 0u) << "no shape has them";
    EXPECT_LE(heap.ThreadPeak(), static_cast<std::ptrdiff_t>(16 * bytes.size() + (1u << 20)));
}

TEST_F(DocumentFault, NoMemoryLeavesNothingBehind) {
    const Bytes bytes = Written(SmallDocument());
    const PaintDocument document = SmallDocument();
    host::Error error;
    MemoryFileStream stream = StreamOf(bytes);
    EXPECT_GT(FailEachAllocation(
                  [&] {
                      stream.Rewind();
                      static_cast<void>(command::ReadDocument(stream, error));
                  },
                  [] {}),
              0u);
}

}  // namespace
