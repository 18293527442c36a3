#pragma once

#include <cstdint>
#include <vector>

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/gfx/fill.h"
#include "host/gfx/outline.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

/// Fills and outlines in document streams; docs/formats/stream_records.md has the tables. Faults clear the
/// stream's good flag and never stop an operation. Main thread only. Throws bad_alloc.

/// The colour context of every conversion while reading and writing: the application's default one when it is
/// first asked for.
class FOM_API FOMSerialization {
public:
    static const ColorSystem::ColorContext& GetColorContext();
    /// Returns a reference to a copy of the one before, good until the next call.
    static const ColorSystem::ColorContext& SetColorContext(const ColorSystem::ColorContext& context);

    /// Whether a texture's preview was made since the flag was last reset. The process has one flag.
    static bool WasTextureLoaded() noexcept;
    static void SetTextureLoaded(bool loaded) noexcept;
};

class FOM_API FOMFillSerialization {
public:
    /// The body of the record as a document has it, docs/formats/bodies.md.
    static std::vector<std::uint8_t> MakeBody(const CGE_FILL& record, udi::PtrRemapper& remapper);
    /// A current section, a 12.50 one, and the end. `record` stays as it is. All memory is taken before the
    /// first byte is written.
    static void WriteTo(AbstractFileStream& stream, CGE_FILL& record, udi::PtrRemapper& remapper);
    /// Empties `record`, or makes one when it is null, and fills it from the first section that it knows; the
    /// GUID of a section that has none, of an older version, is nil. The caller owns it, whatever the stream
    /// held and whatever is thrown.
    static void ReadFrom(AbstractFileStream& stream, CGE_FILL*& record, udi::PtrRemapper& remapper);
};

class FOM_API FOMOutlineSerialization {
public:
    static std::vector<std::uint8_t> MakeBody(const CGE_OUTLINE& record, udi::PtrRemapper& remapper);
    static void WriteTo(AbstractFileStream& stream, const CGE_OUTLINE& record, udi::PtrRemapper& remapper);
    static void ReadFrom(AbstractFileStream& stream, CGE_OUTLINE& record, udi::PtrRemapper& remapper);
};

/// The end of a document load: entries that lost a duplicate test while `stream` was read, and that pointers
/// from it might lead to, are deleted. Once for every load.
FOM_API void FOMGREndLoad(AbstractFileStream& stream);
