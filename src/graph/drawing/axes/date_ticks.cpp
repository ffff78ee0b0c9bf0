// Ticks of date axes. The axis asks for a unit; where its ticks would crowd, the next larger unit of the
// calendar takes its place.
#include "graph/drawing/axes/ticks.h"
#include "graph/plotted/date_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

enum class TCalendarUnit { Minute, Day, Week, Month };

struct TCalendarStep {
    TCalendarUnit Unit;
    int Count;

    double Days() const {
        switch (Unit) {
        case TCalendarUnit::Minute: return Count / 1440.0;
        case TCalendarUnit::Day: return Count;
        case TCalendarUnit::Week: return Count * 7.0;
        case TCalendarUnit::Month: break;
        }
        return Count * 30.4;
    }
};

constexpr int kYear = 12;
constexpr std::array kLadder = {TCalendarStep{TCalendarUnit::Minute, 1},
                                TCalendarStep{TCalendarUnit::Minute, 5},
                                TCalendarStep{TCalendarUnit::Minute, 15},
                                TCalendarStep{TCalendarUnit::Minute, 30},
                                TCalendarStep{TCalendarUnit::Minute, 60},
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
    case TCalendarUnit::Minute: {
        // Whole numbers of steps a day keep the values exact multiples.
        auto values = RegularValues(rules.Min / step.Days(), rules.Max / step.Days(), 1, 0);
        for (double& value : values) value = value * step.Count / 1440.0;
        return values;
    }
    case TCalendarUnit::Day: return RegularValues(rules.Min, rules.Max, step.Count, 0);
    case TCalendarUnit::Week: return RegularValues(rules.Min, rules.Max, 7.0 * step.Count, kMonday);
    case TCalendarUnit::Month: break;
    }
    return MonthValues(rules.Min, rules.Max, step.Count);
}

// Rung of the ladder that the axis asks for, or the first above it whose ticks are at least `spacing` apart.
std::size_t FirstFittingRung(const TTickRules& rules, double length, double spacing) {
    const double wanted = StepOf(rules.DateTickType).Days();
    const auto fits = [&](const TCalendarStep& step) {
        return step.Days() >= wanted * 0.999 && step.Days() * length / (rules.Max - rules.Min) >= spacing;
    };
    const auto found = std::ranges::find_if(kLadder, fits);
    return static_cast<std::size_t>(std::min(found, kLadder.end() - 1) - kLadder.begin());
}

} // namespace

std::vector<TTick> DateTicks(const TTickRules& rules, double length, int coarseness) {
    constexpr double kTickSpacing = 4;
    if (rules.DateTickType == TAxis::dt_custom) return LinearTicks(rules, length, coarseness);
    const std::size_t finest = FirstFittingRung(rules, length, kTickSpacing);
    const std::size_t rung = finest + static_cast<std::size_t>(coarseness);
    std::vector<TTick> ticks;
    if (rung < kLadder.size()) {
        QString previous;
        for (const double value : ValuesOf(kLadder[rung], rules)) {
            // A format without hours says the same at every hour of a day; once is enough.
            const QString text = DateText(value, rules.DateTimeFormat);
            ticks.push_back({value, TTickKind::Major, {text == previous ? QString() : text, {}}});
            previous = text;
        }
    }
    if (rung == finest) return ticks;
    const auto byValue = [](const TTick& a, const TTick& b) { return a.Value < b.Value; };
    std::vector<TTick> all = ticks;
    for (const double value : ValuesOf(kLadder[finest], rules)) {
        const TTick minor{value, TTickKind::Minor, {}};
        if (!std::ranges::binary_search(ticks, value, {}, &TTick::Value)) all.push_back(minor);
    }
    std::ranges::sort(all, byValue);
    return all;
}

} // namespace lumoplot
