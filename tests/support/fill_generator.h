#pragma once

#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "host/gfx/fill.h"
#include "host/gfx/image.h"

namespace testing_support {

/// Makes fill records whose fields take few values each, so that equal ones are common. The same seed makes
/// the same records. It owns the bitmaps and images that its records refer to, and must outlive them.
class FillGenerator {
public:
    static constexpr CgeFillType kKinds[] = {FillNone,       FillUniform,       FillFountain, FillPostScript,
                                             FillMonoBitmap, FillMonoBitmapAlt, FillVector,   FillColorBitmap,
                                             FillTexture,    FillHatch};
    /// Values 0 to kValues - 1; for a field that takes part in comparison, all of them differ. 0 is the
    /// default.
    static constexpr unsigned kValues = 3;
    struct Field {
        const char* name;
        void (*set)(CGE_FILL& fill, unsigned value, FillGenerator& generator);
    };
    /// The fields that comparison reads.
    static std::span<const Field> ComparedFields(CgeFillType kind);
    /// What it leaves out, for example the case of names, stale sub-records and the GUID.
    static std::span<const Field> IgnoredFields(CgeFillType kind);

    explicit FillGenerator(std::uint32_t seed);
    ~FillGenerator();
    FillGenerator(const FillGenerator&) = delete;
    FillGenerator& operator=(const FillGenerator&) = delete;

    /// A random record, ignored fields too.
    CGE_FILL Make(CgeFillType kind);
    CGE_FILL Make() { return Make(kKinds[Pick(std::size(kKinds))]); }
    /// A copy of `fill` that differs from it in ignored fields only. Its temporary data is its own.
    CGE_FILL MakeEqual(const CGE_FILL& fill);
    /// 0 to `count` - 1.
    unsigned Pick(std::size_t count) { return static_cast<unsigned>(m_random() % count); }

    /// Blocks by content: a value's first and second block hold the same bytes. Null for value 0.
    HMEM Bitmap(unsigned value, bool second) const { return m_bitmaps[value * 2 + second]; }
    /// A new reference on an image, likewise.
    HUDIIMAGE Image(unsigned value, bool second) const {
        return UDIIMGDuplicate(m_images[value * 2 + second]);
    }

private:
    std::mt19937 m_random;
    std::vector<HMEM> m_bitmaps;
    std::vector<HUDIIMAGE> m_images;
};

}  // namespace testing_support
