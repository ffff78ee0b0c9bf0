// The File menu of the main window.
#include "dialogs/messages/wait_window.h"
#include "host/files/file_choice.h"
#include "host/files/recent_files.h"
#include "host/files/shown_text.h"
#include "host/main_window.h"
#include "host/sheet/sheet_book.h"
#include "session/live_links.h"
#include "sources/database/connection/connection.h"
#include "sources/link/link_place.h"
#include "support/guard.h"
#include "support/message_sink.h"
#include "support/message_text.h"
#include "ui_main_window.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QRegularExpression>

namespace lumoplot {
namespace {

constexpr std::size_t kLongestAskedName = 60;

bool IsGraphFile(const QString& fileName) {
    return QFileInfo(fileName).suffix().compare(QLatin1String("ltp"), Qt::CaseInsensitive) == 0;
}

/// Saving so many takes long enough to be told.
constexpr int kManyPoints = 300'000;

int CountPoints(const TxyGraph& graph) {
    int count = 0;
    for (const TSeries* series : graph.Series()) count += series->Count();
    return count;
}

} // namespace

bool TMainWindow::MayLeaveGraph() {
    if (!m_document->IsModified()) return true;
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(),
                    tr("The graph %1 has been changed.").arg(Shown(m_document->DisplayName())),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("Do you want to save the changes?"));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save: return Save();
    case QMessageBox::Discard: return true;
    default: return false;
    }
}

bool TMainWindow::Save() {
    if (m_document->FileName().isEmpty()) return SaveAs();
    const std::string name = ShownLine(m_document->DisplayName().toStdString(), kLongestAskedName);
    if (m_document->IsFileOfOthers() && !AskYesNo(name + " was changed by another program since it was "
                                                         "opened here. Replace it? (Save As takes another "
                                                         "name.)",
                                                  TMessageKind::Warning))
        return false;
    return SaveTo(m_document->FileName());
}

bool TMainWindow::SaveAs() {
    const QString proposal = m_document->FileName().isEmpty() ? TitleAsFileName() : m_document->FileName();
    const QString fileName =
        AskFileToSave(this, {tr("Save Graph"), GraphFilters(), QStringLiteral("ltp"), proposal});
    return !fileName.isEmpty() && SaveTo(fileName);
}

QString TMainWindow::TitleAsFileName() const {
    static const QRegularExpression forbidden(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]+"));
    const QString title = QString::fromStdString(Graph().Appearance()->GraphTitle());
    return QString(title).replace(forbidden, QStringLiteral(" ")).trimmed();
}

bool TMainWindow::SaveTo(const QString& fileName) {
    std::unique_ptr<QWidget> wait;
    if (CountPoints(Graph()) > kManyPoints) wait = ShowWait(this, tr("Saving…"));
    m_sheets->SaveBeside(fileName);
    m_document->SaveTo(fileName);
    m_sheets->RemoveOthersBeside(fileName);
    wait.reset();
    m_recentFiles->Add(fileName);
    m_ui->statusBar->showMessage(Shown(tr("Saved %1").arg(QDir::toNativeSeparators(fileName))), 5000);
    return true;
}

void TMainWindow::OpenFiles(const QStringList& files, TAsking asking) {
    for (const QString& file : files)
        Guarded([&] {
            if (IsGraphFile(file))
                OpenGraph(file);
            else if (IsLine(file.toStdString()))
                FollowText(file.toStdString());
            else if (IsServer(file.toStdString()) || IsDatabaseFile(file.toStdString()))
                OpenDatabase(file, asking);
            else
                OpenData(file);
        });
    ShowState();
}

void TMainWindow::OpenGraph(const QString& fileName) {
    if (!MayLeaveGraph()) return;
    m_links->Stop();
    m_document->Open(fileName);
    m_sheets->LoadBeside(fileName);
    m_document->Session().Start(); // with the sheets
    m_recentFiles->Add(fileName);
}

void TMainWindow::OnNew() {
    if (!MayLeaveGraph()) return;
    m_links->Stop();
    m_sheets->Clear();
    m_document->New();
}

void TMainWindow::OnNewFromTemplate() {
    if (!MayLeaveGraph()) return;
    const QString folder = m_document->TemplateFolder();
    const QString proposal = QDir(folder).exists() ? folder + QLatin1Char('/') : QString();
    const QString fileName = AskFileToOpen(this, {tr("New from Template"), GraphFilters(), {}, proposal});
    if (fileName.isEmpty()) return;
    m_links->Stop();
    m_sheets->Clear();
    m_document->NewFromTemplate(fileName);
    AskForTemplateData();
}

void TMainWindow::OnOpenGraph() {
    const QString fileName = AskFileToOpen(this, {tr("Open Graph"), GraphFilters(), {}, {}});
    if (!fileName.isEmpty()) OpenGraph(fileName);
}

void TMainWindow::OnOpenData() {
    const QStringList files = AskFilesToOpen(this, {tr("Open Data"), DataFilters(), {}, {}});
    const bool isText = files.size() == 1 && !IsGraphFile(files.front()) &&
                        !IsDatabaseFile(files.front().toStdString()) &&
                        TDataFiles::SourceOf(files.front()).Kind() == TSourceKind::TextFile;
    isText ? ImportData(files.front()) : OpenFiles(files);
}

void TMainWindow::OnSaveAsTemplate() {
    const QString folder = m_document->TemplateFolder();
    QDir().mkpath(folder);
    const QString fileName = AskFileToSave(
        this, {tr("Save as Template"), GraphFilters(), QStringLiteral("ltp"), folder + QLatin1Char('/')});
    if (!fileName.isEmpty()) m_document->SaveAsTemplate(fileName);
}

bool TMainWindow::StartRecovery(const QString& folder, int intervalMs) {
    bool isRecovered = false;
    Guarded([&] {
        std::optional<TRecoveredSession> session =
            OfferRecovery(folder, {QString(kRecoveryKind), EditorKinds()}, this);
        m_document->KeepChanges(folder, intervalMs);
        m_keepsChanges = true;
        if (!session) return;
        m_document->Recover(*std::move(session),
                            [this](const TBytes& sheets) { Guarded([&] { m_sheets->Restore(sheets); }); });
        isRecovered = true;
    });
    ShowState();
    return isRecovered;
}

} // namespace lumoplot
