#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "host/base/export.h"

namespace ColorSystem {
class ColorContext;
}

/// Colour models by their stored numbers. 0 is no colour.
enum class ClrModel : std::uint16_t {
    None = 0,
    Pantone = 1,
    CMYK = 2,
    CMYK255 = 3,
    CMY = 4,
    RGB = 5,
    HSB = 6,
    HLS = 7,
    BlackAndWhite = 8,
    Gray = 9,
    YIQ255 = 11,
    LAB = 12,
    Index = 13,
    PantoneHex = 14,
    Hexachrome = 15,
    LAB255 = 18,
    XYZ = 19,
    UserInk = 21,
    IndexedUserInk = 22,
    RGB48 = 23,
    Gray24 = 24,
    Spot = 25,
};

/// A colour as documents of 12.x hold it, little-endian: model, palette type and four components, each u16 as
/// in CLR_COLORSPEC. Ink density and identity block have no place.
struct CLR_COLORSPEC_125X {
    std::array<std::uint8_t, 12> bytes{};

    friend bool operator==(const CLR_COLORSPEC_125X&, const CLR_COLORSPEC_125X&) = default;
};

/// One colour in one model: 32 bytes, no padding, so that it can be hashed and compared as bytes.
///
/// | byte | field | |
/// |---|---|---|
/// | 0 | model | ClrModel, u16 |
/// | 2 | palette type | u16; 0 none; 12, 24, 33 and 34 are named palettes |
/// | 4 | ink density | u16, 0 to 100, the tint of an ink or named palette colour; 100 by default |
/// | 6 | reserved | u16, 0 |
/// | 8 | components | four u16, by model (see below); unused ones are 0 |
/// | 16 | identity block | 16 bytes: which colour this is, apart from how it looks: the identifier of a named
/// palette's colour, or the style colour that it comes from; zeros for a plain colour |
///
/// | model | component 0 | 1 | 2 | 3 |
/// |---|---|---|---|---|
/// | CMYK, CMYK255 | cyan | magenta | yellow | black |
/// | CMY | cyan | magenta | yellow | |
/// | RGB | red | green | blue | |
/// | RGB48, UserInk | red | green | blue | density |
/// | HSB | hue | saturation | brightness | |
/// | HLS | hue | lightness | saturation | |
/// | BlackAndWhite | 0 black, 1 white | | | |
/// | Gray, Gray24 | gray | | | |
/// | YIQ255 | y | i | q | |
/// | LAB (a and b in two's complement), LAB255 | l | a | b | |
/// | XYZ | x | y | z | |
/// | Hexachrome | orange, yellow << 8 | magenta, cyan << 8 | green, black << 8 | density |
/// | Pantone, PantoneHex | identifier | density | | |
/// | Index | low word | high word | | |
/// | IndexedUserInk, Spot | low word | high word | density | |
///
/// Ink density and the density component are two numbers; both thin the colour, see docs/color.md.
/// A default colour has model 0 and is invalid. All operations are pure and safe from any thread.
class FOM_API CLR_COLORSPEC {
public:
    CLR_COLORSPEC() = default;

    /// Each Make function replaces the whole colour: no palette, ink density 100, identity block zero.
    /// Components outside their range are clamped; densities are per cent.
    void MakeCMYK(int c, int m, int y, int k) noexcept;     ///< per cent
    void MakeCMYK255(int c, int m, int y, int k) noexcept;  ///< 0 to 255
    void MakeCMY(int c, int m, int y) noexcept;             ///< 0 to 255
    void MakeRGB(int r, int g, int b) noexcept;             ///< 0 to 255
    void MakeHSB(int h, int s, int b) noexcept;             ///< degrees 0 to 359, 0 to 255, 0 to 255
    void MakeHLS(int h, int l, int s) noexcept;             ///< degrees 0 to 359, 0 to 255, 0 to 255
    void MakeBlackAndWhite(bool white) noexcept;
    void MakeGray(int gray) noexcept;                           ///< 0 black to 255 white
    void MakeGray24(int gray) noexcept;                         ///< 0 black to 255 white
    void MakeYIQ255(int y, int i, int q) noexcept;              ///< 0 to 255, I and Q around 128
    void MakeLAB(int l, int a, int b) noexcept;                 ///< 0 to 100, -128 to 127
    void MakeLAB255(int l, int a, int b) noexcept;              ///< 0 to 255, a and b around 128
    void MakeXYZ(int x, int y, int z) noexcept;                 ///< 0 to 65535, 32768 is 1.0
    void MakeRGB48(int r, int g, int b, int density) noexcept;  ///< 0 to 65535
    void MakeHexachrome(const std::array<int, 6>& oymcgk, int density) noexcept;  ///< per cent
    void MakeIndex(std::uint32_t index) noexcept;
    void MakePantone(std::uint16_t id, int density) noexcept;
    void MakePantoneHex(std::uint16_t id, int density) noexcept;
    void MakeUserInk(int r, int g, int b, int density) noexcept;  ///< 0 to 255
    void MakeIndexedUserInk(std::uint32_t index, int density) noexcept;
    void MakeSpot(std::uint32_t spotId, int density) noexcept;
    /// A colour value 0x00BBGGRR; the top byte is not read.
    void MakeCOLORREF(unsigned long colorref) noexcept;
    void MakeCMYKBlack() noexcept { MakeCMYK(0, 0, 0, 100); }
    void MakeCMYKWhite() noexcept { MakeCMYK(0, 0, 0, 0); }
    void MakeRGBBlack() noexcept { MakeRGB(0, 0, 0); }

