#include "host/color/colorspec.h"

#include <algorithm>

namespace {

std::uint16_t Fit(int value, int low, int high) noexcept {
    return static_cast<std::uint16_t>(std::clamp(value, low, high));
}
std::uint16_t Percent(int value) noexcept {
    return Fit(value, 0, 100);
}
std::uint16_t Byte(int value) noexcept {
    return Fit(value, 0, 255);
}
std::uint16_t Word(int value) noexcept {
    return Fit(value, 0, 65535);
}
std::uint16_t Low(std::uint32_t value) noexcept {
    return static_cast<std::uint16_t>(value & 0xFFFFu);
}
std::uint16_t High(std::uint32_t value) noexcept {
    return static_cast<std::uint16_t>(value >> 16);
}
std::uint16_t PercentPair(int low, int high) noexcept {
    return static_cast<std::uint16_t>(Percent(low) | (Percent(high) << 8));
}

constexpr int kNoDensity = -1;

int DensityComponent(ClrModel model) noexcept {
    switch (model) {
        case ClrModel::Pantone:
        case ClrModel::PantoneHex:
            return 1;
        case ClrModel::IndexedUserInk:
        case ClrModel::Spot:
            return 2;
        case ClrModel::RGB48:
        case ClrModel::UserInk:
        case ClrModel::Hexachrome:
            return 3;
        default:
            return kNoDensity;
    }
}

/// How many components hold the identifier.
int IdentifierWords(ClrModel model) noexcept {
    switch (model) {
        case ClrModel::Pantone:
        case ClrModel::PantoneHex:
            return 1;
        case ClrModel::Index:
        case ClrModel::IndexedUserInk:
        case ClrModel::Spot:
            return 2;
        default:
            return 0;
    }
}

}  // namespace

void CLR_COLORSPEC::Make(ClrModel model, std::uint16_t c0, std::uint16_t c1, std::uint16_t c2,
                         std::uint16_t c3) noexcept {
    *this = CLR_COLORSPEC();
    m_model = static_cast<std::uint16_t>(model);
    m_component = {c0, c1, c2, c3};
}

void CLR_COLORSPEC::MakeCMYK(int c, int m, int y, int k) noexcept {
    Make(ClrModel::CMYK, Percent(c), Percent(m), Percent(y), Percent(k));
}
void CLR_COLORSPEC::MakeCMYK255(int c, int m, int y, int k) noexcept {
    Make(ClrModel::CMYK255, Byte(c), Byte(m), Byte(y), Byte(k));
}
void CLR_COLORSPEC::MakeCMY(int c, int m, int y) noexcept {
    Make(ClrModel::CMY, Byte(c), Byte(m), Byte(y));
}
void CLR_COLORSPEC::MakeRGB(int r, int g, int b) noexcept {
    Make(ClrModel::RGB, Byte(r), Byte(g), Byte(b));
}
void CLR_COLORSPEC::MakeHSB(int h, int s, int b) noexcept {
    Make(ClrModel::HSB, Fit(h, 0, 359), Byte(s), Byte(b));
}
void CLR_COLORSPEC::MakeHLS(int h, int l, int s) noexcept {
    Make(ClrModel::HLS, Fit(h, 0, 359), Byte(l), Byte(s));
}
void CLR_COLORSPEC::MakeBlackAndWhite(bool white) noexcept {
    Make(ClrModel::BlackAndWhite, white ? 1 : 0);
}
void CLR_COLORSPEC::MakeGray(int gray) noexcept {
    Make(ClrModel::Gray, Byte(gray));
}
void CLR_COLORSPEC::MakeGray24(int gray) noexcept {
    Make(ClrModel::Gray24, Byte(gray));
}
void CLR_COLORSPEC::MakeYIQ255(int y, int i, int q) noexcept {
    Make(ClrModel::YIQ255, Byte(y), Byte(i), Byte(q));
}
void CLR_COLORSPEC::MakeLAB(int l, int a, int b) noexcept {
    Make(ClrModel::LAB, Percent(l), Fit(a, -128, 127), Fit(b, -128, 127));
}
void CLR_COLORSPEC::MakeLAB255(int l, int a, int b) noexcept {
    Make(ClrModel::LAB255, Byte(l), Byte(a), Byte(b));
}
void CLR_COLORSPEC::MakeXYZ(int x, int y, int z) noexcept {
    Make(ClrModel::XYZ, Word(x), Word(y), Word(z));
}
void CLR_COLORSPEC::MakeRGB48(int r, int g, int b, int density) noexcept {
    Make(ClrModel::RGB48, Word(r), Word(g), Word(b), Percent(density));
}
void CLR_COLORSPEC::MakeHexachrome(const std::array<int, 6>& oymcgk, int density) noexcept {
    Make(ClrModel::Hexachrome, PercentPair(oymcgk[0], oymcgk[1]), PercentPair(oymcgk[2], oymcgk[3]),
         PercentPair(oymcgk[4], oymcgk[5]), Percent(density));
}
void CLR_COLORSPEC::MakeIndex(std::uint32_t index) noexcept {
    Make(ClrModel::Index, Low(index), High(index));
}
void CLR_COLORSPEC::MakePantone(std::uint16_t id, int density) noexcept {
    Make(ClrModel::Pantone, id, Percent(density));
}
void CLR_COLORSPEC::MakePantoneHex(std::uint16_t id, int density) noexcept {
    Make(ClrModel::PantoneHex, id, Percent(density));
}
void CLR_COLORSPEC::MakeUserInk(int r, int g, int b, int density) noexcept {
    Make(ClrModel::UserInk, Byte(r), Byte(g), Byte(b), Percent(density));
}
void CLR_COLORSPEC::MakeIndexedUserInk(std::uint32_t index, int density) noexcept {
    Make(ClrModel::IndexedUserInk, Low(index), High(index), Percent(density));
}
void CLR_COLORSPEC::MakeSpot(std::uint32_t spotId, int density) noexcept {
    Make(ClrModel::Spot, Low(spotId), High(spotId), Percent(density));
}
void CLR_COLORSPEC::MakeCOLORREF(unsigned long colorref) noexcept {
    MakeRGB(static_cast<int>(colorref & 0xFFu), static_cast<int>((colorref >> 8) & 0xFFu),
            static_cast<int>((colorref >> 16) & 0xFFu));
}

