// Entries in document streams. The first byte says of which sort and version, and whether the stream knows
// how many bytes are left; what follows is the stream. Whatever is read can be written and read again; what
// was read without a fault comes back equal.

#include <memory>
#include <optional>
#include <vector>

#include "fom/fill_compare.h"
#include "fom/mono_bitmap_manager.h"
#include "fom/refcount_fill.h"
#include "fom/refcount_outline.h"

#include "check.h"
#include "heap_bound.h"
#include "record_bytes.h"
#include "support/faulty_stream.h"

namespace {

using fuzzing::BodyOf;
using fuzzing::Check;

struct Form {
    explicit Form(std::uint8_t byte) : isOutline(byte & 1), hides(byte & 2) {
        if (byte & 4) version = byte & 8 ? 1200 : 1250;
    }
    bool isOutline;
    bool hides;
    std::optional<std::uint32_t> version;
};

template <class Entry>
MemoryFileStream Written(const Entry& entry, const Form& form) {
    MemoryFileStream stream;
    stream.RegisterDocumentVersion(form.version);
    entry.WriteTo(stream);
    Check(stream.IsGood(), "what was read can be written");
    return stream;
}

void Equal(WRefCountFill& a, WRefCountFill& b) {
    Check(a.GetUserData() == b.GetUserData(), "user data comes back");
    Check(a.GetFillType() == b.GetFillType(), "the kind comes back");
    // A texture that was read past comes back with a preview, and with what that needs.
    if (a.GetFillType() == FillTexture && a.GetCGEFill()->Texture().tmpFile == 0) return;
    Check(RCF_CompareCGEFills(a.GetCGEFill(), b.GetCGEFill(), false) == 0, "the fill comes back");
    Check(BodyOf(*a.GetCGEFill()) == BodyOf(*b.GetCGEFill()), "every field of the fill comes back");
}

void Equal(const WRefCountOutline& a, const WRefCountOutline& b) {
    Check(CGE_OUTLINE::CompareTo(*a.GetCGEOutline(), *b.GetCGEOutline(), false) == 0,
          "the outline comes back");
    Check(BodyOf(*a.GetCGEOutline()) == BodyOf(*b.GetCGEOutline()), "every field of the outline comes back");
}

template <class Entry>
void ReadWriteRead(std::vector<std::byte> bytes, const Form& form) {
    Entry first(true), second(true);
    bool isWhole = false;
    {
        const fuzzing::HeapBound bound(bytes.size());
        MemoryFileStream memory(std::move(bytes));
        memory.RegisterDocumentVersion(form.version);
        testing_support::FaultyStream stream(memory);
        if (form.hides) stream.HideRemaining();
        first.ReadFrom(stream);
        isWhole = stream.IsGood();
    }
    MemoryFileStream again = Written(first, form);
    second.ReadFrom(again);
    Check(again.IsGood() && again.GetRemaining() == 0u, "what was written can be read");
    if (isWhole) Equal(first, second);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const fuzzing::NothingIsLeft check;
    const auto* const bytes = reinterpret_cast<const std::byte*>(data);
    const Form form(data[0]);
    if (form.isOutline)
        ReadWriteRead<WRefCountOutline>({bytes + 1, bytes + size}, form);
    else
        ReadWriteRead<WRefCountFill>({bytes + 1, bytes + size}, form);
    FOMMonoBmpMgr::GetInst()->FreeAllBitmaps();
    return 0;
}
