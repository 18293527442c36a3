#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/base/export.h"
#include "host/gfx/wideline.h"

namespace host::detail {
template <class Record>
struct Fields;
}

/// A figure that repeats along one line of a wideline. Positions count in divisions of its width.
///
/// This record and the ones below are values: copies are deep, and neither an assignment nor a change of a
/// count that runs out of memory changes anything.
class FOM_API CGE_DES9_CYCLICAL_LINE {
public:
    std::int32_t width = 0;         ///< document units, of one repeat
    std::int32_t lineDivision = 0;  ///< divisions of the width

    CGE_DES9_CYCLICAL_LINE() noexcept = default;
    CGE_DES9_CYCLICAL_LINE(const CGE_DES9_CYCLICAL_LINE&) = default;
    CGE_DES9_CYCLICAL_LINE(CGE_DES9_CYCLICAL_LINE&&) noexcept = default;
    CGE_DES9_CYCLICAL_LINE& operator=(const CGE_DES9_CYCLICAL_LINE& other) {
        return *this = CGE_DES9_CYCLICAL_LINE(other);
    }
    CGE_DES9_CYCLICAL_LINE& operator=(CGE_DES9_CYCLICAL_LINE&&) noexcept = default;
    ~CGE_DES9_CYCLICAL_LINE() = default;

    /// New style points are 0, and so are the figure points that come with them.
    void SetNumberOfStyles(std::uint32_t count);
    std::span<const std::int32_t> StylePoints() const noexcept { return m_stylePoints; }
    std::span<std::int32_t> StylePoints() noexcept { return m_stylePoints; }

    /// Figure points, two values per style point; none while they are off.
    void SetFigures(bool on);
    bool HasFigures() const noexcept { return m_hasFigures; }
    std::span<const std::int32_t> FigurePoints() const noexcept { return m_figurePoints; }
    std::span<std::int32_t> FigurePoints() noexcept { return m_figurePoints; }

private:
    friend struct host::detail::Fields<CGE_DES9_CYCLICAL_LINE>;

    std::vector<std::int32_t> m_stylePoints;
    std::vector<std::int32_t> m_figurePoints;
    bool m_hasFigures = false;
};

/// How one line of a wideline is filled.
struct CGE_DES9_WIDELINE_STYLE {
    std::vector<std::int32_t> lengths;  ///< first: the one member whose assignment can fail
    bool hollow = false;                ///< its outline is drawn, not its inside
    bool bar = false;                   ///< the dashes are closed across

    /// New lengths are 0.
    void SetNumberOfLengths(std::uint32_t count) { lengths.resize(count); }
    std::uint32_t GetNumberOfLengths() const noexcept { return static_cast<std::uint32_t>(lengths.size()); }
};

/// One line of a wideline.
class FOM_API CGE_DES9_WIDELINE_ENTRY {
public:
    std::int32_t start = 0;   ///< of the line across the wideline, in divisions
    std::int32_t height = 0;  ///< of the line across the wideline, in divisions
    std::int32_t divide = 0;  ///< number of threads that the line is divided into
    std::int32_t cap = 0;     ///< as CGE_OUTLINE::endCaps
    std::int32_t join = 0;    ///< as CGE_OUTLINE::join

    CGE_DES9_WIDELINE_ENTRY() noexcept = default;
    CGE_DES9_WIDELINE_ENTRY(const CGE_DES9_WIDELINE_ENTRY&) = default;
    CGE_DES9_WIDELINE_ENTRY(CGE_DES9_WIDELINE_ENTRY&&) noexcept = default;
    CGE_DES9_WIDELINE_ENTRY& operator=(const CGE_DES9_WIDELINE_ENTRY& other) {
        return *this = CGE_DES9_WIDELINE_ENTRY(other);
    }
    CGE_DES9_WIDELINE_ENTRY& operator=(CGE_DES9_WIDELINE_ENTRY&&) noexcept = default;
    ~CGE_DES9_WIDELINE_ENTRY() = default;

    /// Switched on a part is empty at first; one that is on already stays as it is.
    void SetCyclical(bool on);
    void SetStyle(bool on);
    /// Null while the part is off.
    const CGE_DES9_CYCLICAL_LINE* GetCyclical() const noexcept { return m_cyclical ? &*m_cyclical : nullptr; }
    CGE_DES9_CYCLICAL_LINE* GetCyclical() noexcept { return m_cyclical ? &*m_cyclical : nullptr; }
    const CGE_DES9_WIDELINE_STYLE* GetStyle() const noexcept { return m_style ? &*m_style : nullptr; }
    CGE_DES9_WIDELINE_STYLE* GetStyle() noexcept { return m_style ? &*m_style : nullptr; }

private:
    friend struct host::detail::Fields<CGE_DES9_WIDELINE_ENTRY>;

    std::optional<CGE_DES9_CYCLICAL_LINE> m_cyclical;
    std::optional<CGE_DES9_WIDELINE_STYLE> m_style;
};

/// An enhanced line style: several parallel lines, drawn with threads of one width.
class FOM_API CGE_DES9_WIDELINE final : public CGE_WIDELINE {
public:
    std::int32_t threadWidth = 0;  ///< document units
    std::int32_t divisions = 0;    ///< of the wideline's width
    std::vector<CGE_DES9_WIDELINE_ENTRY> entries;

    CGE_DES9_WIDELINE() noexcept = default;
    CGE_DES9_WIDELINE(const CGE_DES9_WIDELINE&) = default;
    CGE_DES9_WIDELINE(CGE_DES9_WIDELINE&&) noexcept = default;
    CGE_DES9_WIDELINE& operator=(const CGE_DES9_WIDELINE& other) { return *this = CGE_DES9_WIDELINE(other); }
    CGE_DES9_WIDELINE& operator=(CGE_DES9_WIDELINE&&) noexcept = default;
    ~CGE_DES9_WIDELINE() override;

    /// New entries are default-constructed.
    void SetNumberOfWidelineEntry(std::uint32_t count) { entries.resize(count); }
    std::uint32_t GetNumberOfWidelineEntry() const noexcept {
        return static_cast<std::uint32_t>(entries.size());
    }

    CgeWidelineType GetType() const noexcept override { return WidelineDes9; }
    std::unique_ptr<CGE_WIDELINE> Clone() const override;
    void HashInto(host::Hasher& hasher) const noexcept override;
    /// A total exact order over every field; with `skipThreadWidth` all but the thread width.
    static int CompareTo(const CGE_DES9_WIDELINE& a, const CGE_DES9_WIDELINE& b,
                         bool skipThreadWidth) noexcept;

private:
    int CompareSameType(const CGE_WIDELINE& other) const noexcept override;
};
