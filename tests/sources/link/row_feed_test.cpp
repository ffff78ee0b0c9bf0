#include "sources/link/row_feed.h"

#include "support/errors.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

// What a data set holds after all pieces.
class TFedData {
public:
    explicit TFedData(const TFeedReading& reading = {}) : m_feed(reading) {}

    void Add(std::string_view bytes, TTextEnd end = TTextEnd::More) {
        m_feed.Add(bytes);
        Take(end);
    }
    void Cut() { m_feed.Cut(); }
    void Take(TTextEnd end) {
        TFedPoints points;
        m_feed.Take(end, points);
        if (points.isAnew) m_x.clear();
        if (points.isAnew) m_y.clear();
        m_x.insert(m_x.end(), points.x.begin(), points.x.end());
        m_y.insert(m_y.end(), points.y.begin(), points.y.end());
    }

    const std::vector<double>& X() const { return m_x; }
    const std::vector<double>& Y() const { return m_y; }
    const TRowFeed& Feed() const { return m_feed; }

private:
    TRowFeed m_feed;
    std::vector<double> m_x;
    std::vector<double> m_y;
};

std::string Utf16(const std::string& ascii) {
    std::string wide = "\xFF\xFE";
    for (const char c : ascii) {
        wide += c;
        wide += '\0';
    }
    return wide;
}

std::string Rows(int from, int to, const char* end = "\n") {
    std::string text;
    for (int i = from; i < to; ++i) text += std::to_string(i) + ";" + std::to_string(i / 4) + ",25" + end;
    return text;
}

// However the bytes are cut, the points are those of the whole text.
TEST(RowFeed, CutsDoNotMatter) {
    const std::string head = "Zeit;Spannung µV\n";
    const std::string texts[] = {
        head + Rows(0, 350),
        "\xEF\xBB\xBF" + head + Rows(0, 350, "\r\n"),
        Rows(0, 350, "\r") + "350;0,25\r\n",
        Utf16("t;U\n" + Rows(0, 350)),
        "t,U,Bemerkung\n1,2,\"zwei\nZeilen\"\n2,3,\"\"\n" +
            [] {
                std::string rows;
                for (int i = 3; i < 350; ++i) rows += std::to_string(i) + ",5,\"a\nb\"\n";
                return rows;
            }(),
    };
    std::mt19937 random(20);
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 30));
        TFedData whole;
        whole.Add(text);
        ASSERT_GE(whole.X().size(), 345u);
        for (const std::size_t longest : {1u, 3u, 40u, 2000u}) {
            TFedData pieces;
            for (std::size_t at = 0; at < text.size();) {
                const std::size_t length = 1 + random() % longest;
                pieces.Add(std::string_view(text).substr(at, length));
                at += length;
            }
            EXPECT_EQ(pieces.X(), whole.X()) << longest;
            EXPECT_EQ(pieces.Y(), whole.Y()) << longest;
        }
    }
}

TEST(RowFeed, LineThatHasNotEndedWaits) {
    TFedData data;
    data.Add("1 2\n3 4\n5 6");
    EXPECT_EQ(data.X(), (std::vector<double>{1, 3}));
    data.Add("7\n8 9");
    EXPECT_EQ(data.Y(), (std::vector<double>{2, 4, 67}));
    data.Cut();
    data.Add("8 1\n");
    EXPECT_EQ(data.X(), (std::vector<double>{1, 3, 5, 8}));
    data.Add("9 2", TTextEnd::File);
    EXPECT_EQ(data.X().back(), 9);
}

// A reading that the first rows leave open is settled by those that follow.
TEST(RowFeed, FirstRowsAreReadAgain) {
    TFedData data;
    data.Add("# instrument 7\nt;U\n");
    EXPECT_TRUE(data.X().empty());
    data.Add("1;2\n");
    data.Add("1,5;2,25\n");
    ASSERT_EQ(data.X().size(), 2u);
    EXPECT_EQ(data.Y(), (std::vector<double>{2, 2.25}));
    EXPECT_EQ(data.Feed().Report().yName, "U");
    EXPECT_FALSE(data.Feed().IsSettled());
}

TEST(RowFeed, RowsWithoutNumbersAreCountedAndSkipped) {
    TFedData data;
    data.Add(Rows(0, 200));
    ASSERT_TRUE(data.Feed().IsSettled());
    data.Add("overflow;--\n200;1,5\n;\n201;2,5\n");
    EXPECT_EQ(data.X().size(), 202u);
    EXPECT_EQ(data.Feed().Report().rowsSkipped, 1);
    EXPECT_EQ(data.Feed().Report().messages.front().substr(0, 8), "row 201:");
}

TEST(RowFeed, DescriptionAndFormulasHold) {
    TFeedReading reading;
    reading.info.SetXDataColumn("0");
    reading.info.SetYDataColumn("b");
    reading.info.SetRowSamplingFrequency(2);
    reading.formulas.y = "2*Y";
    TFedData data(reading);
    data.Add("a b\n1 2\n1 3\n1 4\n");
    for (int i = 4; i <= 300; ++i) data.Add("1 " + std::to_string(i + 1) + "\n");
    ASSERT_EQ(data.X().size(), 150u);
    EXPECT_EQ(data.X()[149], 299);
    EXPECT_EQ(data.Y()[149], 600);
}

TEST(RowFeed, WhatIsNoTableIsRefusedWithoutHoldingIt) {
    TFedData endless;
    EXPECT_THROW(
        {
            for (int i = 0; i < 40; ++i) endless.Add(std::string(65536, 'x'));
        },
        EFileError);
    TFedData texts;
    EXPECT_THROW(
        {
            for (int i = 0; i < 100'000; ++i) texts.Add("no number is here\n");
        },
        EFileError);
    texts.Add("1 2\n2 3\n");
    EXPECT_EQ(texts.X().size(), 2u);
}

} // namespace
} // namespace lumoplot
