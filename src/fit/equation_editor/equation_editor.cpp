#include "fit/equation_editor/equation_editor.h"

#include "fit/equation_editor/frm_calc.h"

namespace lumoplot {

bool EditCurFit(QWidget* ownerForm, TCurFit& fitter) {
    TCurFit working;
    working.Assign(&fitter);
    TfrmCalc dialog(working, ownerForm);
    if (dialog.exec() != TfrmCalc::kOk) return false;
    fitter.Assign(&working);
    return true;
}

} // namespace lumoplot