    ClrModel GetModel() const noexcept { return static_cast<ClrModel>(m_model); }
    std::uint16_t GetPaletteType() const noexcept { return m_palette; }
    void SetPaletteType(std::uint16_t palette) noexcept { m_palette = palette; }
    std::uint16_t GetInkDensity() const noexcept { return m_inkDensity; }
    /// Clamped to 0 to 100.
    void SetInkDensity(int percent) noexcept;
    /// Component `i` (0 to 3) as it is stored.
    std::uint16_t GetComponent(unsigned i) const noexcept { return m_component[i & 3u]; }
    void SetComponent(unsigned i, std::uint16_t value) noexcept { m_component[i & 3u] = value; }
    /// The density component, per cent; 100 for a model that has none.
    int GetDensity() const noexcept;
    /// Clamped to 0 to 100. False, with nothing changed, for a model without a density component.
    bool SetDensity(int percent) noexcept;
    /// The identifier or index of a Pantone, PantoneHex, Index, IndexedUserInk or Spot colour; 0 for others.
    std::uint32_t GetInkId() const noexcept;
    /// False, with nothing changed, for a model without an identifier; Pantone identifiers keep 16 bits.
    bool SetInkId(std::uint32_t id) noexcept;
    /// Orange, yellow, magenta, cyan, green and black of a Hexachrome colour as they are stored.
    std::array<std::uint8_t, 6> GetHexachrome() const noexcept;
    const std::array<std::uint8_t, 16>& GetIdentity() const noexcept { return m_identity; }
    void SetIdentity(const std::array<std::uint8_t, 16>& identity) noexcept { m_identity = identity; }

    /// Writes the 12.x form. With `keepLook` a colour that is more than model, palette type and components
    /// say becomes a plain one that looks the same (docs/formats/legacy_records.md): an ink density is
    /// multiplied into the density or thins the components, and a named palette's colour leaves its palette.
    /// Without it, that is dropped. The model stays, so `context` is asked nothing.
    void SaveIn12(CLR_COLORSPEC_125X& out, const ColorSystem::ColorContext& context, bool keepLook) const;
    /// Replaces the whole colour by what any bytes say: ink density 100, no identity block.
    void LoadFrom12(const CLR_COLORSPEC_125X& in) noexcept;

    /// No model, or a model number that is not known.
    bool IsInvalid() const noexcept;
    /// Pantone, PantoneHex or Spot: printed with an ink of its own plate.
    bool IsSpot() const noexcept;
    /// From palette type 12, 24, 33 or 34, whose colours are known by their identity block.
    bool IsNamedPalette() const noexcept {
        return m_palette == 12 || m_palette == 24 || m_palette == 33 || m_palette == 34;
    }
    /// Spot colours, user inks and named palettes; all others are process colours.
    bool IsInk() const noexcept;

    /// Bytes decide, identity block included.
    friend bool operator==(const CLR_COLORSPEC&, const CLR_COLORSPEC&) = default;

private:
    void Make(ClrModel model, std::uint16_t c0, std::uint16_t c1 = 0, std::uint16_t c2 = 0,
              std::uint16_t c3 = 0) noexcept;

    std::uint16_t m_model = 0;
    std::uint16_t m_palette = 0;
    std::uint16_t m_inkDensity = 100;
    std::uint16_t m_reserved = 0;
    std::array<std::uint16_t, 4> m_component{};
    std::array<std::uint8_t, 16> m_identity{};
};
static_assert(sizeof(CLR_COLORSPEC) == 32);
