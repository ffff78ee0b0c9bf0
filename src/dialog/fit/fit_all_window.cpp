#include "dialog/fit/fit_all_window.h"

#include "data/series/plotted_values.h"
#include "dialog/fit/bar_progress.h"
#include "dialog/fit/result_tables.h"
#include "fit/definition/fit_result.h"
#include "fit/functions/start_values.h"
#include "graph/fitting/series_fitting.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "support/update_hold.h"
#include "ui_fit_all_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kBatchDigits = 6;
constexpr int kBatchErrorDigits = 3;

/// The position in the list of data sets, whatever a fit reports.
class TListProgress final : public TProgress {
public:
    explicit TListProgress(TProgress& outer) : m_outer(outer) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override { return m_outer.StepTo(Done); }
    std::int64_t Done = 0;

private:
    TProgress& m_outer;
};

} // namespace

TFitAllWindow::TFitAllWindow(TxyGraph& graph, TSeries& pattern, QWidget* parent)
    : QDialog(parent), m_graph(graph), m_ui(std::make_unique<Ui::TFitAllWindow>()) {
    m_ui->setupUi(this);
    m_pattern.Assign(&pattern.CurveFit());
    for (TSeries* series : graph.Series()) {
        m_sets.push_back({series, nullptr, {}});
        m_checks.push_back(series->Count() > 0 ? Qt::Checked : Qt::Unchecked);
    }
    m_ui->lblAbout->setText(QStringLiteral("y = %1, from the start values of %2.")
                                .arg(QString::fromStdString(m_pattern.Expression()),
                                     QString::fromStdString(pattern.SeriesName())));
    connect(m_ui->btnRun, &QPushButton::clicked, this, [this] { Guarded([&] { Run(); }); });
    connect(m_ui->btnAll, &QPushButton::clicked, this, [this] { CheckAll(Qt::Checked); });
    connect(m_ui->btnNone, &QPushButton::clicked, this, [this] { CheckAll(Qt::Unchecked); });
    connect(m_ui->t_Results, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
        if (item->column() == 0) m_checks[static_cast<std::size_t>(item->row())] = item->checkState();
    });
    const auto closeWith = [this](TWish wish) {
        m_wish = wish;
        accept();
    };
    connect(m_ui->btnKeep, &QPushButton::clicked, this, [closeWith] { closeWith(TWish::KeepFits); });
    connect(m_ui->btnMakeSets, &QPushButton::clicked, this, [closeWith] { closeWith(TWish::MakeDataSets); });
    connect(m_ui->btnCopyTable, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(TableTextOf(*m_ui->t_Results)); });
    connect(m_ui->btnClose, &QPushButton::clicked, this, &QDialog::reject);
    m_ui->btnRun->setDefault(true);
    m_ui->btnRun->setFocus();
    ShowResults();
}

TFitAllWindow::~TFitAllWindow() = default;

void TFitAllWindow::CheckAll(Qt::CheckState state) {
    std::ranges::fill(m_checks, state);
    ShowResults();
}

bool TFitAllWindow::IsChecked(std::size_t row) const {
    return m_checks[row] == Qt::Checked;
}

void TFitAllWindow::Run() {
    {
        TBarProgress bar(*m_ui->bar, *m_ui->btnStop,
                         {m_ui->btnRun, m_ui->btnAll, m_ui->btnNone, m_ui->cb_FindStart, m_ui->t_Results,
                          m_ui->btnKeep, m_ui->btnMakeSets, m_ui->btnClose});
        bar.Begin("Fitting....", 0, static_cast<std::int64_t>(m_sets.size()));
        TListProgress progress(bar);
        for (std::size_t row = 0; row < m_sets.size() && !bar.WasCancelled(); ++row, ++progress.Done)
            if (IsChecked(row)) RunOne(m_sets[row], progress);
    }
    ShowResults();
    m_ui->t_Results->setFocus();
}

