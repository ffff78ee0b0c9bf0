#include "fit/equation_editor/formula_group.h"

#include "controls/number_edit.h"
#include "fit/equation_editor/formula_edit.h"
#include "fit/equation_editor/parameter_group.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace lumoplot {

TFormulaGroup::TFormulaGroup(TFitAccess& access, const TFormulaControls& controls,
                             TParameterGroup& parameters, QObject* parent)
    : QObject(parent), m_access(access), m_controls(controls) {
    connect(m_controls.Formula, &TFormulaEdit::FormulaEdited, this, [this](const QString& formula) {
        m_access.EditFit("formula", [&](TCurFit& fit) { fit.SetExpression(formula.toStdString()); });
    });
    connect(m_controls.XVarName, &QLineEdit::textEdited, this,
            [this](const QString& text) { TakeXVarName(text.toStdString()); });
    connect(m_controls.AddUnknown, &QPushButton::clicked, this,
            [this, group = &parameters] { group->AddVaried(m_unknownNames); });
}

void TFormulaGroup::TakeXVarName(const std::string& name) {
    m_access.EditFit("name of the variable", [&](TCurFit& fit) {
        MarkEdit(*m_controls.XVarName, QString::fromStdString(name.empty() ? "" : XNameFault(fit, name)));
        fit.SetXVarName(name);
    });
}

void TFormulaGroup::Fill() {
    const TCurFit* fit = m_access.Fit();
    if (!fit) return;
    m_controls.Formula->ShowFormula(QString::fromStdString(fit->Expression()));
    ShowNumberText(*m_controls.XVarName, fit->XVarName());
}

void TFormulaGroup::ShowNothing() {
    m_controls.Formula->ShowFormula({});
    m_controls.Formula->Mark({});
    m_controls.Fault->clear();
    m_controls.AddUnknown->hide();
}

TFormulaCheck TFormulaGroup::Check() {
    TFormulaCheck check = CheckFormula(*m_access.Fit(), m_controls.Formula->toPlainText().toStdString());
    m_unknownNames = check.UnknownNames;
    m_controls.Formula->Mark(QString::fromStdString(check.Fault));
    m_controls.Fault->setText(QString::fromStdString(check.Text()));
    m_controls.AddUnknown->setVisible(!m_unknownNames.empty());
    return check;
}

} // namespace lumoplot
