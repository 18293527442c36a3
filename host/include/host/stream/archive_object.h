#pragma once

#include <cstddef>
#include <string>

#include "host/base/delegate.h"
#include "host/base/export.h"
#include "host/stream/file_stream.h"

/// An object that documents store.
class FOM_API ArchiveObject {
public:
    virtual ~ArchiveObject();
    /// Reads the object's body. Faults show in the stream's good flag.
    virtual void ReadFrom(AbstractFileStream& stream) = 0;
    virtual void WriteTo(AbstractFileStream& stream) const = 0;
    /// At most ArchiveCreator::kMaxClassName bytes, not empty; the text outlives the object.
    virtual const char* getClassName() const = 0;
};

/// Writes and reads whole objects: a u16 length and the class name (0 for no object), then the object's body.
class FOM_API ArchiveCreator {
public:
    static constexpr std::size_t kMaxClassName = 255;

    /// Clears the good flag and writes nothing when the class name is empty or too long.
    static void WriteObject(AbstractFileStream& stream, const ArchiveObject* object);
    /// Reads a class name (at most kMaxClassName bytes), asks `factory` for an empty object of that class and
    /// lets it read its body. Null for a stored null, a faulty stream (good flag cleared) or a class that the
    /// factory does not know (good flag cleared: the body's length is not stored). The caller owns the
    /// result, also when its body was short; it checks the good flag.
    static ArchiveObject* ReadObject(AbstractFileStream& stream,
                                     const Delegate<ArchiveObject*(const std::string& className)>& factory);
};
