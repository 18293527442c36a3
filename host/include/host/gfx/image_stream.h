#pragma once

#include "host/base/export.h"
#include "host/base/temp_data.h"
#include "host/color/context.h"
#include "host/gfx/image.h"

/// Images as documents hold them, in temporary data from its first byte to its last; docs/formats/image.md
/// has the table. Samples are stored as they are: the context is for forms that convert, which this one does
/// not.

/// Number of the form.
inline constexpr int kUdiImageFormat = 2;

/// Writes an image's pixels and palette, a view's from its base, into an empty stream. False for null, for
/// another format, for a palette of more than 65,536 entries and when the disk is full. Throws bad_alloc.
FOM_API bool UDII_WriteImage(TmpStream& stream, HUDIIMAGE image, int format, const ColorContext& context);
/// A new image with one reference. Null for what is not exactly one image of a known version; any bytes may
/// be given, and memory is only taken for pixels that are there. Throws bad_alloc.
FOM_API HUDIIMAGE UDII_ReadImage(TmpStream& stream, const ColorContext& context);
