#include "fit/equation_editor/formula_group.h"

#include "controls/number_edit.h"
#include "fit/equation_editor/formula_edit.h"
#include "fit/equation_editor/function_list.h"
#include "fit/equation_editor/parameter_group.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace lumoplot {

TFormulaGroup::TFormulaGroup(TFitAccess& access, QWidget& form, TParameterGroup& parameters, QObject* parent)
    : QObject(parent), m_access(access),
      m_formula(form.findChild<TFormulaEdit*>(QStringLiteral("m_Equation"))),
      m_xVarName(form.findChild<QLineEdit*>(QStringLiteral("e_XVarName"))),
      m_fault(form.findChild<QLabel*>(QStringLiteral("lblFault"))),
      m_addUnknown(form.findChild<QPushButton*>(QStringLiteral("btnAddUnknown"))),
      m_rewrite(form.findChild<QPushButton*>(QStringLiteral("btnRewrite"))) {
    connect(m_formula, &TFormulaEdit::FormulaEdited, this, [this](const QString& formula) {
        m_access.EditFit("formula", [&](TCurFit& fit) { fit.SetExpression(formula.toStdString()); });
    });
    connect(m_xVarName, &QLineEdit::textEdited, this,
            [this](const QString& text) { TakeXVarName(text.toStdString()); });
    connect(m_addUnknown, &QPushButton::clicked, this,
            [this, group = &parameters] { group->AddVaried(m_unknownNames); });
    connect(m_rewrite, &QPushButton::clicked, this, &TFormulaGroup::Rewrite);
}

void TFormulaGroup::Rewrite() {
    const QString formula = QString::fromStdString(m_rewritten);
    m_access.EditFit("formula", [&](TCurFit& fit) {
        m_formula->ShowFormula(formula);
        fit.SetExpression(formula.toStdString());
    });
    m_formula->setFocus();
}

void TFormulaGroup::TakeXVarName(const std::string& name) {
    m_access.EditFit("name of the variable", [&](TCurFit& fit) {
        MarkEdit(*m_xVarName, QString::fromStdString(name.empty() ? "" : XNameFault(fit, name)));
        fit.SetXVarName(name);
    });
}

void TFormulaGroup::Fill() {
    const TCurFit* fit = m_access.Fit();
    if (!fit) return;
    m_formula->ShowFormula(QString::fromStdString(fit->Expression()));
    ShowNumberText(*m_xVarName, fit->XVarName());
}

void TFormulaGroup::ShowNothing() {
    m_formula->ShowFormula({});
    m_formula->Mark({});
    m_fault->clear();
    m_formula->Underline({}, false);
    m_fault->hide();
    m_addUnknown->hide();
    m_rewrite->hide();
}

TFormulaCheck TFormulaGroup::Check() {
    const TCurFit& fit = *m_access.Fit();
    TFormulaCheck check = CheckFormula(fit, m_formula->toPlainText().toStdString());
    m_unknownNames = check.UnknownNames;
    m_rewritten = check.Rewritten;
    m_formula->Mark(QString::fromStdString(check.Fault));
    ShowMarks(check);
    m_fault->setText(QString::fromStdString(check.Text()));
    m_fault->setVisible(!m_fault->text().isEmpty());
    m_addUnknown->setVisible(!m_unknownNames.empty() && check.Fault.empty());
    m_rewrite->setText(QString::fromStdString(check.RewriteCaption));
    m_rewrite->setToolTip(QString::fromStdString(check.Rewritten));
    m_rewrite->setVisible(!check.Rewritten.empty());
    OfferNames(fit);
    return check;
}

// Places in the fit's formula are those in the edit only while both are the same.
void TFormulaGroup::ShowMarks(const TFormulaCheck& check) {
    const std::string formula = m_access.Fit()->Expression();
    std::vector<TFormulaEdit::TPiece> pieces;
    const auto lengthOf = [](const std::string& text) {
        return static_cast<int>(QString::fromStdString(text).size());
    };
    if (m_formula->toPlainText().toStdString() == formula)
        for (const TFormulaSpan& span : check.Spans)
            pieces.push_back(
                {lengthOf(formula.substr(0, span.Place)), lengthOf(formula.substr(span.Place, span.Length))});
    m_formula->Underline(pieces, check.Hint.empty());
}

void TFormulaGroup::OfferNames(const TCurFit& fit) {
    QStringList names = {QString::fromStdString(fit.XVarName())};
    for (int i = 1; i <= fit.NParams(); ++i) names << QString::fromStdString(fit.Parameter(i)->Name());
    for (int i = 1; i <= fit.NTemplates(); ++i) names << QString::fromStdString(fit.Template(i)->Name);
    for (const TListedFunction& function : ListedFunctions()) names << QString::fromLatin1(function.Piece);
    names.removeDuplicates();
    names.sort(Qt::CaseInsensitive);
    m_formula->SetNames(names);
}

} // namespace lumoplot
