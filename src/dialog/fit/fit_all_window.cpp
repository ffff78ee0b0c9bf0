#include "dialog/fit/fit_all_window.h"

#include "controls/texts.h"
#include "dialog/fit/bar_progress.h"
#include "dialog/fit/result_tables.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "fit/definition/fit_result.h"
#include "fit/functions/start_values.h"
#include "graph/fitting/fit_all.h"
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
    OfferManual(*this, [] { return QStringLiteral("curve-fitting.md"); });
    resize(size().boundedTo(RoomOnScreen(*this)));
    m_pattern.Assign(&pattern.CurveFit());
    for (TSeries* series : graph.Series()) m_sets.push_back({series, series->Count() > 0});
    m_ui->lblAbout->setText(TTexts::tr("y = %1, from the start values of %2.")
                                .arg(QString::fromStdString(m_pattern.Expression()),
                                     QString::fromStdString(pattern.SeriesName())));
    connect(m_ui->btnRun, &QPushButton::clicked, this, [this] { Guarded([&] { Run(); }); });
    connect(m_ui->btnAll, &QPushButton::clicked, this, [this] { CheckAll(Qt::Checked); });
    connect(m_ui->btnNone, &QPushButton::clicked, this, [this] { CheckAll(Qt::Unchecked); });
    connect(m_ui->t_Results, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
        if (item->column() == 0)
            m_sets[static_cast<std::size_t>(item->row())].IsChecked = item->checkState() == Qt::Checked;
    });
    const auto closeWith = [this](TWish wish) {
        m_wish = wish;
        accept();
    };
    connect(m_ui->btnKeep, &QPushButton::clicked, this, [closeWith] { closeWith(TWish::KeepFits); });
    connect(m_ui->btnMakeSets, &QPushButton::clicked, this, [closeWith] { closeWith(TWish::MakeDataSets); });
    connect(m_ui->btnCopyTable, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(TableTextOf(*m_ui->t_Results)); });
    connect(m_ui->btnShare, &QPushButton::clicked, this, [this] {
        m_ui->e_Shared->setText(m_agreeing);
        m_ui->btnRun->setFocus();
    });
    connect(m_ui->btnClose, &QPushButton::clicked, this, &QDialog::reject);
    m_ui->btnRun->setDefault(true);
    m_ui->btnRun->setFocus();
    ShowResults();
}

TFitAllWindow::~TFitAllWindow() = default;

void TFitAllWindow::CheckAll(Qt::CheckState state) {
    for (TListedSet& set : m_sets) set.IsChecked = state == Qt::Checked;
    ShowResults();
}

void TFitAllWindow::Run() {
    {
        TBarProgress bar(*m_ui->bar, *m_ui->btnStop,
                         {m_ui->btnRun, m_ui->btnAll, m_ui->btnNone, m_ui->cb_FindStart, m_ui->e_Shared,
                          m_ui->t_Results, m_ui->btnKeep, m_ui->btnMakeSets, m_ui->btnClose});
        TakeValues();
        const std::vector<std::string> shared = SharedNames();
        m_areInCommon = !shared.empty();
        if (shared.empty()) {
            bar.Begin("Fitting....", 0, static_cast<std::int64_t>(m_sets.size()));
            TListProgress progress(bar);
            FitOneByOne(progress, progress.Done);
        } else {
            TFitRun run;
            run.Progress = &bar;
            FitInCommon(shared, run);
        }
    }
    ShowResults();
    m_ui->t_Results->setFocus();
}

void TFitAllWindow::TakeValues() {
    for (TListedSet& set : m_sets) {
        set.Found = {};
        if (!set.IsChecked) continue;
        ReadRowsForResults(*set.Series);
        set.Values = PlottedValues(*set.Series);
    }
}

std::vector<std::string> TFitAllWindow::SharedNames() const {
    std::vector<std::string> names;
    for (const QString& name : m_ui->e_Shared->text().split(QLatin1Char(','), Qt::SkipEmptyParts))
        if (!name.trimmed().isEmpty()) names.push_back(name.trimmed().toStdString());
    return names;
}

