// The toolkit's style on desktops of high contrast: on a black background it draws outlines as black as that,
// and so do what can not be used and tables' grids. There they get colours that are seen.
#pragma once

#include <QProxyStyle>

namespace lumoplot {

class TContrastStyle : public QProxyStyle {
public:
    TContrastStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
};

/// Lets the application use it where it uses the style that needs it.
void UseContrastStyle();

} // namespace lumoplot
