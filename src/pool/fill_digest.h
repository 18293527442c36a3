#pragma once

#include "host/base/md5.h"
#include "host/gfx/image.h"

namespace VyrFOM {

/// The digest of temporary data's bytes; all zero for 0 and for an identifier that does not open. Throws
/// bad_alloc.
host::Md5::Digest DigestOfTmpFile(unsigned id);
/// The digest of the base image that temporary data holds; all zero when it holds none.
host::Md5::Digest DigestOfTmpImage(unsigned id);
/// The pixels tile by tile, each row by its whole bytes, then the palette.
host::Md5::Digest DigestOfImage(const RIMAGE& image) noexcept;

}  // namespace VyrFOM
