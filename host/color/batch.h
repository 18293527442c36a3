#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "host/color/colorspec.h"

#include "color/icc_engine.h"
#include "color/pixels.h"

namespace host::detail {

/// Converts many colours to one process model. The work runs block by block: the colours of a block are
/// sorted into lanes by how they convert, and each lane with a profile transform packs its colours, runs the
/// transform once and unpacks the result.
class BatchConverter {
public:
    /// `engine` may be null. Finds the transforms that `colors` need: nothing after this allocates.
    BatchConverter(const IccEngine* engine, ClrModel model, std::span<const CLR_COLORSPEC> colors);

    /// Returns how many are now of the model. `colors` may be any part of those given before.
    std::size_t Run(std::span<CLR_COLORSPEC> colors) const noexcept;

private:
    static constexpr std::size_t kBlock = 512;
    using Lane = std::array<CLR_COLORSPEC*, kBlock>;

    std::size_t RunBlock(std::span<CLR_COLORSPEC> colors) const noexcept;
    void RunLane(PixelFormat format, std::span<CLR_COLORSPEC* const> colors) const noexcept;
    bool RunFormula(CLR_COLORSPEC& color) const noexcept;

    const IccEngine* m_engine;
    ClrModel m_model;
    Family m_family;
    /// By pixel format; null where the formulas serve. The last is for colours without a format.
    std::array<const IccEngine::Transform*, kPixelFormats + 1> m_transforms{};
    /// The format of all colours, when they are of one that has a transform.
    PixelFormatIndex m_only = kNoPixelFormat;
};

}  // namespace host::detail