void CLR_COLORSPEC::SetInkDensity(int percent) noexcept {
    m_inkDensity = Percent(percent);
}

int CLR_COLORSPEC::GetDensity() const noexcept {
    const int at = DensityComponent(GetModel());
    return at == kNoDensity ? 100 : std::min<int>(GetComponent(static_cast<unsigned>(at)), 100);
}

bool CLR_COLORSPEC::SetDensity(int percent) noexcept {
    const int at = DensityComponent(GetModel());
    if (at == kNoDensity) return false;
    SetComponent(static_cast<unsigned>(at), Percent(percent));
    return true;
}

std::uint32_t CLR_COLORSPEC::GetInkId() const noexcept {
    const int words = IdentifierWords(GetModel());
    std::uint32_t id = 0;
    if (words > 0) id = m_component[0];
    if (words > 1) id |= static_cast<std::uint32_t>(m_component[1]) << 16;
    return id;
}

bool CLR_COLORSPEC::SetInkId(std::uint32_t id) noexcept {
    const int words = IdentifierWords(GetModel());
    if (words > 0) m_component[0] = Low(id);
    if (words > 1) m_component[1] = High(id);
    return words > 0;
}

std::array<std::uint8_t, 6> CLR_COLORSPEC::GetHexachrome() const noexcept {
    std::array<std::uint8_t, 6> inks{};
    if (GetModel() != ClrModel::Hexachrome) return inks;
    for (unsigned i = 0; i < 6; ++i) {
        inks[i] = static_cast<std::uint8_t>((m_component[i / 2] >> (i % 2 * 8)) & 0xFFu);
    }
    return inks;
}

bool CLR_COLORSPEC::IsInvalid() const noexcept {
    switch (GetModel()) {
        case ClrModel::Pantone:
        case ClrModel::CMYK:
        case ClrModel::CMYK255:
        case ClrModel::CMY:
        case ClrModel::RGB:
        case ClrModel::HSB:
        case ClrModel::HLS:
        case ClrModel::BlackAndWhite:
        case ClrModel::Gray:
        case ClrModel::YIQ255:
        case ClrModel::LAB:
        case ClrModel::Index:
        case ClrModel::PantoneHex:
        case ClrModel::Hexachrome:
        case ClrModel::LAB255:
        case ClrModel::XYZ:
        case ClrModel::UserInk:
        case ClrModel::IndexedUserInk:
        case ClrModel::RGB48:
        case ClrModel::Gray24:
        case ClrModel::Spot:
            return false;
        case ClrModel::None:
            break;
    }
    return true;
}

bool CLR_COLORSPEC::IsSpot() const noexcept {
    const ClrModel model = GetModel();
    return model == ClrModel::Pantone || model == ClrModel::PantoneHex || model == ClrModel::Spot;
}

bool CLR_COLORSPEC::IsInk() const noexcept {
    const ClrModel model = GetModel();
    return IsSpot() || IsNamedPalette() || model == ClrModel::UserInk || model == ClrModel::IndexedUserInk;
}
