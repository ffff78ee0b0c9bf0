// What the controls of the Data Source page do to the data set.
#include "controls/texts.h"
#include "dialog/manual/manual_commit.h"
#include "dialog/manual/manual_panel.h"
#include "dialog/source/data_source_page.h"
#include "dialog/source/text_options_panel.h"
#include "dialogs/hand_edit.h"
#include "dialogs/import/source_files.h"
#include "dialogs/import/text_preview_pane.h"
#include "dialogs/messages/progress_window.h"
#include "graph/loading/source_loading.h"
#include "sources/spreadsheet/sheet_place.h"
#include "support/errors.h"
#include "support/message_sink.h"
#include "ui_data_source_page.h"

#include <QFileDialog>
#include <QFileInfo>

namespace lumoplot {

/// Points that were made by hand are in no file.
bool TDataSourcePage::MayReplacePoints(const TSeries& series) const {
    const bool isByHand = series.DataSourceInfo().Kind() == TSourceKind::Manual && series.Count() > 0;
    return !isByHand || AskYesNo("Data from Current DataSet Will be lost, Continue?");
}

/// What is edited by hand from now on is to be all of the data. False when the user wants it to stay as it
/// is.
bool TDataSourcePage::TakeEveryRow(TSeries& series) {
    try {
        return ReadEveryRow(series, window());
    } catch (const ELumoError& error) {
        return AskYesNo(std::string(error.what()) + "\nOnly the " + std::to_string(series.Count()) +
                        " points that are shown can be kept. Edit these by hand?");
    }
}

/// The points that were made by hand would go with the first loading from the new source.
void TDataSourcePage::PickKind(TSeries& series, TSourceKind kind) {
    if (kind != TSourceKind::Manual && !MayReplacePoints(series)) return FillFrom(series);
    if (kind == TSourceKind::Database) return ChooseDatabase(series, {});
    if (kind == TSourceKind::Link) return ChooseLink(series);
    ChangeKind(series, kind);
}

/// Rows of the grid that can not be committed keep the data set manual, so that nothing is lost.
void TDataSourcePage::ChangeKind(TSeries& series, TSourceKind kind) {
    TDSInfo& info = series.DataSourceInfo();
    try {
        if (info.Kind() == TSourceKind::Manual) Commit(series);
        const bool becomesManual = kind == TSourceKind::Manual && info.Kind() != TSourceKind::Manual;
        if (becomesManual && !TakeEveryRow(series)) return FillFrom(series);
    } catch (...) {
        const TFillingScope filling(Context());
        m_ui->cbx_SourceKind->setCurrentIndex(static_cast<int>(info.Kind()));
        throw;
    }
    const bool hadDates = m_report && m_report->readings.best.format.xFormat == TColumnFormat::DateTime;
    if (kind == TSourceKind::Manual && hadDates) info.SetXFormat(TColumnFormat::DateTime);
    // A sheet's name names no file, and the other way round.
    const bool isNamedAnew = kind == TSourceKind::LumoSheet ? IsSheetOffered()
                                                            : info.Kind() == TSourceKind::LumoSheet ||
                                                                  info.Kind() == TSourceKind::Database ||
                                                                  info.Kind() == TSourceKind::Link;
    if (isNamedAnew && kind != info.Kind()) info.SetSourceName({});
    info.SetKind(kind);
    if (kind == TSourceKind::Manual) series.SetThinned(false);
    m_failureTold = false;
    FillFrom(series);
}

void TDataSourcePage::Browse() {
    TSeries* series = Context().CurrSeries();
    if (!series) return;
    QFileDialog dialog(this, TTexts::tr("Choose the source file"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::ReadOnly);
    dialog.setNameFilter(SourceFilter());
    if (series->DataSourceInfo().Kind() == TSourceKind::DataFile)
        dialog.selectNameFilter(dialog.nameFilters().value(1));
    const QFileInfo present(QString::fromStdString(SheetPlaceOf(SourceFileOf(*series)).file));
    if (present.exists()) dialog.setDirectory(present.absolutePath());
    if (dialog.exec() != QDialog::Accepted) return;
    const QString file = dialog.selectedFiles().value(0);
    Context().Session().Change("load " + QFileInfo(file).fileName().toStdString(),
                               [&] { AttachFile(file.toStdString()); });
}

void TDataSourcePage::TakeSourceName(TSeries& series) {
    const std::string name = m_ui->e_SourceName->text().toStdString();
    TDSInfo& info = series.DataSourceInfo();
    if (!IsFile(info.Kind()) || name == info.SourceName()) return;
    info.SetSourceName(name);
    m_ui->e_SourceName->setToolTip(m_ui->e_SourceName->text());
    m_failureTold = false;
    ShowKind(series);
}

void TDataSourcePage::TakeDirectory(TSeries& series) {
    TAppearance& appearance = *Context().WorkGraph().Appearance();
    const std::string directory = m_ui->e_Directory->text().toStdString();
    if (!m_ui->e_Directory->isVisibleTo(this) || directory == appearance.DataDirectory()) return;
    appearance.SetDataDirectory(directory);
    m_ui->e_Directory->setToolTip(m_ui->e_Directory->text());
    series.DataSourceInfo().SetNeedsReload(true);
    m_failureTold = false;
    ShowKind(series);
}

/// What is being typed when a button is pressed by its key.
void TDataSourcePage::TakePendingTexts(TSeries& series) {
    TakeSourceName(series);
    TakeDirectory(series);
    if (IsText(series)) m_options->TakePendingTexts();
}

void TDataSourcePage::Commit(TSeries& series) {
    if (series.DataSourceInfo().Kind() == TSourceKind::Manual) {
        m_manual->Commit(TEqualX::Ask);
        return;
    }
    Edit("source of ", [this](TSeries& edited) { TakePendingTexts(edited); });
    if (IsLoadNeeded(series)) Context().Session().FollowUp([&] { Load(series); });
}

/// Another page is shown: it should see what was edited here. Who goes there is told when it does not.
void TDataSourcePage::Leave(TSeries& series) {
    try {
        Commit(series);
    } catch (const EManualCell& error) {
        ShowMessage(error.what() + std::string(". The edited rows stay in the grid and are no points yet."),
                    TMessageKind::Warning);
    } catch (const EConvertError&) {
        // The edit is marked and keeps its text until it is mended.
    }
}

/// A cell that is no value is marked and keeps its text until it is mended.
void TDataSourcePage::CommitRowsQuietly() {
    try {
        m_manual->Commit(TEqualX::Refuse);
    } catch (const EManualCell&) {
    }
}

void TDataSourcePage::RestoreRows(std::span<const std::uint8_t> rows) {
    m_manual->RestoreRows(rows);
}

void TDataSourcePage::AttachFile(const std::string& fileName) {
    TSeries& series = *Context().CurrSeries();
    if (!MayReplacePoints(series)) return;
    const QString name = QString::fromStdString(fileName);
    if (KindOfFile(name) == TSourceKind::Database) return ChooseDatabase(series, name);
    ChangeKind(series, KindOfFile(name));
    series.DataSourceInfo().SetSourceName(fileName);
    series.SetSeriesName(BaseNameOf(fileName));
    Context().ShowSeriesName(QString::fromStdString(series.SeriesName()));
    m_failureTold = false;
    // The file's name is the better name for a data set that is new.
    const bool isNamedBySource = series.SeriesFlag();
    series.SetSeriesFlag(false);
    const bool isLoaded = LoadShowingErrors(series);
    const bool bringsOwnFlag = isLoaded && series.DataSourceInfo().Kind() == TSourceKind::DataFile;
    if (!bringsOwnFlag) series.SetSeriesFlag(isNamedBySource);
    Context().RefillPages();
}

bool TDataSourcePage::CanLoad(const TSeries& series) const {
    const TDSInfo& info = series.DataSourceInfo();
    if (info.Kind() == TSourceKind::Database) return !info.Database().connection.empty();
    const bool isNamed = info.Kind() == TSourceKind::DataFile || info.Kind() == TSourceKind::Link;
    return (isNamed || IsText(series)) && !info.SourceName().empty();
}

bool TDataSourcePage::IsLoadNeeded(const TSeries& series) const {
    return CanLoad(series) && series.DataSourceInfo().NeedsReload() && !m_failureTold;
}

/// Loads and shows what came of it. Throws what the source throws; the data set keeps its points then, and
/// after a cancelled loading.
void TDataSourcePage::Load(TSeries& series) {
    if (!CanLoad(series)) return;
    m_report.reset();
    m_failureTold = true; // until it is done
    TProgressWindow progress;
    auto report = std::make_unique<TTextReport>();
    try {
        if (!LoadFromSource(series, progress, {.Report = report.get()})) return ShowKind(series);
    } catch (...) {
        series.DataSourceInfo().SetNeedsReload(true);
        ShowKind(series);
        throw;
    }
    m_failureTold = false;
    if (IsText(series) || IsDatabase(series)) m_report = std::move(report);
    Context().ShowSeriesName(QString::fromStdString(series.SeriesName()));
    Context().RefillPages();
}

/// False when it threw. What the step has set by then stays.
bool TDataSourcePage::LoadShowingErrors(TSeries& series) {
    return Guarded([&] { Load(series); });
}

/// The step that is open is about another source.
void TDataSourcePage::LoadAsStep(TSeries& series) {
    m_failureTold = false;
    if (!LoadShowingErrors(series)) return;
    const TSheetPlace place = SheetPlaceOf(series.DataSourceInfo().SourceName());
    const std::string file = QFileInfo(QString::fromStdString(place.file)).fileName().toStdString();
    Context().Session().NameStep("load " + WithSheet(file, place.sheet));
}

} // namespace lumoplot
