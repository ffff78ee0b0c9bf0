// The graph as a picture: files, clipboard and paper.
#include "dialogs/messages/progress_window.h"
#include "graph/drawing/picture/drawing.h"
#include "host/files/file_choice.h"
#include "host/files/shown_text.h"
#include "host/main_window.h"
#include "host/picture_export_dialog.h"
#include "host/printing.h"
#include "support/guard.h"
#include "support/progress_maker.h"
#include "ui_main_window.h"

#include <QClipboard>
#include <QDir>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace lumoplot {
namespace {

constexpr double kClipboardScale = 2;

} // namespace

void TMainWindow::OnExportPicture() {
    TPictureExportDialog dialog(Graph().size(), this);
    if (dialog.exec() != QDialog::Accepted) return;
    const QString suffix = dialog.Suffix();
    const QString filter = tr("%1 pictures (*.%2)").arg(suffix.toUpper(), suffix);
    const QString fileName = AskFileToSave(this, {tr("Export Picture"), filter, suffix, PictureName()});
    if (fileName.isEmpty()) return;
    const TProgressMakerScope progress(
        [&fileName] { return MakeLargeProgress("Writing " + fileName.toStdString()); });
    if (!SaveGraphPicture(Graph(), fileName.toStdString(), dialog.Size(), dialog.Options())) return;
    m_ui->statusBar->showMessage(Shown(tr("Saved %1").arg(QDir::toNativeSeparators(fileName))), 5000);
}

QString TMainWindow::PictureName() const {
    const QString name = m_document->FileName();
    return name.isEmpty() ? TitleAsFileName() : QFileInfo(name).completeBaseName();
}

void TMainWindow::OnCopyPicture() {
    QGuiApplication::clipboard()->setImage(PictureOf(Graph(), kClipboardScale));
    m_ui->statusBar->showMessage(tr("The picture is on the clipboard"), 5000);
}

void TMainWindow::OnPrintPreview() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, this);
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* page) { Guarded([&] { Print(*page); }); });
    dialog.exec();
}

void TMainWindow::OnPrint() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) Print(printer);
}

void TMainWindow::Print(QPrinter& printer) {
    const auto busy = MakeBusyProgress("Printing...");
    PrintGraph(printer, Graph(), *busy);
}

} // namespace lumoplot
