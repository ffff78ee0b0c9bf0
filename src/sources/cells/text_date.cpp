#include "sources/cells/text_date.h"

#include "sources/cells/folded_text.h"
#include "sources/cells/month_names.h"
#include "sources/cells/time_of_day.h"
#include "support/number_text.h"

#include <array>
#include <chrono>

namespace lumoplot {
namespace {

constexpr double kEpochDays = 25569; // 1970-01-01 counted from 1899-12-30

struct TDatePart {
    int value = 0;
    std::size_t digits = 0; // 0: the name of a month
};

std::size_t WordLength(std::string_view text) {
    std::size_t length = 0;
    while (const std::size_t letter = LetterLength(text.substr(length))) length += letter;
    return length;
}

// Words longer than any name are none.
std::string FoldedWord(const TTextScanner& scan, std::size_t& length) {
    constexpr std::size_t kLongest = 24;
    length = WordLength(scan.Rest().substr(0, kLongest));
    return FoldText(scan.Rest().substr(0, length));
}

std::optional<TDatePart> MonthName(TTextScanner& scan) {
    std::size_t length = 0;
    const int month = MonthOfName(FoldedWord(scan, length));
    if (month == 0) return std::nullopt;
    scan.Drop(length);
    return TDatePart{month, 0};
}

// Takes the word when it is one of these.
bool TakeWord(TTextScanner& scan, std::initializer_list<std::string_view> words) {
    std::size_t length = 0;
    const std::string word = FoldedWord(scan, length);
    for (const auto wanted : words)
        if (word == wanted) return scan.Drop(length), true;
    return false;
}

// Takes a day of the week with what divides it from the date.
bool TakeWeekday(TTextScanner& scan) {
    std::size_t length = 0;
    if (!IsWeekday(FoldedWord(scan, length))) return false;
    scan.Drop(length);
    scan.Take('.');
    scan.Take(',');
    if (scan.Front() != ' ') return false;
    scan.TakeBlanks();
    return true;
}

std::optional<TDatePart> Part(TTextScanner& scan) {
    if (!decimal::IsDigit(scan.Front())) return MonthName(scan);
    TDatePart part;
    const auto value = scan.Integer(4, part.digits);
    if (!value) return std::nullopt;
    part.value = *value;
    if (part.digits <= 2) TakeWord(scan, {"st", "nd", "rd", "th", "er"});
    return part;
}

int FullYear(const TDatePart& year) {
    return year.digits == 4 ? year.value : year.value + (year.value < 70 ? 2000 : 1900);
}

std::optional<double> DayNumber(int year, int month, int day) {
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) return std::nullopt;
    return std::chrono::sys_days(date).time_since_epoch().count() + kEpochDays;
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

std::optional<double> DayOfParts(const std::array<TDatePart, 3>& parts, TDateOrder order) {
    constexpr std::array<std::array<std::size_t, 3>, 3> kPlaces = {{{0, 1, 2}, {2, 1, 0}, {2, 0, 1}}};
    const auto& places = kPlaces[static_cast<std::size_t>(order)];
    const TDatePart year = parts[places[0]];
    const TDatePart day = parts[places[2]];
    if (year.digits != 2 && year.digits != 4) return std::nullopt;
    if (day.digits == 0 || day.digits > 2 || parts[places[1]].digits > 2) return std::nullopt;
    return DayNumber(FullYear(year), parts[places[1]].value, day.value);
}

// A year and a month, in either order, or a year and the day of it: two parts.
std::optional<double> DayOfTwo(const TDatePart& first, const TDatePart& second, char separator) {
    if (first.digits == 4 && second.digits == 3 && separator == '-') {
        const auto start = DayNumber(first.value, 1, 1);
        const auto end = DayNumber(first.value + 1, 1, 1);
        if (!start || !end || second.value < 1 || *start + second.value > *end) return std::nullopt;
        return *start + second.value - 1;
    }
    const auto isYear = [](const TDatePart& part) {
        return part.digits == 4 && part.value >= 1500 && part.value < 3000;
    };
    // "01.2024", but not "1.2024" nor "2024.01".
    if (separator == '.' && first.digits > 0 && second.digits > 0 && (first.digits != 2 || !isYear(second)))
        return std::nullopt;
    if (isYear(first) && second.digits <= 2) return DayNumber(first.value, second.value, 1);
    // "Jan 20" may be a day without its year.
    const bool isShort = first.digits == 0 && second.digits == 2 && separator != ' ';
    return (isYear(second) && first.digits <= 2) || isShort ? DayNumber(FullYear(second), first.value, 1)
                                                            : std::nullopt;
}

// "2024-W05-3": the Monday of week 1 is that of the week with the 4th of January.
std::optional<double> DayOfWeek(TTextScanner& scan) {
    const std::string_view rest = scan.Rest();
    if (scan.Digits() != 4 || rest.size() < 7) return std::nullopt;
    TTextScanner week = scan;
    const int year = week.Exactly(4);
    week.Take('-');
    std::size_t digits = 0;
    if (!week.Take('W')) return std::nullopt;
    const auto number = week.Integer(2, digits);
    if (!number || digits != 2 || *number < 1 || *number > 53) return std::nullopt;
    int day = 1;
    if (week.Take('-')) {
        const auto read = week.Integer(1, digits);
        if (!read || *read < 1 || *read > 7) return std::nullopt;
        day = *read;
    }
    const auto fourth = DayNumber(year, 1, 4);
    if (!fourth) return std::nullopt;
    const int weekday = (static_cast<int>(*fourth) + 5) % 7; // from Monday
    scan = week;
    return *fourth - weekday + 7 * (*number - 1) + day - 1;
}

std::optional<int> TakeQuarter(TTextScanner& scan) {
    TTextScanner quarter = scan;
    if (!quarter.TakeAny("qQ") || quarter.Digits() != 1) return std::nullopt;
    const int number = quarter.Exactly(1);
    if (number < 1 || number > 4) return std::nullopt;
    scan = quarter;
    return number;
}

// "2024-Q1", "2024Q1", "Q1 2024": the first day of the quarter.
std::optional<double> DayOfQuarter(TTextScanner& scan) {
    TTextScanner text = scan;
    auto quarter = TakeQuarter(text);
    if (quarter) text.TakeAny(" -/");
    if (text.Digits() != 4) return std::nullopt;
    const int year = text.Exactly(4);
    if (!quarter) {
        text.TakeAny(" -/");
        quarter = TakeQuarter(text);
    }
    if (!quarter) return std::nullopt;
    scan = text;
    return DayNumber(year, *quarter * 3 - 2, 1);
}

// "2024M01": the first day of the month.
std::optional<double> DayOfMonth(TTextScanner& scan) {
    if (scan.Digits() != 4) return std::nullopt;
    TTextScanner text = scan;
    const int year = text.Exactly(4);
    if (!text.Take('M') || text.Digits() != 2) return std::nullopt;
    const auto day = DayNumber(year, text.Exactly(2), 1);
    if (day) scan = text;
    return day;
}

// "31Jan2024", "31Jan24".
std::optional<double> DayOfJoinedParts(TTextScanner& scan) {
    TTextScanner text = scan;
    std::size_t digits = 0;
    const auto day = text.Integer(2, digits);
    const auto month = day ? MonthName(text) : std::nullopt;
    const std::size_t yearDigits = text.Digits();
    if (!month || (yearDigits != 2 && yearDigits != 4)) return std::nullopt;
    const TDatePart year{text.Exactly(yearDigits), yearDigits};
    const auto read = DayNumber(FullYear(year), month->value, *day);
    if (read) scan = text;
    return read;
}

// "202401" is a month, "2024031" the day of a year, of our time.
std::optional<double> DayOfFewDigits(TTextScanner& scan) {
    const std::size_t digits = scan.Digits();
    TTextScanner text = scan;
    const int year = text.Exactly(4);
    if (year < 1900 || year > 2100) return std::nullopt;
    const int rest = text.Exactly(digits - 4);
    const TDatePart part{rest, digits - 4};
    const auto day = digits == 6 ? DayNumber(year, rest, 1) : DayOfTwo({year, 4}, part, '-');
    if (day) scan = text;
    return day;
}

// "20240131", "20240131123000", with `hasTime` when the time stands in it.
std::optional<double> DayOfDigits(TTextScanner& scan, bool& hasTime) {
    const std::size_t digits = scan.Digits();
    if (digits == 6 || digits == 7) return DayOfFewDigits(scan);
    if (digits != 8 && digits != 12 && digits != 14) return std::nullopt;
    TTextScanner text = scan;
    const int year = text.Exactly(4);
    const int month = text.Exactly(2);
    auto day = DayNumber(year, month, text.Exactly(2));
    hasTime = digits > 8;
    if (day && hasTime) {
        const auto time = TakeTimeOfDay(text, true);
        day = time ? std::optional(*day + *time) : std::nullopt;
    }
    if (!day || year < 1000) return std::nullopt;
    scan = text;
    return day;
}

// Blanks and commas join the parts only of a date that names its month.
bool TakeSeparator(TTextScanner& scan, bool isNamed, char wanted) {
    if (!isNamed) {
        const bool isDot = scan.Front() == '.';
        const bool isPart = wanted == 0 ? scan.TakeAny("-/.") : scan.Take(wanted);
        if (isPart && isDot) scan.TakeBlanks();
        return isPart;
    }
    bool isTaken = scan.TakeAny("-/. ,'");
    while (isTaken && scan.TakeAny("-/., '")) {
    }
    if (isTaken && TakeWord(scan, {"de", "del", "di", "of"})) scan.TakeBlanks();
    return isTaken;
}

bool BeginsTime(const TTextScanner& scan) {
    const std::size_t digits = scan.Digits();
    return digits > 0 && digits <= 2 && scan.Rest().substr(digits).starts_with(':');
}

// "12-30-05" and "12.30.05" behind a date, as names of files have it.
std::optional<double> TakeDashedTime(TTextScanner& scan) {
    constexpr std::size_t kLength = 8;
    const std::string_view rest = scan.Rest();
    if (rest.size() != kLength || (rest[2] != '-' && rest[2] != '.') || rest[5] != rest[2])
        return std::nullopt;
    std::string text(rest);
    text[2] = text[5] = ':';
    TTextScanner clock(text);
    const auto time = TakeTimeOfDay(clock, false);
    if (!time || !clock.AtEnd()) return std::nullopt;
    scan.Drop(kLength);
    return time;
}

class TDateParser {
public:
    TDateParser(std::string_view text, TDateOrder order) : m_scan(text), m_order(order) {}

