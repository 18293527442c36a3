// Document files. The digests of head and blocks are made right, unless the first byte, which is not part of
// the file, is odd, and so is the size of a last block that is cut. What can be read without a fault is saved
// in the form of its version, and what that gives is read and saved again, as large as before.

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "host/base/little_endian.h"
#include "host/base/md5.h"

#include "fom/document_format.h"
#include "fom/document_stream.h"
#include "fom/mono_bitmap_manager.h"

#include "check.h"
#include "heap_bound.h"

namespace {

using command::DocumentVersion;
using fuzzing::Check;
using Bytes = std::vector<std::uint8_t>;

/// Of the bytes before it.
void PutDigest(Bytes& bytes, std::size_t from, std::size_t at) {
    host::Md5 md5;
    md5.Update(bytes.data() + from, at - from);
    const host::Md5::Digest digest = md5.Finish();
    std::copy(digest.begin(), digest.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

void MakeRight(Bytes& bytes) {
    using namespace command;
    if (bytes.size() < kHeadSize) return;
    PutDigest(bytes, 0, kHeadSize - kDigestSize);
    for (std::size_t at = kHeadSize; bytes.size() - at >= kBlockFrame;) {
        const std::size_t left = bytes.size() - at - kBlockFrame;
        const std::size_t size = std::min<std::size_t>(host::LoadLittle<std::uint32_t>(&bytes[at + 4]), left);
        host::StoreLittle(&bytes[at + 4], static_cast<std::uint32_t>(size));
        PutDigest(bytes, at, at + kBlockHead + size);
        at += size + kBlockFrame;
    }
}

MemoryFileStream StreamOf(const Bytes& bytes) {
    const auto view = std::as_bytes(std::span(bytes));
    return MemoryFileStream({view.begin(), view.end()});
}

MemoryFileStream Saved(const command::PaintDocument& document, DocumentVersion version) {
    MemoryFileStream stream;
    host::Error error;
    Check(command::WriteDocument(document, stream, version, error), "what was read can be saved");
    return stream;
}

/// Saves and reads it again, twice.
void SaveAgain(const command::PaintDocument& document, DocumentVersion version) {
    host::Error error;
    MemoryFileStream first = Saved(document, version);
    const auto size = first.GetBytes().size();
    const auto again = command::ReadDocument(first, error);
    Check(again.has_value(), "what was saved can be read");
    Check(again->ShapeCount() == document.ShapeCount(), "all shapes come back");
    Check(again->Drawings().size() == document.Drawings().size(), "all drawings come back");
    Check(Saved(*again, version).GetBytes().size() == size, "a second copy is as large as the first");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const fuzzing::NothingIsLeft check;
    Bytes bytes(data + 1, data + size);
    if (data[0] % 2 == 0) MakeRight(bytes);
    {
        MemoryFileStream stream = StreamOf(bytes), same = StreamOf(bytes);
        host::Error error, headError;
        std::optional<command::PaintDocument> document;
        std::optional<command::RecoveredDocument> recovered;
        {
            const fuzzing::HeapBound bound(bytes.size());
            document = command::ReadDocument(stream, error);
        }
        {
            const fuzzing::HeapBound bound(bytes.size());
            recovered = command::RecoverDocument(same, headError);
        }
        Check(recovered || !document, "what can be read can be recovered");
        Check(document || !error.reason.empty(), "a fault has a reason");
        if (recovered) {
            Check(document.has_value() == !recovered->fault, "reading and recovering find the same fault");
            const auto version = host::LoadLittle<std::uint32_t>(bytes.data() + command::kDocumentVersionAt);
            SaveAgain(document ? *document : recovered->document, static_cast<DocumentVersion>(version));
        }
    }
    FOMMonoBmpMgr::GetInst()->FreeAllBitmaps();
    return 0;
}
