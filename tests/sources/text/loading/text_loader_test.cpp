#include "common/cancelling_progress.h"
#include "common/places.h"
#include "common/thrown_text.h"
#include "sources/text/text_fixture.h"
#include "support/errors.h"

#include <QDir>
#include <limits>
#include <random>

namespace lumoplot {
namespace {

class TextLoader : public TTextFiles {
protected:
    /// "0,0\n1,10\n2,20\n" and so on.
    static std::string Ramp(int rows) {
        std::string text;
        for (int i = 0; i < rows; ++i) text += std::to_string(i) + "," + std::to_string(10 * i) + "\n";
        return text;
    }
};

struct TBadFile {
    const char* what;
    std::string text;
    const char* error;
};

TEST_F(TextLoader, WhatCanNotBeReadIsSaidWithTheFileAndTheRow) {
    std::string noise;
    for (unsigned i = 0, state = 1; i < 5000; ++i)
        noise += static_cast<char>((state = state * 1103515245 + 12345) >> 16);
    const TBadFile files[] = {
        {"empty", "", "File data.txt is empty. Choose another one"},
        {"blank rows only", " \n\n;;\n", "File data.txt holds no column of numbers"},
        {"prose", "To whom it may concern\nNothing was measured\n",
         "File data.txt holds no column of numbers"},
        {"headers only", "time;voltage\n", "File data.txt holds no column of numbers"},
        {"binary", noise, "File data.txt is no text file: row 1 holds characters that no text has"},
        {"10 MB in one row", std::string(10 << 20, '1'), "File data.txt: row 1 is longer than 4 MB"},
        {"10 MB in a later row", "1,2\n3,4\n" + std::string(10 << 20, '5'),
         "File data.txt: row 3 is longer than 4 MB"},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.what);
        EXPECT_EQ(ErrorOf(Write(f.text)), f.error);
    }
    EXPECT_EQ(ErrorOf(m_directory.filePath(QStringLiteral("none.txt")).toStdString()),
              "Can not open file none.txt: there is no such file. Check its name and folder");
    EXPECT_EQ(ErrorOf((m_directory.path() + QStringLiteral("/.")).toStdString()),
              "Can not open file .: it is a folder. Choose a file");
}

TEST_F(TextLoader, EveryBadRowIsNamedAndNoneBecomesZero) {
    const TTextReport report = Load(SourceFile("tests/data_files/text/bad_rows.csv"));
    EXPECT_EQ(points, (TPoints{{1, 10}, {5, 50}, {8, 80}}));
    EXPECT_EQ(report.rowsChosen, 8);
    EXPECT_EQ(report.rowsUsed, 3);
    EXPECT_EQ(report.rowsSkipped, 5);
    EXPECT_EQ(report.messages, (std::vector<std::string>{
                                   "row 3: column 2 (y) is empty",
                                   "row 4: 'oops' in column 2 (y) is not a number",
                                   "row 5: column 2 (y) is missing",
                                   "row 7: 'nan' in column 2 (y) is no value",
                                   "row 8: '1e999' in column 2 (y) is too large",
                               }));
}

// Infinities are values of Y where the column is one of numbers, beside marks for missing values marks like
// these, and words among words.
TEST_F(TextLoader, AnInfiniteYIsAValueInAColumnOfNumbers) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::tuple<const char*, std::string, TPoints> files[] = {
        {"every form",
         "x,y\n1,2.5\n2,inf\n3,-INF\n4,+Infinity\n5,\xE2\x88\x9E\n6,\xE2\x88\x92\xE2\x88\x9E\n7,3\n",
         {{1, 2.5}, {2, infinity}, {3, -infinity}, {4, infinity}, {5, infinity}, {6, -infinity}, {7, 3}}},
        {"in front and alone", "x;y\n1;-inf\n2;inf\n", {{1, -infinity}, {2, infinity}}},
        {"without names", "1 inf\n2 5\n3 6\n", {{1, infinity}, {2, 5}, {3, 6}}},
        {"beside values that are missing",
         "x,y\n1,2\n2,nan\n3,inf\n4,\n5,6\n",
         {{1, 2}, {3, infinity}, {5, 6}}},
        {"beside marks", "x,y\n1,2\n2,NA\n3,Inf\n4,5\n", {{1, 2}, {4, 5}}},
        {"in X", "x,y\n1,2\ninf,3\n4,5\n", {{1, 2}, {4, 5}}},
        {"in another column", "x,y,z\n1,2,inf\n2,3,inf\n4,5,1\n", {{1, 2}, {2, 3}, {4, 5}}},
        {"among words", "who,x,y\nInf,1,2\nKim,2,3\nInf,4,5\n", {{1, 2}, {2, 3}, {4, 5}}},
    };
    for (const auto& [what, text, expected] : files) {
        SCOPED_TRACE(what);
        LoadThis(text);
        EXPECT_EQ(points, expected);
    }
    options.formulas = {"X*10", ""};
    LoadThis("x,y\n1,2\n2,inf\n");
    EXPECT_EQ(points, (TPoints{{10, 2}, {20, infinity}}));
    options.formulas = {"", "Y*10"};
    EXPECT_EQ(LoadThis("x,y\n1,2\n2,inf\n").rowsSkipped, 1);
}

