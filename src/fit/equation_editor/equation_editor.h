// The way into the equation editor.
#pragma once

class QWidget;

namespace lumoplot {

class TCurFit;

/// Lets the user edit a copy of the fit in the equation editor, modal and over `ownerForm` (may be null).
/// With OK the fit becomes what was edited, without a notification, and the result is true; otherwise it
/// stays untouched.
bool EditCurFit(QWidget* ownerForm, TCurFit& fitter);

} // namespace lumoplot