    std::optional<TDateReading> Parse() {
        auto days = DayOfQuarter(m_scan);
        if (!days) days = DayOfWeek(m_scan);
        if (!days) days = DayOfMonth(m_scan);
        if (!days) days = DayOfJoinedParts(m_scan);
        m_reading.fixed = true;
        if (!days) days = DayOfDigits(m_scan, m_reading.hasTime);
        if (!days) days = DayOfNamedParts();
        if (!days) return std::nullopt;
        m_reading.days += *days;
        if (m_scan.Rest() == ".") m_scan.Drop(1);
        if (m_scan.AtEnd()) return m_reading;
        return m_reading.hasTime ? std::nullopt : WithTime();
    }

private:
    std::optional<double> DayOfNamedParts() {
        std::array<TDatePart, 3> parts;
        char separator = 0;
        bool isNamed = false;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const auto part = Part(m_scan);
            if (!part) return std::nullopt;
            parts[i] = *part;
            isNamed = isNamed || part->digits == 0;
            if (i == 2) break;
            const char front = m_scan.Front();
            const bool isEnd = m_scan.AtEnd() || (i == 1 && !isNamed && m_scan.Front() != separator);
            if (isEnd) return i == 1 ? DayOfTwo(parts[0], parts[1], separator) : std::nullopt;
            if (!TakeSeparator(m_scan, isNamed || NextIsName(), i == 0 ? '\0' : separator))
                return std::nullopt;
            if (i == 0) separator = front;
            if (i == 1 && BeginsTime(m_scan) && !TakeTimeInside()) return std::nullopt;
        }
        return DayOfParts(parts, OrderOf(parts, m_order, m_reading.fixed));
    }

