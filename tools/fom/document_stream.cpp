#include "fom/document_stream.h"

#include "fom/block_reader.h"
#include "fom/document_loader.h"

namespace command {

std::optional<PaintDocument> ReadDocument(AbstractFileStream& stream, host::Error& error) {
    BlockReader reader(stream);
    const std::optional<DocumentVersion> version = reader.ReadHead(error);
    if (!version) return std::nullopt;
    DocumentLoader loader(*version);
    Block block;
    while (!loader.IsAtEnd())
        if (reader.Next(block, error) != BlockReader::Result::Block || !loader.Take(block, error))
            return std::nullopt;
    if (reader.Remaining() != 0) {
        error = DocumentFault(reader.Offset(), "something follows the end block");
        return std::nullopt;
    }
    return loader.Finish();
}

std::optional<RecoveredDocument> RecoverDocument(AbstractFileStream& stream, host::Error& error) {
    BlockReader reader(stream);
    const std::optional<DocumentVersion> version = reader.ReadHead(error);
    if (!version) return std::nullopt;
    DocumentLoader loader(*version);
    RecoveredDocument recovered;
    const auto note = [&recovered](host::Error& fault) {
        if (!recovered.fault) recovered.fault = std::move(fault);
    };
    Block block;
    for (auto result = BlockReader::Result::Block;
         result != BlockReader::Result::Broken && !loader.IsAtEnd();) {
        host::Error fault;
        result = reader.Next(block, fault);
        if (result == BlockReader::Result::Block && loader.Take(block, fault)) continue;
        note(fault);
        if (result != BlockReader::Result::Broken) loader.Lose(block.payload.size() + kBlockFrame);
    }
    if (loader.IsAtEnd() && reader.Remaining() != 0) {
        host::Error fault = DocumentFault(reader.Offset(), "something follows the end block");
        note(fault);
    }
    recovered.missing = loader.DescribeMissing();
    recovered.document = loader.Finish();
    return recovered;
}

}  // namespace command