TEST_F(TextLoader, RowsWithMoreCellsThanColumnsAreTold) {
    const auto notes = [&](int wide, const std::string& row, int columns, int every) {
        std::string text = columns == 2 ? "a,b\n" : "a,b,c,d\n";
        for (int i = 0; i < 2000; ++i) {
            text += std::to_string(i) + ",7" + (columns == 2 ? "" : ",8,9");
            text += (i >= 500 && i % every == wide ? row : "") + "\n";
        }
        const TTextReport report = LoadThis(text);
        EXPECT_EQ(report.rowsUsed, 2000);
        return report.notes.empty() ? std::string() : report.notes.front();
    };
    for (const int columns : {2, 4}) {
        EXPECT_EQ(notes(3, ",5", columns, 2000), "") << "before row 500";
        EXPECT_EQ(notes(600, ",5", columns, 2000), "row 602: more cells than there are columns");
        EXPECT_EQ(notes(0, ",,oops", columns, 100),
                  "row 502: more cells than there are columns, as in 14 other rows");
        EXPECT_EQ(notes(0, ", ", columns, 100), "") << "an empty cell is none";
    }
}

TEST_F(TextLoader, OnlyTheFirstMessagesAreKeptButAllSkippedRowsAreCounted) {
    std::string text = Ramp(200);
    for (int i = 0; i < 100; ++i) text += "x,y\n";
    const TTextReport report = LoadThis(text);
    EXPECT_EQ(report.rowsSkipped, 100);
    EXPECT_EQ(report.messages.size(), TTextReport::kMaxMessages);
}

TEST_F(TextLoader, UnclosedQuoteSpoilsItsRowOnly) {
    LoadThis("1,\"a\",10\n2,\"5 inch,20\n3,b,30\n\"4,c,40\n5,\"d\ne\",50\n");
    EXPECT_EQ(points, (TPoints{{1, 10}, {2, 20}, {3, 30}, {5, 50}}));
}

TEST_F(TextLoader, RowsAreChosenByNumberInTheFile) {
    const std::string text = "x,y\n" + Ramp(10); // row 2 holds X = 0
    info.SetRowChoiceMode(TRowChoice::ByNumber);
    const std::tuple<double, double, double, double> cases[] = {
        {3, 5, 1, 3}, {1, 2, 0, 0}, {8, 0, 6, 9}, {8, 99, 6, 9}};
    for (const auto& [from, to, first, last] : cases) {
        info.SetRowChoiceValue1(from);
        info.SetRowChoiceValue2(to);
        const TTextReport report = LoadThis(text);
        EXPECT_EQ(points.front().first, first);
        EXPECT_EQ(points.back().first, last);
        EXPECT_EQ(report.rowsChosen, static_cast<std::int64_t>(points.size()));
    }
    info.SetRowChoiceValue1(50);
    EXPECT_EQ(ErrorOf(Write(text)), "File data.txt: the row choice leaves no rows");
}

TEST_F(TextLoader, RowsAreChosenByX) {
    info.SetRowChoiceMode(TRowChoice::ByX);
    info.SetRowChoiceValue1(7.5);
    info.SetRowChoiceValue2(4); // the bounds may stand the other way round
    const TTextReport report = LoadThis(Ramp(10));
    EXPECT_EQ(points, (TPoints{{4, 40}, {5, 50}, {6, 60}, {7, 70}}));
    EXPECT_EQ(report.rowsChosen, 4);
}

struct TBudgetCase {
    bool automatic;
    int everyNth;
    int budget;
    TRowChoice choice;
    int frequency;
    std::size_t points;
};

TEST_F(TextLoader, RowsAreThinnedToTheBudget) {
    info.SetRowChoiceValue1(1001);
    info.SetRowChoiceValue2(2000);
    const std::string file = Write(Ramp(10000));
    const TBudgetCase cases[] = {
        {true, 1, 500, TRowChoice::All, 20, 500},  {true, 7, 5000, TRowChoice::All, 2, 5000},
        {true, 1, 4999, TRowChoice::All, 3, 3334}, {true, 1, 20000, TRowChoice::All, 1, 10000},
        {true, 7, 0, TRowChoice::All, 1, 10000}, // no budget
        {false, 7, 500, TRowChoice::All, 7, 1429}, {true, 1, 500, TRowChoice::ByNumber, 2, 500},
        {true, 1, 500, TRowChoice::ByX, 2, 500},   {false, 3, 500, TRowChoice::ByX, 3, 334},
    };
    for (const auto& c : cases) {
        info.SetAutoRowHitFreq(c.automatic);
        info.SetRowSamplingFrequency(c.everyNth);
        info.SetRowChoiceMode(c.choice);
        options.budget = c.budget;
        const TTextReport report = Load(file);
        EXPECT_EQ(report.samplingFrequency, c.frequency);
        ASSERT_EQ(points.size(), c.points);
        EXPECT_EQ(points[1].first - points[0].first, c.frequency);
    }
}

