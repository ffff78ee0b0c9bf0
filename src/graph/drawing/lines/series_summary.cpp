#include "graph/drawing/lines/series_summary.h"

#include <algorithm>
#include <cmath>
#include <list>

namespace lumoplot {
namespace {

constexpr int kWorthSummarising = 8192; // points
constexpr std::size_t kMostBytes = 64 << 20;
// A pixel column holds few points of a data set of less than these many: their groups are smaller.
constexpr std::int64_t kMany = 300000;
constexpr std::size_t kSmallGroup = 16;

TPointGroup GroupOf(const TSeries& series, std::span<const double> x, std::span<const double> y) {
    TPointGroup group{};
    group.FirstX = x.front();
    group.LastX = x.back();
    group.FirstY = group.LowY = group.HighY = series.CorrectedY(x.front(), y.front());
    group.LastY = series.CorrectedY(x.back(), y.back());
    group.Count = static_cast<std::uint8_t>(x.size());
    double before = x.front();
    double notFinite = 0; // becomes not-a-number with the first Y that is infinite or not a number
    bool ascends = true;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double corrected = series.CorrectedY(x[i], y[i]);
        ascends &= x[i] >= before;
        notFinite += corrected - corrected;
        before = x[i];
        if (corrected < group.LowY) {
            group.LowY = corrected;
            group.LowPlace = static_cast<std::uint8_t>(i);
        }
        if (corrected > group.HighY) {
            group.HighY = corrected;
            group.HighPlace = static_cast<std::uint8_t>(i);
        }
    }
    group.IsRegular = ascends && notFinite == 0;
    return group;
}

struct TKeptSummary {
    std::uint64_t Stamp;
    std::shared_ptr<const TSeriesSummary> Summary;
};

// The one used last comes first.
std::list<TKeptSummary>& KeptSummaries() {
    static std::list<TKeptSummary> kept;
    return kept;
}

void DropTheOldest() {
    std::size_t bytes = 0;
    auto& kept = KeptSummaries();
    for (auto entry = kept.begin(); entry != kept.end();) {
        bytes += entry->Summary->ByteCount();
        const bool stays = bytes <= kMostBytes || entry == kept.begin();
        entry = stays ? std::next(entry) : kept.erase(entry);
    }
}

} // namespace

TSeriesSummary::TSeriesSummary(const TSeries& series) {
    const TPointChain& points = series.Points();
    m_starts.reserve(points.BlockCount() + 1);
    const std::size_t groupSize = points.Count() < kMany ? kSmallGroup : kGroupSize;
    m_groups.reserve(static_cast<std::size_t>(points.Count()) / groupSize + points.BlockCount());
    for (std::size_t block = 0; block < points.BlockCount(); ++block) {
        m_starts.push_back(m_groups.size());
        const TPointSpans spans = points.Block(block);
        for (std::size_t place = 0; place < spans.X.size(); place += groupSize) {
            const std::size_t count = std::min(groupSize, spans.X.size() - place);
            m_groups.push_back(GroupOf(series, spans.X.subspan(place, count), spans.Y.subspan(place, count)));
        }
    }
    m_starts.push_back(m_groups.size());
}

std::shared_ptr<const TSeriesSummary> SummaryOf(const TSeries& series) {
    if (series.Count() < kWorthSummarising) return nullptr;
    auto& kept = KeptSummaries();
    const auto found = std::ranges::find(kept, series.DataStamp(), &TKeptSummary::Stamp);
    if (found != kept.end()) {
        kept.splice(kept.begin(), kept, found);
    } else {
        kept.push_front({series.DataStamp(), std::make_shared<const TSeriesSummary>(series)});
        DropTheOldest();
    }
    return kept.front().Summary;
}

} // namespace lumoplot
