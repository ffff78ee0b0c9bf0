// How the dates and times of a table fit together in the ways in which they can be read.
#pragma once

#include "sources/text/layout/sample_table.h"

#include <optional>

namespace lumoplot {

struct TDateChoice {
    TDateOrder order = TDateOrder::YearMonthDay;
    std::optional<TDateOrder> other; ///< reads as many dates
    double readShare = 1;            ///< of the dates by the order chosen
};

/// The order that reads most dates; among equals the one by which time runs back and forth least, then that
/// of the most even steps, then that of the shortest ones.
TDateChoice ChooseDateOrder(const TSampleTable& table);

struct TTimeChoice {
    TShortTimes shortTimes = TShortTimes::HoursAndMinutes;
    bool otherFits = false; ///< times of two parts go beyond 24 hours
};

/// Minutes and seconds where one of the times has a fraction of a second.
TTimeChoice ChooseShortTimes(const TSampleTable& table);

/// Times of day in the column fall back by more than half a day, and rise otherwise.
bool PassesMidnight(const TSampleTable& table, std::size_t column, TShortTimes shortTimes);

} // namespace lumoplot
