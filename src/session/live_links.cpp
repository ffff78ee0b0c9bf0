#include "session/live_links.h"

#include "graph/model/child_graph.h"
#include "graph/model/graph.h"
#include "session/graph_session.h"
#include "session/link_feed.h"
#include "support/errors.h"
#include "support/message_sink.h"
#include "support/message_text.h"

#include <algorithm>

namespace lumoplot {

using namespace std::chrono_literals;

namespace {

void AddSeriesOf(TxyGraph& graph, std::vector<TSeries*>& all) {
    for (TSeries* series : graph.Series()) all.push_back(series);
    for (TxyChildGr* panel : graph.ChildGraphs()) AddSeriesOf(*panel, all);
}

} // namespace

class TLiveLinks::TFeed : public TLinkFeed {
public:
    using TLinkFeed::TLinkFeed;
    bool IsOfPanel = false; ///< begins anew whenever the panel comes back
};

TLiveLinks::TLiveLinks(TGraphSession& session, QObject* parent) : QObject(parent), m_session(session) {
    m_timer.setInterval(kFrameMs);
    connect(&m_timer, &QTimer::timeout, this, &TLiveLinks::Poll);
    connect(&m_session, &TGraphSession::PutBack, this, [this] {
        for (const auto& feed : m_feeds) feed->PointsPutBack();
        Renew();
    });
}

TLiveLinks::~TLiveLinks() = default;

void TLiveLinks::Start(TSeries& series) {
    Drop(series);
    if (series.DataSourceInfo().Kind() != TSourceKind::Link) return;
    try {
        m_feeds.push_back(std::make_unique<TFeed>(m_lastFeedId + 1, series));
        series.DataSourceInfo().SetFeedId(++m_lastFeedId);
    } catch (const ELumoError& error) {
        ShowMessage(error.what(), TMessageKind::Error);
    }
    if (IsFollowing()) m_timer.start();
    ShowStatus();
}

void TLiveLinks::StartAll() {
    for (TSeries* series : AllSeries()) Start(*series);
}

std::vector<TSeries*> TLiveLinks::AllSeries() const {
    std::vector<TSeries*> all;
    AddSeriesOf(m_session.Graph(), all);
    return all;
}

void TLiveLinks::Stop() {
    m_timer.stop();
    for (const auto& feed : m_feeds)
        if (TSeries* series = SeriesOf(*feed)) series->DataSourceInfo().SetFeedId(0);
    m_feeds.clear();
    m_isPaused = false;
    ShowStatus();
}

void TLiveLinks::SetPaused(bool value) {
    m_isPaused = value;
    ShowStatus();
}

TSeries* TLiveLinks::SeriesOf(const TFeed& feed) const {
    const auto all = AllSeries();
    const auto found = std::ranges::find_if(
        all, [&](const TSeries* series) { return series->DataSourceInfo().FeedId() == feed.Id(); });
    return found == all.end() ? nullptr : *found;
}

void TLiveLinks::Drop(TSeries& series) {
    std::erase_if(m_feeds, [&](const auto& feed) { return SeriesOf(*feed) == &series; });
    series.DataSourceInfo().SetFeedId(0);
}

/// A data set that is gone may come back by undo or redo, so its link waits.
void TLiveLinks::Renew() {
    for (TSeries* series : AllSeries()) {
        const std::uint64_t id = series->DataSourceInfo().FeedId();
        const auto feed =
            std::ranges::find_if(m_feeds, [id](const auto& other) { return other->Id() == id; });
        if (feed == m_feeds.end())
            series->DataSourceInfo().SetFeedId(0);
        else if (!(*feed)->IsFor(*series))
            Start(*series);
    }
    std::erase_if(m_feeds, [this](const auto& feed) { return feed->IsOfPanel && !SeriesOf(*feed); });
    for (TxyChildGr* panel : m_session.Graph().ChildGraphs()) FollowIn(*panel);
    ShowStatus();
}

/// A panel has copies of what is followed, or has taken it over.
void TLiveLinks::FollowIn(TxyGraph& panel) {
    std::vector<TSeries*> all;
    AddSeriesOf(panel, all);
    for (TSeries* series : all) {
        if (series->DataSourceInfo().FeedId() != 0) continue;
        const auto alike =
            std::ranges::find_if(m_feeds, [&](const auto& feed) { return feed->IsFor(*series); });
        if (alike == m_feeds.end()) continue;
        if ((*alike)->Link().Place().CanBeReadAgain()) {
            Start(*series);
            m_feeds.back()->IsOfPanel = m_feeds.back()->Id() == series->DataSourceInfo().FeedId();
        } else if (!SeriesOf(**alike)) {
            series->DataSourceInfo().SetFeedId((*alike)->Id());
            (*alike)->PointsPutBack();
        }
    }
}

void TLiveLinks::Poll() {
    if (m_session.IsStepOpen()) return;
    const auto until = TLink::TClock::now() + std::chrono::milliseconds(kWorkMs);
    bool hasFed = false;
    for (std::size_t i = 0; i < m_feeds.size() && !m_isPaused; ++i) {
        TFeed& feed = *m_feeds[(m_first + i) % m_feeds.size()];
        TSeries* series = SeriesOf(feed);
        if (!series || !feed.Feed(*series, until)) continue;
        hasFed = true;
        m_session.Fed(feed.Link().Place().CanBeReadAgain() ? TFedRows::CanBeReadAgain
                                                           : TFedRows::GoneUnlessSaved);
    }
    ++m_first;
    ShowStatus();
    if (hasFed) Q_EMIT Fed();
}

bool TLiveLinks::HasTrouble() const {
    return std::ranges::any_of(m_feeds, [](const auto& feed) { return !feed->Link().Trouble().empty(); });
}

/// Of the first link that has trouble, or else of the first one.
void TLiveLinks::ShowStatus() {
    std::string status;
    const auto troubled =
        std::ranges::find_if(m_feeds, [](const auto& feed) { return !feed->Link().Trouble().empty(); });
    if (!m_feeds.empty()) {
        const TLinkFeed& feed = troubled == m_feeds.end() ? *m_feeds.front() : **troubled;
        status = m_isPaused ? "Paused: " + LinkName(feed.Link().Place()) : feed.Status();
        if (m_feeds.size() > 1) status += " (" + std::to_string(m_feeds.size()) + " links)";
    }
    status = ShownLine(status);
    if (status == m_status) return;
    m_status = status;
    Q_EMIT StatusChanged();
}

} // namespace lumoplot
