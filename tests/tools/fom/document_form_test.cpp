#include "fom/document_losses.h"
#include "fom/document_verify.h"

#include "support/golden.h"
#include "tools/fom/document_samples.h"

namespace {

using namespace testing_support;
using command::DocumentVersion;
using command::PaintDocument;

class DocumentForm : public DocumentTest {};
class DocumentFormOfAllKinds : public ArrowheadTest {};

std::string Findings(const Bytes& bytes) {
    MemoryFileStream stream = StreamOf(bytes);
    std::string text;
    for (const host::Error& finding : command::VerifyDocument(stream))
        text += std::to_string(finding.offset) + ": " + finding.reason + "\n";
    return text;
}

bool HaveSameOutline(const CGE_OUTLINE* a, const CGE_OUTLINE* b) {
    if (!a || !b) return a == b;
    // What is not stroked is stored without the fields that say how.
    const bool isNone = (a->type & 15) == OutlineNone && (b->type & 15) == OutlineNone;
    return isNone || CGE_OUTLINE::CompareTo(*a, *b, false) == 0;
}

bool HaveSameFill(const WRefCountFill& a, const WRefCountFill& b) {
    // The contents of patterns are in temporary data of their own.
    const CGE_PATTERNFILL *p = a.GetCGEFill()->Pattern(), *q = b.GetCGEFill()->Pattern();
    if (!p || !q) return a.Compare(&b, false) == 0;
    return a.GetFillType() == b.GetFillType() && p->tiling == q->tiling && p->boundingBox == q->boundingBox;
}

bool HaveSameFill(const WFillHandle& a, const WFillHandle& b) {
    return HaveSameFill(*a.GetRefCountFill(), *b.GetRefCountFill()) &&
           a.GetTilingMatrix() == b.GetTilingMatrix();
}

bool HaveSameLook(const command::ShapePaints& a, const command::ShapePaints& b) {
    const bool hasStroke = a.strokeFill && a.outline.GetRefCountOutline();
    if (hasStroke != bool{b.strokeFill}) return false;
    return HaveSameFill(a.fill, b.fill) && (!hasStroke || HaveSameFill(*a.strokeFill, *b.strokeFill)) &&
           HaveSameOutline(a.outline.GetCGEOutline(), b.outline.GetCGEOutline());
}

TEST_F(DocumentForm, HasTheBytesItAlwaysHad) {
    const auto golden = ReadGolden("document.txt");
    const char* const names[] = {"12.0", "12.5", "current"};
    for (std::size_t i = 0; i < std::size(kVersions); ++i) {
        const Bytes& bytes = golden.at(names[i]);
        EXPECT_EQ(Written(SmallDocument(), kVersions[i]), bytes) << names[i];
        host::Error error;
        const std::optional<PaintDocument> document = Read(bytes, error);
        ASSERT_TRUE(document) << error.reason;
        EXPECT_EQ(Written(*document, kVersions[i]), bytes) << names[i];
        EXPECT_EQ(Findings(bytes), "");
    }
}

TEST_F(DocumentForm, KeepsWhatTheDocumentHolds) {
    const PaintDocument before = SmallDocument();
    host::Error error;
    const std::optional<PaintDocument> after = Read(Written(before), error);
    ASSERT_TRUE(after) << error.reason;
    ASSERT_EQ(after->ShapeCount(), before.ShapeCount());
    for (std::size_t i = 0; i < before.ShapeCount(); ++i)
        EXPECT_TRUE(HaveSameLook(before.Shape(i), after->Shape(i))) << i;
    EXPECT_TRUE(std::signbit(after->Shape(1).fill.GetTilingMatrix().ty));
    EXPECT_EQ(after->Pool()->GetCount(), 4u);
    EXPECT_EQ(after->Shape(0).fill.GetRefCountFill(), after->Shape(2).fill.GetRefCountFill());
    EXPECT_EQ(after->Shape(0).fill.GetRefCountFill()->GetReference(), 3) << "loading kept references";
    EXPECT_EQ(after->Shape(1).outline.GetRefCountOutline()->GetReference(), 2);
    EXPECT_FALSE(after->Shape(0).outline.GetRefCountOutline());
    const auto& drawings = after->Drawings();
    ASSERT_EQ(drawings.size(), 2u);
    EXPECT_EQ(drawings[1].name, "sub/b \u00e9.svg");
    EXPECT_EQ(drawings[1].bytes, 123u);
    EXPECT_EQ(drawings[1].digest[0], 0xAB);
    EXPECT_EQ(drawings[1].shapes, 2u);
    EXPECT_EQ(drawings[1].omissions.Counts(), before.Drawings()[1].omissions.Counts());
    const CGE_FILL& vector = *after->Shape(3).fill.GetCGEFill();
    EXPECT_EQ(TMPOpenTmpFile(vector.Vector().tmpFile)->GetSize(), 6u);
}

// Everything that the library can store, in documents of several chapters.
TEST_F(DocumentFormOfAllKinds, SavingWhatWasLoadedChangesNothing) {
    FillGenerator fills(7);
    OutlineGenerator outlines(8);
    const PaintDocument document = GeneratedDocument(fills, outlines, 2000);
    for (const DocumentVersion version : kVersions) {
        const Bytes bytes = Written(document, version);
        EXPECT_GT(BlockOffsets(bytes).size(), 10u);
        host::Error error;
        const std::optional<PaintDocument> loaded = Read(bytes, error);
        ASSERT_TRUE(loaded) << error.offset << ": " << error.reason;
        EXPECT_TRUE(Written(*loaded, version) == bytes) << command::VersionName(version);
        EXPECT_EQ(Findings(bytes), "");
        if (version == DocumentVersion::V1200) continue;
        for (std::size_t i = 0; i < document.ShapeCount(); ++i)
            EXPECT_TRUE(HaveSameLook(document.Shape(i), loaded->Shape(i))) << i;
    }
}

TEST_F(DocumentForm, OldVersionsLoseWhatTheySayTheyLose) {
    const PaintDocument document = SmallDocument();
    const auto lost = [&](DocumentVersion version) {
        std::vector<std::string> names;
        for (const auto& [name, count] : command::FindLosses(document, version).fills.fields)
            names.push_back(name + " " + std::to_string(count.entries) + " " + std::to_string(count.uses));
        return names;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(lost(DocumentVersion::Current), Names());
    const Names fields{"GUID 4 7", "spread method 2 3", "transparency of colours 2 3"};
    EXPECT_EQ(lost(DocumentVersion::V1200), fields);
    EXPECT_EQ(lost(DocumentVersion::V1250), fields);
    const command::DocumentLosses losses = command::FindLosses(document, DocumentVersion::V1200);
    EXPECT_EQ(losses.outlines.fields.size(), 1u) << "the GUID";
}

// Fills that differ only in what a version cannot say are one in its documents.
TEST_F(DocumentForm, StoresWhatBecomesEqualOnce) {
    PaintDocument document;
    for (const auto spread : {SpreadPad, SpreadReflect, SpreadRepeat}) {
        CGE_FILL fill(FillFountain);
        fill.EditFountain().SetNumColors(2);
        fill.EditFountain().SetSpreadMethod(spread);
        document.AddShape(&fill, document.Pool());
    }
    command::SourceDrawing drawing;
    drawing.name = "a.svg";
    drawing.shapes = 3;
    document.AddDrawing(drawing);
    host::Error error;
    const std::optional<PaintDocument> old = Read(Written(document, DocumentVersion::V1200), error);
    ASSERT_TRUE(old);
    EXPECT_EQ(old->Pool()->GetCount(), 1u);
    EXPECT_EQ(Findings(Written(document, DocumentVersion::V1200)), "");
    EXPECT_EQ(Read(Written(document), error)->Pool()->GetCount(), 3u);
    EXPECT_EQ(command::FindLosses(document, DocumentVersion::V1250).fills.after, 1u);
}

}  // namespace
