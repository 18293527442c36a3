#include "fom/serialization.h"

namespace {

using ColorSystem::ColorContext;

struct Serialization {
    ColorContext current = ColorContext::GetApplicationDefaultColorContext();
    ColorContext previous;
    bool textureLoaded = false;
};

/// Never destroyed: what is destroyed at exit may still ask.
Serialization& TheSerialization() {
    static Serialization& serialization = *new Serialization;
    return serialization;
}

}  // namespace

const ColorContext& FOMSerialization::GetColorContext() {
    return TheSerialization().current;
}

// Copied first: most often the context is the one that an earlier call returned.
const ColorContext& FOMSerialization::SetColorContext(const ColorContext& context) {
    Serialization& serialization = TheSerialization();
    ColorContext copy = context;
    serialization.previous = std::move(serialization.current);
    serialization.current = std::move(copy);
    return serialization.previous;
}

bool FOMSerialization::WasTextureLoaded() noexcept {
    return TheSerialization().textureLoaded;
}

void FOMSerialization::SetTextureLoaded(bool loaded) noexcept {
    TheSerialization().textureLoaded = loaded;
}
