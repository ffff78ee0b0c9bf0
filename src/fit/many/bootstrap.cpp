// The bootstrap (B. Efron, Ann. Statist. 7 (1979) 1-26): fits to resamples, on all cores.
#include "fit/many/fit_copy.h"
#include "fit/many/uncertainty.h"
#include "fit/procedures/variable_metric.h"
#include "fit/run/fit_judgement.h"
#include "fit/run/fit_statistics.h"
#include "support/workers.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <random>

namespace lumoplot {
namespace {

constexpr char kResamplesCaption[] = "Fitting Resamples....";
constexpr double kResampleTolerance = 1e-7;
constexpr int kMostResampleIterations = 100;
constexpr std::chrono::milliseconds kFirstPicture{100};
constexpr std::chrono::milliseconds kPictureTime{200};
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

/// Cancelled by any thread; that of the caller asks the user within a fit, too, as one may take long.
class TResampleProgress final : public TProgress {
public:
    TResampleProgress(std::atomic<bool>& isOver, std::function<bool()> goesOn)
        : m_isOver(isOver), m_goesOn(std::move(goesOn)) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override {
        if (!m_isOver && !m_goesOn()) m_isOver = true;
        return !m_isOver;
    }

private:
    std::atomic<bool>& m_isOver;
    std::function<bool()> m_goesOn;
};

/// What all resamples are drawn from.
struct TSample {
    explicit TSample(TFitCopy& copy, TResampling resampling) : Resampling(resampling), Points(copy.Points) {
        for (const TDBLParameter* parameter : copy.Varied) Start.push_back(parameter->Value());
        if (Points.Weights.empty()) Points.Weights.assign(Points.X.size(), 1);
        if (resampling != TResampling::Residuals) return;
        Residuals = ResidualsOf(copy.Fit, copy.Points);
        Fitted = Points.Y;
        for (std::size_t i = 0; i < Fitted.size(); ++i)
            if (Points.Weights[i] > 0) Fitted[i] -= Residuals[i] / Points.Weights[i];
        Inflate(static_cast<double>(copy.Varied.size()));
    }

    /// The resample of that number.
    TFitPoints Drawn(std::uint64_t seed) const {
        std::mt19937_64 random(seed);
        const std::size_t count = Points.X.size();
        TFitPoints drawn = Points;
        if (Resampling == TResampling::Residuals) {
            for (std::size_t i = 0; i < count; ++i)
                if (Points.Weights[i] > 0)
                    drawn.Y[i] = Fitted[i] + Residuals[random() % count] / Points.Weights[i];
            return drawn;
        }
        std::vector<int> times(count);
        for (std::size_t i = 0; i < count; ++i) ++times[random() % count];
        for (std::size_t i = 0; i < count; ++i) drawn.Weights[i] *= std::sqrt(times[i]);
        return drawn;
    }

    TResampling Resampling;
    TFitPoints Points;
    TVector Start;
    std::vector<double> Fitted;
    std::vector<double> Residuals; ///< weighted

private:
    // Residuals are smaller than errors by what the parameters take.
    void Inflate(double parameters) {
        const auto count = static_cast<double>(Residuals.size());
        double mean = 0;
        for (const double residual : Residuals) mean += residual / count;
        for (double& residual : Residuals)
            residual = (residual - mean) * std::sqrt(count / (count - parameters));
    }
};

class TBootstrapper {
public:
    TBootstrapper(const TFittedData& data, const TBootstrapOptions& options)
        : m_data(data), m_options(options), m_workers(ProcessorCount()) {
        m_copies.push_back(std::make_unique<TFitCopy>(data));
    }

    TBootstrap Run() {
        TProgress& progress = m_copies.front()->ProgressOf(m_data);
        progress.Begin(kResamplesCaption, 0, m_options.Resamples);
        bool wasCancelled = false;
        try {
            SetUp(progress);
            m_workers.Run(m_fits.size(), [&](std::size_t number, int worker) {
                if (worker == 0 && !Report(progress)) m_isOver = true;
                if (m_isOver) throw TFitCancelled();
                TResampleProgress own(m_isOver, [&] { return worker != 0 || Report(progress); });
                Fit(number, *m_copies[static_cast<std::size_t>(worker)], own);
            });
        } catch (const TFitCancelled&) {
            wasCancelled = true;
        }
        TBootstrap found = m_sample ? Gathered() : TBootstrap();
        found.WasCancelled = wasCancelled;
        return found;
    }

private:
    // With very many points it takes its time, too.
    void SetUp(TProgress& progress) {
        const auto check = [&] {
            if (!progress.StepTo(0)) throw TFitCancelled();
        };
        for (int i = 1; i < m_workers.Count(); ++i) {
            check();
            m_copies.push_back(std::make_unique<TFitCopy>(m_data));
        }
        check();
        m_fits.resize(static_cast<std::size_t>(m_options.Resamples));
        m_isDone = std::make_unique<std::atomic<bool>[]>(m_fits.size());
        m_sample.emplace(*m_copies.front(), m_options.Resampling);
    }

