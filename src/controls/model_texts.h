// Texts that come from where no language is known (errors, names of steps) in the language of the program.
#pragma once

#include "controls/widgets_export.h"

#include <QString>
#include <string>

namespace lumoplot {

/// The text as its pattern is translated, with the names and numbers that it has; one without a known pattern
/// stays as it is.
XYWIDGETS_EXPORT QString InLanguage(const QString& text);
inline QString InLanguage(const std::string& text) {
    return InLanguage(QString::fromStdString(text));
}

} // namespace lumoplot
