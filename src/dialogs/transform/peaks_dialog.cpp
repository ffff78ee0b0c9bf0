#include "dialogs/transform/peaks_dialog.h"

#include "controls/number_spin.h"
#include "controls/return_key.h"
#include "controls/texts.h"
#include "controls/whole_captions.h"
#include "dialogs/hand_edit.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "dialogs/transform/transformed_curve.h"
#include "fit/definition/fit_result.h"
#include "fit/functions/peak_sum.h"
#include "fit/functions/ready_functions.h"
#include "fit/run/fit_statistics.h"
#include "graph/fitting/series_fitting.h"
#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "support/update_hold.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace lumoplot {
namespace {

constexpr int kPeakDigits = 6;
constexpr double kUsualPercent = 5;
constexpr int kRowEdges = 6;
constexpr QSize kLeastPlot(240, 180);
constexpr QSize kUsualSize(820, 420);
constexpr TColor kCurveGray = MakeColor(130, 130, 130);
constexpr TColor kPeakRed = MakeColor(210, 50, 40);

constexpr double kPlacesPerWidth = 15;
constexpr double kMostPeakPlaces = 5000;
constexpr double kUnlikelyRuns = 0.05;

std::array<double, 4> CellsOf(const TPeak& peak) {
    return {peak.Position, peak.Height, peak.Width, peak.Area};
}

/// So many that the narrowest peak is drawn round, and as many as the fit has.
int PlacesToDraw(const std::vector<TPeakStart>& peaks, const TCurveValues& curve, const TCurFit& fit) {
    const auto [left, right] = std::minmax_element(curve.X.begin(), curve.X.end());
    double places = fit.NPoints();
    for (const TPeakStart& peak : peaks)
        places = std::max(places, kPlacesPerWidth * (*right - *left) / peak.Width);
    return static_cast<int>(std::max(std::min(places, kMostPeakPlaces), 1.0 * fit.NPoints()));
}

/// What the test of the residuals says where they are not random, else nothing.
std::string TrendWords(const TFitResult& result) {
    return result.Quality.RunsProbability < kUnlikelyRuns ? " " + ResidualWords(result).front() : "";
}

} // namespace

TPeaksDialog::TPeaksDialog(TSeries& series, QWidget* parent) : QDialog(parent), m_series(series) {
    setWindowTitle(TTexts::tr("Peaks of ") + QString::fromStdString(series.SeriesName()));
    m_curve = CorrectedCurve(series);
    AddControls();
    KeepOpenOnReturn(*this, TSecondReturn::Closes);
    OfferManual(*this, [] { return QStringLiteral("transform.md"); });
    ShowPeaks();
    resize(kUsualSize.boundedTo(RoomOnScreen(*this)));
}

void TPeaksDialog::AddControls() {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    auto* label = new QLabel(TTexts::tr("&Least rise, of the range of Y:"), this);
    m_part = new TNumberSpin(this);
    m_part->setObjectName(QStringLiteral("se_Part"));
    m_part->setRange(0, 100);
    m_part->setSuffix(QStringLiteral(" %"));
    m_part->setValue(kUsualPercent);
    label->setBuddy(m_part);
    m_state = new QLabel(this);
    m_state->setObjectName(QStringLiteral("lblPeaks"));
    m_state->setWordWrap(true);
    for (QWidget* widget : std::initializer_list<QWidget*>{label, m_part}) top->addWidget(widget);
    top->addStretch();
    layout->addLayout(top);
    m_table = new QTableWidget(0, 4, this);
    m_table->setObjectName(QStringLiteral("t_Peaks"));
    m_table->setAccessibleName(TTexts::tr("Peaks"));
    m_table->setHorizontalHeaderLabels(
        {TTexts::tr("Position"), TTexts::tr("Height"), TTexts::tr("Width at half"), TTexts::tr("Area")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    KeepCaptionsWhole(*m_table->horizontalHeader());
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowEdges);
    m_plot = new TxyGraph(this);
    m_plot->setObjectName(QStringLiteral("plot"));
    m_plot->setAccessibleName(tr("Curve with its peaks"));
    m_plot->setMinimumSize(kLeastPlot);
    SetUpPreview(*m_plot, m_series);
    m_plot->Legend()->Setvisible(false);
    ShowCurve(AddPreviewCurve(*m_plot, m_series.SeriesName(), kCurveGray, 1), m_curve);
    TSeries& tops = AddPreviewCurve(*m_plot, tr("peaks").toStdString(), kPeakRed, 1);
    tops.SetLinesShown(false);
    tops.SetPointsShown(true);
    tops.SetPointColor(kPeakRed);
    tops.SetPointShape(TPointShape::DownTriangle);
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_table, 1);
    middle->addWidget(m_plot, 1);
    layout->addLayout(middle, 1);
    layout->addWidget(m_state);
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& caption, auto action) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, action);
        buttons->addWidget(button);
        return button;
    };
    add("btnCopy", TTexts::tr("&Copy Table"), [this] { CopyTable(); });
    add("btnMark", TTexts::tr("&Mark Peaks"), [this] { MarkPeaks(); });
    m_shape = new QComboBox(this);
    m_shape->setObjectName(QStringLiteral("cbx_Shape"));
    m_shape->setAccessibleName(TTexts::tr("Shape of the peaks"));
    m_shape->addItems({TTexts::tr("Gaussian"), TTexts::tr("Lorentzian")});
    buttons->addWidget(m_shape);
    add("btnFit", TTexts::tr("&Fit Peaks"), [this] {
        FitPeaks();
    })->setToolTip(TTexts::tr("Fit a sum of the selected peaks, or of all, on a baseline"));
    buttons->addStretch();
    add("btnOk", QStringLiteral("O&K"), [this] { accept(); })->setDefault(true);
    layout->addLayout(buttons);
    connect(m_part, &QDoubleSpinBox::valueChanged, this, [this] { ShowPeaks(); });
}

