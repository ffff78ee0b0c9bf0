// The controls for the equation of a curve fit, in whatever form they lie: the formula, the name of its X
// variable, what is wrong with them, and the buttons that mend it.
#pragma once

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

class TFormulaGroup : public QObject {
    Q_OBJECT

public:
    /// Finds its controls in the form by their names. Unknown names become parameters of that group.
    TFormulaGroup(TFitAccess& access, QWidget& form, TParameterGroup& parameters, QObject* parent);

    void Fill();
    void ShowNothing();
    /// Checks the fit's formula and the text as it is typed, and shows what is wrong.
    TFormulaCheck Check();

private:
    void TakeXVarName(const std::string& name);
    void Rewrite();
    void OfferNames(const TCurFit& fit);
    void ShowMarks(const TFormulaCheck& check);

    TFitAccess& m_access;
    TFormulaEdit* m_formula;
    QLineEdit* m_xVarName;
    QLabel* m_fault;
    QPushButton* m_addUnknown;
    QPushButton* m_rewrite;
    std::vector<std::string> m_unknownNames;
    std::string m_rewritten;
};

} // namespace lumoplot
