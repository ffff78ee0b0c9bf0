// Data sets on the clipboard.
#include "dialogs/editing/series_clipboard.h"
#include "graph/model/graph.h"
#include "host/main_window.h"
#include "support/errors.h"
#include "ui_main_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace lumoplot {

void TMainWindow::OnCopyDataSet() {
    const TSeries* series = Graph().FindSeries(Graph().Appearance()->CurrSerIndex());
    if (!series) series = Graph().FirstSeries();
    if (!series) throw EFileError("There is no data set to copy");
    QGuiApplication::clipboard()->setMimeData(SeriesToMime(*series));
    m_ui->statusBar->showMessage(tr("The data set is on the clipboard"), 5000);
}

void TMainWindow::OnPasteDataSet() {
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (!mime || !MimeHoldsSeries(*mime)) throw EFileError("There is no data set on the clipboard");
    Change(tr("paste data set"), [&] {
        const int number = AddSeriesFromMime(Graph(), *mime);
        Graph().Appearance()->SetCurrSerIndex(number);
        if (Graph().Series().size() == 2) Graph().Legend()->Setvisible(true);
    });
}

} // namespace lumoplot