    // "Jan 31 12:30:00 2024" has the time, and perhaps a zone, in front of the year.
    bool TakeTimeInside() {
        const auto time = TakeTimeOfDay(m_scan, false);
        m_scan.TakeBlanks();
        if (!time) return false;
        m_reading.days = *time;
        m_reading.hasTime = true;
        return true;
    }

    // Behind the separator comes the name of a month.
    bool NextIsName() const {
        TTextScanner next = m_scan;
        while (next.TakeAny("-/. ,'")) {
        }
        TakeWord(next, {"de", "del", "di", "of"});
        next.TakeBlanks();
        return MonthName(next).has_value();
    }

    std::optional<TDateReading> WithTime() {
        if (m_scan.Rest().starts_with(". ")) m_scan.Drop(1);
        const char sign = m_scan.Front();
        if (!m_scan.TakeAny("T ,:_-") && sign != 't') return std::nullopt;
        while (m_scan.TakeAny(" ,-")) {
        }
        // Behind a date "-05:00" would be an offset.
        if (sign == '-' && m_scan.Digits() < 4 && m_scan.Rest().size() < 8) return std::nullopt;
        auto time = TakeDashedTime(m_scan);
        if (!time) time = TakeTimeOfDay(m_scan, true);
        m_scan.TakeBlanks();
        TakeWord(m_scan, {"uhr", "h", "hrs"});
        if (!time || !m_scan.AtEnd()) return std::nullopt;
        m_reading.days += *time;
        m_reading.hasTime = true;
        return m_reading;
    }

