// What Return means in a dialog: it takes what was typed, and only Ctrl+Return closes.
#pragma once

#include <QDialog>

namespace lumoplot {

/// From now on Return presses the button that has the focus, lets any other control take its value and never
/// reaches the dialog's default button; Ctrl+Return moves the focus to that button and presses it.
void KeepOpenOnReturn(QDialog& dialog);

} // namespace lumoplot
