// What the Data Source page does with a choice of sources and columns.
#include "controls/texts.h"
#include "dialog/source/data_source_page.h"
#include "dialogs/import/database_chooser.h"
#include "dialogs/import/get_data_source.h"
#include "dialogs/import/source_files.h"
#include "dialogs/link/link_dialog.h"
#include "dialogs/messages/progress_window.h"
#include "graph/loading/source_loading.h"
#include "sources/link/link_place.h"
#include "support/message_text.h"
#include "ui_data_source_page.h"

namespace lumoplot {
namespace {

/// The name of a data set whose column has none.
std::string NameOfSource(const TDSInfo& info, std::size_t place) {
    const std::string& name = info.SourceName();
    const std::string base = info.Kind() == TSourceKind::LumoSheet ? name : BaseNameOf(name);
    return place == 0 ? base : base + " " + info.YDataColumn();
}

} // namespace

void TDataSourcePage::ChooseSource() {
    TSeries* series = Context().CurrSeries();
    if (!series) return;
    TakePendingTexts(*series);
    if (IsDatabase(*series)) return ChooseDatabase(*series, {});
    if (series->DataSourceInfo().Kind() == TSourceKind::Link) return ChooseLink(*series);
    TxyGetDataSource chooser(*series, this);
    if (chooser.exec() == QDialog::Accepted) TakeChoice(*series, chooser);
}

/// Starts with the database that the data set has, or with the connection where one is named.
void TDataSourcePage::ChooseDatabase(TSeries& series, const QString& connection) {
    TDatabaseChooser chooser(series.DataSourceInfo(), connection, this);
    if (chooser.exec() != QDialog::Accepted) return FillFrom(series);
    ChangeKind(series, TSourceKind::Database);
    series.DataSourceInfo() = chooser.Source();
    series.DataSourceInfo().SetNeedsReload(true);
    if (series.SeriesFlag()) series.SetSeriesName(chooser.Name().toStdString());
    Forget();
    LoadAsStep(series);
    Context().FillList(series.SeriesIndex());
}

/// Rows of a file are read at once; the host goes on with what follows, and with lines, when the editor has
/// closed.
void TDataSourcePage::ChooseLink(TSeries& series) {
    TLinkDialog dialog(series.DataSourceInfo(), this);
    if (dialog.exec() != QDialog::Accepted) return FillFrom(series);
    ChangeKind(series, TSourceKind::Link);
    series.DataSourceInfo() = dialog.Source();
    series.DataSourceInfo().SetNeedsReload(true);
    if (series.SeriesFlag()) series.SetSeriesName(LinkName(ParseLink(series.DataSourceInfo().SourceName())));
    Forget();
    LoadAsStep(series);
    Context().FillList(series.SeriesIndex());
}

/// What is followed, and how much of it is kept.
void TDataSourcePage::ShowLink(const TSeries& series) {
    const TDSInfo& info = series.DataSourceInfo();
    const TLinkLimit limit = info.LinkLimit();
    QStringList lines{TTexts::tr("Follows %1").arg(QString::fromStdString(ShownLine(info.SourceName())))};
    if (limit.rows > 0) lines += TTexts::tr("Keeps the last %L1 rows").arg(limit.rows);
    if (limit.seconds > 0) lines += TTexts::tr("Keeps the rows of the last %L1 seconds").arg(limit.seconds);
    lines += TTexts::tr("Rows go on to come when the editor has closed. Choose… changes what is followed.");
    m_ui->lblNotes->setText(lines.join(QLatin1Char('\n')));
    const bool isLoaded = !info.NeedsReload() && series.Count() > 0;
    m_ui->lblNotesResult->setText(
        isLoaded ? TTexts::tr("%1 points so far.").arg(QLocale().toString(series.Count())) : QString());
}

/// The first Y column goes into the current data set, every other one into a new data set.
void TDataSourcePage::TakeChoice(TSeries& series, const TxyGetDataSource& chooser) {
    if (!MayReplacePoints(series)) return;
    const std::vector<std::string> columns = chooser.YColumns();
    const std::vector<TYErrorRule> errors = chooser.YErrorRules();
    ChangeKind(series, chooser.Source().Kind());
    series.DataSourceInfo() = chooser.Source();
    series.DataSourceInfo().SetNeedsReload(true);
    series.SetTextWishes(chooser.Wishes());
    if (series.SeriesFlag()) series.SetSeriesName(NameOfSource(series.DataSourceInfo(), 0));
    Forget();
    const int number = series.SeriesIndex();
    LoadAsStep(series);
    bool isLoaded = !series.DataSourceInfo().NeedsReload();
    for (std::size_t i = 1; i < columns.size() && isLoaded; ++i)
        isLoaded = AddDataSet(series, columns[i], errors[i]);
    Context().FillList(number);
}

/// Another data set of the same source and rows. False when it could not be read, and there is none then.
bool TDataSourcePage::AddDataSet(const TSeries& like, const std::string& yColumn, const TYErrorRule& errors) {
    TxyChildGr& graph = Context().WorkGraph();
    const int number = graph.AddSeries();
    TSeries& series = *graph.FindSeries(number);
    series.DataSourceInfo() = like.DataSourceInfo();
    series.DataSourceInfo().SetYDataColumn(yColumn);
    series.DataSourceInfo().SetYErrorRule(errors);
    series.SetTextWishes(like.TextWishes());
    series.SetXColExpr(like.XColExpr());
    series.SetDuplicatesAllowed(like.DuplicatesAllowed());
    series.SetSeriesName(NameOfSource(series.DataSourceInfo(), 1));
    bool isLoaded = false;
    TProgressWindow progress;
    Guarded([&] { isLoaded = LoadFromSource(series, progress); });
    if (!isLoaded) graph.DeleteSeries(number);
    return isLoaded;
}

} // namespace lumoplot
