// What helps to begin and to find the way: the example, the manual, a double click on a curve.
#include "dialogs/editing/graph_edit_bar.h"
#include "dialogs/manual_window.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/curve_hit.h"
#include "host/files/example_file.h"
#include "host/language.h"
#include "host/main_window.h"
#include "support/guard.h"
#include "support/message_sink.h"
#include "ui_main_window.h"

#include <QActionGroup>
#include <QMenu>
#include <QStatusBar>

namespace lumoplot {
namespace {

constexpr int kGeneralPage = 0; // of the editor

} // namespace

bool TMainWindow::EditCurveAt(QPointF place) {
    const TPlotMap* map = Graph().Mouse().Map();
    const bool isOnPlot = map && m_editBar->ShowsZoom() && !map->LegendPlace.contains(place);
    const TSeries* series = isOnPlot ? CurveAt(Graph(), *map, place, TGraphMouse::kReach) : nullptr;
    if (!series) return false;
    Graph().Appearance()->SetCurrSerIndex(series->SeriesIndex());
    m_editor.StartOnce(kGeneralPage);
    EditData();
    return true;
}

void TMainWindow::ShowExample() {
    const QString file = ExampleFile();
    if (file.isEmpty()) return ShowMessage("The example is not installed", TMessageKind::Warning);
    OpenFiles({file});
    m_document->SetUnmodified();
    ShowState();
}

/// Windows that are there keep their language.
void TMainWindow::AddLanguageMenu() {
    const QStringList languages = Languages();
    if (languages.size() < 2) return;
    auto* menu = m_ui->m_View->addMenu(tr("La&nguage"));
    auto* group = new QActionGroup(menu);
    for (const QString& code : languages) {
        QAction* entry = menu->addAction(NameOfLanguage(code));
        entry->setCheckable(true);
        entry->setChecked(code == UsedLanguage());
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, code] {
            ChooseLanguage(code);
            m_ui->statusBar->showMessage(tr("The language changes when the program is started again"), 5000);
        });
    }
}

void TMainWindow::OnManual() {
    ShowManual(QStringLiteral("start.md"), this);
}

} // namespace lumoplot
