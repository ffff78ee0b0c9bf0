#include "sources/cells/time_of_day.h"

#include "sources/cells/text_number.h"
#include "support/number_text.h"

#include <algorithm>
#include <cctype>

namespace lumoplot {
namespace {

constexpr int kSecondsPerDay = 86400;

struct TZone {
    std::string_view name;
    int hours;
};

/// Those without a second meaning in use.
constexpr TZone kZones[] = {{"Z", 0},    {"UTC", 0},  {"GMT", 0},  {"CET", 1},  {"CEST", 2}, {"MEZ", 1},
                            {"MESZ", 2}, {"EET", 2},  {"EEST", 3}, {"EST", -5}, {"EDT", -4}, {"CST", -6},
                            {"CDT", -5}, {"MST", -7}, {"MDT", -6}, {"PST", -8}, {"PDT", -7}};

bool IsLetterAt(std::string_view text, std::size_t place) {
    return place < text.size() && std::isalpha(static_cast<unsigned char>(text[place])) != 0;
}

// Seconds ahead of UTC by the name of the zone; nothing for another word.
std::optional<int> TakeZoneName(TTextScanner& scan) {
    const std::string_view rest = scan.Rest();
    std::size_t length = 0;
    while (IsLetterAt(rest, length)) ++length;
    if (length == 1 && rest[0] == 'z') return scan.Drop(1), 0;
    for (const TZone& zone : kZones)
        if (rest.substr(0, length) == zone.name) return scan.Drop(length), zone.hours * 3600;
    return std::nullopt;
}

// Seconds with their fraction: behind a point or a comma, or three digits behind a colon.
std::optional<double> TakeSeconds(TTextScanner& scan, bool& hasFraction) {
    std::size_t digits = 0;
    const auto whole = scan.Integer(2, digits);
    if (!whole || *whole > 60) return std::nullopt;
    const char sign = scan.Front();
    const bool isColon = sign == ':' && TTextScanner(scan.Rest().substr(1)).Digits() == 3;
    if (sign != '.' && sign != ',' && !isColon) return *whole;
    scan.Drop(1);
    hasFraction = true;
    const std::size_t length = scan.Digits();
    if (length == 0) return *whole;
    const auto fraction = ParseNumber("0." + std::string(scan.Rest().substr(0, length)), '.');
    if (fraction.state == TNumberState::NoNumber) return std::nullopt;
    scan.Drop(length);
    return *whole + fraction.value;
}

// "am" and "pm", "a.m." and "p.m." turn the hours 1 to 12 of half a day into those of a day.
std::optional<int> HourOfDay(TTextScanner& scan, int hour) {
    TTextScanner behind = scan;
    behind.TakeBlanks();
    const bool isAfternoon = behind.Front() == 'p' || behind.Front() == 'P';
    if (!behind.TakeAny("aApP")) return hour;
    behind.Take('.');
    behind.TakeBlanks();
    if (!behind.TakeAny("mM")) return hour;
    behind.Take('.');
    if (hour < 1 || hour > 12) return std::nullopt;
    scan = behind;
    return hour % 12 + (isAfternoon ? 12 : 0);
}

// The digits of 123005 or 1230.
std::optional<double> TakeBasicTime(TTextScanner& scan) {
    const std::size_t digits = scan.Digits();
    if (digits != 4 && digits != 6) return std::nullopt;
    const int hour = scan.Exactly(2);
    const int minute = scan.Exactly(2);
    bool hasFraction = false;
    const auto second = digits == 6 ? TakeSeconds(scan, hasFraction) : 0.0;
    if (!second || hour > 23 || minute > 59) return std::nullopt;
    return hour * 3600 + minute * 60 + *second;
}

std::optional<double> TakeClock(TTextScanner& scan) {
    std::size_t digits = 0;
    auto hour = scan.Integer(2, digits);
    if (!hour || !scan.TakeAny(":h")) return std::nullopt;
    const auto minute = scan.Integer(2, digits);
    if (!minute || digits != 2 || *minute > 59) return std::nullopt;
    std::optional<double> second = 0.0;
    bool hasFraction = false;
    if (scan.Take(':')) second = TakeSeconds(scan, hasFraction);
    hour = HourOfDay(scan, *hour);
    if (!second || !hour) return std::nullopt;
    const double seconds = *hour * 3600 + *minute * 60 + *second;
    return seconds > kSecondsPerDay ? std::nullopt : std::optional(seconds);
}

// "2 days ", "2d " and "2." in front of a duration.
double TakeDays(TTextScanner& scan) {
    TTextScanner behind = scan;
    std::size_t digits = 0;
    const auto days = behind.Integer(6, digits);
    if (days && behind.Take('.') && behind.Digits() == 2) {
        scan = behind;
        return *days;
    }
    behind.TakeBlanks();
    if (!days || !behind.TakeAny("dD")) return 0;
    for (const char c : {'a', 'y', 's'}) behind.Take(c);
    behind.Take(',');
    behind.TakeBlanks();
    scan = behind;
    return *days;
}

// Hours of any number, minutes and seconds; or the two parts of a short time.
std::optional<double> TakeDuration(TTextScanner& scan, TShortTimes shortTimes, TDateReading& reading) {
    std::size_t digits = 0;
    const auto first = scan.Integer(6, digits);
    if (!first || !scan.Take(':')) return std::nullopt;
    bool hasFraction = false;
    const auto second = scan.Digits() == 2 ? TakeSeconds(scan, hasFraction) : std::nullopt;
    if (!second || *second >= 60) return std::nullopt;
    if (hasFraction) {
        reading.isFraction = true;
        return *first * 60 + *second;
    }
    if (!scan.Take(':')) {
        reading.isShortTime = true;
        return shortTimes == TShortTimes::HoursAndMinutes ? *first * 3600.0 + *second * 60
                                                          : *first * 60 + *second;
    }
    const auto third = TakeSeconds(scan, hasFraction);
    return third ? std::optional(*first * 3600.0 + *second * 60 + *third) : std::nullopt;
}

// "P1DT2H30M5.5S" in seconds.
std::optional<double> TakeDesignated(TTextScanner& scan) {
    constexpr std::string_view kUnits = "DHMS";
    constexpr int kSeconds[] = {kSecondsPerDay, 3600, 60, 1};
    if (!scan.Take('P')) return std::nullopt;
    double seconds = 0;
    std::size_t next = 0;
    while (!scan.AtEnd()) {
        if (scan.Take('T')) next = std::max<std::size_t>(next, 1);
        const std::string_view rest = scan.Rest();
        const std::size_t length = std::min(rest.find_first_not_of("0123456789.,"), rest.size());
        const auto number = ParseNumber(rest.substr(0, length), '.');
        scan.Drop(length);
        const std::size_t unit = scan.AtEnd() ? kUnits.npos : kUnits.find(scan.Front(), next);
        if (number.state != TNumberState::Number || unit == kUnits.npos) return std::nullopt;
        if ((unit == 0) != (next == 0)) return std::nullopt;
        seconds += number.value * kSeconds[unit];
        next = unit + 1;
        scan.Drop(1);
        // Behind the days only times follow, behind a T.
        if (unit == 0 && !scan.AtEnd() && scan.Front() != 'T') return std::nullopt;
    }
    return next > 0 ? std::optional(seconds) : std::nullopt;
}

} // namespace

std::optional<int> TakeZone(TTextScanner& scan) {
    TTextScanner behind = scan;
    behind.TakeBlanks();
    if (const auto named = TakeZoneName(behind)) {
        scan = behind;
        if (scan.Front() != '+' && scan.Front() != '-') return named;
    }
    const char sign = behind.Front();
    if (sign != '+' && sign != '-') return 0;
    behind.Drop(1);
    scan = behind;
    std::size_t digits = 0;
    auto value = scan.Integer(4, digits);
    if (!value || digits == 1 || digits == 3) return std::nullopt;
    int minutes = digits == 4 ? *value % 100 : 0;
    const int hours = digits == 4 ? *value / 100 : *value;
    if (digits == 2 && scan.Take(':')) {
        value = scan.Integer(2, digits);
        if (!value) return std::nullopt;
        minutes = *value;
    }
    if (hours > 14 || minutes > 59) return std::nullopt;
    return (sign == '-' ? -60 : 60) * (hours * 60 + minutes);
}

std::optional<double> TakeTimeOfDay(TTextScanner& scan, bool isBasic) {
    const auto seconds = isBasic && scan.Digits() >= 4 ? TakeBasicTime(scan) : TakeClock(scan);
    if (!seconds) return std::nullopt;
    const auto offset = TakeZone(scan);
    if (!offset) return std::nullopt;
    return (*seconds - *offset) / kSecondsPerDay;
}

std::optional<TDateReading> ParseTimeAlone(std::string_view text, TShortTimes shortTimes) {
    TDateReading reading;
    reading.parts = TDateParts::TimeOfDay;
    TTextScanner duration(text);
    const double sign = duration.Take('-') ? -1 : 1;
    if (duration.Front() == 'P') {
        const auto seconds = TakeDesignated(duration);
        if (!seconds) return std::nullopt;
        reading.days = sign * *seconds / kSecondsPerDay;
        return reading;
    }
    const double days = TakeDays(duration);
    if (const auto seconds = TakeDuration(duration, shortTimes, reading); seconds && duration.AtEnd()) {
        reading.days = sign * (days + *seconds / kSecondsPerDay);
        return reading;
    }
    TTextScanner clock(text);
    const auto time = TakeTimeOfDay(clock, false);
    if (!time || !clock.AtEnd() || text.find(':') == std::string_view::npos) return std::nullopt;
    reading.isShortTime = reading.isFraction = false;
    reading.days = *time;
    return reading;
}

} // namespace lumoplot
