// Undo and redo in the data editor.
#include "controls/model_texts.h"
#include "controls/texts.h"
#include "data/series/ds_info.h"
#include "dialog/frame/data_set_list.h"
#include "dialog/frame/data_wizard.h"
#include "dialog/frame/undo_keys.h"
#include "dialog/source/data_source_page.h"
#include "graph/model/child_graph.h"
#include "support/message_sink.h"
#include "ui_data_wizard.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QPointer>

namespace lumoplot {
namespace {

QString StepTip(const char* verb, const std::string& name) {
    return name.empty() ? TTexts::tr(verb) : TTexts::tr(verb) + QLatin1Char(' ') + InLanguage(name);
}

/// Who has the focus when `focus` has taken its text: the edit of a cell goes then.
QWidget* HeirOf(QWidget& focus) {
    QWidget* viewport = focus.parentWidget();
    auto* table = viewport ? qobject_cast<QAbstractItemView*>(viewport->parentWidget()) : nullptr;
    return table && table->viewport() == viewport ? table : &focus;
}

} // namespace

void TxyDataWizard::SetUpUndo() {
    m_session = new TGraphSession(*m_workGraph, this);
    m_ui->btnUndoStep->setDefaultAction(m_ui->a_Undo);
    m_ui->btnRedoStep->setDefaultAction(m_ui->a_Redo);
    m_ui->a_Undo->setShortcut(Qt::CTRL | Qt::Key_Z);
    m_ui->a_Redo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    addActions({m_ui->a_Undo, m_ui->a_Redo});
    connect(m_ui->a_Undo, &QAction::triggered, this,
            [this] { GoTo(&TGraphSession::Undo, &TGraphSession::UndoName, "Undone: "); });
    connect(m_ui->a_Redo, &QAction::triggered, this,
            [this] { GoTo(&TGraphSession::Redo, &TGraphSession::RedoName, "Redone: "); });
    connect(m_session, &TGraphSession::Changed, this, &TxyDataWizard::ShowSteps);
    connect(new TUndoKeys(*this, *m_session), &TUndoKeys::FocusMoved, m_session, &TGraphSession::EndMerging);
    m_ui->sidePlot->SetSession(m_session);
    ShowSteps();
}

void TxyDataWizard::ShowSteps() {
    if (m_currSeries) m_dataSets->ShowLook(*m_currSeries);
    m_ui->a_Undo->setEnabled(m_session->CanUndo());
    m_ui->a_Redo->setEnabled(m_session->CanRedo());
    m_ui->a_Undo->setToolTip(StepTip(QT_TRANSLATE_NOOP("lumoplot::TTexts", "Undo"), m_session->UndoName()));
    m_ui->a_Redo->setToolTip(StepTip(QT_TRANSLATE_NOOP("lumoplot::TTexts", "Redo"), m_session->RedoName()));
    TellStep({});
}

/// Which step went: it may have been made on another page, where nothing is seen to change.
void TxyDataWizard::TellStep(const QString& text) {
    m_ui->lblStep->setText(
        m_ui->lblStep->fontMetrics().elidedText(text, Qt::ElideRight, m_ui->lblStep->width()));
    m_ui->lblStep->setToolTip(text);
}

/// What is still being typed becomes a step of its own.
void TxyDataWizard::TakePendingEdits() {
    const QPointer<QWidget> focus = focusWidget();
    if (!focus) return;
    const QPointer<QWidget> heir = HeirOf(*focus);
    focus->clearFocus(); // edits take their text when they lose the focus
    if (heir) heir->setFocus();
}

void TxyDataWizard::GoTo(void (TGraphSession::*way)(), std::string (TGraphSession::*nameOfStep)() const,
                         const char* what) {
    Guarded([&] {
        TakePendingEdits();
        const std::string name = (m_session->*nameOfStep)();
        (m_session->*way)();
        if (!name.empty()) TellStep(InLanguage(what + name));
    });
}

/// Rows that were put back into the grid are points on the other pages, as when its page is left.
void TxyDataWizard::ShowPutBack() {
    FillList(m_workGraph->Appearance()->CurrSerIndex());
    const bool showsGrid =
        !m_previewMode && m_pages[static_cast<std::size_t>(m_shownPage)] == m_dataSourcePage;
    const bool isManual = m_currSeries && m_currSeries->DataSourceInfo().Kind() == TSourceKind::Manual;
    if (isManual && !showsGrid) m_dataSourcePage->CommitRowsQuietly();
}

/// What is typed on the page for sources is a step only when its edit is left.
bool TxyDataWizard::IsTypingUnseen() const {
    const auto* edit = qobject_cast<const QLineEdit*>(focusWidget());
    return edit && m_dataSourcePage->isAncestorOf(edit) && edit->isModified();
}

void TxyDataWizard::Recover(const TxyGraph& graph, std::span<const std::uint8_t> beside) {
    m_session->Change("recover", [&] {
        m_workGraph->CopyFrom(graph);
        m_workGraph->SetHolderID({});
        for (const auto& child : m_workGraph->ChildGraphs()) child->SetHolderID({});
        FillList(m_workGraph->Appearance()->CurrSerIndex());
        if (!beside.empty()) m_dataSourcePage->RestoreRows(beside);
    });
    ShowPutBack();
}

bool TxyDataWizard::MayDiscard() {
    if (m_session->IsClean() && !IsTypingUnseen()) return true;
    const int steps = m_session->StepsBack();
    std::string lost;
    if (steps > 0)
        lost = "\n" + std::to_string(steps) + (steps == 1 ? " step: " : " steps, last: ") +
               m_session->UndoName();
    return AskYesNo("Discard the changes?" + lost, TMessageKind::Warning);
}

void TxyDataWizard::reject() {
    if (MayDiscard()) Drop();
}

} // namespace lumoplot
