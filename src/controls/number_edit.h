// Edits that hold a number: what a text means, and how one that is no number is shown.
#pragma once

#include "controls/widgets_export.h"

#include <QLineEdit>
#include <QSpinBox>
#include <functional>
#include <optional>
#include <string>

namespace lumoplot {

/// The number that a typed text stands for. Its decimal sign is the point; the comma is one too, but before
/// exactly three digits only where the locale has it as such. Throws EConvertError, which then names both
/// readings.
XYWIDGETS_EXPORT double ParseTyped(const std::string& text);

/// The number that was typed into the edit, or with all of its digits the one that ShowNumber shows there.
/// Throws EConvertError.
double ExactNumberIn(const QLineEdit& edit);

/// The number in the edit. An empty text and a lone "." give nothing, any other text that is no finite number
/// gives nothing and marks the edit, with the reason in its tooltip. A number takes the mark away.
std::optional<double> NumberIn(QLineEdit& edit);
std::optional<int> IntegerIn(QLineEdit& edit);
/// As NumberIn, but an empty text and a lone "." are marked too.
std::optional<double> FiniteNumberIn(QLineEdit& edit);

/// The significant digits of a number that is shown and not being edited, and where space is short.
inline constexpr int kShownDigits = 6;
inline constexpr int kFewDigits = 4;

/// How a number is written while it is not being edited.
using TNumberText = std::function<std::string(double)>;

/// Shows a number, in general format with so many digits or as `text` has it, from its first digit. While the
/// edit has the focus it shows all digits; a text that stands for the number stays. When the edit is left, a
/// text that is empty or marked gives way to the number shown last.
void ShowNumber(QLineEdit& edit, double value, int digits = kShownDigits);
void ShowNumber(QLineEdit& edit, double value, TNumberText text);
/// Shows another text for a number, and no mark.
void ShowNumberText(QLineEdit& edit, const std::string& text);

/// Shows a stored number, also one beyond the range that the edit offers.
void ShowInteger(QSpinBox& edit, int value);

/// Shows a text from its start. Nothing is set when it is there already, so that an edit keeps its caret
/// while it is typed in.
void ShowText(QLineEdit& edit, const std::string& text);

/// Marks the edit with a reason, or takes the mark away for an empty one.
XYWIDGETS_EXPORT void MarkEdit(QLineEdit& edit, const QString& reason);

} // namespace lumoplot
