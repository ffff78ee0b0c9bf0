#include "dialog/fit/template_group.h"

#include "controls/number_edit.h"
#include "fit/equation_editor/formula_edit.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <algorithm>

namespace lumoplot {

TTemplateGroup::TTemplateGroup(TFitAccess& access, QWidget& form, QObject* parent)
    : QObject(parent), m_access(access), m_list(form.findChild<QListWidget*>(QStringLiteral("lb_Templates"))),
      m_new(form.findChild<QAbstractButton*>(QStringLiteral("btnAddTemplate"))),
      m_delete(form.findChild<QAbstractButton*>(QStringLiteral("btnDeleteTemplate"))),
      m_first(form.findChild<QAbstractButton*>(QStringLiteral("btnTemplateFirst"))),
      m_up(form.findChild<QAbstractButton*>(QStringLiteral("btnTemplateUp"))),
      m_down(form.findChild<QAbstractButton*>(QStringLiteral("btnTemplateDown"))),
      m_name(form.findChild<QLineEdit*>(QStringLiteral("e_TemplateName"))),
      m_description(form.findChild<QLineEdit*>(QStringLiteral("e_TemplateDescription"))),
      m_text(form.findChild<TFormulaEdit*>(QStringLiteral("m_TemplateText"))) {
    ConnectList();
    ConnectFields();
}

int TTemplateGroup::SelectedNumber() const {
    return m_list->currentRow() + 1;
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
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { ShowFields(); });
    connect(m_new, &QAbstractButton::clicked, this, &TTemplateGroup::Add);
    const auto connectMove = [this](QAbstractButton* button, const char* what, void (TCurFit::*move)(int),
                                    auto place) {
        connect(button, &QAbstractButton::clicked, this, [this, what, move, place] {
            Rearrange(what, [&](TCurFit& fit, int number) {
                (fit.*move)(number);
                return place(number);
            });
        });
    };
    connectMove(m_delete, "delete template", &TCurFit::DeleteTemplate, [](int number) { return number - 1; });
    connectMove(m_first, "order of templates", &TCurFit::TemplateToTop, [](int) { return 1; });
    connectMove(m_up, "order of templates", &TCurFit::TemplateUp, [](int number) { return number - 1; });
    connectMove(m_down, "order of templates", &TCurFit::TemplateDown, [](int number) { return number + 1; });
}

void TTemplateGroup::ConnectFields() {
    connect(m_name, &QLineEdit::textEdited, this, &TTemplateGroup::Rename);
    connect(m_name, &QLineEdit::editingFinished, this, [this] {
        if (const TDBLFunction* function = Selected()) ShowText(*m_name, function->Name);
    });
    connect(m_description, &QLineEdit::textEdited, this, [this](const QString& text) {
        EditSelected("text of a template",
                     [&](TDBLFunction& function) { function.Description = text.toStdString(); });
    });
    connect(m_text, &TFormulaEdit::FormulaEdited, this, [this](const QString& text) {
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
    m_list->currentItem()->setText(text);
}

void TTemplateGroup::Fill(int number) {
    const TCurFit* fit = m_access.Fit();
    const int count = fit ? fit->NTemplates() : 0;
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (int i = 1; i <= count; ++i) m_list->addItem(QString::fromStdString(fit->Template(i)->Name));
        m_list->setCurrentRow(std::clamp(number, std::min(1, count), count) - 1);
    }
    ShowFields();
}

void TTemplateGroup::ShowFields() {
    const TDBLFunction* function = Selected();
    const TDBLFunction shown = function ? *function : TDBLFunction();
    ShowText(*m_name, shown.Name);
    ShowText(*m_description, shown.Description);
    m_text->ShowFormula(QString::fromStdString(shown.Text));
    for (QWidget* control :
         {static_cast<QWidget*>(m_delete), static_cast<QWidget*>(m_first), static_cast<QWidget*>(m_up),
          static_cast<QWidget*>(m_down), static_cast<QWidget*>(m_name), static_cast<QWidget*>(m_description),
          static_cast<QWidget*>(m_text)})
        control->setEnabled(function != nullptr);
}

} // namespace lumoplot
