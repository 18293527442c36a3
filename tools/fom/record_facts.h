#pragma once

#include "fom/document_walk.h"
#include "fom/facts.h"

namespace command {

// What the inspector tells of one record.

void AddFillFacts(const StoredEntry& stored, DocumentVersion version, Facts& facts);
void AddOutlineFacts(const StoredEntry& stored, DocumentVersion version, Facts& facts);
void AddDrawingFacts(const StoredDrawing& stored, Facts& facts);
/// Rows of 16 bytes.
void AddHexFacts(std::span<const std::uint8_t> bytes, std::uint64_t offset, Facts& facts);

}  // namespace command
