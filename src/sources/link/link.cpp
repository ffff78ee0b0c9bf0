#include "sources/link/link.h"

#include "support/errors.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::size_t kPiece = 65536; // a few milliseconds of work

} // namespace

TLink::TLink(TLinkPlace place, TFeedReading reading)
    : m_place(std::move(place)), m_stream(MakeLinkStream(m_place)), m_feed(std::move(reading)) {
}

bool TLink::Poll(TClock::time_point until, TFedPoints& points) {
    if (m_hasEnded || TClock::now() < m_nextTry) return false;
    try {
        while (Step(points))
            if (TClock::now() >= until) return true;
    } catch (const ELumoError& error) {
        Break(error.what());
    }
    return false;
}

// True when more may be there already.
bool TLink::Step(TFedPoints& points) {
    m_bytes.clear();
    switch (m_stream->Read(m_bytes, kPiece)) {
    case TLinkEvent::Nothing: return false;
    case TLinkEvent::Cut: m_feed.Cut(); return false;
    case TLinkEvent::StartsAnew:
        m_feed.Restart();
        points = TFedPoints();
        points.isAnew = true;
        return true;
    case TLinkEvent::Ended:
        m_hasEnded = true;
        m_feed.Take(TTextEnd::File, points);
        return false;
    case TLinkEvent::Bytes: break;
    }
    m_trouble.clear();
    m_pause = kFirstPause;
    m_feed.Add(m_bytes);
    m_feed.Take(TTextEnd::More, points);
    return true;
}

// A line that was cut by it will not go on, unless it is a file's, which is read from its place again.
void TLink::Break(const std::string& reason) {
    m_trouble = reason;
    if (!m_place.CanBeReadAgain()) m_feed.Cut();
    m_nextTry = TClock::now() + m_pause;
    m_pause = std::min(m_pause * 2, kLongestPause);
}

} // namespace lumoplot