    TTextScanner m_scan;
    TDateOrder m_order;
    TDateReading m_reading;
};

// Chinese, Japanese and Korean signs behind year, month and day.
constexpr std::string_view kYearSigns[] = {"\xE5\xB9\xB4", "\xEB\x85\x84"};
constexpr std::string_view kMonthSigns[] = {"\xE6\x9C\x88", "\xEC\x9B\x94"};
constexpr std::string_view kDaySigns[] = {"\xE6\x97\xA5", "\xEC\x9D\xBC"};

template <std::size_t Count>
bool TakeSign(TTextScanner& scan, const std::string_view (&signs)[Count]) {
    for (const auto sign : signs)
        if (scan.Rest().starts_with(sign)) {
            scan.Drop(sign.size());
            scan.TakeBlanks();
            return true;
        }
    return false;
}

// A year, a month and perhaps a day with such signs, written with dashes; what follows stays. Empty for any
// other text.
std::string WithDashes(std::string_view text) {
    TTextScanner scan(text);
    std::size_t digits = 0;
    const auto year = scan.Integer(4, digits);
    if (!year || digits != 4 || !TakeSign(scan, kYearSigns)) return {};
    const auto month = scan.Integer(2, digits);
    if (!month || !TakeSign(scan, kMonthSigns)) return {};
    std::string plain = std::to_string(*year) + '-' + std::to_string(*month);
    if (const auto day = scan.Integer(2, digits)) {
        if (!TakeSign(scan, kDaySigns)) return {};
        plain += '-' + std::to_string(*day);
    }
    return scan.AtEnd() ? plain : plain.append(1, ' ').append(scan.Rest());
}

// "2024:031:12:30:00", with the day of the year, as "2024-031 12:30:00"; empty for any other text.
std::string WithDayOfYear(std::string_view text) {
    constexpr std::size_t kYear = 4;
    constexpr std::size_t kDay = 8;
    if (text.size() <= kDay || text[kYear] != ':' || text[kDay] != ':') return {};
    if (TTextScanner(text).Digits() != kYear || TTextScanner(text.substr(kYear + 1)).Digits() != 3) return {};
    std::string plain(text);
    plain[kYear] = '-';
    plain[kDay] = ' ';
    return plain;
}

// Most cells are no dates, which a quick look at their characters tells: whole rows that are not divided are
// looked at, too.
bool MayBeDate(std::string_view text) {
    constexpr std::size_t kLongest = 64;
    if (text.size() < 4 || text.size() > kLongest) return false;
    bool hasDigit = false;
    bool hasComma = false;
    bool hasWord = false; // or a time
    for (const char c : text) {
        if (c == ';' || c == '\t' || c == '|' || c == '"') return false;
        hasDigit = hasDigit || (c >= '0' && c <= '9');
        hasComma = hasComma || c == ',';
        hasWord = hasWord || c == ':' || c == ' ' || static_cast<unsigned char>(c) >= 'A';
    }
    return hasDigit && (hasWord || !hasComma);
}

} // namespace

std::optional<TDateReading> ParseDate(std::string_view text, TDateOrder order, TShortTimes shortTimes) {
    text = Trimmed(text);
    if (!MayBeDate(text)) return std::nullopt;
    if (const std::string plain = WithDashes(text); !plain.empty())
        return ParseDate(plain, order, shortTimes);
    if (const std::string plain = WithDayOfYear(text); !plain.empty())
        return ParseDate(plain, order, shortTimes);
    if (text.starts_with('[') && text.ends_with(']')) text = text.substr(1, text.size() - 2);
    if (text.find(':') != std::string_view::npos || text.find('P') != std::string_view::npos)
        if (const auto time = ParseTimeAlone(text, shortTimes)) return time;
    if (const auto date = TDateParser(text, order).Parse()) return date;
    TTextScanner behind(text);
    return TakeWeekday(behind) ? TDateParser(behind.Rest(), order).Parse() : std::nullopt;
}

} // namespace lumoplot
