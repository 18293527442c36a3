#pragma once

#include "host/services/services.h"

namespace host {

/// The built-in textures, in the one library "Standard". Stateless.
class ProceduralTextures final : public TextureEngine {
public:
    /// Always the one library that there is.
    WString GetLastUsedLibrary() override;
    /// The library's first texture with its own parameters, at 300 dots per inch and edges up to 2049 pixels.
    bool GetLastUsedTexture(std::wstring_view library, CGE_TXRINFO& info) override;
    /// An RGB image in which the tile fills the whole size: renderings of different sizes show the same
    /// picture.
    std::unique_ptr<RIMAGE> Render(const CGE_TXRINFO& info, std::uint32_t width,
                                   std::uint32_t height) override;
};

}  // namespace host
