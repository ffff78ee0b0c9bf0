#include "graph/fitting/series_fitting.h"

#include "data/series/plotted_values.h"
#include "data/series/regression_task.h"
#include "fit/run/curve_fitter.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_loading.h"
#include "graph/model/graph.h"
#include "support/message_sink.h"
#include "support/message_text.h"
#include "support/progress_maker.h"

#include <QElapsedTimer>
#include <QPointer>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr int kPatienceMs = 50; // a window waits again before it shows itself
constexpr std::size_t kLongestShownName = 60;

/// Asks for the progress of the windows only when the work takes long, and stops work whose graph has gone.
class TLateProgress final : public TProgress {
public:
    explicit TLateProgress(std::function<bool()> isWanted) : m_isWanted(std::move(isWanted)) {
        m_sinceStart.start();
    }

    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override {
        m_caption = caption;
        m_minimum = minimum;
        m_maximum = maximum;
        if (m_shown) m_shown->Begin(caption, minimum, maximum);
    }

    [[nodiscard]] bool StepTo(std::int64_t position) override {
        if (!m_isWanted()) return false;
        if (!m_shown && m_sinceStart.elapsed() < kPatienceMs) return true;
        if (!m_shown) {
            m_shown = MakeProgress();
            m_shown->Begin(m_caption, m_minimum, m_maximum);
        }
        return m_shown->StepTo(position) && m_isWanted();
    }

private:
    std::function<bool()> m_isWanted;
    QElapsedTimer m_sinceStart;
    std::unique_ptr<TProgress> m_shown;
    std::string m_caption;
    std::int64_t m_minimum = 0;
    std::int64_t m_maximum = 0;
};

class TSeriesFit {
public:
    explicit TSeriesFit(TSeries& series)
        : m_series(series), m_graph(&series.Graph()), m_values(PlottedValues(series)) {
        m_work.Assign(&series.CurveFit());
        m_values.KeepFiniteX();
    }

    void Run() {
        Fit().ClearStale();
        TLateProgress progress([this] { return IsWanted(); });
        TFitRun run{&progress, {}, TFitStarts::Offered};
        if (Fit().Status() == TFitStatus::EveryStep) run.OnIteration = [this] { ShowStep(); };
        try {
            TakeWeighting(run, m_work, m_values.YErrors);
            RunFit(m_work, m_values.X, m_values.Y, run);
            if (IsWanted()) Fit().TakeRun(m_work);
        } catch (const ELumoError& error) {
            if (IsWanted()) Fit().TakeFailure(error.what());
        }
    }

private:
    TCurFit& Fit() const { return m_series.CurveFit(); }

    bool IsThere() const {
        return m_graph &&
               std::ranges::any_of(m_graph->Series(), [this](const auto& s) { return s == &m_series; });
    }
    bool IsWanted() const { return IsThere() && !Fit().IsStale(); }

    void ShowStep() {
        if (!IsWanted()) return;
        Fit().TakeValues(m_work);
        m_graph->RequestRepaint(true);
        m_graph->repaint();
    }

    TSeries& m_series;
    QPointer<TxyGraph> m_graph;
    TCurFit m_work;
    TPlottedValues m_values;
};

// The robust line of a data set, which alone of the regressions may take long. It comes from copies: while
// the window of the progress is shown everything may happen to the data set.
class TRegressionRun {
public:
    explicit TRegressionRun(TSeries& series)
        : m_series(series), m_graph(&series.Graph()), m_stamp(series.DataStamp()), m_task(series) {}

    void Run() {
        TLateProgress progress([this] { return IsWanted(); });
        TRegressionResult result;
        std::string error;
        try {
            result = m_task.Run(&progress);
        } catch (const std::exception& fault) {
            error = fault.what();
        }
        if (!IsWanted()) return;
        m_series.TakeRegression(std::move(result), error);
    }

private:
    bool IsWanted() const {
        const auto isIt = [this](const TSeries* s) { return s == &m_series; };
        return m_graph && std::ranges::any_of(m_graph->Series(), isIt) && m_series.RegressionStale() &&
               m_series.DataStamp() == m_stamp && m_series.RegressionType() == TRegressionType::RobustLine;
    }

    TSeries& m_series;
    QPointer<TxyGraph> m_graph;
    std::uint64_t m_stamp;
    TRegressionTask m_task;
};

std::function<bool()> StillThere(const TSeries& series) {
    return [graph = QPointer<const TxyGraph>(&series.Graph()), wanted = &series] {
        return graph && std::ranges::any_of(graph->Series(), [&](const TSeries* s) { return s == wanted; });
    };
}

} // namespace

bool HasPendingFit(const TSeries& series) {
    return series.Active() && series.Count() > 0 && series.CurveFit().IsPending();
}

bool HasPendingResult(const TSeries& series) {
    return HasPendingFit(series) || series.WaitsForEveryRow();
}

void ReadRowsForResults(TSeries& series) {
    if (!series.WaitsForEveryRow()) return;
    series.NoteEveryRowTried();
    const std::string which = "Results of \"" + ShownLine(series.SeriesName(), kLongestShownName) +
                              "\" are worked out from what is " + RowsText(RowsOf(series)) + ": ";
    const auto isThere = StillThere(series);
    TLateProgress progress(isThere);
    try {
        if (LoadEveryRow(series, progress) || !isThere()) return;
        ShowMessage(which + "the reading was cancelled", TMessageKind::Warning);
    } catch (const std::exception& error) { // the host's functions may throw what they like
        ShowMessage(which + error.what(), TMessageKind::Warning);
    }
}

void RunPendingResult(TSeries& series) {
    const auto isThere = StillThere(series);
    ReadRowsForResults(series);
    if (isThere() && HasPendingFit(series)) RunPendingFit(series);
    if (!isThere() || !series.RegressionStale() || series.WaitsForEveryRow()) return;
    UpdateRegressionOf(series);
    if (isThere()) series.Graph().RequestRepaint(true);
}

void UpdateRegressionOf(TSeries& series) {
    if (series.RegressionStale() && series.RegressionType() == TRegressionType::RobustLine)
        TRegressionRun(series).Run();
    else
        series.UpdateRegression();
}

void RunPendingFit(TSeries& series) {
    const auto isThere = StillThere(series);
    ReadRowsForResults(series);
    if (isThere()) TSeriesFit(series).Run();
}

} // namespace lumoplot
