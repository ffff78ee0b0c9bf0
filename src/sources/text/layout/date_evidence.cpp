#include "sources/text/layout/date_evidence.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

struct TDateFit {
    TDateOrder order{};
    std::size_t read = 0;
    std::size_t open = 0; ///< whose order is not in the text itself
    std::size_t reversals = 0;
    std::size_t steps = 0;
    double sum = 0; ///< of the steps
    double squares = 0;

    double Mean() const { return steps == 0 ? 0 : sum / static_cast<double>(steps); }
    /// The steps' deviation relative to their mean.
    double Unevenness() const {
        if (steps == 0 || sum == 0) return 0;
        const double variance = squares / static_cast<double>(steps) - Mean() * Mean();
        return std::sqrt(std::max(variance, 0.0)) / Mean();
    }
};

void AddColumn(const TSampleTable& table, std::size_t column, TDateFit& fit) {
    double previous = 0;
    int direction = 0;
    bool isFirst = true;
    for (const TSampleRow* row : table.Voters()) {
        if (row->KindAt(column) != TCellKind::Date) continue;
        const auto date = ParseDate(row->cells[column].text, fit.order);
        if (!date) continue;
        ++fit.read;
        if (!date->fixed) ++fit.open;
        const double step = date->days - previous;
        if (!isFirst && step != 0) {
            const int turn = step > 0 ? 1 : -1;
            if (direction != 0 && turn != direction) ++fit.reversals;
            direction = turn;
            ++fit.steps;
            fit.sum += std::abs(step);
            fit.squares += step * step;
        }
        isFirst = false;
        previous = date->days;
    }
}

TDateFit FitOf(const TSampleTable& table, TDateOrder order) {
    TDateFit fit{.order = order};
    for (std::size_t column = 0; column < table.Columns().size(); ++column)
        if (table.Columns()[column] == TCellKind::Date) AddColumn(table, column, fit);
    return fit;
}

bool IsBetter(const TDateFit& a, const TDateFit& b) {
    constexpr double kClearly = 0.2;
    if (a.read != b.read) return a.read > b.read;
    if (a.reversals != b.reversals) return a.reversals < b.reversals;
    if (std::abs(a.Unevenness() - b.Unevenness()) > kClearly) return a.Unevenness() < b.Unevenness();
    return a.Mean() < b.Mean();
}

} // namespace

TDateChoice ChooseDateOrder(const TSampleTable& table) {
    std::array fits = {FitOf(table, TDateOrder::DayMonthYear), FitOf(table, TDateOrder::MonthDayYear),
                       FitOf(table, TDateOrder::YearMonthDay)};
    std::size_t dates = 0;
    for (const TSampleRow* row : table.Voters())
        for (std::size_t i = 0; i < std::min(row->kinds.size(), table.Columns().size()); ++i)
            if (table.Columns()[i] == TCellKind::Date && row->kinds[i] == TCellKind::Date) ++dates;
    // Few orders, compared by more than one measure: the best by hand, since closeness is no order.
    for (std::size_t i = 1; i < fits.size(); ++i)
        if (IsBetter(fits[i], fits[0])) std::swap(fits[0], fits[i]);
    if (IsBetter(fits[2], fits[1])) std::swap(fits[1], fits[2]);
    TDateChoice choice;
    if (fits[0].read > 0) choice.readShare = static_cast<double>(fits[0].read) / static_cast<double>(dates);
    if (fits[0].open == 0) return choice;
    choice.order = fits[0].order;
    if (fits[1].read == fits[0].read) choice.other = fits[1].order;
    return choice;
}

TTimeChoice ChooseShortTimes(const TSampleTable& table) {
    TTimeChoice choice;
    for (const TSampleRow* row : table.Voters())
        for (std::size_t i = 0; i < row->kinds.size(); ++i) {
            if (row->kinds[i] != TCellKind::TimeOfDay) continue;
            const auto time = ParseDate(row->cells[i].text, TDateOrder::YearMonthDay);
            if (!time) continue;
            if (time->isFraction) choice.shortTimes = TShortTimes::MinutesAndSeconds;
            if (time->isShortTime && std::abs(time->days) > 1) choice.otherFits = true;
        }
    if (choice.shortTimes == TShortTimes::MinutesAndSeconds) choice.otherFits = false;
    return choice;
}

bool PassesMidnight(const TSampleTable& table, std::size_t column, TShortTimes shortTimes) {
    constexpr double kHalfADay = 0.5;
    double previous = -1;
    std::size_t nights = 0;
    std::size_t falls = 0;
    for (const TSampleRow* row : table.Voters()) {
        if (row->KindAt(column) != TCellKind::TimeOfDay) continue;
        const auto time = ParseDate(row->cells[column].text, TDateOrder::YearMonthDay, shortTimes);
        if (!time || time->days > 1 || time->days < 0) return false;
        if (time->days < previous - kHalfADay)
            ++nights;
        else if (time->days < previous)
            ++falls;
        previous = time->days;
    }
    return nights > 0 && falls <= nights;
}

} // namespace lumoplot
