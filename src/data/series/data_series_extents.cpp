// The extents of a data series, the baseline that follows its lowest Y, and the texts and minima that the
// graph asks for.
#include "data/series/data_series.h"
#include "fit/definition/cur_fit.h"
#include "support/number_text.h"
#include "support/ranges.h"
#include "support/update_hold.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace lumoplot {

namespace {

/// Rounded to single precision; a number beyond its range becomes the nearest one that is not infinite and,
/// when positive, not 0.
double InSinglePrecision(double value) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    constexpr double kSmallest = std::numeric_limits<float>::denorm_min();
    if (value > 0 && value < kSmallest) return kSmallest;
    return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

/// General format with 4 digits, of the exponent too: "1.235E0010".
std::string LegendNumber(double value) {
    constexpr int kDigits = 4;
    std::string text = FormatGeneral(value, kDigits);
    const std::size_t exponent = text.find('E');
    if (exponent == std::string::npos) return text;
    const std::size_t digits = exponent + (text[exponent + 1] == '-' ? 2 : 1);
    text.insert(digits, kDigits - std::min<std::size_t>(kDigits, text.size() - digits), '0');
    return text;
}

/// Widens the range to the finite values. Four at a time: each comparison alone would wait for the one
/// before.
void Take(TExtent& range, std::span<const double> values) {
    constexpr std::size_t kAtOnce = 4;
    std::array<double, kAtOnce> least;
    std::array<double, kAtOnce> most;
    least.fill(range.Min);
    most.fill(range.Max);
    const std::size_t whole = values.size() / kAtOnce * kAtOnce;
    for (std::size_t i = 0; i < whole; i += kAtOnce)
        for (std::size_t k = 0; k < kAtOnce; ++k) {
            const double value = values[i + k];
            least[k] = value < least[k] ? value : least[k];
            most[k] = value > most[k] ? value : most[k];
        }
    TExtent all{std::ranges::min(least), std::ranges::max(most)};
    const bool areFinite = std::isfinite(all.Min) && std::isfinite(all.Max);
    if (areFinite) range = all;
    for (const double value : values.subspan(areFinite ? whole : 0)) range.Take(value);
}

double LargestIfPositive(double largest, double minimum) {
    return InSinglePrecision(largest > 0 ? largest : minimum);
}

} // namespace

TSeriesExtents TDataSeries::Extents() const {
    return {m_minX, m_maxX, m_minY, m_maxY, m_zeroValue, m_baseLineSlope, m_extentsStale, m_awaitsFiniteY};
}

void TDataSeries::RestoreExtents(const TSeriesExtents& extents) {
    m_minX = extents.MinX;
    m_maxX = extents.MaxX;
    m_minY = extents.MinY;
    m_maxY = extents.MaxY;
    m_zeroValue = extents.ZeroValue;
    m_baseLineSlope = extents.BaseLineSlope;
    m_extentsStale = extents.Stale;
    m_awaitsFiniteY = extents.AwaitsFiniteY;
}

void TDataSeries::StartExtents(double x, double y) {
    if (m_autoZero && std::isfinite(y)) {
        m_zeroValue = y + 0.0; // as SetBaseline does
        m_baseLineSlope = 0;
    }
    m_minX = m_maxX = x;
    m_minY = m_maxY = 0;
    m_awaitsFiniteY = true;
    m_extentsStale = false;
    WidenY(CorrectedY(x, y));
}

void TDataSeries::WidenExtents(double x, double y) {
    if (m_extentsStale) return;
    WidenY(CorrectedY(x, y));
    m_minX = std::min(m_minX, x);
    m_maxX = std::max(m_maxX, x);
}

void TDataSeries::WidenY(double corrected) {
    if (!std::isfinite(corrected)) return;
    m_minY = m_awaitsFiniteY ? corrected : std::min(m_minY, corrected);
    m_maxY = m_awaitsFiniteY ? corrected : std::max(m_maxY, corrected);
    m_awaitsFiniteY = false;
}

/// With AutoZero on, makes a Y below the baseline the new baseline; true when it did.
bool TDataSeries::LowerBaseline(double y) {
    if (!m_autoZero || !std::isfinite(y) || !(y < m_zeroValue || m_awaitsFiniteY)) return false;
    SetBaseline(y, 0);
    m_extentsStale = true;
    m_awaitsFiniteY = false;
    return true;
}

void TDataSeries::ApplyAutoZero() {
    if (!m_autoZero) return;
    TExtent range;
    for (std::size_t i = 0; i < m_points.BlockCount(); ++i) Take(range, m_points.Block(i).Y);
    if (range.IsEmpty()) return;
    SetBaseline(range.Min, 0);
}

void TDataSeries::RecalcExtents() {
    if (Count() == 0) return;
    const TUpdateHold hold(*this);
    ApplyAutoZero();
    TExtent rangeX;
    TExtent rangeY;
    std::vector<double> corrected;
    for (std::size_t i = 0; i < m_points.BlockCount(); ++i) {
        const TPointSpans block = m_points.Block(i);
        Take(rangeX, block.X);
        if (m_zeroValue == 0 && m_baseLineSlope == 0) {
            Take(rangeY, block.Y);
            continue;
        }
        corrected.resize(block.Y.size());
        for (std::size_t k = 0; k < corrected.size(); ++k) corrected[k] = CorrectedY(block.X[k], block.Y[k]);
        Take(rangeY, corrected);
    }
    m_minX = rangeX.Min;
    m_maxX = rangeX.Max;
    m_awaitsFiniteY = rangeY.IsEmpty();
    m_minY = m_awaitsFiniteY ? 0 : rangeY.Min;
    m_maxY = m_awaitsFiniteY ? 0 : rangeY.Max;
    m_extentsStale = false;
}

double TDataSeries::PositiveMinX() const {
    if (m_minX > 0) return m_minX;
    double largest = 0;
    for (std::size_t i = 0; i < m_points.BlockCount(); ++i)
        for (const double x : m_points.Block(i).X) largest = std::max(largest, x);
    return LargestIfPositive(largest, m_minX);
}

double TDataSeries::PositiveMinY() const {
    if (m_minY > 0) return m_minY;
    TExtent range;
    for (std::size_t i = 0; i < m_points.BlockCount(); ++i) {
        const TPointSpans block = m_points.Block(i);
        for (std::size_t k = 0; k < block.X.size(); ++k) range.Take(CorrectedY(block.X[k], block.Y[k]));
    }
    return LargestIfPositive(range.Max, m_minY);
}

std::string TDataSeries::LegendText() const {
    std::string shown;
    for (int i = 1; m_curveFit && i <= m_curveFit->NParams(); ++i) {
        const TDBLParameter& parameter = *m_curveFit->Parameter(i);
        if (!parameter.ShowInLegend) continue;
        shown += shown.empty() ? " (" : "; ";
        shown += parameter.Name() + "=" + LegendNumber(parameter.Value()) + " " + parameter.Units;
    }
    return m_seriesName + (shown.empty() ? shown : shown + ")");
}

} // namespace lumoplot