    // In the calling thread; false when the user has cancelled.
    bool Report(TProgress& progress) {
        const auto now = std::chrono::steady_clock::now();
        if (m_options.OnProgress && now >= m_nextPicture) {
            if (m_done > 0) m_options.OnProgress(Gathered());
            m_nextPicture = std::chrono::steady_clock::now() + kPictureTime;
        }
        return progress.StepTo(m_done);
    }

    void Fit(std::size_t number, TFitCopy& copy, TProgress& progress) {
        for (std::size_t i = 0; i < copy.Varied.size(); ++i) *copy.Varied[i]->ValueRef() = m_sample->Start[i];
        const TFitPoints points = m_sample->Drawn(m_options.Seed * 0x9E3779B97F4A7C15ull + number);
        TFitProblem problem(copy.Fit, copy.Varied, points, TLinearPart::Project, progress, {});
        problem.UseOneThread();
        problem.SetIterationLimit(kMostResampleIterations);
        TStop stop = TStop::Tolerance;
        if (problem.Size() > 0)
            stop = TVariableMetric().Minimise(problem, problem.Start(), kResampleTolerance);
        else
            problem.Value(problem.Start());
        problem.StoreBest();
        if (std::isfinite(problem.BestValue()) && stop != TStop::IterationLimit)
            for (const TDBLParameter* parameter : copy.Varied) m_fits[number].push_back(parameter->Value());
        m_isDone[number] = true;
        ++m_done;
    }

    TBootstrap Gathered() const {
        TBootstrap found;
        found.Values.resize(m_sample->Start.size());
        for (std::size_t number = 0; number < m_fits.size(); ++number) {
            if (!m_isDone[number]) continue;
            if (m_fits[number].empty()) ++found.Failed;
            for (std::size_t i = 0; i < m_fits[number].size(); ++i)
                found.Values[i].push_back(m_fits[number][i]);
        }
        for (const TVector& values : found.Values) Describe(values, found);
        return found;
    }

    void Describe(TVector values, TBootstrap& found) const {
        const std::size_t count = values.size();
        if (count < 2) {
            found.StandardErrors.push_back(kNoNumber);
            return found.Intervals.push_back({kNoNumber, kNoNumber});
        }
        double mean = 0;
        for (const double value : values) mean += value / static_cast<double>(count);
        double sum = 0;
        for (const double value : values) sum += (value - mean) * (value - mean);
        found.StandardErrors.push_back(std::sqrt(sum / static_cast<double>(count - 1)));
        std::ranges::sort(values);
        const double tail = Tail();
        found.Intervals.push_back({Quantile(values, tail), Quantile(values, 1 - tail)});
    }

    // Percentiles that are as far out as Student's t demands, not only as a normal number (T. C. Hesterberg,
    // The American Statistician 69 (2015) 371-386). Resampled points scatter too little, too.
    double Tail() const {
        const auto freedom = static_cast<double>(m_data.Fit.Result()->Quality.Freedom);
        const auto parameters = static_cast<double>(m_sample->Start.size());
        const double narrow =
            m_sample->Resampling == TResampling::Points ? std::sqrt((freedom + parameters) / freedom) : 1;
        return 0.5 * NormalProbability(narrow * StudentQuantile(m_data.Confidence, freedom));
    }

    static double Quantile(const TVector& sorted, double part) {
        const double place = part * static_cast<double>(sorted.size() - 1);
        const auto below = static_cast<std::size_t>(place);
        const std::size_t above = std::min(below + 1, sorted.size() - 1);
        return std::lerp(sorted[below], sorted[above], place - static_cast<double>(below));
    }

    const TFittedData& m_data;
    const TBootstrapOptions& m_options;
    TWorkers m_workers;
    std::vector<std::unique_ptr<TFitCopy>> m_copies; ///< one for each worker
    std::optional<TSample> m_sample;
    std::vector<TVector> m_fits; ///< empty for those without one
    std::unique_ptr<std::atomic<bool>[]> m_isDone;
    std::atomic<int> m_done = 0;
    std::atomic<bool> m_isOver = false;
    std::chrono::steady_clock::time_point m_nextPicture = std::chrono::steady_clock::now() + kFirstPicture;
};

} // namespace

TBootstrap BootstrapOf(const TFittedData& data, const TBootstrapOptions& options) {
    return TBootstrapper(data, options).Run();
}

} // namespace lumoplot
