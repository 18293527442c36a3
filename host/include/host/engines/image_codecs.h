#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "host/base/error.h"
#include "host/base/export.h"
#include "host/gfx/image.h"

namespace host {

/// Image files as images of 8 bits per plane. Any bytes are safe to read: null, with `error` filled, for what
/// is no image of that kind, is cut short, has more than 64 Mi pixels, or claims more pixels than data of its
/// size can hold. Throws bad_alloc only.

/// Gray, RGB, RGBA and opaque palette images stay what they are (fewer than 8 bits widen to 8); gray with
/// transparency and palettes with it become RGBA; 16 bits are reduced to 8. Values are sRGB: a file with
/// another gamma of its own is converted.
FOM_API std::unique_ptr<RIMAGE> ReadPng(std::span<const std::byte> bytes, Error& error);
/// Gray and RGB; YCC is read as RGB, and CMYK is turned into RGB by the plain formula.
FOM_API std::unique_ptr<RIMAGE> ReadJpeg(std::span<const std::byte> bytes, Error& error);

/// Whether this build reads the format; without it, reading fails with that reason.
FOM_API bool CanReadPng() noexcept;
FOM_API bool CanReadJpeg() noexcept;

}  // namespace host
