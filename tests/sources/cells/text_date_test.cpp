#include "sources/cells/text_date.h"

#include "common/case_file.h"
#include "expr/expression_parser.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr auto kDmy = TDateOrder::DayMonthYear;
/// A microsecond in days; the binary fraction of a day is not exact.
constexpr double kTolerance = 1e-6 / 86400;

double DaysOf(const std::string& formula) {
    TExpressionParser parser;
    parser.AddExpression(formula);
    return parser.Evaluate();
}

TEST(TextDate, BecomesDaysAsSpreadsheetsCountThem) {
    for (const auto& row : ReadCases("dates.tsv", 3)) {
        const TDateOrder order = row[1] == "ymd"   ? TDateOrder::YearMonthDay
                                 : row[1] == "dmy" ? kDmy
                                                   : TDateOrder::MonthDayYear;
        const auto date = ParseDate(row[2], order);
        ASSERT_EQ(date.has_value(), row[0] != "none") << row[2];
        if (date) {
            EXPECT_NEAR(date->days, DaysOf(row[0]), kTolerance) << row[2];
        }
    }
}

TEST(TextDate, TellsWhetherItsOrderIsCertain) {
    EXPECT_TRUE(ParseDate("2024-01-02", kDmy)->fixed);
    EXPECT_TRUE(ParseDate("2 Jan 2024", kDmy)->fixed);
    EXPECT_FALSE(ParseDate("01/02/2024", kDmy)->fixed);
    EXPECT_EQ(ParseDate("12:30", kDmy)->parts, TDateParts::TimeOfDay);
}

} // namespace
} // namespace lumoplot
