// Which sources the chooser lists, and how others come into its list.
#include "controls/texts.h"
#include "dialogs/import/get_data_source.h"
#include "dialogs/import/source_files.h"
#include "dialogs/import/text_preview_pane.h"
#include "graph/loading/source_loading.h"
#include "graph/model/holder.h"
#include "sources/spreadsheet/sheet_place.h"
#include "ui_get_data_source.h"

#include <QDir>
#include <QFileDialog>
#include <utility>

namespace lumoplot {
namespace {

constexpr int kKindRole = Qt::UserRole;
constexpr int kNameRole = Qt::UserRole + 1;
/// A directory with more data files is one to browse.
constexpr int kMostFiles = 500;

QStringList Patterns() {
    return {QStringLiteral("*.dat"), QStringLiteral("*.txt"),  QStringLiteral("*.csv"),
            QStringLiteral("*.tsv"), QStringLiteral("*.xlsx"), QStringLiteral("*.xlsm"),
            QStringLiteral("*.ods"), QStringLiteral("*.lds")};
}

QString Shown(TSourceKind kind, const QString& name) {
    if (kind == TSourceKind::LumoSheet) return name;
    const TSheetPlace place = SheetPlaceOf(name.toStdString());
    const std::string file = QFileInfo(QString::fromStdString(place.file)).fileName().toStdString();
    return QString::fromStdString(WithSheet(file, place.sheet));
}

QString FileOf(const TSeries& series) {
    return QString::fromStdString(SheetPlaceOf(SourceFileOf(series)).file);
}

} // namespace

void TxyGetDataSource::ListSources(const TxyGraph& graph) {
    ListUsed(graph);
    ListFiles();
    ListSheets(); // last: what fails there keeps the others
}

void TxyGetDataSource::ListUsed(const TxyGraph& graph) {
    bool isFirst = true;
    for (const auto& series : graph.Series()) {
        const TDSInfo& info = series->DataSourceInfo();
        const QString name = QString::fromStdString(info.SourceName());
        const bool isFile = info.Kind() == TSourceKind::TextFile || info.Kind() == TSourceKind::DataFile;
        if (!isFile || name.isEmpty() || FindSource(info.Kind(), name)) continue;
        if (std::exchange(isFirst, false)) AddCaption(TTexts::tr("In this graph"));
        AddSource(info.Kind(), name);
    }
}

void TxyGetDataSource::ListSheets() {
    const TSheetOffer& sheets = m_graph->Holder()->Sheets();
    const std::vector<std::string> names = sheets ? sheets.Names() : std::vector<std::string>();
    if (names.empty()) return;
    AddCaption(TTexts::tr("Sheets"));
    for (const std::string& name : names) AddSource(TSourceKind::LumoSheet, QString::fromStdString(name));
}

/// The data files beside the present source, or in the graph's data directory.
void TxyGetDataSource::ListFiles() {
    const TSourceKind kind = Source().Kind();
    const bool isFile = kind == TSourceKind::TextFile || kind == TSourceKind::DataFile;
    const QFileInfo present(isFile ? FileOf(*m_series) : QString());
    const QString inGraph = QString::fromStdString(m_graph->Appearance()->DataDirectory());
    const QString path = present.exists() ? present.absolutePath() : inGraph;
    const QDir directory(path);
    if (path.isEmpty() || !directory.exists()) return;
    const QStringList files = directory.entryList(Patterns(), QDir::Files | QDir::Readable, QDir::Name);
    if (files.isEmpty()) return;
    AddCaption(TTexts::tr("In %1").arg(QDir::toNativeSeparators(directory.absolutePath())));
    for (const QString& file : files.mid(0, kMostFiles))
        AddSource(KindOfFile(file), directory.absoluteFilePath(file));
}

/// A line that can not be chosen, above the sources of one origin.
void TxyGetDataSource::AddCaption(const QString& caption) {
    auto* item = new QListWidgetItem(caption, m_ui->l_Sources);
    item->setFlags(Qt::NoItemFlags);
    item->setToolTip(caption);
    QFont font = m_ui->l_Sources->font();
    font.setBold(true);
    item->setFont(font);
}

QListWidgetItem* TxyGetDataSource::AddSource(TSourceKind kind, const QString& name) {
    if (QListWidgetItem* item = FindSource(kind, name)) return item;
    auto* item = new QListWidgetItem(QStringLiteral("    ") + Shown(kind, name), m_ui->l_Sources);
    item->setData(kKindRole, static_cast<int>(kind));
    item->setData(kNameRole, name);
    item->setToolTip(kind == TSourceKind::LumoSheet ? name : QDir::toNativeSeparators(name));
    return item;
}

QListWidgetItem* TxyGetDataSource::FindSource(TSourceKind kind, const QString& name) const {
    for (int i = 0; i < m_ui->l_Sources->count(); ++i) {
        QListWidgetItem* item = m_ui->l_Sources->item(i);
        const bool isSource = item->flags() != Qt::NoItemFlags;
        if (isSource && item->data(kKindRole).toInt() == static_cast<int>(kind) &&
            item->data(kNameRole).toString() == name)
            return item;
    }
    return nullptr;
}

void TxyGetDataSource::Browse() {
    QFileDialog dialog(this, TTexts::tr("Choose the source file"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::ReadOnly);
    dialog.setNameFilters(
        {TTexts::tr("Data Files (%1)").arg(Patterns().join(QLatin1Char(' '))), TTexts::tr("All Files (*)")});
    const QFileInfo present(FileOf(*m_series));
    if (present.exists()) dialog.setDirectory(present.absolutePath());
    if (dialog.exec() != QDialog::Accepted) return;
    const QString file = dialog.selectedFiles().value(0);
    SelectSource(KindOfFile(file), file);
}

/// Selects a source, which need not be in the list yet; manual data are none, and select the first.
void TxyGetDataSource::SelectSource(TSourceKind kind, const QString& name) {
    const bool isSource = kind != TSourceKind::Manual && !name.isEmpty();
    QListWidgetItem* item = isSource ? AddSource(kind, name) : nullptr;
    for (int i = 0; !item && i < m_ui->l_Sources->count(); ++i)
        if (m_ui->l_Sources->item(i)->flags() != Qt::NoItemFlags) item = m_ui->l_Sources->item(i);
    if (item) return m_ui->l_Sources->setCurrentItem(item);
    ShowColumns(nullptr);
    m_preview->ShowProblem(TTexts::tr("Browse for a file, or drop one here."));
    EnableOk();
}

} // namespace lumoplot
