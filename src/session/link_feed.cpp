#include "session/link_feed.h"

#include "graph/loading/date_axis.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_loading.h"
#include "graph/loading/x_axis_title.h"
#include "graph/model/holder.h"
#include "support/update_hold.h"

#include <algorithm>

namespace lumoplot {
namespace {

// Behind it the points are numbered anew, long before the Ids are used up.
constexpr std::int32_t kLastUsualId = 1 << 30;

TLinkPlace PlaceOf(const TSeries& series) {
    TLinkPlace place = ParseLink(series.DataSourceInfo().SourceName());
    if (place.kind == TLinkKind::File) place.name = SourceFileOf(series);
    return place;
}

// Other programs' items are split as the graph exchanges its data, unless the user has said how.
void SplitAsTheHolder(TFeedReading& reading, const TxyHolder& holder) {
    if (reading.info.TextSeparators().empty()) reading.info.SetTextSeparators(holder.TextSeparators());
    if (!reading.wishes.quotes) reading.wishes.quotes = holder.TextMarkers();
}

// What does not say how rows are read is left out.
TFeedReading ReadingOf(const TSeries& series) {
    TFeedReading reading{
        series.DataSourceInfo(), series.TextWishes(), {series.XColExpr(), series.YColExpr()}};
    reading.info.SetFeedId(0);
    reading.info.SetNeedsReload(false);
    reading.info.SetSamplingChosen(false);
    if (reading.info.AutoRowHitFreq()) reading.info.NoteRowSamplingFrequency(1);
    if (ParseLink(reading.info.SourceName()).IsDde()) SplitAsTheHolder(reading, *series.Graph().Holder());
    return reading;
}

TPointChain Renumbered(const TPointChain& points) {
    TPointChain renumbered;
    for (std::size_t i = 0; i < points.BlockCount(); ++i) {
        const TPointSpans run = points.Block(i);
        renumbered.AddAll(run.X, run.Y, {.DuplicatesAllowed = true}, run.YErrors);
    }
    return renumbered;
}

std::int32_t LowestId(const TPointChain& points) {
    std::int32_t lowest = points.LastId() + 1;
    for (std::size_t i = 0; i < points.BlockCount(); ++i)
        lowest = std::min(lowest, std::ranges::min(points.Block(i).Ids));
    return lowest;
}

std::chrono::seconds SecondsUntil(TLink::TClock::time_point time) {
    return std::chrono::ceil<std::chrono::seconds>(
        std::max(time - TLink::TClock::now(), TLink::TClock::duration::zero()));
}

} // namespace

TLinkFeed::TLinkFeed(std::uint64_t id, const TSeries& series)
    : m_id(id), m_link(PlaceOf(series), ReadingOf(series)), m_reading(ReadingOf(series)),
      m_limit(series.DataSourceInfo().LinkLimit()),
      m_kept(m_link.Place().CanBeReadAgain() ? 0 : series.LastId()) {
}

bool TLinkFeed::IsFor(const TSeries& series) const {
    return series.DataSourceInfo().Kind() == TSourceKind::Link && ReadingOf(series) == m_reading;
}

bool TLinkFeed::Feed(TSeries& series, TLink::TClock::time_point until) {
    TFedPoints fed;
    m_link.Poll(until, fed);
    if (!fed.IsEmpty()) {
        Put(series, fed);
        Note(series);
        return true;
    }
    if (m_arrivals.empty()) return false;
    const std::int32_t expired = ExpiredId(TLink::TClock::now());
    if (expired < std::max(m_oldest, 1)) return false;
    const TUpdateHold hold(series);
    TPointChain points = series.SwapPoints({});
    const bool isTrimmed = Trim(points, expired);
    series.SwapPoints(std::move(points));
    return isTrimmed;
}

void TLinkFeed::Put(TSeries& series, const TFedPoints& fed) {
    const TUpdateHold hold(series);
    TPointChain points = series.SwapPoints({});
    if (fed.isAnew && m_kept == 0) {
        points = TPointChain({}, points.LastId()); // Ids go on: those of steps mean what they meant
        m_arrivals.clear();
    } else if (fed.isAnew) {
        for (std::int32_t id = m_kept + 1; id <= points.LastId(); ++id) points.Erase(id);
    }
    if (points.LastId() > kLastUsualId) {
        points = Renumbered(points);
        m_arrivals.clear();
        m_kept = std::min(m_kept, std::int32_t{1});
        m_oldest = 0;
    }
    points.AddAll(fed.x, fed.y, series.MergeRule(), fed.yErrors);
    if (m_limit.seconds > 0) m_arrivals.push_back({TLink::TClock::now(), points.LastId()});
    Trim(points, ExpiredId(TLink::TClock::now()));
    series.SwapPoints(std::move(points));
}

// The Id up to which points are older than the limit lets them be; 0 when none is.
std::int32_t TLinkFeed::ExpiredId(TLink::TClock::time_point now) {
    if (m_limit.seconds <= 0) return 0;
    const auto age = std::chrono::duration<double>(m_limit.seconds);
    std::int32_t expired = 0;
    while (!m_arrivals.empty() && now - m_arrivals.front().time > age) {
        expired = m_arrivals.front().lastId;
        m_arrivals.pop_front();
    }
    return expired;
}

bool TLinkFeed::Trim(TPointChain& points, std::int32_t expired) {
    const int before = points.Count();
    if (m_oldest == 0) m_oldest = LowestId(points);
    for (; m_oldest <= expired; ++m_oldest) points.Erase(m_oldest);
    if (m_limit.rows > 0)
        for (; points.Count() > m_limit.rows; ++m_oldest) points.Erase(m_oldest);
    return points.Count() != before;
}

void TLinkFeed::Note(TSeries& series) {
    const TTextReport& report = m_link.Report();
    series.SetSourceRows({report.rowsChosen, report.rowsUsed});
    series.SetThinned(false);
    series.DataSourceInfo().SetNeedsReload(false);
    if (m_isShown || series.Count() == 0) return;
    m_isShown = true;
    if (series.SeriesFlag() && !report.yName.empty()) series.SetSeriesName(report.yName);
    ShowDatesOfX(series, report.readings.best.format);
    TakeXTitle(series, report.readings.best.format);
}

std::string TLinkFeed::Status() const {
    const std::string name = LinkName(m_link.Place());
    const TTextReport& report = m_link.Report();
    if (!m_link.Trouble().empty()) {
        const auto pause = SecondsUntil(m_link.NextTry()).count();
        return m_link.Trouble() + ". Trying again " +
               (pause > 0 ? "in " + std::to_string(pause) + " s" : std::string("now"));
    }
    std::string status = (m_link.HasEnded() ? "Ended: " : "Following ") + name;
    if (report.rowsChosen == 0) return status + ": no rows with numbers yet";
    status += ": " + Grouped(report.rowsUsed) + " rows";
    if (report.rowsSkipped > 0) status += ", " + Grouped(report.rowsSkipped) + " skipped";
    return status;
}

} // namespace lumoplot
