#include "data/filter/band_filter.h"

#include "data/filter/band_filter_kernel.h"
#include "data/series/plotted_values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <utility>

namespace lumoplot {
namespace {

constexpr std::size_t kPointsBetweenSteps = 16384;
/// Products between two looks at the progress: a few milliseconds.
constexpr std::size_t kProductsBetweenSteps = 4'000'000;
/// A sum that is smaller than its terms by this factor consists of their rounding.
constexpr double kRoundingOfSum = 1e-13;
constexpr double kLargest = std::numeric_limits<double>::max();

/// Collects points into blocks of N.
class TBlockAverager {
public:
    TBlockAverager(int pointCount, int countEvery) : m_countEvery(std::max(1, countEvery)) {
        m_samples.Values.reserve(static_cast<std::size_t>(pointCount / m_countEvery));
    }

    void Take(double x, double corrected) {
        if (!std::isfinite(corrected)) return;
        m_firstX = std::min(m_firstX, x);
        m_sum += corrected;
        if (++m_taken < m_countEvery) return;
        m_samples.Values.push_back(m_sum / m_countEvery);
        m_lastEnd = x;
        m_sum = 0;
        m_taken = 0;
    }

    TFilterSamples Finish() {
        const std::size_t count = m_samples.Values.size();
        if (count > 0) m_samples.FirstX = m_firstX;
        const double span = m_lastEnd - m_firstX;
        if (count > 1 && span > 0) m_samples.Step = span / static_cast<double>(count - 1);
        return std::move(m_samples);
    }

private:
    const int m_countEvery;
    TFilterSamples m_samples;
    double m_firstX = std::numeric_limits<double>::infinity();
    double m_lastEnd = 0;
    double m_sum = 0;
    int m_taken = 0;
};

/// Of a data set whose X are the values of another one: the points as they are plotted, from left to right.
std::vector<std::pair<double, double>> InOrderOfPlottedX(const TDataSeries& series) {
    TPlottedValues values = PlottedValues(series);
    values.KeepFiniteX();
    std::vector<std::pair<double, double>> points(values.X.size());
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = {values.X[i], values.Y[i]};
    std::ranges::stable_sort(points, {}, &std::pair<double, double>::first);
    return points;
}

/// Σ (value − zero) and Σ |value − zero|.
struct TSums {
    double Sum = 0;
    double Size = 0;

    void Take(std::span<const double> values, double zero) {
        for (const double value : values) {
            Sum += value - zero;
            Size += std::abs(value - zero);
        }
    }
    bool IsZero() const { return !(std::abs(Sum) > kRoundingOfSum * Size); }
};

/// One run of the filter over samples that are long enough for its response.
class TFilterRun {
public:
    TFilterRun(const TFilterSamples& samples, const TBandFilterSettings& settings, TProgress& progress)
        : m_samples(samples), m_settings(settings), m_progress(progress),
          m_reach(static_cast<std::size_t>(settings.ResponseWidth)), m_blockSize(settings.CountEvery) {}

    TFilteredPoints Run(const TMergeRule& rule) {
        if (!(m_samples.Step > 0)) return {};
        if (!Convolve()) return {TFilterOutcome::Cancelled, {}};
        return FindScale() ? WriteBack(rule) : TFilteredPoints();
    }

private:
    bool Convolve() {
        std::vector<double> half = ImpulseResponse(m_settings, m_samples.Step);
        for (double& value : half) value *= m_samples.Step;
        const std::span<const double> in = m_samples.Values;
        const std::size_t outputs = in.size() - 2 * m_reach;
        const std::size_t atOnce = std::max<std::size_t>(64, kProductsBetweenSteps / (m_reach + 1));
        m_output.reserve(outputs);
        Begin();
        while (m_output.size() < outputs) {
            const std::size_t from = m_output.size();
            const std::size_t count = std::min(atOnce, outputs - from);
            m_output.resize(from + count);
            const std::span<double> out = std::span(m_output).subspan(from);
            ConvolveSymmetric(half, in.subspan(from, count + 2 * m_reach), out);
            m_sumsIn.Take(in.subspan(from, count), m_settings.NormZero);
            m_sumsOut.Take(out, m_settings.NormZero);
            if (!StepTo(from + count)) return false;
        }
        m_sumsIn.Take(in.subspan(outputs), m_settings.NormZero);
        return true;
    }

    bool FindScale() {
        if (!m_settings.Normalize) return true;
        m_scale = m_sumsIn.Sum / m_sumsOut.Sum;
        return !m_sumsOut.IsZero() && std::isfinite(m_scale);
    }

    TFilteredPoints WriteBack(const TMergeRule& rule) {
        TFilteredPoints result;
        Begin();
        const std::size_t samplesAtOnce =
            std::max<std::size_t>(1, kPointsBetweenSteps / static_cast<std::size_t>(m_blockSize));
        for (std::size_t i = 0; i + 1 < m_output.size(); i += samplesAtOnce) {
            if (!Expand(i, std::min(i + samplesAtOnce, m_output.size() - 1))) return {};
            if (!result.Points.AddAll(m_x, m_y, rule)) return {};
            if (!StepTo(i)) return {TFilterOutcome::Cancelled, {}};
        }
        result.Outcome = TFilterOutcome::Filtered;
        return result;
    }

