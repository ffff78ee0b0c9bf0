#include "dialog/fit/compare_window.h"

#include "controls/texts.h"
#include "dialog/fit/bar_progress.h"
#include "dialog/fit/result_tables.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "ui_compare_window.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kComparedDigits = 6;
constexpr int kTimeDigits = 3;
constexpr std::array kComparedProcedures = {"Maximum Gradient (Powell)", "Downhill Simplex",
                                            "Conjugate Gradient", "Variable Metric (Newton)"};

using TRunList = std::vector<const TComparedRun*>;

double MedianOf(TRunList runs, const auto& figure) {
    if (runs.empty()) return NAN;
    std::vector<double> values;
    for (const TComparedRun* run : runs) values.push_back(figure(*run));
    std::ranges::sort(values);
    return values[values.size() / 2];
}

// "17 of 20"
std::string Share(std::size_t part, std::size_t all) {
    return std::to_string(part) + " of " + std::to_string(all);
}

std::string TimeText(double seconds) {
    return std::isnan(seconds) ? "" : FormatGeneral(1000 * seconds, kTimeDigits) + " ms";
}

} // namespace

TCompareWindow::TCompareWindow(const TSeries& series, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TCompareWindow>()), m_fitted(series) {
    m_ui->setupUi(this);
    OfferManual(*this, [] { return QStringLiteral("curve-fitting.md"); });
    resize(size().boundedTo(RoomOnScreen(*this)));
    setWindowTitle(TTexts::tr("Compare Procedures for %1").arg(QString::fromStdString(series.SeriesName())));
    connect(m_ui->btnRun, &QPushButton::clicked, this, [this] { Guarded([&] { Run(); }); });
    connect(m_ui->btnTake, &QPushButton::clicked, this, &TCompareWindow::Take);
    connect(m_ui->t_Minima, &QTableWidget::cellActivated, this, &TCompareWindow::Take);
    connect(m_ui->btnCopyTable, &QPushButton::clicked, this, &TCompareWindow::CopyTables);
    connect(m_ui->btnClose, &QPushButton::clicked, this, &QDialog::reject);
    m_ui->btnRun->setDefault(true);
    m_ui->btnRun->setFocus();
    ShowRuns();
}

TCompareWindow::~TCompareWindow() = default;

void TCompareWindow::Run() {
    {
        TBarProgress progress(*m_ui->bar, *m_ui->btnStop,
                              {m_ui->btnRun, m_ui->se_Starts, m_ui->btnTake, m_ui->btnClose});
        QElapsedTimer sinceShown;
        sinceShown.start();
        TCompareOptions options;
        options.Starts = m_ui->se_Starts->value();
        options.OnRun = [&](const std::vector<TComparedRun>& runs) {
            if (sinceShown.elapsed() < 200) return;
            m_runs = runs;
            ShowRuns();
            sinceShown.restart();
        };
        m_runs = CompareProcedures(m_fitted.Fit, m_fitted.Values.X, m_fitted.Values.Y,
                                   m_fitted.RunWith(progress), options);
    }
    ShowRuns();
    if (!m_minima.empty()) m_ui->t_Minima->setFocus();
}

void TCompareWindow::ShowRuns() {
    ShowProcedures();
    ShowMinima();
}

