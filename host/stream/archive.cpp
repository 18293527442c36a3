#include "host/stream/archive.h"

namespace udi {

OutputArchive::OutputArchive(AbstractFileStream& stream, PtrRemapper& remapper,
                             const ColorSystem::ColorContext& context)
    : m_stream(stream), m_remapper(remapper), m_context(context) {}

OutputArchive::~OutputArchive() {
    Flush();
}

void OutputArchive::Flush() noexcept {
    m_stream.Write(m_bytes.data(), m_bytes.size());
    m_bytes.clear();
}

}  // namespace udi
