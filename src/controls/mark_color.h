// Tints that mark cells and edits. Each is blended with the theme's own base, so that text stays readable in
// light and dark.
#pragma once

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

namespace lumoplot {

/// The base colour with a third of another one.
inline QColor TintedBase(const QColor& tint) {
    const QColor base = QGuiApplication::palette().color(QPalette::Base);
    const auto blend = [](int a, int b) { return (a * 2 + b) / 3; };
    return QColor(blend(base.red(), tint.red()), blend(base.green(), tint.green()),
                  blend(base.blue(), tint.blue()));
}

/// Behind a text that is no value.
inline QColor FaultyBase() {
    return TintedBase(Qt::red);
}

} // namespace lumoplot
