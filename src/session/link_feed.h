// One link and the data set that it feeds: puts what comes behind the points that are there and drops what
// the limit no longer keeps.
#pragma once

#include "data/points/point_chain.h"
#include "sources/link/link.h"

#include <deque>

namespace lumoplot {

class TSeries;

class TLinkFeed {
public:
    /// Of the data set's description as it is now. Throws EFileError as ParseLink and TLink do.
    TLinkFeed(std::uint64_t id, const TSeries& series);

    std::uint64_t Id() const { return m_id; }
    /// The description is still the one that it was made for.
    bool IsFor(const TSeries& series) const;
    TLink& Link() { return m_link; }
    const TLink& Link() const { return m_link; }
    /// Reads until `until` at the latest; true when the points have changed.
    bool Feed(TSeries& series, TLink::TClock::time_point until);
    /// Points that were dropped may be there again.
    void PointsPutBack() { m_oldest = 0; }
    /// "Following log.csv: 1,200 rows", or what is wrong and when it is tried again.
    std::string Status() const;

private:
    /// When the points up to an Id had come.
    struct TArrival {
        TLink::TClock::time_point time;
        std::int32_t lastId;
    };

    void Put(TSeries& series, const TFedPoints& fed);
    void Note(TSeries& series);
    std::int32_t ExpiredId(TLink::TClock::time_point now);
    bool Trim(TPointChain& points, std::int32_t expired);

    std::uint64_t m_id;
    TLink m_link;
    TFeedReading m_reading;
    TLinkLimit m_limit;
    std::int32_t m_oldest = 0; ///< no point has a lower Id; 0: not known
    std::int32_t m_kept;       ///< points up to it were there before, and a line does not bring them again
    bool m_isShown = false;    ///< its first points were
    std::deque<TArrival> m_arrivals; ///< while only the newest are kept by time
};

} // namespace lumoplot
