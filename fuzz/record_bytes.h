#pragma once

#include <cstdint>
#include <vector>

#include "host/stream/archive.h"

namespace fuzzing {

/// The record's body, in which every stored field shows, with pointers numbered as they are met.
template <class Record>
std::vector<std::uint8_t> BodyOf(const Record& record) {
    MemoryFileStream stream;
    udi::PersistentPtrRemapper remapper;
    const ColorSystem::ColorContext context;
    udi::OutputArchive archive(stream, remapper, context);
    record.SaveIn(archive);
    return archive.GetBytes();
}

}  // namespace fuzzing
