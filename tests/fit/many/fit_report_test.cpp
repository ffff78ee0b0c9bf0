#include "fit/many/fit_report.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

// A page is as wide as ten columns: those of a wider table follow below, with the names of its rows.
TEST(FitReport, AWideTableGoesOnBelow) {
    for (const auto& [columns, tables] : {std::pair{10, 1u}, {11, 2u}, {19, 2u}, {20, 3u}}) {
        TFitReportSection section{"Correlations", {}, {{""}, {"first"}}};
        for (int i = 1; i < columns; ++i) {
            section.Table[0].push_back("p" + std::to_string(i) + "p");
            section.Table[1].push_back("v" + std::to_string(i) + "v");
        }
        const std::string html = ReportHtml("", {section}, "");
        EXPECT_EQ(Count(html, "<table>"), tables) << columns;
        EXPECT_EQ(Count(html, ">first<"), tables) << columns;
        for (int i = 1; i < columns; ++i)
            EXPECT_EQ(Count(html, ">v" + std::to_string(i) + "v<"), 1u) << columns;
    }
}

} // namespace
} // namespace lumoplot
