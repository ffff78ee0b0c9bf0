// Ticks of date axes. The axis asks for a unit; where its ticks would crowd, the next larger unit of the
// calendar takes its place.
#include "graph/drawing/axes/ticks.h"
#include "graph/plotted/date_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string_view>

namespace lumoplot {
namespace {

enum class TCalendarUnit { Millisecond, Minute, Day, Week, Month };

struct TCalendarStep {
    TCalendarUnit Unit;
    int Count;

    double Days() const {
        switch (Unit) {
        case TCalendarUnit::Millisecond: return Count / 86400000.0;
        case TCalendarUnit::Minute: return Count / 1440.0;
        case TCalendarUnit::Day: return Count;
        case TCalendarUnit::Week: return Count * 7.0;
        case TCalendarUnit::Month: break;
        }
        return Count * 30.4;
    }
};

constexpr int kYear = 12;
constexpr std::array kLadder = {TCalendarStep{TCalendarUnit::Millisecond, 1},
                                TCalendarStep{TCalendarUnit::Millisecond, 2},
                                TCalendarStep{TCalendarUnit::Millisecond, 5},
                                TCalendarStep{TCalendarUnit::Millisecond, 10},
                                TCalendarStep{TCalendarUnit::Millisecond, 20},
                                TCalendarStep{TCalendarUnit::Millisecond, 50},
                                TCalendarStep{TCalendarUnit::Millisecond, 100},
                                TCalendarStep{TCalendarUnit::Millisecond, 200},
                                TCalendarStep{TCalendarUnit::Millisecond, 500},
                                TCalendarStep{TCalendarUnit::Millisecond, 1000},
                                TCalendarStep{TCalendarUnit::Millisecond, 2000},
                                TCalendarStep{TCalendarUnit::Millisecond, 5000},
                                TCalendarStep{TCalendarUnit::Millisecond, 10000},
                                TCalendarStep{TCalendarUnit::Millisecond, 15000},
                                TCalendarStep{TCalendarUnit::Millisecond, 30000},
                                TCalendarStep{TCalendarUnit::Minute, 1},
                                TCalendarStep{TCalendarUnit::Minute, 2},
                                TCalendarStep{TCalendarUnit::Minute, 5},
                                TCalendarStep{TCalendarUnit::Minute, 10},
                                TCalendarStep{TCalendarUnit::Minute, 15},
                                TCalendarStep{TCalendarUnit::Minute, 30},
                                TCalendarStep{TCalendarUnit::Minute, 60},
                                TCalendarStep{TCalendarUnit::Minute, 120},
                                TCalendarStep{TCalendarUnit::Minute, 180},
                                TCalendarStep{TCalendarUnit::Minute, 360},
                                TCalendarStep{TCalendarUnit::Minute, 720},
                                TCalendarStep{TCalendarUnit::Day, 1},
                                TCalendarStep{TCalendarUnit::Week, 1},
                                TCalendarStep{TCalendarUnit::Week, 2},
                                TCalendarStep{TCalendarUnit::Month, 1},
                                TCalendarStep{TCalendarUnit::Month, 2},
                                TCalendarStep{TCalendarUnit::Month, 3},
                                TCalendarStep{TCalendarUnit::Month, 6},
                                TCalendarStep{TCalendarUnit::Month, kYear},
                                TCalendarStep{TCalendarUnit::Month, 2 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 5 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 10 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 20 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 50 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 100 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 200 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 500 * kYear},
                                TCalendarStep{TCalendarUnit::Month, 1000 * kYear}};

TCalendarStep StepOf(TAxis::Dateticks type) {
    using enum TCalendarUnit;
    switch (type) {
    case TAxis::dt_5minute: return {Minute, 5};
    case TAxis::dt_halfhourly: return {Minute, 30};
    case TAxis::dt_hourly: return {Minute, 60};
    case TAxis::dt_daily: return {Day, 1};
    case TAxis::dt_weekly: return {Week, 1};
    case TAxis::dt_monthly: return {Month, 1};
    case TAxis::dt_2monthly: return {Month, 2};
    case TAxis::dt_quarterly: return {Month, 3};
    case TAxis::dt_annually: return {Month, kYear};
    case TAxis::dt_decade: return {Month, 10 * kYear};
    case TAxis::dt_century: return {Month, 100 * kYear};
    default: return {Minute, 1};
    }
}

std::vector<double> RegularValues(double min, double max, double step, double origin) {
    std::vector<double> values;
    const double last = std::floor((max - origin) / step + 1e-6);
    for (double number = std::ceil((min - origin) / step - 1e-6); number <= last; ++number)
        values.push_back(origin + number * step);
    return values;
}

int MonthNumber(double value) {
    const QDate date = DateOfValue(value);
    return date.year() * 12 + date.month() - 1;
}

std::vector<double> MonthValues(double min, double max, int count) {
    std::vector<double> values;
    for (int month = MonthNumber(min) / count * count; month <= MonthNumber(max); month += count) {
        const QDate date(month / 12, month % 12 + 1, 1);
        if (!date.isValid()) continue;
        if (const double value = ValueOfDate(date); value >= min && value <= max) values.push_back(value);
    }
    return values;
}

std::vector<double> ValuesOf(const TCalendarStep& step, const TTickRules& rules) {
    constexpr double kMonday = 2; // 1900-01-01
    switch (step.Unit) {
    case TCalendarUnit::Millisecond:
    case TCalendarUnit::Minute: {
        // Whole numbers of steps a day keep the values exact multiples.
        auto values = RegularValues(rules.Min / step.Days(), rules.Max / step.Days(), 1, 0);
        const double inDay = step.Unit == TCalendarUnit::Minute ? 1440 : 86400000;
        for (double& value : values) value = value * step.Count / inDay;
        return values;
    }
    case TCalendarUnit::Day: return RegularValues(rules.Min, rules.Max, step.Count, 0);
    case TCalendarUnit::Week: return RegularValues(rules.Min, rules.Max, 7.0 * step.Count, kMonday);
    case TCalendarUnit::Month: break;
    }
    return MonthValues(rules.Min, rules.Max, step.Count);
}

// Rung of the ladder that the axis asks for, or the first above it whose ticks are at least `spacing` apart.
// The shortest unit that can be asked for goes on to shorter ones where it would give no ticks.
std::size_t FirstFittingRung(const TTickRules& rules, double length, double spacing) {
    constexpr double kFewTicks = 2;
    const double span = rules.Max - rules.Min;
    double wanted = StepOf(rules.DateTickType).Days();
    if (rules.DateTickType == TAxis::dt_minute && span < kFewTicks * wanted)
        wanted = span / (length / spacing);
    const auto fits = [&](const TCalendarStep& step) {
        return step.Days() >= wanted * 0.999 && step.Days() * length / span >= spacing;
    };
    const auto found = std::ranges::find_if(kLadder, fits);
    return static_cast<std::size_t>(std::min(found, kLadder.end() - 1) - kLadder.begin());
}

bool Divides(const TCalendarStep& step, const TCalendarStep& major) {
    if (step.Unit == major.Unit) return major.Count % step.Count == 0;
    return major.Unit == TCalendarUnit::Month || step.Unit != TCalendarUnit::Week;
}

// The coarsest rung below whose ticks divide those of the finest rung with labels and have room, or the
// finest one that divides those of a coarser rung; the rung itself for none.
std::size_t MinorRung(std::size_t rung, std::size_t finest, const TTickRules& rules, double length) {
    constexpr double kMinorSpacing = 6;
    const TCalendarStep& major = kLadder[rung];
    for (std::size_t minor = finest; minor < rung; ++minor)
        if (Divides(kLadder[minor], major)) return minor;
    for (std::size_t finer = rung; rung == finest && finer-- > 0;) {
        const TCalendarStep& step = kLadder[finer];
        const bool hasRoom = step.Days() * length / (rules.Max - rules.Min) >= kMinorSpacing;
        const bool isWeekOfMonths = major.Unit == TCalendarUnit::Month && step.Unit != TCalendarUnit::Month;
        if (Divides(step, major) && hasRoom && !isWeekOfMonths) return finer;
    }
    return rung;
}

bool TellsApart(const std::vector<double>& values, std::string_view format) {
    QString previous;
    for (const double value : values) {
        const QString text = DateText(value, format);
        if (text.isEmpty() || text == previous) return false;
        previous = text;
    }
    return true;
}

// The shortest formats that tell values `step` days apart from their neighbours.
std::vector<std::string_view> FormatsFor(double step) {
    constexpr double kSecond = 1 / 86400.0;
    if (step < kSecond * 0.999) return {"hh:nn:ss.zzz"};
    if (step < 59 * kSecond) return {"hh:nn:ss"};
    if (step < 0.999) return {"hh:nn"};
    if (step < 27) return {"dd-mmm", "dd-mmm-yyyy"};
    return {step < 360 ? "mmm yyyy" : "yyyy", "dd-mmm-yyyy"};
}

bool IsMidnight(double value) {
    constexpr double kMillisecond = 1 / 86400000.0;
    return std::abs(value - std::round(value)) < kMillisecond / 2;
}

// Texts for neighbouring ticks. The format of the axis is obeyed as long as it tells them apart.
std::vector<QString> TextsOf(const std::vector<double>& values, const std::string& format) {
    std::vector<QString> texts;
    if (values.size() < 2 || TellsApart(values, format)) {
        for (const double value : values) texts.push_back(DateText(value, format));
        return texts;
    }
    const double step = (values.back() - values.front()) / static_cast<double>(values.size() - 1);
    const auto formats = FormatsFor(step);
    const auto found = std::ranges::find_if(formats, [&](auto each) { return TellsApart(values, each); });
    const std::string_view chosen = found == formats.end() ? formats.back() : *found;
    const bool hasTimes = step < 0.999;
    for (const double value : values)
        texts.push_back(DateText(value, hasTimes && IsMidnight(value) ? "dd-mmm" : chosen));
    return texts;
}

// Labels the major ticks; one whose text says nothing new becomes a minor tick.
void LabelDates(std::vector<TTick>& ticks, const std::string& format) {
    std::vector<double> values;
    for (const TTick& tick : ticks)
        if (tick.Kind == TTickKind::Major) values.push_back(tick.Value);
    const std::vector<QString> texts = TextsOf(values, format);
    std::size_t next = 0;
    QString previous;
    for (TTick& tick : ticks) {
        if (tick.Kind == TTickKind::Minor) continue;
        const QString& text = texts[next++];
        if (text == previous)
            tick.Kind = TTickKind::Minor;
        else
            tick.Label = {text, {}};
        previous = text;
    }
}

} // namespace

TTicks DateTicks(const TTickRules& rules, double length, int coarseness) {
    constexpr double kTickSpacing = 4;
    if (rules.DateTickType == TAxis::dt_custom) {
        TTicks ticks = LinearTicks(rules, length, coarseness);
        LabelDates(ticks.All, rules.DateTimeFormat);
        return ticks;
    }
    const std::size_t finest = FirstFittingRung(rules, length, kTickSpacing);
    const std::size_t rung = finest + static_cast<std::size_t>(coarseness);
    TTicks ticks;
    if (rung < kLadder.size())
        for (const double value : ValuesOf(kLadder[rung], rules))
            ticks.All.push_back({value, TTickKind::Major, {}});
    LabelDates(ticks.All, rules.DateTimeFormat);
    const std::size_t minor = rung < kLadder.size() ? MinorRung(rung, finest, rules, length) : finest;
    if (minor == rung) return ticks;
    const std::size_t majors = ticks.All.size();
    for (const double value : ValuesOf(kLadder[minor], rules)) {
        const auto known = std::span(ticks.All).first(majors);
        if (!std::ranges::binary_search(known, value, {}, &TTick::Value))
            ticks.All.push_back({value, TTickKind::Minor, {}});
    }
    std::ranges::sort(ticks.All, {}, &TTick::Value);
    return ticks;
}

} // namespace lumoplot
