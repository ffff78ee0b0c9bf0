#include "dialog/data_source_page.h"

#include "data/ds_info.h"
#include "graph/source_loading.h"
#include "ui_data_source_page.h"

#include <QDir>
#include <QFileInfo>

namespace lumoplot {

TDataSourcePage::TDataSourcePage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TDataSourcePage>()) {
    m_ui->setupUi(this);
    connect(m_ui->cbx_SourceKind, &QComboBox::activated, this, [this](int item) {
        Edit([&](TSeries& series) { series.DataSourceInfo().SetKind(static_cast<TSourceKind>(item)); });
    });
    connect(m_ui->e_SourceName, &QLineEdit::editingFinished, this, [this] {
        Edit([&](TSeries& series) {
            series.DataSourceInfo().SetSourceName(m_ui->e_SourceName->text().toStdString());
            CheckDirectory();
            ReloadIfNeeded(series);
        });
    });
}

TDataSourcePage::~TDataSourcePage() = default;

void TDataSourcePage::FillFrom(TSeries& series) {
    const TDSInfo& source = series.DataSourceInfo();
    m_ui->cbx_SourceKind->setCurrentIndex(static_cast<int>(source.Kind()));
    m_ui->e_SourceName->setText(QString::fromStdString(source.SourceName()));
    m_ui->e_SourceName->setToolTip(m_ui->e_SourceName->text());
    CheckDirectory();
}

void TDataSourcePage::ShowNothing() {
    m_ui->e_SourceName->clear();
    m_ui->t_Preview->setRowCount(0);
}

void TDataSourcePage::CheckDirectory() {
    const QString name = m_ui->e_SourceName->text();
    const bool found = name.isEmpty() || QFileInfo::exists(QDir(QDir::rootPath()).filePath(name));
    const bool relative = !name.contains(QStringLiteral(":\\")) && QFileInfo(name).isRelative();
    const bool shown = !found && relative;
    m_ui->lblDirectory->setVisible(shown);
    m_ui->e_Directory->setVisible(shown);
    if (!shown) return;
    m_ui->e_Directory->setText(QString::fromStdString(Context().WorkGraph().Appearance()->DataDirectory()));
    m_ui->e_Directory->setToolTip(m_ui->e_Directory->text());
}

void TDataSourcePage::AttachFile(const std::string& fileName) {
    TSeries& series = *Context().CurrSeries();
    series.DataSourceInfo().SetKind(TSourceKind::TextFile);
    series.DataSourceInfo().SetSourceName(fileName);
    series.SetSeriesName(QFileInfo(QString::fromStdString(fileName)).completeBaseName().toStdString());
    Context().ShowSeriesName(QString::fromStdString(series.SeriesName()));
    Load(series);
    Context().RefillPages();
}

void TDataSourcePage::ReloadIfNeeded(TSeries& series) {
    if (series.DataSourceInfo().Kind() != TSourceKind::Manual && series.DataSourceInfo().NeedsReload())
        Load(series);
}

void TDataSourcePage::Load(TSeries& series) {
    TSilentProgress progress;
    Guarded([&] {
        if (LoadFromSource(series, progress)) series.SetThinned(Context().WorkGraph().EditorMode());
    });
}

} // namespace lumoplot