void TPeaksDialog::ShowPeaks() {
    m_peaks = FindPeaks(m_curve, m_part->value() / 100);
    m_table->setRowCount(static_cast<int>(m_peaks.size()));
    for (std::size_t row = 0; row < m_peaks.size(); ++row) {
        int column = 0;
        for (const double value : CellsOf(m_peaks[row])) {
            auto* cell = new QTableWidgetItem(QString::fromStdString(FormatGeneral(value, kPeakDigits)));
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(static_cast<int>(row), column++, cell);
        }
    }
    TCurveValues tops;
    for (const TPeak& peak : m_peaks) {
        tops.X.push_back(peak.Position);
        tops.Y.push_back(peak.Height);
    }
    ShowCurve(*m_plot->FindSeries(2), tops);
    m_state->setText(m_peaks.size() == 1 ? TTexts::tr("1 peak") : TTexts::tr("%1 peaks").arg(m_peaks.size()));
}

/// With all digits, for other programs.
void TPeaksDialog::CopyTable() const {
    std::string text = "Position\tHeight\tWidth\tArea\n";
    for (const TPeak& peak : m_peaks) {
        std::string line;
        for (const double value : CellsOf(peak)) line += (line.empty() ? "" : "\t") + FormatShortest(value);
        text += line + "\n";
    }
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void TPeaksDialog::MarkPeaks() {
    TxyGraph& graph = m_series.Graph();
    for (const TPeak& peak : m_peaks) {
        TGraphMark mark;
        mark.TypeOfMark = TMarkType::VerticalLine;
        mark.X1 = peak.Position;
        mark.Caption = FormatGeneral(peak.Position, kPeakDigits);
        mark.Color = m_series.LineColor();
        graph.AddMark(mark);
    }
    graph.Appearance()->SetShowMarks(true);
    m_state->setText(TTexts::tr("%1 marks were added").arg(m_peaks.size()));
}

std::vector<int> TPeaksDialog::ChosenRows() const {
    std::set<int> rows;
    for (const QTableWidgetItem* item : m_table->selectedItems()) rows.insert(item->row());
    if (rows.empty())
        for (int row = 0; row < m_table->rowCount(); ++row) rows.insert(row);
    return {rows.begin(), rows.end()};
}

void TPeaksDialog::FitPeaks() {
    std::vector<TPeakStart> starts;
    for (const int row : ChosenRows()) {
        const TPeak& peak = m_peaks[static_cast<std::size_t>(row)];
        starts.push_back({peak.Position, peak.Height, peak.Width});
    }
    if (starts.size() > kMostSummedPeaks)
        return m_state->setText(TTexts::tr("At most %1 peaks can be fitted together: select their rows, or "
                                           "ask for a larger rise.")
                                    .arg(kMostSummedPeaks));
    Guarded([&] {
        TCurFit& fit = m_series.CurveFit();
        {
            const TUpdateHold hold(m_series);
            UsePeakSum(starts, static_cast<TPeakShape>(m_shape->currentIndex()), fit,
                       UnitIn(m_series.Graph().XAxis()->Title()), UnitIn(m_series.YAxisOfSeries()->Title()));
            fit.SetNPoints(PlacesToDraw(starts, m_curve, fit));
            fit.SetStatus(TFitStatus::FinalResult);
        }
        RunPendingFit(m_series);
        const TFitResult* result = fit.Result();
        if (!result || fit.IsStale() || !fit.FitError().empty())
            return m_state->setText(QString::fromStdString(fit.FitError().empty() ? "The fit was cancelled."
                                                                                  : fit.FitError() + "."));
        m_state->setText(
            TTexts::tr("%1 fitted: %2, R² = %3.%4 The figures are on the page Curve Fitting of "
                       "the data editor.")
                .arg(starts.size() == 1 ? TTexts::tr("1 peak") : TTexts::tr("%1 peaks").arg(starts.size()),
                     QString::fromStdString(TextOf(result->End)),
                     QString::fromStdString(FormatGeneral(result->RSquared, kPeakDigits)),
                     QString::fromStdString(TrendWords(*result))));
    });
}

void ShowPeaksOf(TSeries& series, QWidget* window) {
    if (ReadEveryRow(series, window)) TPeaksDialog(series, window).exec();
}

} // namespace lumoplot
