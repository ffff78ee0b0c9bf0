// A link at work: reads what it follows as it comes, says what is wrong with it, and tries again with growing
// pauses. It is asked again and again and never waits.
#pragma once

#include "sources/link/link_stream.h"
#include "sources/link/row_feed.h"

#include <chrono>

namespace lumoplot {

class TLink {
public:
    using TClock = std::chrono::steady_clock;

    /// Between two tries; each pause is twice the one before it.
    static constexpr std::chrono::milliseconds kFirstPause{500};
    static constexpr std::chrono::milliseconds kLongestPause{30'000};

    /// Opens nothing yet. Throws EFileError where the build can not follow such a place.
    TLink(TLinkPlace place, TFeedReading reading);

    /// Reads what has come, until `until` at the latest, and appends its points. True when there is more at
    /// once.
    bool Poll(TClock::time_point until, TFedPoints& points);
    /// Tries again at once.
    void TryNow() { m_nextTry = {}; }

    const TLinkPlace& Place() const { return m_place; }
    /// What is wrong, in one line; empty while nothing is.
    const std::string& Trouble() const { return m_trouble; }
    /// When it is tried again; not behind the present while nothing is wrong.
    TClock::time_point NextTry() const { return m_nextTry; }
    bool HasEnded() const { return m_hasEnded; }
    const TTextReport& Report() const { return m_feed.Report(); }

private:
    bool Step(TFedPoints& points);
    void Break(const std::string& reason);

    TLinkPlace m_place;
    std::unique_ptr<TLinkStream> m_stream;
    TRowFeed m_feed;
    std::string m_bytes;
    std::string m_trouble;
    TClock::time_point m_nextTry;
    std::chrono::milliseconds m_pause = kFirstPause;
    bool m_hasEnded = false;
};

} // namespace lumoplot
