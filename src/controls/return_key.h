// What Return means in a dialog: it takes what was typed, and only Ctrl+Return closes.
#pragma once

#include "controls/widgets_export.h"

#include <QDialog>

namespace lumoplot {

/// What a Return does that takes nothing, as its edit has given its value before or another control has the
/// focus.
enum class TSecondReturn { Nothing, Closes };

/// From now on Return presses the button that has the focus, lets any other control take its value and never
/// reaches the dialog's default button; Ctrl+Return moves the focus to that button and presses it, and where
/// it Closes a second Return does so, too.
void KeepOpenOnReturn(QDialog& dialog, TSecondReturn second = TSecondReturn::Nothing);

/// Ctrl+Return alone, where a plain Return does what it does everywhere.
XYWIDGETS_EXPORT void CloseOnCtrlReturn(QDialog& dialog);

} // namespace lumoplot
