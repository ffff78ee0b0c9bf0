#include "dialogs/transform/peaks_dialog.h"

#include "controls/return_key.h"
#include "dialogs/hand_edit.h"
#include "dialogs/manual_window.h"
#include "fit/definition/fit_result.h"
#include "fit/functions/peak_sum.h"
#include "fit/functions/ready_functions.h"
#include "graph/fitting/series_fitting.h"
#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "support/update_hold.h"

#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
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

std::array<double, 4> CellsOf(const TPeak& peak) {
    return {peak.Position, peak.Height, peak.Width, peak.Area};
}

} // namespace

TPeaksDialog::TPeaksDialog(TSeries& series, QWidget* parent) : QDialog(parent), m_series(series) {
    setWindowTitle(QStringLiteral("Peaks of ") + QString::fromStdString(series.SeriesName()));
    for (TPointCursor point = series.First(); point; point = point.Next()) {
        m_curve.X.push_back(point.X());
        m_curve.Y.push_back(series.CorrectedY(point.X(), point.Y()));
    }
    AddControls();
    KeepOpenOnReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("transform.md"); });
    ShowPeaks();
}

void TPeaksDialog::AddControls() {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("&Least rise, of the range of Y:"), this);
    m_part = new QDoubleSpinBox(this);
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
    m_table->setAccessibleName(QStringLiteral("Peaks"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Position"), QStringLiteral("Height"),
                                        QStringLiteral("Width at half"), QStringLiteral("Area")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    layout->addWidget(m_table, 1);
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
    add("btnCopy", QStringLiteral("&Copy Table"), [this] { CopyTable(); });
    add("btnMark", QStringLiteral("&Mark Peaks"), [this] { MarkPeaks(); });
    m_shape = new QComboBox(this);
    m_shape->setObjectName(QStringLiteral("cbx_Shape"));
    m_shape->setAccessibleName(QStringLiteral("Shape of the peaks"));
    m_shape->addItems({QStringLiteral("Gaussian"), QStringLiteral("Lorentzian")});
    buttons->addWidget(m_shape);
    add("btnFit", QStringLiteral("&Fit Peaks"), [this] {
        FitPeaks();
    })->setToolTip(QStringLiteral("Fit a sum of the selected peaks, or of all, on a baseline"));
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
    m_state->setText(m_peaks.size() == 1 ? QStringLiteral("1 peak")
                                         : QStringLiteral("%1 peaks").arg(m_peaks.size()));
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
    m_state->setText(QStringLiteral("%1 marks were added").arg(m_peaks.size()));
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
        return m_state->setText(
            QStringLiteral("At most %1 peaks can be fitted together: select their rows, or "
                           "ask for a larger rise.")
                .arg(kMostSummedPeaks));
    Guarded([&] {
        TCurFit& fit = m_series.CurveFit();
        {
            const TUpdateHold hold(m_series);
            UsePeakSum(starts, static_cast<TPeakShape>(m_shape->currentIndex()), fit,
                       UnitIn(m_series.Graph().XAxis()->Title()), UnitIn(m_series.YAxisOfSeries()->Title()));
            fit.SetStatus(TFitStatus::FinalResult);
        }
        RunPendingFit(m_series);
        const TFitResult* result = fit.Result();
        if (!result || fit.IsStale() || !fit.FitError().empty())
            return m_state->setText(QString::fromStdString(fit.FitError().empty() ? "The fit was cancelled."
                                                                                  : fit.FitError() + "."));
        m_state->setText(
            QStringLiteral("%1 fitted: %2, R² = %3. The figures are on the page Curve Fitting of "
                           "the data editor.")
                .arg(starts.size() == 1 ? QStringLiteral("1 peak")
                                        : QStringLiteral("%1 peaks").arg(starts.size()),
                     QString::fromStdString(TextOf(result->End)),
                     QString::fromStdString(FormatGeneral(result->RSquared, kPeakDigits))));
    });
}

void ShowPeaksOf(TSeries& series, QWidget* window) {
    if (ReadEveryRow(series, window)) TPeaksDialog(series, window).exec();
}

} // namespace lumoplot
