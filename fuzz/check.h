#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

namespace fuzzing {

/// Ends the process, as a finding, unless `holds`.
inline void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

/// Checks that temporary data and images that come after it go before it. Blocks are left to the leak
/// detector: arrowheads stay registered.
class NothingIsLeft {
public:
    NothingIsLeft() = default;
    ~NothingIsLeft() {
        Check(host::LiveTmpEntries() == m_entries, "all temporary data is gone");
        Check(host::LiveImages() == m_images, "all images are gone");
    }
    NothingIsLeft(const NothingIsLeft&) = delete;
    NothingIsLeft& operator=(const NothingIsLeft&) = delete;

private:
    std::size_t m_entries = host::LiveTmpEntries();
    std::size_t m_images = host::LiveImages();
};

}  // namespace fuzzing