void TCompareWindow::ShowProcedures() {
    std::vector<std::vector<std::string>> rows = {
        {"Procedure", "Converged", "Best minimum", "Time", "Iterations", "Evaluations", "Not run"}};
    for (std::size_t i = 0; i < kComparedProcedures.size(); ++i) {
        TRunList all;
        for (const TComparedRun& run : m_runs)
            if (static_cast<std::size_t>(run.Procedure) == i) all.push_back(&run);
        const auto count = [&](const auto& holds) {
            return static_cast<std::size_t>(
                std::ranges::count_if(all, [&](const TComparedRun* run) { return holds(*run); }));
        };
        if (all.empty()) {
            rows.push_back({kComparedProcedures[i], "", "", "", "", "", ""});
            continue;
        }
        rows.push_back({kComparedProcedures[i],
                        Share(count([](const TComparedRun& run) { return run.Minimum > 0; }), all.size()),
                        Share(count([](const TComparedRun& run) { return run.Minimum == 1; }), all.size()),
                        TimeText(MedianOf(all, [](const TComparedRun& run) { return run.Seconds; })),
                        FormatGeneral(MedianOf(all, [](const TComparedRun& run) { return run.Iterations; }),
                                      kComparedDigits),
                        FormatGeneral(MedianOf(all, [](const TComparedRun& run) { return run.Evaluations; }),
                                      kComparedDigits),
                        std::to_string(count([](const TComparedRun& run) { return !run.Trouble.empty(); }))});
    }
    ShowRows(*m_ui->t_Procedures, rows);
    const char* const hints[] = {
        "",
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Runs that have converged"),
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Runs that end in the best minimum"),
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Median of the runs"),
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Median of the runs"),
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Of the equation over all points, median of the runs"),
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Runs that were not possible from their start")};
    for (int column = 0; column < m_ui->t_Procedures->columnCount(); ++column)
        m_ui->t_Procedures->horizontalHeaderItem(column)->setToolTip(
            *hints[column] ? TTexts::tr(hints[column]) : QString());
}

void TCompareWindow::ShowMinima() {
    std::vector<std::string> head = {"Minimum", "Runs", "Sum of squares"};
    for (int i = 1; i <= m_fitted.Fit.NParams(); ++i)
        if (m_fitted.Fit.Parameter(i)->Vary()) head.push_back(m_fitted.Fit.Parameter(i)->Name());
    std::vector<std::vector<std::string>> rows = {head};
    m_minima.clear();
    const auto hasEnd = [&](int number) {
        return [number](const TComparedRun& run) { return run.Minimum == number; };
    };
    for (int number = 1; std::ranges::any_of(m_runs, hasEnd(number)); ++number) {
        const TComparedRun* best = nullptr;
        for (const TComparedRun& run : m_runs)
            if (run.Minimum == number && (!best || run.Rss < best->Rss)) best = &run;
        m_minima.push_back(*best);
        std::vector<std::string> row = {
            std::to_string(number),
            Share(static_cast<std::size_t>(std::ranges::count_if(m_runs, hasEnd(number))), m_runs.size()),
            FormatGeneral(best->Rss, kComparedDigits)};
        for (const double value : best->Values) row.push_back(FormatGeneral(value, kComparedDigits));
        rows.push_back(std::move(row));
    }
    ShowRows(*m_ui->t_Minima, rows);
    m_ui->btnTake->setEnabled(!m_minima.empty());
    const std::size_t starts = m_runs.empty() ? 0 : static_cast<std::size_t>(m_runs.back().Start) + 1;
    QString text =
        TTexts::tr("All four procedures run from the values as they are and from scattered starts.");
    if (!m_runs.empty()) {
        std::vector<bool> reached(starts);
        for (const TComparedRun& run : m_runs)
            if (run.Minimum == 1) reached[static_cast<std::size_t>(run.Start)] = true;
        const auto count = static_cast<std::size_t>(std::ranges::count(reached, true));
        text = m_minima.empty()
                   ? TTexts::tr("No run has converged.")
                   : QString::fromStdString(Share(count, starts) +
                                            " starts end in the best minimum with at least one procedure.");
    }
    m_ui->lblMinima->setText(text);
}

void TCompareWindow::Take() {
    const int row = m_ui->t_Minima->currentRow();
    if (row < 0 || row >= static_cast<int>(m_minima.size())) return;
    m_taken = m_minima[static_cast<std::size_t>(row)];
    accept();
}

void TCompareWindow::CopyTables() {
    QGuiApplication::clipboard()->setText(TableTextOf(*m_ui->t_Procedures) + QLatin1Char('\n') +
                                          TableTextOf(*m_ui->t_Minima));
}

} // namespace lumoplot
