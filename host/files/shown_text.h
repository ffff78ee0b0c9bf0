// Names of files for the window's own texts: they may hold anything.
#pragma once

#include "support/message_text.h"

#include <QDir>
#include <QString>

namespace lumoplot {

/// One line of at most 200 characters, without control characters.
inline QString Shown(const QString& text) {
    return QString::fromStdString(ShownLine(text.toStdString()));
}

inline QString ShownPath(const QString& fileName) {
    return Shown(QDir::toNativeSeparators(fileName));
}

} // namespace lumoplot
