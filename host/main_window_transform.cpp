// The menus Transform and Panels: new curves out of the current data set, graphs inside the graph.
#include "dialogs/hand_edit.h"
#include "dialogs/transform/baseline_dialog.h"
#include "dialogs/transform/peaks_dialog.h"
#include "dialogs/transform/transform_dialog.h"
#include "host/main_window.h"
#include "host/panels_menu.h"
#include "support/guard.h"
#include "support/message_sink.h"
#include "support/update_hold.h"
#include "ui_main_window.h"

#include <QInputDialog>
#include <QMenu>

namespace lumoplot {
namespace {

/// Adds the points of one data set to another; equal X are all kept.
void AddPointsOf(const TSeries& from, TSeries& to) {
    const TUpdateHold hold(to);
    to.SetDuplicatesAllowed(true);
    for (TPointCursor point = from.First(); point; point = point.Next())
        to.AddPoint(point.X(),
                    from.CorrectedY(point.X(), point.Y()) + to.ZeroValue() + to.BaseLineSlope() * point.X(),
                    point.YError());
}

} // namespace

void TMainWindow::AddTransformMenu() {
    auto* menu = new QMenu(tr("&Transform"), this);
    menu->setObjectName(QStringLiteral("m_Transform"));
    m_ui->menuBar->insertMenu(m_ui->m_Help->menuAction(), menu);
    const auto add = [&](const QString& caption, const QString& tip, auto action) {
        QAction* entry = menu->addAction(caption);
        entry->setStatusTip(tip);
        connect(entry, &QAction::triggered, this, [this, entry, action] {
            const QString step = entry->text().remove(u'&').remove(u'…');
            Guarded([&] { WithCurrentSeries(step, action); });
            ShowState();
        });
    };
    int place = 0;
    for (const QString& caption : TransformCaptions()) {
        const auto kind = static_cast<TTransformKind>(place++);
        add(caption + QStringLiteral("…"), tr("Work out a new curve of the current data set, with a preview"),
            [this, kind](TSeries& series) { TransformSeries(series, kind, this); });
    }
    menu->addSeparator();
    add(tr("&Baseline…"),
        tr("Take a baseline through clicked places off the current data set, with a preview"),
        [this](TSeries& series) { TakeBaselineOff(series, this); });
    add(tr("Merg&e…"), tr("Add the points of another data set to the current one"),
        [this](TSeries& series) { MergeInto(series); });
    add(tr("&Peaks…"), tr("List the peaks of the current data set, mark and fit them"),
        [this](TSeries& series) { ShowPeaksOf(series, this); });
}

void TMainWindow::AddPanelsMenu() {
    auto* menu = new QMenu(tr("P&anels"), this);
    menu->setObjectName(QStringLiteral("m_Panels"));
    m_ui->menuBar->insertMenu(m_ui->m_Help->menuAction(), menu);
    m_panels = new TPanelsMenu(Graph(), m_document->Session(), *menu);
    connect(m_panels, &TPanelsMenu::Told, m_ui->statusBar,
            [this](const QString& text) { m_ui->statusBar->showMessage(text); });
    connect(m_panels, &TPanelsMenu::SettingsWanted, this, [this](TxyGraph* panel) {
        Guarded([&] { EditSettingsOf(*panel); });
        ShowState();
    });
}

void TMainWindow::WithCurrentSeries(const QString& step, const std::function<void(TSeries&)>& action) {
    TSeries* series = Graph().FindSeries(Graph().Appearance()->CurrSerIndex());
    if (!series || series->Count() == 0)
        return ShowMessage("There is no data set with points: open data first", TMessageKind::Warning);
    Change(tr("%1 of %2").arg(step, QString::fromStdString(series->SeriesName())), [&] { action(*series); });
}

void TMainWindow::MergeInto(TSeries& series) {
    QStringList names;
    std::vector<TSeries*> others;
    for (TSeries* other : Graph().Series()) {
        if (other == &series) continue;
        names += QStringLiteral("%1: %2")
                     .arg(other->SeriesIndex())
                     .arg(QString::fromStdString(other->SeriesName()));
        others.push_back(other);
    }
    if (others.empty()) return ShowMessage("There is no other data set to merge with", TMessageKind::Warning);
    bool isChosen = false;
    const QString name = QInputDialog::getItem(
        this, tr("Merge"), tr("Add to %1 the points of:").arg(QString::fromStdString(series.SeriesName())),
        names, 0, false, &isChosen);
    if (!isChosen) return;
    TSeries& other = *others[static_cast<std::size_t>(names.indexOf(name))];
    if (ReadEveryRow(other, this) && MakeManual(series, this)) AddPointsOf(other, series);
}

} // namespace lumoplot
