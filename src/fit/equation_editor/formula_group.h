// The controls for the equation of a curve fit, in whatever form they lie: the formula, the name of its X
// variable, what is wrong with them, and the button that makes parameters of unknown names.
#pragma once

#include "controls/widgets_export.h"
#include "fit/equation_editor/fit_access.h"
#include "fit/equation_editor/formula_check.h"

#include <QObject>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace lumoplot {

class TFormulaEdit;
class TParameterGroup;

/// The controls of a form, which owns them.
struct TFormulaControls {
    TFormulaEdit* Formula;
    QLineEdit* XVarName;
    QLabel* Fault;
    QPushButton* AddUnknown;
};

class TFormulaGroup : public QObject {
    Q_OBJECT

public:
    /// Unknown names become parameters of that group.
    XYWIDGETS_EXPORT TFormulaGroup(TFitAccess& access, const TFormulaControls& controls,
                                   TParameterGroup& parameters, QObject* parent);

    XYWIDGETS_EXPORT void Fill();
    XYWIDGETS_EXPORT void ShowNothing();
    /// Checks the fit's formula and the text as it is typed, and shows what is wrong.
    XYWIDGETS_EXPORT TFormulaCheck Check();

private:
    void TakeXVarName(const std::string& name);

    TFitAccess& m_access;
    TFormulaControls m_controls;
    std::vector<std::string> m_unknownNames;
};

} // namespace lumoplot
