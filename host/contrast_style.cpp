#include "host/contrast_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace lumoplot {
namespace {

constexpr int kDarkest = 24;       // of the lightness of windows: above it outlines are seen
constexpr int kLeastContrast = 60; // between what is disabled and the window
constexpr auto kMended = "fusion";

bool IsBlack(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < kDarkest;
}

/// So far from the window's colour to that of its texts.
QColor Between(const QPalette& palette, double part) {
    const QColor from = palette.color(QPalette::Active, QPalette::Window);
    const QColor to = palette.color(QPalette::Active, QPalette::WindowText);
    const auto mixed = [part](float a, float b) { return static_cast<float>(a + part * (b - a)); };
    return QColor::fromRgbF(mixed(from.redF(), to.redF()), mixed(from.greenF(), to.greenF()),
                            mixed(from.blueF(), to.blueF()));
}

QColor OutlineOf(const QStyleOption& option) {
    constexpr double kUsual = 0.75;
    constexpr double kDisabled = 0.35;
    return Between(option.palette, option.state.testFlag(QStyle::State_Enabled) ? kUsual : kDisabled);
}

enum class TShape { Box, Round };

void DrawOutline(QPainter& painter, const QStyleOption& option, TShape shape) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, shape == TShape::Round);
    painter.setPen(QPen(OutlineOf(option), 1));
    painter.setBrush(Qt::NoBrush);
    const QRectF place = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    shape == TShape::Round ? painter.drawEllipse(place) : painter.drawRect(place);
    painter.restore();
}

} // namespace

TContrastStyle::TContrastStyle() : QProxyStyle(QLatin1String(kMended)) {
}

void TContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                   const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!option || !IsBlack(option->palette) || option->state.testFlag(State_HasFocus)) return;
    switch (element) {
    case PE_FrameLineEdit:
    case PE_Frame:
    case PE_FrameGroupBox:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck: return DrawOutline(*painter, *option, TShape::Box);
    case PE_IndicatorRadioButton: return DrawOutline(*painter, *option, TShape::Round);
    default: return;
    }
}

void TContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                        QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    const bool hasEdge = control == CC_ComboBox || control == CC_SpinBox;
    if (hasEdge && IsBlack(option->palette) && !option->state.testFlag(State_HasFocus))
        DrawOutline(*painter, *option, TShape::Box);
}

int TContrastStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returned) const {
    constexpr double kGrid = 0.4;
    if (hint == SH_Table_GridLineColor && option && IsBlack(option->palette))
        return static_cast<int>(Between(option->palette, kGrid).rgb());
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

void TContrastStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    if (!IsBlack(palette)) return;
    constexpr double kDisabled = 0.55;
    const QColor unused = Between(palette, kDisabled);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        const int contrast =
            palette.color(QPalette::Disabled, role).lightness() - palette.color(QPalette::Window).lightness();
        if (contrast < kLeastContrast) palette.setColor(QPalette::Disabled, role, unused);
    }
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setColor(group, QPalette::PlaceholderText, unused);
}

void UseContrastStyle() {
    if (QApplication::style()->name() == QLatin1String(kMended)) QApplication::setStyle(new TContrastStyle);
}

} // namespace lumoplot
