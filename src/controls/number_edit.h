// Edits that hold a number: what a text means, and how one that is no number is shown.
#pragma once

#include "controls/widgets_export.h"

#include <QLineEdit>
#include <QSpinBox>
#include <optional>

namespace lumoplot {

/// The number that a typed text stands for. Its decimal sign is the point; the comma is one too, but before
/// exactly three digits only where the locale has it as such. Throws EConvertError, which then names both
/// readings.
XYWIDGETS_EXPORT double ParseTyped(const std::string& text);

/// The number in the edit. An empty text and a lone "." give nothing, any other text that is no finite number
/// gives nothing and marks the edit, with the reason in its tooltip. A number takes the mark away.
XYWIDGETS_EXPORT std::optional<double> NumberIn(QLineEdit& edit);
XYWIDGETS_EXPORT std::optional<int> IntegerIn(QLineEdit& edit);
/// As NumberIn, but an empty text and a lone "." are marked too.
XYWIDGETS_EXPORT std::optional<double> FiniteNumberIn(QLineEdit& edit);

/// The significant digits of a number that is shown and not being edited.
inline constexpr int kShownDigits = 4;

/// Shows a number in general format with kShownDigits.
XYWIDGETS_EXPORT void ShowNumber(QLineEdit& edit, double value);
/// Shows another text for a number, and no mark.
XYWIDGETS_EXPORT void ShowNumberText(QLineEdit& edit, const std::string& text);

/// Shows a stored number, also one beyond the range that the edit offers.
XYWIDGETS_EXPORT void ShowInteger(QSpinBox& edit, int value);

/// Shows a text from its start. Nothing is set when it is there already, so that an edit keeps its caret
/// while it is typed in.
XYWIDGETS_EXPORT void ShowText(QLineEdit& edit, const std::string& text);

/// Marks the edit with a reason, or takes the mark away for an empty one.
XYWIDGETS_EXPORT void MarkEdit(QLineEdit& edit, const QString& reason);

} // namespace lumoplot
