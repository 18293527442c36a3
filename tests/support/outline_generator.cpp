#include "support/outline_generator.h"

#include <limits>

namespace testing_support {

OutlineGenerator::OutlineGenerator(std::uint32_t seed) : m_random(seed), m_blocks{nullptr} {
    for (std::size_t size = 0; size < 3; ++size)
        m_blocks.push_back(MEMMANAlloc(size, true));
}

OutlineGenerator::~OutlineGenerator() {
    for (HMEM block : m_blocks)
        MEMMANFree(block);
}

template <class T>
T OutlineGenerator::Whole() {
    using Limits = std::numeric_limits<T>;
    const T values[] = {static_cast<T>(-1), 0, 1, Limits::min(), Limits::max()};
    return values[m_random() % std::size(values)];
}

double OutlineGenerator::Number() {
    const double values[] = {0.0, -0.0, 0.5, -1e300, std::numeric_limits<double>::quiet_NaN()};
    return values[m_random() % std::size(values)];
}

MATRIX OutlineGenerator::Matrix() {
    return {Number(), Number(), Number(), Number(), Number(), Number()};
}

CLR_COLORSPEC OutlineGenerator::Color() {
    CLR_COLORSPEC color;
    if (Flip()) color.MakeHexachrome({1, 2, 3, 4, 5, 100}, 50);
    if (Flip()) color.SetPaletteType(12);
    if (Flip()) color.SetInkDensity(7);
    if (Flip()) color.SetComponent(3, Whole<std::uint16_t>());
    std::array<std::uint8_t, 16> identity{};
    identity[m_random() % identity.size()] = static_cast<std::uint8_t>(m_random() % 2);
    color.SetIdentity(identity);
    return color;
}

CGE_ARROWATTRIB OutlineGenerator::Arrow() {
    CGE_ARROWATTRIB arrow;
    Change(arrow.flags, Whole<std::uint32_t>());
    for (std::int32_t CGE_ARROWATTRIB::*field :
         {&CGE_ARROWATTRIB::xScale, &CGE_ARROWATTRIB::yScale, &CGE_ARROWATTRIB::xOffset,
          &CGE_ARROWATTRIB::yOffset, &CGE_ARROWATTRIB::rotation})
        Change(arrow.*field, Whole<std::int32_t>());
    return arrow;
}

CGE_DES9_WIDELINE OutlineGenerator::MakeWideline() {
    CGE_DES9_WIDELINE wideline;
    Change(wideline.threadWidth, Whole<std::int32_t>());
    Change(wideline.divisions, Whole<std::int32_t>());
    wideline.SetNumberOfWidelineEntry(Pick(4));
    for (CGE_DES9_WIDELINE_ENTRY& line : wideline.entries) {
        for (std::int32_t CGE_DES9_WIDELINE_ENTRY::*field :
             {&CGE_DES9_WIDELINE_ENTRY::start, &CGE_DES9_WIDELINE_ENTRY::height,
              &CGE_DES9_WIDELINE_ENTRY::divide, &CGE_DES9_WIDELINE_ENTRY::cap,
              &CGE_DES9_WIDELINE_ENTRY::join})
            Change(line.*field, Whole<std::int32_t>());
        line.SetCyclical(Flip());
        if (CGE_DES9_CYCLICAL_LINE* cyclical = line.GetCyclical()) {
            Change(cyclical->width, Whole<std::int32_t>());
            Change(cyclical->lineDivision, Whole<std::int32_t>());
            cyclical->SetNumberOfStyles(Pick(3));
            cyclical->SetFigures(Flip());
            for (std::int32_t& point : cyclical->StylePoints())
                point = Whole<std::int32_t>();
            for (std::int32_t& point : cyclical->FigurePoints())
                point = Whole<std::int32_t>();
        }
        line.SetStyle(Flip());
        if (CGE_DES9_WIDELINE_STYLE* style = line.GetStyle()) {
            style->hollow = Flip();
            style->bar = Flip();
            style->SetNumberOfLengths(Pick(3));
            for (std::int32_t& length : style->lengths)
                length = Whole<std::int32_t>();
        }
    }
    return wideline;
}

void OutlineGenerator::AddExtras(CGE_OUTLINE& pen) {
    if (Flip()) pen.SetWideline(MakeWideline().Clone());
    if (Flip()) {
        CGE_VARIABLEATTRIB attribute;
        attribute.points.resize(Pick(3), {Number(), Number(), Number()});
        pen.SetVariableAttribute(attribute);
    }
    if (Flip()) pen.SetLeftArrowAttributes(Arrow());
    if (Flip()) pen.SetRightArrowAttributes(Arrow());
    if (Flip()) pen.SetProjectMatrix(Matrix());
}

CGE_OUTLINE OutlineGenerator::Make() {
    CGE_OUTLINE pen;
    for (std::uint16_t CGE_OUTLINE::*field :
         {&CGE_OUTLINE::type, &CGE_OUTLINE::endCaps, &CGE_OUTLINE::join, &CGE_OUTLINE::justification})
        Change(pen.*field, Whole<std::uint16_t>());
    Change(pen.width, Whole<std::int32_t>());
    Change(pen.nibStretch, Whole<std::int16_t>());
    Change(pen.nibAngle, Whole<std::int32_t>());
    Change(pen.matrix, Matrix());
    Change(pen.color, Color());
    Change(pen.screen, {Whole<std::uint16_t>(), Whole<std::uint16_t>(), Whole<std::uint32_t>(),
                        Whole<std::int32_t>(), Whole<std::uint32_t>()});
    Change(pen.overprint, Whole<std::uint32_t>());
    Change(pen.dotDash.count, Whole<std::uint16_t>());
    for (std::int32_t& length : pen.dotDash.element)
        Change(length, Whole<std::int32_t>());
    pen.leftArrow = m_blocks[m_random() % m_blocks.size()];
    pen.rightArrow = m_blocks[m_random() % m_blocks.size()];
    Change(pen.dotLength, Whole<std::uint32_t>());
    Change(pen.guid, VyrUtils::Guid({1, 2}));
    if (Flip()) pen.SetMiterLimit(Whole<std::int32_t>());
    if (Flip()) pen.SetDashAdjust(static_cast<CGE_DASH_ADJUST>(Whole<std::int32_t>()));
    if (Flip()) AddExtras(pen);
    return pen;
}

}  // namespace testing_support
