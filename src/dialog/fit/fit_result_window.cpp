#include "dialog/fit/fit_result_window.h"

#include "controls/texts.h"
#include "dialog/fit/bar_progress.h"
#include "dialog/fit/print_whole.h"
#include "dialog/fit/result_tables.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "graph/drawing/picture/fit_picture.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "support/replace_file.h"
#include "ui_fit_result_window.h"

#include <QBuffer>
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <cmath>

namespace lumoplot {
namespace {

constexpr QSize kReportPicture(580, 390);
constexpr double kReportPixels = 2; // for each logical one
constexpr char kPictureName[] = "fit-picture";

std::string DataAddress(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return "data:image/png;base64," + bytes.toBase64().toStdString();
}

} // namespace

TFitResultWindow::TFitResultWindow(const TSeries& series, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TFitResultWindow>()), m_fitted(series),
      m_dataName(QString::fromStdString(series.SeriesName())),
      m_picture(FitPictureOf(series, kReportPicture, kReportPixels)) {
    m_ui->setupUi(this);
    OfferManual(*this, [] { return QStringLiteral("curve-fitting.md"); });
    resize(size().boundedTo(RoomOnScreen(*this)));
    setWindowTitle(TTexts::tr("Fit Result of %1").arg(m_dataName));
    m_sections = ReportSections();
    ShowFigures();
    ShowIntervals();
    ShowReport();
    connect(m_ui->btnProfiles, &QPushButton::clicked, this, [this] { Guarded([&] { RunProfiles(); }); });
    connect(m_ui->btnBootstrap, &QPushButton::clicked, this, [this] { Guarded([&] { RunBootstrap(); }); });
    connect(m_ui->t_Intervals, &QTableWidget::currentCellChanged, this, &TFitResultWindow::ShowPlot);
    connect(m_ui->btnCopyTable, &QPushButton::clicked, this, &TFitResultWindow::CopyTables);
    connect(m_ui->btnSave, &QPushButton::clicked, this, [this] { Guarded([&] { SaveReport(); }); });
    connect(m_ui->btnPrint, &QPushButton::clicked, this, &TFitResultWindow::PrintReport);
    connect(m_ui->btnClose, &QPushButton::clicked, this, &QDialog::reject);
}

TFitResultWindow::~TFitResultWindow() = default;

void TFitResultWindow::ShowPage(TPage page) {
    m_ui->tabs->setCurrentIndex(static_cast<int>(page));
}

const TFitReportSection* TFitResultWindow::Section(const char* heading) const {
    for (const TFitReportSection& section : m_sections)
        if (section.Heading == heading) return &section;
    return nullptr;
}

void TFitResultWindow::ShowFigures() {
    QStringList sentences;
    for (const char* heading : {"How it ended", "Quality"})
        if (const TFitReportSection* section = Section(heading))
            for (const std::string& sentence : section->Sentences)
                sentences << QString::fromStdString(sentence);
    m_ui->lblEnd->setText(sentences.join(QLatin1Char(' ')));
    const auto show = [&](QTableWidget& table, const char* heading) {
        const TFitReportSection* section = Section(heading);
        ShowRows(table, section ? section->Table : std::vector<std::vector<std::string>>());
    };
    show(*m_ui->t_Figures, "Parameters");
    show(*m_ui->t_Correlations, "Correlations");
    show(*m_ui->t_Quality, "Quality");
}

void TFitResultWindow::ShowReport() {
    m_ui->m_Report->document()->addResource(QTextDocument::ImageResource, QUrl(QLatin1String(kPictureName)),
                                            m_picture);
    m_ui->m_Report->setHtml(QString::fromStdString(
        ReportHtml("Curve fit of " + m_dataName.toStdString(), ReportSections(), kPictureName)));
}

std::vector<TFitReportSection> TFitResultWindow::ReportSections() const {
    return FitReport(m_fitted.Fit, m_dataName.toStdString(), m_known);
}

std::size_t TFitResultWindow::ChosenParameter() const {
    return static_cast<std::size_t>(std::max(0, m_ui->t_Intervals->currentRow()));
}

void TFitResultWindow::ShowIntervals() {
    ShowRows(*m_ui->t_Intervals, UncertaintySection(m_fitted.Fit, m_known).Table);
    ShowPlot();
}

void TFitResultWindow::ShowPlot() {
    const TFitResult& result = *m_fitted.Fit.Result();
    const std::size_t chosen = ChosenParameter();
    if (chosen >= result.Varied.size()) return;
    TUncertaintyPlot& plot = *m_ui->uncertaintyPlot;
    plot.Clear();
    plot.SetName(QString::fromStdString(m_fitted.Fit.Parameter(result.Varied[chosen])->Name()));
    if (chosen < m_known.Profiles.size()) plot.ShowProfile(m_known.Profiles[chosen]);
    if (chosen < m_known.Bootstrap.Values.size())
        plot.ShowSample(m_known.Bootstrap.Values[chosen], m_known.Bootstrap.Intervals[chosen]);
}

void TFitResultWindow::RunProfiles() {
    TBarProgress progress(*m_ui->bar, *m_ui->btnStop,
                          {m_ui->btnProfiles, m_ui->btnBootstrap, m_ui->se_Resamples, m_ui->cbx_Resampling,
                           m_ui->btnClose, m_ui->btnSave, m_ui->btnPrint});
    const TFitRun run = m_fitted.RunWith(progress);
    m_known.Profiles.clear();
    for (const int number : m_fitted.Fit.Result()->Varied) {
        m_known.Profiles.push_back(ProfileOf(m_fitted.Data(run), number));
        ShowIntervals();
        if (progress.WasCancelled()) break;
    }
    ShowReport();
}

void TFitResultWindow::RunBootstrap() {
    TBarProgress progress(*m_ui->bar, *m_ui->btnStop,
                          {m_ui->btnProfiles, m_ui->btnBootstrap, m_ui->se_Resamples, m_ui->cbx_Resampling,
                           m_ui->btnClose, m_ui->btnSave, m_ui->btnPrint});
    const TFitRun run = m_fitted.RunWith(progress);
    TBootstrapOptions options;
    options.Resamples = m_ui->se_Resamples->value();
    options.Resampling =
        m_ui->cbx_Resampling->currentIndex() == 0 ? TResampling::Residuals : TResampling::Points;
    options.OnProgress = [this](const TBootstrap& found) {
        m_known.Bootstrap = found;
        ShowIntervals();
    };
    m_known.Bootstrap = BootstrapOf(m_fitted.Data(run), options);
    ShowIntervals();
    ShowReport();
}

void TFitResultWindow::CopyTables() {
    QString text;
    const auto add = [&](const QTableWidget& table) {
        if (table.rowCount() > 0)
            text += (text.isEmpty() ? QString() : QStringLiteral("\n")) + TableTextOf(table);
    };
    switch (static_cast<TPage>(m_ui->tabs->currentIndex())) {
    case TPage::Figures:
        add(*m_ui->t_Figures);
        add(*m_ui->t_Correlations);
        add(*m_ui->t_Quality);
        break;
    case TPage::Uncertainty: add(*m_ui->t_Intervals); break;
    case TPage::Report:
        for (const TFitReportSection& section : ReportSections())
            text += QString::fromStdString(section.Heading + '\n' + TableText(section.Table) + '\n');
    }
    QGuiApplication::clipboard()->setText(text);
}

void TFitResultWindow::SaveReport() {
    QFileDialog dialog(this, TTexts::tr("Save Report"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({TTexts::tr("Page (*.html)"), TTexts::tr("Text (*.txt)")});
    dialog.setDefaultSuffix(QStringLiteral("html"));
    if (dialog.exec() != QDialog::Accepted) return;
    const QString name = dialog.selectedFiles().value(0);
    const bool isText = name.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive);
    const std::string text = isText ? ReportText(ReportSections())
                                    : ReportHtml("Curve fit of " + m_dataName.toStdString(), ReportSections(),
                                                 DataAddress(m_picture));
    ReplaceFile(name.toStdString(),
                std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

void TFitResultWindow::PrintReport() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) PrintWhole(*m_ui->m_Report->document(), printer);
}

} // namespace lumoplot
