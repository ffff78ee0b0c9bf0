// Dates and times of day in text files. A date becomes a count of days since 1899-12-30 whose fraction is the
// time of day, as spreadsheets hold them (1970-01-01 is 25569); the calendar is the Gregorian one throughout.
#pragma once

#include "data/series/ds_info.h"
#include "support/export.h"

#include <optional>
#include <string_view>

namespace lumoplot {

/// What can be read at a date's place.
enum class TDateParts { Date, TimeOfDay };

struct TDateReading {
    double days = 0;          ///< since 1899-12-30; of a time of day alone the fraction of the day
    TDateParts parts{};       ///< TimeOfDay when the text holds no date
    bool fixed = false;       ///< the order is in the text itself: the year or the name of the month tells it
    bool isShortTime = false; ///< a time alone of two parts, without a fraction
    bool isFraction = false;  ///< a time alone of minutes and seconds with a fraction
    bool hasTime = false;     ///< a date with a time behind it
};

/// Reads "2024-01-31", "31.1.2024", "1/31/24", "31 Jan 2024", "Mittwoch, 31. Januar 2024", "20240131",
/// "2024-031" (the day of the year), "2024-W05-3", "2024-01", "Jan-2024", "2024-Q1" (their first day), each
/// with or without a time behind a blank, T or comma ("12:30", "12:30:05.25", "1:30 pm", "12:30Z",
/// "12:30+02:00": an offset is taken off, so the result is UTC; "20240131T123000Z"), "Wed Jan 31 12:30:00
/// 2024", or a time alone, which may be beyond 24 hours and negative. A year of two digits is 1970 to 2069.
/// `order` decides where the text leaves it open. Nothing when any part is out of its range, the day of the
/// month included.
XYGRAPH_EXPORT std::optional<TDateReading> ParseDate(std::string_view text, TDateOrder order,
                                                     TShortTimes shortTimes = TShortTimes::HoursAndMinutes);

} // namespace lumoplot