    /// The points from the outputs `from` to before `to`, each joined to the next one by a straight line.
    /// False when one is not finite.
    bool Expand(std::size_t from, std::size_t to) {
        const double dt = m_samples.Step;
        const double shift = static_cast<double>(m_reach) * dt;
        const auto blockSize = static_cast<std::size_t>(m_blockSize);
        m_x.resize((to - from) * blockSize);
        m_y.resize(m_x.size());
        bool isFinite = true;
        for (std::size_t s = 0; s < blockSize; ++s) {
            const double part = static_cast<double>(s);
            const double offset = part * dt / m_blockSize;
            for (std::size_t i = from, place = s; i < to; ++i, place += blockSize) {
                const double rise = m_output[i + 1] - m_output[i];
                const double x =
                    static_cast<double>(i + 2 * m_reach) * dt + m_samples.FirstX + offset - shift;
                const double y = (m_output[i] + part * rise / m_blockSize) * m_scale;
                m_x[place] = x;
                m_y[place] = y;
                isFinite &= std::abs(x) <= kLargest && std::abs(y) <= kLargest;
            }
        }
        return isFinite;
    }

    // Positions are points of the data set, of which a sample stands for N.
    void Begin() {
        const auto points = static_cast<std::int64_t>(m_samples.Values.size()) * m_blockSize;
        m_progress.Begin("Filtering...", 1, points);
    }
    bool StepTo(std::size_t output) {
        return m_progress.StepTo(static_cast<std::int64_t>(output + 2 * m_reach) * m_blockSize);
    }

    const TFilterSamples& m_samples;
    const TBandFilterSettings& m_settings;
    TProgress& m_progress;
    const std::size_t m_reach;
    const int m_blockSize;
    std::vector<double> m_output; ///< of the samples from 2M on
    TSums m_sumsIn;
    TSums m_sumsOut;
    double m_scale = 1;
    std::vector<double> m_x;
    std::vector<double> m_y;
};

} // namespace

std::optional<TFilterSamples> SampleBlocks(const TDataSeries& series, int countEvery, TProgress& progress) {
    progress.Begin("Filling Filter Vector...", 1, series.Count());
    TBlockAverager averager(series.Count(), countEvery);
    if (series.XSource()) {
        for (const auto& [x, y] : InOrderOfPlottedX(series)) averager.Take(x, y);
        return averager.Finish();
    }
    const TPointChain& points = series.Points();
    std::size_t done = 0;
    std::size_t nextStep = kPointsBetweenSteps;
    for (std::size_t i = 0; i < points.BlockCount(); ++i) {
        const TPointSpans block = points.Block(i);
        for (std::size_t j = 0; j < block.X.size(); ++j)
            averager.Take(block.X[j], series.CorrectedY(block.X[j], block.Y[j]));
        done += block.X.size();
        if (done < nextStep) continue;
        nextStep = done + kPointsBetweenSteps;
        if (!progress.StepTo(static_cast<std::int64_t>(done))) return std::nullopt;
    }
    return averager.Finish();
}

std::vector<double> ImpulseResponse(const TBandFilterSettings& settings, double step) {
    using std::numbers::pi;
    const double halfBandwidth = (settings.HighFreq - settings.LowFreq) * 0.5;
    const double centre = (settings.HighFreq + settings.LowFreq) * 0.5;
    const bool isPass = settings.FilterType == TFilterType::BandPass;
    std::vector<double> response(static_cast<std::size_t>(settings.ResponseWidth) + 1);
    response[0] = isPass ? 4 * halfBandwidth : 1 / step - 4 * halfBandwidth;
    for (std::size_t m = 1; m < response.size(); ++m) {
        const double t = static_cast<double>(m) * step;
        const double pass =
            2 * std::sin(2 * pi * halfBandwidth * t) * std::cos(2 * pi * centre * t) / (pi * t);
        response[m] = isPass ? pass : -pass;
    }
    return response;
}

double NormalizingScale(const TFilterSamples& samples, const TBandFilterSettings& settings) {
    const std::vector<double> half = ImpulseResponse(settings, samples.Step);
    const std::span<const double> in = samples.Values;
    const std::size_t reach = half.size() - 1;
    const std::size_t outputs = in.size() - 2 * reach;
    // Each coefficient meets as many samples in a row as there are outputs, one further with each
    // coefficient.
    double sumOfRow = std::accumulate(in.begin(), in.begin() + static_cast<std::ptrdiff_t>(outputs), 0.0);
    double sumOut = 0;
    for (std::size_t k = 0; k <= 2 * reach; ++k) {
        sumOut += half[k < reach ? reach - k : k - reach] * sumOfRow;
        if (k < 2 * reach) sumOfRow += in[k + outputs] - in[k];
    }
    const double sumIn = std::accumulate(in.begin(), in.end(), 0.0);
    const double zero = settings.NormZero;
    return (sumIn - zero * static_cast<double>(in.size())) /
           (samples.Step * sumOut - zero * static_cast<double>(outputs));
}

TFilteredPoints FilterBand(const TDataSeries& series, const TBandFilterSettings& settings,
                           TProgress& progress) {
    const auto samples = SampleBlocks(series, settings.CountEvery, progress);
    if (!samples) return {TFilterOutcome::Cancelled, {}};
    if (samples->Values.empty()) return {};
    const bool isLongEnough =
        samples->Values.size() >= 2 * static_cast<std::size_t>(settings.ResponseWidth) + 2;
    if (!isLongEnough) return {TFilterOutcome::Filtered, {}};
    return TFilterRun(*samples, settings, progress).Run(series.MergeRule());
}

} // namespace lumoplot