// The same rows in texts that the short way and the long way read, across the borders of the pieces that are
// read.
TEST_F(TextLoader, LongFilesLoseNoRowWhereverTheyAreCut) {
    constexpr int kRows = 60000;
    const char* rowFormats[] = {"%d,%d.5\n", "%d,%d.5\r\n", "\"%d\",\"%d.5\"\r\n",
                                "%d,%d.5,\"two\nlines\"\n"};
    for (const char* format : rowFormats) {
        std::string text;
        char row[64];
        for (int i = 0; i < kRows; ++i) {
            std::snprintf(row, sizeof row, format, i, i * 7);
            text += row;
        }
        const TTextReport report = LoadThis(text);
        ASSERT_EQ(points.size(), static_cast<std::size_t>(kRows)) << format;
        EXPECT_EQ(report.rowsSkipped, 0);
        for (int i = 0; i < kRows; ++i)
            ASSERT_EQ(points[static_cast<std::size_t>(i)], std::pair(1.0 * i, i * 7 + 0.5)) << format;
    }
}

// Whatever the bytes are, every chosen row is a point or told.
TEST_F(TextLoader, LongFilesWithOddRowsKeepTheirOrderAndTheirNumbers) {
    std::mt19937 random(5);
    for (const unsigned rarity : {7u, 500u, 100000u}) {
        SCOPED_TRACE(rarity);
        std::string text = "t,v\n";
        TPoints expected;
        std::string firstBad;
        std::int64_t bad = 0;
        for (int row = 2; row < 120000; ++row) {
            const unsigned kind = random() % rarity;
            const bool isBad = kind == 1;
            if (kind == 2) text += "# a comment, 5\n";
            if (kind == 3) text += "\r\n";
            if (kind == 2 || kind == 3) continue;
            text += std::to_string(row) + "," + (isBad ? "bad" : "7.5") + "\n";
            if (!isBad) expected.emplace_back(row, 7.5);
            if (isBad && ++bad == 1) firstBad = "row " + std::to_string(row) + ": ";
        }
        const TTextReport report = LoadThis(text);
        EXPECT_EQ(points, expected);
        EXPECT_EQ(report.rowsSkipped, bad);
        EXPECT_EQ(report.rowsChosen, bad + report.rowsUsed);
        if (bad > 0) {
            EXPECT_TRUE(report.messages.front().starts_with(firstBad)) << report.messages.front();
        }
    }
}

TEST_F(TextLoader, DamagedFilesAreReadOrRefused) {
    std::mt19937 random(3);
    const QDir directory(QString::fromStdString(SourceFile("tests/data_files/text")));
    for (const QString& name : directory.entryList(QDir::Files)) {
        QFile file(directory.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const std::string whole = file.readAll().toStdString();
        for (int round = 0; round < 60; ++round) {
            std::string text = whole.substr(0, round % 3 ? whole.size() : random() % whole.size());
            for (unsigned i = random() % 8; i > 0 && !text.empty(); --i)
                text[random() % text.size()] = "\"\r\n;,.0-/e\t\0\xFF"[random() % 13];
            info.SetDivideTextByWidth(round % 7 == 0);
            const std::string fileName = Write(text);
            try {
                const TTextReport report = Load(fileName);
                ASSERT_EQ(report.rowsChosen, report.rowsUsed + report.rowsSkipped) << text;
                ASSERT_EQ(report.rowsUsed, static_cast<std::int64_t>(points.size()));
            } catch (const ELumoError&) {
            }
        }
    }
}

TEST_F(TextLoader, ProgressRunsThroughAndCancels) {
    const std::string file = Write(Ramp(100000));
    for (const int budget : {0, 500}) {
        options.budget = budget;
        TCancellingProgress patient(std::numeric_limits<int>::max());
        EXPECT_FALSE(Load(file, &patient).cancelled);
        EXPECT_EQ(patient.Position, patient.Maximum);
        TCancellingProgress impatient(2);
        EXPECT_TRUE(Load(file, &impatient).cancelled);
    }
}

/// Cuts the file off at the first step.
class TCuttingProgress : public TProgress {
public:
    explicit TCuttingProgress(const std::string& name) : m_file(QString::fromStdString(name)) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override { return m_file.resize(4); }

private:
    QFile m_file;
};

TEST_F(TextLoader, FileThatShrinksWhileItIsReadIsAnError) {
    const std::string file = Write(Ramp(500000));
    TCuttingProgress progress(file);
    EXPECT_NE(
        ThrownText<std::exception>([&] { Load(file, &progress); }).find("data.txt became shorter while row "),
        std::string::npos);
}

} // namespace
} // namespace lumoplot
