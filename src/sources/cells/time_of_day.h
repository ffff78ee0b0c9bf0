// Times of day and durations in texts.
#pragma once

#include "sources/cells/text_date.h"
#include "sources/cells/text_scanner.h"

#include <optional>

namespace lumoplot {

/// Takes a time of day from the front: "12:30", "12:30:05.25", "1:30 pm", "123005" (when `isBasic`), with a
/// zone behind it, which is taken off. In days. Nothing when there is none.
std::optional<double> TakeTimeOfDay(TTextScanner& scan, bool isBasic);

/// The whole text as a time alone: as above, a duration of any number of hours, "-0:30:00", "2 days
/// 03:04:05", or minutes and seconds.
std::optional<TDateReading> ParseTimeAlone(std::string_view text, TShortTimes shortTimes);

/// Takes the name of a time zone or an offset ("Z", "UTC", "CEST", "+02:00"): seconds ahead of UTC. 0 where
/// there is none; nothing for what is wrong.
std::optional<int> TakeZone(TTextScanner& scan);

} // namespace lumoplot
