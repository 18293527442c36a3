#include "host/gfx/outline.h"

#include "stream/outline_codec.h"
#include "stream/record_body.h"

void CGE_OUTLINE::SaveIn(udi::OutputArchive& archive) const {
    host::detail::WriteBody(archive, *this);
}

bool CGE_OUTLINE::LoadFrom(udi::InputArchive& archive) {
    return host::detail::ReadBody(archive, *this);
}
