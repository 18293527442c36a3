#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string_view>
#include <utility>
#include <vector>

#include "host/base/guid.h"
#include "host/base/md5.h"
#include "host/base/temp_data.h"

#include "fom/block_writer.h"
#include "fom/document_stream.h"
#include "fom/startup.h"

#include "support/fill_generator.h"
#include "support/leak_check.h"
#include "support/outline_generator.h"

namespace testing_support {

using Bytes = std::vector<std::uint8_t>;

/// With the library started: what it keeps until it is shut down goes before leaks are looked for.
class DocumentTest : public LeakCheckedTest {
protected:
    DocumentTest() { EXPECT_TRUE(FOMInitialize(0, 0)); }
    ~DocumentTest() override { FOMShutdown(); }
};

/// For documents with arrowheads, whose blocks the process keeps.
class ArrowheadTest : public ::testing::Test {
protected:
    ArrowheadTest() { EXPECT_TRUE(FOMInitialize(0, 0)); }
    ~ArrowheadTest() override { FOMShutdown(); }
};

inline constexpr command::DocumentVersion kVersions[] = {
    command::DocumentVersion::V1200, command::DocumentVersion::V1250, command::DocumentVersion::Current};

inline VyrUtils::Guid SampleGuid(std::uint8_t number) {
    std::array<std::uint8_t, 16> bytes;
    bytes.fill(number);
    return VyrUtils::Guid(bytes);
}

/// A uniform fill, fountains that older versions cannot say and a vector; a solid and a dashed outline, with
/// the fill of a contour each; two drawings with three and two shapes.
inline command::PaintDocument SmallDocument() {
    command::PaintDocument document;
    CGE_FILL uniform(FillUniform), fountain(FillFountain), vector(FillVector);
    uniform.EditUniform().color.MakeRGB(255, 128, 0);
    uniform.SetGuid(SampleGuid(1));
    fountain.EditFountain().SetNumColors(2);
    fountain.EditFountain().SetColor(1, CLR_FOUNTCOLOR{.transparency = 128, .position = 100, .color = {}});
    fountain.EditFountain().SetSpreadMethod(SpreadReflect);
    fountain.SetGuid(SampleGuid(2));
    const std::string_view content = "<svg/>";
    vector.EditVector().AdoptTmpFile(TMPCreateTmpFile(std::as_bytes(std::span(content))));
    vector.SetGuid(SampleGuid(3));
    CGE_OUTLINE solid, dashed;
    solid.type = OutlineSolid;
    solid.width = 2540;
    solid.guid = SampleGuid(4);
    dashed = solid;
    dashed.type = OutlineDotDash;
    dashed.dotDash = {2, {3, 1}};
    dashed.guid = SampleGuid(5);
    const auto add = [&](const CGE_FILL& fill, const CGE_OUTLINE* outline, const MATRIX& matrix) {
        document.AddShape(&fill, document.Pool()).SetTilingMatrix(matrix);
        if (outline) document.LastShape().outline.SetCGEOutline(outline);
    };
    const MATRIX turned{0, 1, -1, 0, 5, -0.0};
    add(uniform, nullptr, {});
    add(fountain, &solid, turned);
    CGE_FILL conical = fountain;
    conical.EditFountain().SetFountainType(FountainConical);
    document.LastShape().strokeFill = std::make_unique<WFillHandle>(&conical, document.Pool());
    document.LastShape().strokeFill->SetTilingMatrix({3, 0, 0, 3, 0, 0});
    add(uniform, &dashed, {});
    command::SourceDrawing drawing;
    drawing.name = "a.svg";
    drawing.bytes = 123;
    drawing.digest.fill(0xAB);
    drawing.shapes = 3;
    document.AddDrawing(drawing);
    add(vector, &solid, turned);
    add(fountain, &dashed, {2, 0, 0, 2, 0, 0});
    document.LastShape().strokeFill = std::make_unique<WFillHandle>(document.Shape(0).fill);
    drawing.name = "sub/b \u00e9.svg";
    drawing.shapes = 2;
    drawing.omissions.Count("mask", 3);
    drawing.omissions.Count("clip-path");
    document.AddDrawing(drawing);
    return document;
}

/// Fills and outlines of all kinds.
inline command::PaintDocument GeneratedDocument(FillGenerator& fills, OutlineGenerator& outlines,
                                                unsigned shapes) {
    command::PaintDocument document;
    command::SourceDrawing drawing;
    for (unsigned i = 0; i < shapes; ++i) {
        const CGE_FILL fill = fills.Make();
        const MATRIX matrix{1.0 + fills.Pick(3), 0, 0, 1, -1.0 * fills.Pick(2), 0};
        document.AddShape(&fill, document.Pool()).SetTilingMatrix(matrix);
        const CGE_OUTLINE outline = outlines.Make();
        command::ShapePaints& added = document.LastShape();
        if (fills.Pick(3) != 0) added.outline.SetCGEOutline(&outline);
        if (fills.Pick(9) == 0) {
            const CGE_FILL contour = fills.Make();
            added.strokeFill = std::make_unique<WFillHandle>(&contour, document.Pool());
            added.strokeFill->SetTilingMatrix(matrix);
        }
        ++drawing.shapes;
        if (i + 1 < shapes && fills.Pick(10) != 0) continue;
        drawing.name = std::to_string(i) + ".svg";
        document.AddDrawing(std::exchange(drawing, {}));
    }
    return document;
}

inline Bytes Written(const command::PaintDocument& document,
                     command::DocumentVersion version = command::DocumentVersion::Current) {
    MemoryFileStream stream;
    host::Error error;
    EXPECT_TRUE(command::WriteDocument(document, stream, version, error)) << error.reason;
    const auto* data = reinterpret_cast<const std::uint8_t*>(stream.GetBytes().data());
    return Bytes(data, data + stream.GetBytes().size());
}

inline MemoryFileStream StreamOf(const Bytes& bytes) {
    const auto* data = reinterpret_cast<const std::byte*>(bytes.data());
    return MemoryFileStream(std::vector<std::byte>(data, data + bytes.size()));
}

inline std::optional<command::PaintDocument> Read(const Bytes& bytes, host::Error& error) {
    MemoryFileStream stream = StreamOf(bytes);
    return command::ReadDocument(stream, error);
}

/// Where the blocks of a sound file begin, and where the last one ends.
inline std::vector<std::size_t> BlockOffsets(const Bytes& bytes) {
    std::vector<std::size_t> offsets;
    std::size_t at = command::kHeadSize;
    for (; at < bytes.size(); at += host::LoadLittle<std::uint32_t>(&bytes[at + 4]) + command::kBlockFrame)
        offsets.push_back(at);
    offsets.push_back(at);
    return offsets;
}

/// Makes the digests right again of the head and of the blocks that a sound file had at these offsets.
inline void Reseal(Bytes& bytes, std::vector<std::size_t> offsets) {
    offsets.insert(offsets.begin(), 0);
    for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
        const std::size_t end = offsets[i + 1] - command::kDigestSize;
        host::Md5 md5;
        md5.Update(&bytes[offsets[i]], end - offsets[i]);
        const host::Md5::Digest digest = md5.Finish();
        std::copy(digest.begin(), digest.end(), &bytes[end]);
    }
}

/// The offset of the first block of that tag.
inline std::size_t FindBlock(const Bytes& bytes, std::uint32_t tag) {
    for (const std::size_t at : BlockOffsets(bytes))
        if (at < bytes.size() && host::LoadLittle<std::uint32_t>(&bytes[at]) == tag) return at;
    ADD_FAILURE() << "no block " << command::TagName(tag);
    return 0;
}

}  // namespace testing_support