void TFitAllWindow::RunOne(TFitOfSet& one, TProgress& progress) {
    one.Trouble.clear();
    one.Fit = std::make_unique<TCurFit>();
    one.Fit->Assign(&m_pattern);
    try {
        ReadRowsForResults(*one.Series);
        const TPlottedValues values = PlottedValues(*one.Series);
        TFitRun run;
        run.Progress = &progress;
        if (m_ui->cb_FindStart->isChecked()) FindStartValues(*one.Fit, values.X, values.Y, run);
        RunFit(*one.Fit, values.X, values.Y, run);
    } catch (const ELumoError& error) {
        one.Trouble = error.what();
    }
}

std::vector<std::string> TFitAllWindow::RowOf(const TFitOfSet& one) const {
    std::vector<std::string> row = {one.Series->SeriesName(), std::to_string(one.Series->Count())};
    const TFitResult* result = one.IsPossible() ? one.Fit->Result() : nullptr;
    row.push_back(!one.Trouble.empty() ? one.Trouble : result ? TextOf(result->End) : "");
    std::size_t place = 0;
    for (int i = 1; i <= m_pattern.NParams(); ++i) {
        if (!m_pattern.Parameter(i)->Vary()) continue;
        const double error = result ? result->StandardError(place++) : NAN;
        row.push_back(result ? FormatGeneral(one.Fit->Parameter(i)->Value(), kBatchDigits) : "");
        row.push_back(std::isfinite(error) ? FormatGeneral(error, kBatchErrorDigits) : "");
    }
    row.push_back(result && std::isfinite(result->RSquared) ? FormatGeneral(result->RSquared, kBatchDigits)
                                                            : "");
    return row;
}

void TFitAllWindow::ShowResults() {
    std::vector<std::string> head = {"Data set", "Points", "Fit"};
    for (int i = 1; i <= m_pattern.NParams(); ++i) {
        if (!m_pattern.Parameter(i)->Vary()) continue;
        head.push_back(m_pattern.Parameter(i)->Name());
        head.push_back("± " + m_pattern.Parameter(i)->Name());
    }
    head.push_back("R²");
    std::vector<std::vector<std::string>> rows = {head};
    for (const TFitOfSet& one : m_sets) rows.push_back(RowOf(one));
    const QSignalBlocker quiet(m_ui->t_Results);
    ShowRows(*m_ui->t_Results, rows);
    for (int row = 0; row < m_ui->t_Results->rowCount(); ++row) {
        QTableWidgetItem* item = m_ui->t_Results->item(row, 0);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(m_checks[static_cast<std::size_t>(row)]);
    }
    m_ui->t_Results->resizeColumnToContents(0);
    const bool hasFits = std::ranges::any_of(m_sets, &TFitOfSet::IsPossible);
    m_ui->btnKeep->setEnabled(hasFits);
    m_ui->btnMakeSets->setEnabled(hasFits);
}

void TFitAllWindow::KeepFits() {
    for (const TFitOfSet& one : m_sets) {
        if (!one.IsPossible()) continue;
        const TUpdateHold hold(*one.Series);
        TCurFit& fit = one.Series->CurveFit();
        fit.Assign(one.Fit.get());
        fit.SetStatus(TFitStatus::FinalResult);
        fit.RestoreRunState(one.Fit->RunState());
    }
}

void TFitAllWindow::MakeDataSets() {
    for (int i = 1; i <= m_pattern.NParams(); ++i) {
        if (!m_pattern.Parameter(i)->Vary()) continue;
        TSeries& made = *m_graph.FindSeries(m_graph.AddSeries());
        const TUpdateHold hold(made);
        made.SetSeriesName(m_pattern.Parameter(i)->Name() + " of " + std::to_string(m_sets.size()) +
                           " data sets");
        for (std::size_t row = 0; row < m_sets.size(); ++row)
            if (m_sets[row].IsPossible())
                made.AddPoint(static_cast<double>(row + 1), m_sets[row].Fit->Parameter(i)->Value());
    }
}

} // namespace lumoplot
