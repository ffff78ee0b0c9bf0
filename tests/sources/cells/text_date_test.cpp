#include "sources/cells/text_date.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr auto kYmd = TDateOrder::YearMonthDay;
constexpr auto kDmy = TDateOrder::DayMonthYear;
constexpr auto kMdy = TDateOrder::MonthDayYear;
/// A microsecond in days; the binary fraction of a day is not exact.
constexpr double kTolerance = 1e-6 / 86400;

struct TDateCase {
    const char* text;
    TDateOrder order;
    double days; // from a calendar: 2024-01-31 is 45322 in every spreadsheet
};

TEST(TextDate, BecomesDaysAsSpreadsheetsCountThem) {
    const TDateCase cases[] = {
        {"1899-12-30", kYmd, 0},
        {"1970-01-01", kYmd, 25569},
        {"2024-01-31", kYmd, 45322},
        {" 2024/1/31 ", kDmy, 45322},
        {"31.01.2024", kDmy, 45322},
        {"31.1.24", kDmy, 45322},
        {"1/31/2024", kMdy, 45322},
        {"31 Jan 2024", kMdy, 45322},
        {"31-January-2024", kYmd, 45322},
        {"Jan 31, 2024", kDmy, 45322},
        {"31-Jan-70", kYmd, 25599},
        {"2024-02-29", kYmd, 45351},
        {"2024-01-31 12:00", kYmd, 45322.5},
        {"2024-01-31T06:00:00.000", kYmd, 45322.25},
        {"2024-01-31T06:00:00Z", kYmd, 45322.25},
        {"2024-01-31T06:00:00+02:00", kYmd, 45322 + 4.0 / 24},
        {"2024-01-31T23:00-0230", kYmd, 45323 + 1.5 / 24},
        {"1/31/2024 1:30 pm", kMdy, 45322 + 13.5 / 24},
        {"1/31/2024, 12:30 AM", kMdy, 45322 + 0.5 / 24},
        {"12:00:36,5", kDmy, 0.5 + 36.5 / 86400},
        {"24:00", kYmd, 1},
        {"47:30:00", kYmd, 47.5 / 24},
        {"-0:30:00", kYmd, -0.5 / 24},
        {"2 days, 12:00:00", kYmd, 2.5},
        {"59:30.5", kYmd, 3570.5 / 86400},
        {"10:00:00:250", kYmd, 36000.25 / 86400},
        {"20240131", kYmd, 45322},
        {"20240131T120000Z", kDmy, 45322.5},
        {"20240131123000", kMdy, 45322 + 12.5 / 24},
        {"2024-031", kYmd, 45322},
        {"2024-366", kYmd, 45657},
        {"2024-01", kDmy, 45292},
        {"1/2024", kYmd, 45292},
        {"Jan-2024", kYmd, 45292},
        {"Jan-24", kYmd, 45292},
        {"2024-Q2", kYmd, 45383},
        {"Q2 2024", kYmd, 45383},
        {"2024-W05", kYmd, 45320},
        {"2024-W05-3", kYmd, 45322},
        {"Wed Jan 31 12:00:00 2024", kYmd, 45322.5},
        {"Wed Jan 31 12:00:00 UTC 2024", kYmd, 45322.5},
        {"Mittwoch, 31. Januar 2024", kYmd, 45322},
        {"19. M\xC3\xA4rz 2024", kMdy, 45370},
        {"19. M\xE4rz 2024", kMdy, 45370},
        {"mar. 5 mars 2024", kYmd, 45356}, // mardi, not March
        {"Mar 5, 2024", kYmd, 45356},
        {"1er ao\xC3\xBBt 2024", kYmd, 45505},
        {"2 de enero de 2024", kYmd, 45293},
        {"3-mag-24", kYmd, 45415},
        {"4 stycznia 2024", kYmd, 45295},
        {"31/Jan/2024:12:00:00 +0100", kYmd, 45322 + 11.0 / 24},
        {"20-Jan-24 1:30:00 PM", kYmd, 45311 + 13.5 / 24},
    };
    for (const auto& c : cases) {
        const auto date = ParseDate(c.text, c.order);
        ASSERT_TRUE(date) << c.text;
        EXPECT_NEAR(date->days, c.days, kTolerance) << c.text;
    }
}

TEST(TextDate, WhatIsNoDateIsRefused) {
    const TDateCase cases[] = {
        {"2023-02-29", kYmd, 0},
        {"2024-13-01", kYmd, 0},
        {"31.01.2024", kMdy, 0},
        {"31.01.2024", kYmd, 0},
        {"1.2.3", kDmy, 0},
        {"1-2/2024", kDmy, 0},
        {"2024-13", kYmd, 0},
        {"20241301", kYmd, 0},
        {"2024-367", kYmd, 0},
        {"2023-366", kYmd, 0},
        {"2024-W54", kYmd, 0},
        {"2024-Q5", kYmd, 0},
        {"1/1000", kYmd, 0},
        {"Jan 15", kYmd, 0},   // a day without its year
        {"Jui 2024", kYmd, 0}, // juin or juillet
        {"12.2024", kYmd, 0},  // a number
        {"12:60", kYmd, 0},
        {"1:2:3:4", kYmd, 0},
        {"2024-01-31 25:00", kYmd, 0},
        {"2024-01-31 12:61", kYmd, 0},
        {"12:30:61", kYmd, 0},
        {"13:00 pm", kYmd, 0},
        {"1 2 2024", kDmy, 0},
        {"31 Foo 2024", kDmy, 0},
        {"2024-01-31x", kYmd, 0},
        {"12:3", kYmd, 0},
        {":", kYmd, 0},
        {"", kYmd, 0},
        {"-", kYmd, 0},
        {"1.", kYmd, 0},
        {"12:30+99:00", kYmd, 0},
        {"024-01-31", kYmd, 0},
    };
    for (const auto& c : cases) EXPECT_FALSE(ParseDate(c.text, c.order)) << c.text;
}

TEST(TextDate, TellsWhetherItsOrderIsCertain) {
    EXPECT_TRUE(ParseDate("2024-01-02", kDmy)->fixed);
    EXPECT_TRUE(ParseDate("2 Jan 2024", kDmy)->fixed);
    EXPECT_FALSE(ParseDate("01/02/2024", kDmy)->fixed);
    EXPECT_EQ(ParseDate("12:30", kDmy)->parts, TDateParts::TimeOfDay);
}

} // namespace
} // namespace lumoplot
