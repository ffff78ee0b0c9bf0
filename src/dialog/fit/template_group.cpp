#include "dialog/fit/template_group.h"

#include "controls/number_edit.h"
#include "fit/equation_editor/formula_edit.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <algorithm>

namespace lumoplot {

TTemplateGroup::TTemplateGroup(TFitAccess& access, const TTemplateControls& controls, QObject* parent)
    : QObject(parent), m_access(access), m_controls(controls) {
    ConnectList();
    ConnectFields();
}

int TTemplateGroup::SelectedNumber() const {
    return m_controls.List->currentRow() + 1;
}

TDBLFunction* TTemplateGroup::Selected() const {
    TCurFit* fit = m_access.Fit();
    return fit ? fit->Template(SelectedNumber()) : nullptr;
}

template <class TAction>
void TTemplateGroup::Rearrange(const char* what, TAction&& action) {
    m_access.EditFit(what, [&](TCurFit& fit) { Fill(action(fit, SelectedNumber())); });
}

template <class TAction>
void TTemplateGroup::EditSelected(const char* what, TAction&& action) {
    m_access.EditFit(what, [&](TCurFit& fit) {
        TDBLFunction* function = Selected();
        if (!function) return;
        action(*function);
        fit.Changed(true);
    });
}

void TTemplateGroup::ConnectList() {
    connect(m_controls.List, &QListWidget::currentRowChanged, this, [this] { ShowFields(); });
    connect(m_controls.New, &QAbstractButton::clicked, this, &TTemplateGroup::Add);
    const auto connectMove = [this](QAbstractButton* button, const char* what, void (TCurFit::*move)(int),
                                    auto place) {
        connect(button, &QAbstractButton::clicked, this, [this, what, move, place] {
            Rearrange(what, [&](TCurFit& fit, int number) {
                (fit.*move)(number);
                return place(number);
            });
        });
    };
    connectMove(m_controls.Delete, "delete template", &TCurFit::DeleteTemplate,
                [](int number) { return number - 1; });
    connectMove(m_controls.First, "order of templates", &TCurFit::TemplateToTop, [](int) { return 1; });
    connectMove(m_controls.Up, "order of templates", &TCurFit::TemplateUp,
                [](int number) { return number - 1; });
    connectMove(m_controls.Down, "order of templates", &TCurFit::TemplateDown,
                [](int number) { return number + 1; });
}

void TTemplateGroup::ConnectFields() {
    connect(m_controls.Name, &QLineEdit::textEdited, this, &TTemplateGroup::Rename);
    connect(m_controls.Name, &QLineEdit::editingFinished, this, [this] {
        if (const TDBLFunction* function = Selected()) ShowText(*m_controls.Name, function->Name);
    });
    connect(m_controls.Description, &QLineEdit::textEdited, this, [this](const QString& text) {
        EditSelected("text of a template",
                     [&](TDBLFunction& function) { function.Description = text.toStdString(); });
    });
    connect(m_controls.Text, &TFormulaEdit::FormulaEdited, this, [this](const QString& text) {
        EditSelected("text of a template",
                     [&](TDBLFunction& function) { function.Text = text.toStdString(); });
    });
}

void TTemplateGroup::Add() {
    Rearrange("new template", [&](TCurFit& fit, int) {
        auto function = std::make_unique<TDBLFunction>();
        function->Name = "Func";
        function->Name += std::to_string(fit.NTemplates() + 1);
        function->Text = "Enter Expression";
        function->Description = "Function " + function->Name;
        fit.AddTemplate(std::move(function));
        fit.Changed(true);
        return fit.NTemplates();
    });
}

void TTemplateGroup::Rename(const QString& text) {
    if (text.isEmpty()) return;
    EditSelected("name of a template", [&](TDBLFunction& function) { function.Name = text.toStdString(); });
    m_controls.List->currentItem()->setText(text);
}

void TTemplateGroup::Fill(int number) {
    const TCurFit* fit = m_access.Fit();
    const int count = fit ? fit->NTemplates() : 0;
    {
        const QSignalBlocker quiet(m_controls.List);
        m_controls.List->clear();
        for (int i = 1; i <= count; ++i)
            m_controls.List->addItem(QString::fromStdString(fit->Template(i)->Name));
        m_controls.List->setCurrentRow(std::clamp(number, std::min(1, count), count) - 1);
    }
    ShowFields();
}

void TTemplateGroup::ShowFields() {
    const TDBLFunction* function = Selected();
    const TDBLFunction shown = function ? *function : TDBLFunction();
    ShowText(*m_controls.Name, shown.Name);
    ShowText(*m_controls.Description, shown.Description);
    m_controls.Text->ShowFormula(QString::fromStdString(shown.Text));
    for (QWidget* control :
         {static_cast<QWidget*>(m_controls.Delete), static_cast<QWidget*>(m_controls.First),
          static_cast<QWidget*>(m_controls.Up), static_cast<QWidget*>(m_controls.Down),
          static_cast<QWidget*>(m_controls.Name), static_cast<QWidget*>(m_controls.Description),
          static_cast<QWidget*>(m_controls.Text)})
        control->setEnabled(function != nullptr);
}

} // namespace lumoplot
