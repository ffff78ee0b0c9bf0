#include "sources/text/fast_rows.h"

#include "sources/cells/text_number.h"
#include "sources/text/text_values.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

class TRandomTable {
public:
    explicit TRandomTable(unsigned seed) : m_random(seed) {
        constexpr const char* kSeparators[] = {",", ";", "\t", " \t", "|", ",;"};
        m_format.separators = kSeparators[Below(6)];
        m_format.decimalSign = m_format.separators.find(',') == std::string::npos && Below(2) ? ',' : '.';
        m_format.quotes = Below(3) ? "\"" : "'\"";
        m_format.columns.resize(1 + Below(4));
        const auto columns = static_cast<unsigned>(m_format.columns.size());
        m_format.yColumn = static_cast<int>(Below(columns));
        m_format.xColumn = static_cast<int>(Below(columns + 1)) - 1;
        m_format.hasInlineComments = Below(8) == 0;
        const char* end = Below(3) == 0 ? "\r\n" : Below(5) == 0 ? "\r" : "\n";
        for (unsigned rows = 40; rows > 0; --rows) m_text += Row() + end;
    }

    const TTextFormat& Format() const { return m_format; }
    const std::string& Text() const { return m_text; }

private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }

    std::string Digits(unsigned count) {
        std::string digits;
        while (count-- > 0) digits += static_cast<char>('0' + Below(10));
        return digits;
    }

    std::string Number() {
        // Lengths at the limits of eight and nineteen digits, leading zeros, and what no double holds.
        std::string number = Below(3) ? "" : Below(6) ? "-" : "+";
        number += Below(4) ? Digits(Below(4)) : Digits(Below(22));
        if (Below(6)) number += m_format.decimalSign + (Below(3) ? Digits(Below(9)) : Digits(Below(24)));
        if (Below(4) == 0) number.insert(number.size() / 2, Below(20), '0');
        if (Below(10) == 0) number += (Below(3) ? "e" : "D-") + Digits(1 + Below(3));
        return number;
    }

    std::string Cell() {
        constexpr const char* kOdd[] = {"",
                                        "abc",
                                        "#1",
                                        "1:30",
                                        "\"2.5\"",
                                        "'3'",
                                        "1.2.3",
                                        "--1",
                                        "nan",
                                        "1e",
                                        "2 # no",
                                        "1,234",
                                        "-",
                                        "0x10",
                                        "5 V",
                                        "\xC2\xA0"
                                        "7"};
        return Below(25) == 0 ? kOdd[Below(16)] : Number();
    }

    std::string Row() {
        std::string row;
        const bool isShort = Below(20) == 0;
        for (std::size_t i = 0; i < m_format.columns.size() + (Below(15) == 0) - (isShort ? 1 : 0); ++i) {
            if (i > 0) row += m_format.separators[Below(static_cast<unsigned>(m_format.separators.size()))];
            if (Below(10) == 0) row += ' ';
            row += Cell();
            if (Below(10) == 0) row += "  ";
        }
        return row;
    }

    std::mt19937 m_random;
    TTextFormat m_format;
    std::string m_text;
};

// Reads each row of the table both ways; returns how many the short way took.
std::size_t CompareWays(const TRandomTable& table) {
    const TRowSplitter splitter(table.Format());
    const TRowValues values(table.Format());
    const TFastRows rows(table.Format(), splitter);
    if (!rows.IsPossible()) return 0;
    const std::string padded = table.Text() + std::string(kNumberPadding, '\0');
    const char* end = padded.data() + table.Text().size();
    std::vector<TTextCell> cells;
    std::vector<double> xs(1000);
    std::vector<double> ys(1000);
    std::size_t taken = 0;
    std::int64_t dataRow = 1;
    for (const char* text = padded.data(); text < end;) {
        std::size_t count = 0;
        const char* rest = rows.Read(text, end, xs, ys, static_cast<double>(dataRow), count);
        taken += count;
        for (std::size_t i = 0; i <= count && text < end; ++i) {
            const TTextRow row = splitter.Split(text, end, TTextEnd::File, cells);
            const std::string shown(text, row.next);
            double x = 0;
            double y = 0;
            TRowProblem problem;
            if (i < count) {
                EXPECT_EQ(row.kind, TRowKind::Data) << shown;
                EXPECT_TRUE(values.ReadX(cells, dataRow, x, problem)) << shown << problem.text;
                EXPECT_TRUE(values.ReadY(cells, y, problem)) << shown << problem.text;
                EXPECT_EQ(std::bit_cast<std::uint64_t>(x), std::bit_cast<std::uint64_t>(xs[i])) << shown;
                EXPECT_EQ(std::bit_cast<std::uint64_t>(y), std::bit_cast<std::uint64_t>(ys[i])) << shown;
            } else {
                EXPECT_EQ(text, rest) << shown;
            }
            if (row.kind == TRowKind::Data) ++dataRow;
            text = row.next;
        }
    }
    return taken;
}

TEST(FastRows, ReadWhatTheLongWayReads) {
    std::size_t taken = 0;
    for (unsigned seed = 0; seed < 2000 && !testing::Test::HasFailure(); ++seed)
        taken += CompareWays(TRandomTable(seed));
    EXPECT_GT(taken, 20000u);
}

// Both ways share the digit loops; the library does not.
TEST(FastRows, RoundAsTheLibrary) {
    TTextFormat format;
    format.separators = ",";
    format.columns.resize(2);
    format.xColumn = 0;
    format.yColumn = 1;
    const TRowSplitter splitter(format);
    const TFastRows rows(format, splitter);
    std::mt19937_64 random(1);
    const auto number = [&random] {
        std::string text = random() % 2 ? "-" : "";
        const std::size_t before = random() % 8;
        const std::size_t behind = random() % 20 + (before == 0 ? 1 : 0);
        for (std::size_t i = 0; i < before + behind; ++i) {
            if (i == before) text += '.';
            text += random() % 4 ? static_cast<char>('0' + random() % 10) : random() % 2 ? '0' : '9';
        }
        return text;
    };
    for (int i = 0; i < 100000; ++i) {
        const std::string xText = number();
        const std::string yText = number();
        const std::string row = xText + ',' + yText + '\n' + std::string(kNumberPadding, '\0');
        double x = 0;
        double y = 0;
        std::size_t count = 0;
        rows.Read(row.data(), row.data() + row.size() - kNumberPadding, {&x, 1}, {&y, 1}, 0, count);
        ASSERT_EQ(count, 1u) << row;
        double wanted = 0;
        std::from_chars(xText.data(), xText.data() + xText.size(), wanted);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(x), std::bit_cast<std::uint64_t>(wanted)) << row;
        std::from_chars(yText.data(), yText.data() + yText.size(), wanted);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(y), std::bit_cast<std::uint64_t>(wanted)) << row;
    }
}

} // namespace
} // namespace lumoplot