void TFitAllWindow::FitOneByOne(TProgress& progress, std::int64_t& done) {
    TFitRun run;
    run.Progress = &progress;
    for (TListedSet& set : m_sets) {
        if (!progress.StepTo(++done)) return;
        if (!set.IsChecked) continue;
        const TBatchData batch = {set.Series->SeriesName(), set.Values.X, set.Values.Y, set.Values.YErrors};
        TCurFit definition;
        definition.Assign(&m_pattern);
        try {
            if (m_ui->cb_FindStart->isChecked()) FindStartValues(definition, batch.X, batch.Y, run);
            std::vector<TBatchFit> found = FitEach(definition, std::span(&batch, 1), run);
            if (!found.empty()) set.Found = std::move(found.front());
        } catch (const ELumoError& error) {
            set.Found = {set.Series->SeriesName(), std::make_unique<TCurFit>(), error.what()};
            set.Found.Fit->Assign(&m_pattern);
        }
    }
}

void TFitAllWindow::FitInCommon(const std::vector<std::string>& shared, const TFitRun& run) {
    std::vector<TBatchData> batch;
    std::vector<TListedSet*> fitted;
    for (TListedSet& set : m_sets) {
        if (!set.IsChecked) continue;
        batch.push_back({set.Series->SeriesName(), set.Values.X, set.Values.Y, set.Values.YErrors});
        fitted.push_back(&set);
    }
    TGlobalFit found = FitTogether(m_pattern, batch, shared, run);
    for (std::size_t i = 0; i < found.Fits.size(); ++i) fitted[i]->Found = std::move(found.Fits[i]);
}

std::vector<std::string> TFitAllWindow::RowOf(const TListedSet& set) const {
    std::vector<std::string> row = {set.Series->SeriesName(), std::to_string(set.Series->Count())};
    const bool hasFit = set.HasFit();
    const TFitResult* result = hasFit ? set.Found.Fit->Result() : nullptr;
    row.push_back(!set.Found.Error.empty() ? set.Found.Error : result ? TextOf(result->End) : "");
    for (int i = 1; i <= m_pattern.NParams(); ++i) {
        if (!m_pattern.Parameter(i)->Vary()) continue;
        const double error = hasFit ? set.Found.Fit->Parameter(i)->FinalDeviation : 0;
        row.push_back(hasFit ? FormatGeneral(set.Found.Fit->Parameter(i)->Value(), kBatchDigits) : "");
        row.push_back(error > 0 ? FormatGeneral(error, kBatchErrorDigits) : "");
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
    for (const TListedSet& set : m_sets) rows.push_back(RowOf(set));
    const QSignalBlocker quiet(m_ui->t_Results);
    ShowRows(*m_ui->t_Results, rows);
    for (int row = 0; row < m_ui->t_Results->rowCount(); ++row) {
        QTableWidgetItem* item = m_ui->t_Results->item(row, 0);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(m_sets[static_cast<std::size_t>(row)].IsChecked ? Qt::Checked : Qt::Unchecked);
    }
    m_ui->t_Results->resizeColumnToContents(0);
    const bool hasFits = std::ranges::any_of(m_sets, &TListedSet::HasFit);
    ShowAgreements();
    m_ui->btnKeep->setEnabled(hasFits);
    m_ui->btnMakeSets->setEnabled(hasFits);
}

// Only of fits that could differ.
void TFitAllWindow::ShowAgreements() {
    std::vector<const TBatchFit*> fits;
    for (const TListedSet& set : m_sets)
        if (set.HasFit()) fits.push_back(&set.Found);
    std::vector<TParameterAgreement> agreements;
    if (!m_areInCommon) agreements = AgreementsOf(fits);
    const QString text = QString::fromStdString(AgreementText(agreements));
    QStringList names;
    for (const TParameterAgreement& agreement : agreements)
        if (agreement.Agrees()) names += QString::fromStdString(agreement.Name);
    m_agreeing = names.join(QStringLiteral(", "));
    m_ui->lblAgreement->setText(text);
    m_ui->lblAgreement->setVisible(!text.isEmpty());
    m_ui->btnShare->setVisible(!text.isEmpty());
}

void TFitAllWindow::KeepFits() {
    for (const TListedSet& set : m_sets) {
        if (!set.HasFit()) continue;
        const TUpdateHold hold(*set.Series);
        TCurFit& fit = set.Series->CurveFit();
        fit.Assign(set.Found.Fit.get());
        fit.SetStatus(TFitStatus::FinalResult);
        fit.RestoreRunState(set.Found.Fit->RunState());
    }
}

void TFitAllWindow::MakeDataSets() {
    std::vector<TBatchFit> fits;
    for (TListedSet& set : m_sets)
        if (set.Found.Fit) fits.push_back(std::move(set.Found));
    AddParameterDataSets(m_graph, fits);
}

} // namespace lumoplot
