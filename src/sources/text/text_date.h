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
    double days = 0;    ///< since 1899-12-30; of a time of day alone the fraction of the day
    TDateParts parts{}; ///< TimeOfDay when the text holds no date
    char separator = 0; ///< between the parts of the date; 0 for a time of day alone
    bool fixed = false; ///< the order is in the text itself: the year or the name of the month tells it
};

/// Reads "2024-01-31", "31.1.2024", "1/31/24", "31 Jan 2024", each with or without a time behind a blank, T
/// or comma
/// ("12:30", "12:30:05.25", "1:30 pm", "12:30Z", "12:30+02:00": an offset is taken off, so the result is
/// UTC), or a time of day alone. A year of two digits is 1970 to 2069. `order` decides where the text leaves
/// it open. Nothing when any part is out of its range, the day of the month included.
XYGRAPH_EXPORT std::optional<TDateReading> ParseDate(std::string_view text, TDateOrder order);

} // namespace lumoplot
