#include "data/analysis/slope_selection.h"

#include "data/analysis/inversions.h"
#include "data/analysis/regression_types.h"
#include "data/analysis/slope_points.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace lumoplot {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint64_t kMostListedPairs = 2'097'152;

// A rounded slope lies within 3 · 2^-53 of the exact one. A bound moved outwards by kMargin holds all slopes
// that round to it, with enough left over to tell that it does (kDoubt).
constexpr double kMargin = 0x1p-49;
constexpr double kDoubt = 0x1p-50;
constexpr double kSmallestMargin = 0x1p-900;
// An interval of this relative width cannot be narrowed by sampling.
constexpr double kNarrow = 0x1p-46;

constexpr int kMostNarrowings = 40;
constexpr std::int64_t kUsualSorts = 16; // of all points, until few pairs are left

double MarginAt(double slope) {
    return std::abs(slope) * kMargin + kSmallestMargin;
}

// Steele, Lea and Flood 2014.
class TSplitMix {
public:
    explicit TSplitMix(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t Below(std::uint64_t limit) {
        m_state += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = (m_state ^ (m_state >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return (mixed ^ (mixed >> 31)) % limit;
    }

private:
    std::uint64_t m_state;
};

// Doubles in their order as whole numbers, neighbours one apart.
std::int64_t OrdinalOf(double value) {
    const auto bits = std::bit_cast<std::int64_t>(value + 0.0);
    return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
}

double FromOrdinal(std::int64_t ordinal) {
    return std::bit_cast<double>(ordinal < 0 ? std::numeric_limits<std::int64_t>::min() - ordinal : ordinal);
}

// Collects the slopes of `picks` of `pairs` inversions, one at random from each of as many even shares.
class TSlopePicker {
public:
    TSlopePicker(const TSlopePoints& points, const std::vector<std::uint32_t>& order, std::uint64_t pairs,
                 std::uint64_t picks, TSplitMix& random)
        : m_points(points), m_order(order), m_pairs(pairs), m_picks(picks), m_random(random) {
        m_slopes.reserve(picks);
        Advance();
    }

    std::uint64_t Next() const { return m_next; }
    void Take(std::uint32_t greater, std::uint32_t lesser) {
        m_slopes.push_back(m_points.Slope(m_order[greater], m_order[lesser]));
        Advance();
    }
    std::vector<double> TakeSlopes() { return std::move(m_slopes); }

private:
    void Advance() {
        if (m_slopes.size() == m_picks) {
            m_next = TNoInversions::kNone;
            return;
        }
        const std::uint64_t share = m_slopes.size();
        const std::uint64_t begin = ShareBegin(share);
        m_next = begin + m_random.Below(ShareBegin(share + 1) - begin);
    }
    // share · pairs / picks without overflow
    std::uint64_t ShareBegin(std::uint64_t share) const {
        return m_pairs / m_picks * share + m_pairs % m_picks * share / m_picks;
    }

    const TSlopePoints& m_points;
    const std::vector<std::uint32_t>& m_order;
    std::uint64_t m_pairs;
    std::uint64_t m_picks;
    TSplitMix& m_random;
    std::uint64_t m_next = 0;
    std::vector<double> m_slopes;
};

// Counts the passes over all points.
class TPasses {
public:
    TPasses(TProgress* progress, std::size_t points)
        : m_progress(progress), m_usual(kUsualSorts * static_cast<std::int64_t>(std::bit_width(points))) {
        if (m_progress) m_progress->Begin("Finding the median slope...", 0, m_usual);
    }

    void operator()() {
        m_done = std::min(m_done + 1, m_usual);
        if (m_progress && !m_progress->StepTo(m_done)) throw ERegressionCancelled();
    }

private:
    TProgress* m_progress;
    std::int64_t m_usual;
    std::int64_t m_done = 0;
};

// A slope that bounds the search, the points in their order at it, and the pairs with smaller exact slopes.
struct TBound {
    double slope = 0;
    std::vector<std::uint32_t> order;
    std::uint64_t below = 0;
};

// Encloses the slope of a rank between two bounds and draws them together, until the pairs between them are
// few enough to be listed.
class TSlopeSelector {
public:
    TSlopeSelector(TSlopePoints& points, std::uint64_t pairs, const TSlopeSelectionOptions& options);
    double Select();

private:
    std::uint64_t Pairs() const { return m_upper.below - m_lower.below; }
    std::uint64_t RankBetween() const { return m_rank - m_lower.below; } // from 1
    void EncloseAll();
    bool IsNarrow() const;
    void Narrow();
    void MoveTo(TBound& bound, double slope);
    void Enclose(double slope);
    std::vector<double> PickSlopes(std::uint64_t picks);
    double ListedSlope();
    bool IsCertain(double slope) const;
    double BisectExactSlopes();

    TSlopePoints& m_points;
    std::uint64_t m_rank;
    std::uint64_t m_listed;
    TSplitMix m_random;
    TPasses m_passes;
    TBound m_lower; // fewer than m_rank slopes are below it
    TBound m_upper; // at least m_rank slopes are below it
    TBound m_spare;
    double m_guess = 0;
    std::vector<std::uint32_t> m_places;
    std::vector<std::uint32_t> m_sequence;
    std::vector<std::uint32_t> m_scratch;
};

TSlopeSelector::TSlopeSelector(TSlopePoints& points, std::uint64_t pairs,
                               const TSlopeSelectionOptions& options)
    : m_points(points), m_rank(std::max<std::uint64_t>(pairs / 2, 1)), m_random(options.seed),
      m_passes(options.progress, points.Count()) {
    constexpr std::uint64_t kListedPairsPerPoint = 8;
    constexpr std::uint64_t kFewPairs = 4096;
    m_listed = options.listedPairs != 0 ? options.listedPairs
                                        : std::max(kListedPairsPerPoint * points.Count(), kFewPairs);
}

// Rounding can leave a listed slope in doubt, very rarely: then another sample is tried, and up to
// kMostListedPairs are listed.
double TSlopeSelector::Select() {
    constexpr int kMostAttempts = 4;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        EncloseAll();
        for (int i = 0; Pairs() > m_listed && !IsNarrow() && i < kMostNarrowings; ++i) Narrow();
        m_listed = std::max(m_listed, kMostListedPairs);
        if (Pairs() > m_listed) break;
        const double slope = ListedSlope();
        if (IsCertain(slope)) return slope;
    }
    return BisectExactSlopes();
}

void TSlopeSelector::EncloseAll() {
    MoveTo(m_lower, -kInfinity);
    MoveTo(m_upper, kInfinity);
}

bool TSlopeSelector::IsNarrow() const {
    if (std::isinf(m_lower.slope) || std::isinf(m_upper.slope)) return false;
    const double largest = std::max(std::abs(m_lower.slope), std::abs(m_upper.slope));
    return m_upper.slope - m_lower.slope <= 4 * kSmallestMargin + largest * kNarrow;
}

// A sample of the slopes between the bounds tells about where the wanted one lies; three standard deviations
// of its rank in the sample to either side become the new bounds.
void TSlopeSelector::Narrow() {
    constexpr double kDeviations = 3;
    constexpr std::uint64_t kFewestPicks = 64;
    const std::uint64_t picks = std::min(std::max<std::uint64_t>(m_points.Count(), kFewestPicks), Pairs());
    const double fraction = static_cast<double>(RankBetween()) / static_cast<double>(Pairs());
    std::vector<double> slopes = PickSlopes(picks);
    const double sampled = static_cast<double>(slopes.size());
    const double spread = kDeviations * std::sqrt(sampled * fraction * (1 - fraction)) + 1;
    const auto at = [&](double position) {
        const double last = sampled - 1;
        const auto nth = slopes.begin() + static_cast<std::ptrdiff_t>(std::clamp(position, 0.0, last));
        std::nth_element(slopes.begin(), nth, slopes.end());
        return *nth;
    };
    const double middle = sampled * fraction;
    m_guess = at(middle);
    if (middle - spread >= 0) {
        const double low = at(middle - spread);
        Enclose(low - MarginAt(low));
    }
    if (middle + spread < sampled) {
        const double high = at(middle + spread);
        Enclose(high + MarginAt(high));
    }
}

// Makes the slope the lower or the upper bound, whichever it is.
void TSlopeSelector::Enclose(double slope) {
    if (!(slope > m_lower.slope && slope < m_upper.slope)) return;
    MoveTo(m_spare, slope);
    std::swap(m_spare, m_spare.below < m_rank ? m_lower : m_upper);
}

void TSlopeSelector::MoveTo(TBound& bound, double slope) {
    bound.slope = slope;
    m_points.OrderAt(slope, bound.order);
    m_sequence = bound.order;
    bound.below = SortPickingInversions(m_sequence, m_scratch, TNoInversions(), m_passes);
}

// The rounded slopes of a sample of the pairs between the bounds; of all of them when as many are asked for.
// Those pairs stand in opposite order at the two bounds.
std::vector<double> TSlopeSelector::PickSlopes(std::uint64_t picks) {
    m_places.resize(m_points.Count());
    for (std::size_t place = 0; place < m_places.size(); ++place)
        m_places[m_lower.order[place]] = static_cast<std::uint32_t>(place);
    m_sequence.resize(m_points.Count());
    std::transform(m_upper.order.begin(), m_upper.order.end(), m_sequence.begin(),
                   [&](std::uint32_t point) { return m_places[point]; });
    TSlopePicker picker(m_points, m_lower.order, Pairs(), picks, m_random);
    SortPickingInversions(m_sequence, m_scratch, picker, m_passes);
    return picker.TakeSlopes();
}

double TSlopeSelector::ListedSlope() {
    std::vector<double> slopes = PickSlopes(Pairs());
    const auto nth = slopes.begin() + static_cast<std::ptrdiff_t>(RankBetween() - 1);
    std::nth_element(slopes.begin(), nth, slopes.end());
    return *nth;
}

// Slopes outside the bounds may round past them; they cannot have rounded past a slope that is clear of both.
bool TSlopeSelector::IsCertain(double slope) const {
    constexpr double kUnderflow = 4 * std::numeric_limits<double>::denorm_min();
    const auto doubt = [](double bound) { return std::abs(bound) * kDoubt + kUnderflow; };
    const bool aboveLower = std::isinf(m_lower.slope) || slope >= m_lower.slope + doubt(m_lower.slope);
    const bool belowUpper = std::isinf(m_upper.slope) || slope <= m_upper.slope - doubt(m_upper.slope);
    return aboveLower && belowUpper;
}

// The largest double with fewer than m_rank exact slopes below it. Many equal slopes make it the guess, which
// is tried first.
double TSlopeSelector::BisectExactSlopes() {
    Enclose(m_guess);
    Enclose(std::nextafter(m_guess, kInfinity));
    for (;;) {
        const std::int64_t low = OrdinalOf(m_lower.slope);
        const std::int64_t high = OrdinalOf(m_upper.slope);
        const std::int64_t middle = std::midpoint(low, high);
        if (middle == low || middle == high) return m_lower.slope;
        Enclose(FromOrdinal(middle));
    }
}

} // namespace

std::optional<double> MedianSlope(std::span<const double> x, std::span<const double> y,
                                  const TSlopeSelectionOptions& options) {
    TSlopePoints points(x, y);
    const std::uint64_t pairs = points.PairCount();
    if (pairs == 0) return std::nullopt;
    const double slope = TSlopeSelector(points, pairs, options).Select();
    return points.InGivenUnits(slope) + 0.0; // no negative zero
}

} // namespace lumoplot
