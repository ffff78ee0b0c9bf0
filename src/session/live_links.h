// The links of a graph at work: what they bring becomes points of their data sets a frame at a time, while
// the user works on. It is no step of the session; while a step is open (a drag, the data editor) nothing is
// fed.
#pragma once

#include "support/export.h"

#include <QObject>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

class TGraphSession;
class TSeries;
class TxyGraph;

class XYGRAPH_EXPORT TLiveLinks : public QObject {
    Q_OBJECT

public:
    /// Between two frames, and how long one works at most.
    static constexpr int kFrameMs = 40;
    static constexpr int kWorkMs = 10;

    explicit TLiveLinks(TGraphSession& session, QObject* parent = nullptr);
    XYGRAPH_LOCAL ~TLiveLinks() override;

    /// Begins to feed a data set of the kind Link, from the front of what it follows. Where that can be read
    /// again it takes the place of the points that are there. Tells when that is not possible at all.
    void Start(TSeries& series);
    /// The same for each of them.
    XYGRAPH_LOCAL void StartAll();
    /// Begins anew with what is to be read in another way than it was when its link began, and with what
    /// panels have of what is followed.
    void Renew();
    /// Ends all links; their data sets keep their points.
    void Stop();
    /// What comes while links are paused waits where it comes from.
    void SetPaused(bool value);

    bool IsFollowing() const { return !m_feeds.empty(); }
    bool IsPaused() const { return m_isPaused; }
    /// One line for a status bar; empty when nothing is followed.
    const std::string& Status() const { return m_status; }
    XYGRAPH_LOCAL bool HasTrouble() const;

    /// A frame; called by a timer.
    XYGRAPH_LOCAL void Poll();

Q_SIGNALS:
    void StatusChanged();
    /// Points were fed, at most once a frame.
    void Fed();

private:
    class TFeed;

    /// Those of panels, too.
    XYGRAPH_LOCAL std::vector<TSeries*> AllSeries() const;
    XYGRAPH_LOCAL void Drop(TSeries& series);
    XYGRAPH_LOCAL void FollowIn(TxyGraph& panel);
    XYGRAPH_LOCAL TSeries* SeriesOf(const TFeed& feed) const;
    XYGRAPH_LOCAL void ShowStatus();

    TGraphSession& m_session;
    std::vector<std::unique_ptr<TFeed>> m_feeds;
    std::size_t m_first = 0; ///< whose turn it is to be first
    std::uint64_t m_lastFeedId = 0;
    bool m_isPaused = false;
    std::string m_status;
    QTimer m_timer;
};

} // namespace lumoplot
