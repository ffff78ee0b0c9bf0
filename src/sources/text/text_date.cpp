#include "sources/text/text_date.h"

#include "sources/text/decimal.h"
#include "sources/text/text_number.h"
#include "support/number_text.h"

#include <array>
#include <charconv>
#include <chrono>

namespace lumoplot {
namespace {

constexpr double kEpochDays = 25569; // 1970-01-01 counted from 1899-12-30
constexpr int kSecondsPerDay = 86400;

// A view that is consumed from the front.
class TScanner {
public:
    explicit TScanner(std::string_view text) : m_text(text) {}

    bool AtEnd() const { return m_text.empty(); }
    char Front() const { return m_text.empty() ? '\0' : m_text.front(); }
    std::string_view Rest() const { return m_text; }
    void Drop(std::size_t count) { m_text.remove_prefix(count); }
    bool Take(char c) {
        if (Front() != c) return false;
        Drop(1);
        return true;
    }
    void TakeBlanks() {
        while (Front() == ' ' || Front() == '\t') Drop(1);
    }
    /// One to `maxDigits` digits; their number goes to `digits`.
    std::optional<int> Integer(std::size_t maxDigits, std::size_t& digits) {
        digits = 0;
        int value = 0;
        while (digits < m_text.size() && decimal::IsDigit(m_text[digits])) {
            if (++digits > maxDigits) return std::nullopt;
            value = value * 10 + (m_text[digits - 1] - '0');
        }
        Drop(digits);
        return digits == 0 ? std::nullopt : std::optional(value);
    }

private:
    std::string_view m_text;
};

bool StartsWithWord(std::string_view text, std::string_view lower) {
    if (text.size() < lower.size()) return false;
    for (std::size_t i = 0; i < lower.size(); ++i)
        if ((text[i] | 0x20) != lower[i]) return false;
    return true;
}

struct TDatePart {
    int value = 0;
    std::size_t digits = 0; // 0: the name of a month
};

bool IsLetter(char c) {
    return (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
}

// The English name of a month, or its first three letters.
std::optional<TDatePart> MonthName(TScanner& scan) {
    constexpr std::array<std::string_view, 12> kMonths = {"january",   "february", "march",    "april",
                                                          "may",       "june",     "july",     "august",
                                                          "september", "october",  "november", "december"};
    std::size_t length = 0;
    while (length < scan.Rest().size() && IsLetter(scan.Rest()[length])) ++length;
    for (std::size_t month = 0; month < kMonths.size(); ++month) {
        const std::string_view name = kMonths[month];
        if (length != 3 && length != name.size()) continue;
        if (!StartsWithWord(scan.Rest(), name.substr(0, length))) continue;
        scan.Drop(length);
        return TDatePart{static_cast<int>(month) + 1, 0};
    }
    return std::nullopt;
}

std::optional<TDatePart> Part(TScanner& scan) {
    if (!decimal::IsDigit(scan.Front())) return MonthName(scan);
    TDatePart part;
    const auto value = scan.Integer(4, part.digits);
    if (!value) return std::nullopt;
    part.value = *value;
    return part;
}

// Where the text itself says which part is which, its order; otherwise the wanted one.
TDateOrder OrderOf(const std::array<TDatePart, 3>& parts, TDateOrder wanted, bool& fixed) {
    fixed = true;
    if (parts[0].digits == 0) return TDateOrder::MonthDayYear;
    if (parts[0].digits >= 3) return TDateOrder::YearMonthDay;
    if (parts[1].digits == 0) return TDateOrder::DayMonthYear;
    fixed = false;
    return wanted;
}

std::optional<double> DayNumber(const std::array<TDatePart, 3>& parts, TDateOrder order) {
    constexpr std::array<std::array<std::size_t, 3>, 3> kPlaces = {{{0, 1, 2}, {2, 1, 0}, {2, 0, 1}}};
    const auto& places = kPlaces[static_cast<std::size_t>(order)];
    const TDatePart year = parts[places[0]];
    const TDatePart day = parts[places[2]];
    if (year.digits != 2 && year.digits != 4) return std::nullopt;
    if (day.digits == 0 || day.digits > 2 || parts[places[1]].digits > 2) return std::nullopt;
    const int fullYear = year.digits == 4 ? year.value : year.value + (year.value < 70 ? 2000 : 1900);
    const std::chrono::year_month_day date{std::chrono::year(fullYear),
                                           std::chrono::month(static_cast<unsigned>(parts[places[1]].value)),
                                           std::chrono::day(static_cast<unsigned>(day.value))};
    if (!date.ok()) return std::nullopt;
    return std::chrono::sys_days(date).time_since_epoch().count() + kEpochDays;
}

// Blanks and commas join the parts only of a date that names its month.
bool IsDateSeparator(char c, bool named) {
    return c == '-' || c == '/' || c == '.' || (named && (c == ' ' || c == ','));
}

std::optional<double> Date(TScanner& scan, TDateOrder wanted, TDateReading& reading) {
    std::array<TDatePart, 3> parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto part = Part(scan);
        if (!part) return std::nullopt;
        parts[i] = *part;
        if (i == 2) break;
        const char separator = scan.Front();
        if (i == 0) reading.separator = separator;
        const bool named = parts[0].digits == 0 || parts[i].digits == 0;
        if (!IsDateSeparator(separator, named || IsLetter(scan.Rest().substr(0, 2).back())))
            return std::nullopt;
        if (separator != reading.separator && !named) return std::nullopt;
        scan.Drop(1);
        scan.TakeBlanks();
    }
    return DayNumber(parts, OrderOf(parts, wanted, reading.fixed));
}

// Seconds with their fraction, behind the colon.
std::optional<double> Seconds(TScanner& scan) {
    std::size_t digits = 0;
    const auto whole = scan.Integer(2, digits);
    if (!whole || *whole > 60) return std::nullopt;
    if (scan.Front() != '.' && scan.Front() != ',') return *whole;
    std::size_t length = 1;
    while (length < scan.Rest().size() && decimal::IsDigit(scan.Rest()[length])) ++length;
    const auto fraction = ParseNumber(scan.Rest().substr(0, length), scan.Front());
    if (length > 1 && fraction.state != TNumberState::Number) return std::nullopt;
    scan.Drop(length);
    return *whole + fraction.value;
}

// "am" and "pm" turn the hours 1 to 12 of half a day into those of a day.
std::optional<int> HourOfDay(TScanner& scan, int hour) {
    scan.TakeBlanks();
    const bool am = StartsWithWord(scan.Rest(), "am");
    const bool pm = StartsWithWord(scan.Rest(), "pm");
    if (!am && !pm) return hour;
    if (hour < 1 || hour > 12) return std::nullopt;
    scan.Drop(2);
    return hour % 12 + (pm ? 12 : 0);
}

// Seconds by which the time is ahead of UTC; 0 where the text names no zone.
std::optional<int> ZoneOffset(TScanner& scan) {
    if (scan.Take('Z') || scan.Take('z')) return 0;
    const char sign = scan.Front();
    if (sign != '+' && sign != '-') return 0;
    scan.Drop(1);
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

// The time of day as a fraction of the day.
std::optional<double> TimeOfDay(TScanner& scan) {
    std::size_t digits = 0;
    auto hour = scan.Integer(2, digits);
    if (!hour || !scan.Take(':')) return std::nullopt;
    const auto minute = scan.Integer(2, digits);
    if (!minute || digits != 2 || *minute > 59) return std::nullopt;
    std::optional<double> second = 0.0;
    if (scan.Take(':')) second = Seconds(scan);
    hour = HourOfDay(scan, *hour);
    const auto offset = ZoneOffset(scan);
    if (!second || !hour || !offset || *hour > 24) return std::nullopt;
    const double seconds = *hour * 3600 + *minute * 60 + *second;
    if (seconds > kSecondsPerDay) return std::nullopt;
    return (seconds - *offset) / kSecondsPerDay;
}

} // namespace

std::optional<TDateReading> ParseDate(std::string_view text, TDateOrder order) {
    text = Trimmed(text);
    TDateReading reading;
    const std::size_t colon = text.find(':');
    if (colon == 1 || colon == 2) {
        TScanner scan(text);
        const auto time = TimeOfDay(scan);
        if (!time || !scan.AtEnd()) return std::nullopt;
        reading.days = *time;
        reading.parts = TDateParts::TimeOfDay;
        return reading;
    }
    TScanner scan(text);
    const auto days = Date(scan, order, reading);
    if (!days) return std::nullopt;
    reading.days = *days;
    if (scan.AtEnd()) return reading;
    if (!scan.Take('T') && !scan.Take(' ') && !scan.Take(',')) return std::nullopt;
    scan.TakeBlanks();
    const auto time = TimeOfDay(scan);
    if (!time || !scan.AtEnd()) return std::nullopt;
    reading.days += *time;
    return reading;
}

} // namespace lumoplot
