// What a group of controls that edits a curve fit needs of the window that it is in. The equation editor and
// the data editor's page show the same things in forms of their own.
#pragma once

#include "fit/definition/cur_fit.h"
#include "support/guard.h"

#include <functional>

namespace lumoplot {

class TFitAccess {
public:
    virtual ~TFitAccess() = default;

    /// The fit that is shown, or null.
    virtual TCurFit* Fit() = 0;
    /// The same when the controls may write to it now, else null.
    virtual TCurFit* FitToEdit() = 0;
    /// Runs a change of the fit; a window that keeps steps makes it one, named after `what` it changes
    /// ("formula"). An exception is shown.
    virtual void ChangeFit(const char* what, const std::function<void()>& change) {
        static_cast<void>(what);
        Guarded(change);
    }
    /// Controls have changed the fit.
    virtual void FitEdited() = 0;

    /// Runs a change of the fit unless the controls are being filled. An exception is shown.
    template <class TAction>
    void EditFit(const char* what, TAction&& action) {
        TCurFit* fit = FitToEdit();
        if (!fit) return;
        ChangeFit(what, [&] { action(*fit); });
        FitEdited();
    }
};

/// Announces a change of something that is only shown, such as a unit in the legend.
inline void NotifyShown(TCurFit& fit) {
    if (fit.OnChange) fit.OnChange(fit);
}

} // namespace lumoplot
