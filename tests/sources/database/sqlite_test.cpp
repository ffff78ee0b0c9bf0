#include "common/cancelling_progress.h"
#include "common/thrown_text.h"
#include "sources/database/database_files.h"

#include <QFile>
#include <QProcess>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

QByteArray Noise() {
    QByteArray bytes(4096, '\0');
    for (int i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 37 + i / 7);
    return bytes;
}

class SqliteTest : public TDatabaseTest {
protected:
    /// 10,000 rows whose Y is 0 but for two peaks.
    std::string Peaks() const {
        return Sqlite("peaks.db",
                      "create table p(t real, v real);"
                      "with recursive n(i) as (values(0) union all select i+1 from n where i<9999) "
                      "insert into p select i/10.0, case i when 1234 then 50 when 7777 then -8 else "
                      "0 end from n;");
    }
};

TEST_F(SqliteTest, TheFirstColumnsWithValuesAreTaken) {
    const std::string file = Sqlite("a.db", "create table m(name text, t integer, v real);"
                                            "insert into m values('a',1,2.5),('b',2,3.5),('c',3,-1);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Series.SetSeriesFlag(true);
    const TTextReport report = Load(file, "m");
    EXPECT_EQ(X(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Y(), (std::vector<double>{2.5, 3.5, -1}));
    EXPECT_EQ(Series.SeriesName(), "v");
    EXPECT_EQ(report.rowsChosen, 3);
}

struct TTypeCase {
    const char* sqlType;
    const char* values;
    std::vector<double> expected;
    const char* note; ///< in the report; empty: none
};

TEST_F(SqliteTest, ValuesOfEveryTypeBecomeNumbers) {
    const TTypeCase cases[] = {
        {"integer", "(1,9007199254740992),(2,-5)", {9007199254740992.0, -5}, ""},
        {"integer", "(1,9007199254740993)", {9007199254740992.0}, "1 value has more digits"},
        {"text", "(1,'2.5'),(2,' 3 ')", {2.5, 3}, ""},
        {"text",
         "(1,'1970-01-02'),(2,'1970-01-01 12:00:00'),(3,'1970-01-01T12:00:00+06:00')",
         {25570, 25569.5, 25569.25},
         ""},
        {"real", "(1,1.5),(2,null),(3,null),(4,2)", {1.5, 2}, "2 rows have no value (NULL)"},
    };
    int count = 0;
    for (const TTypeCase& test : cases) {
        const std::string name = std::to_string(++count) + ".db";
        const std::string file =
            Sqlite(name.c_str(), std::string("create table m(t integer, v ") + test.sqlType +
                                     "); insert into m values" + test.values + ";");
        LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
        const TTextReport report = Load(file, "m", "t", "v");
        EXPECT_EQ(Y(), test.expected) << test.values;
        const std::string notes = report.notes.empty() ? "" : report.notes.front();
        EXPECT_TRUE(*test.note ? Holds(notes, test.note) : notes.empty()) << test.values << ": " << notes;
    }
}

TEST_F(SqliteTest, RowsAreChosenOrderedAndSampledByTheEngine) {
    const std::string file =
        Sqlite("a.db", "create table m(t integer, v integer);"
                       "insert into m values(5,50),(1,10),(4,40),(2,20),(3,30),(6,null);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Info().SetDatabase({"", "", "v > 10; -- not the first", "t"});
    EXPECT_EQ((Load(file, "m"), Y()), (std::vector<double>{20, 30, 40, 50}));
    Info().SetRowChoiceMode(TRowChoice::ByNumber);
    Info().SetRowChoiceValue1(2);
    Info().SetRowChoiceValue2(3);
    EXPECT_EQ((Load(file, "m"), Y()), (std::vector<double>{30, 40}));
    Info().SetRowChoiceMode(TRowChoice::ByX);
    EXPECT_EQ((Load(file, "m"), Y()), (std::vector<double>{20, 30}));
    Info().SetRowChoiceMode(TRowChoice::All);
    Info().SetRowSamplingFrequency(2);
    EXPECT_EQ((Load(file, "m"), Y()), (std::vector<double>{20, 40}));
    EXPECT_EQ((Load(file, "m", "0", "v"), X()), (std::vector<double>{1, 3}));
}

TEST_F(SqliteTest, ErrorsOfYComeFromTheirColumn) {
    const std::string file =
        Sqlite("a.db", "create table m(t integer, v integer, s real);"
                       "insert into m values(1,10,0.5),(2,20,null),(3,null,9),(4,40,-1),(5,50,'0.25');");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Info().SetYErrorRule({TYErrorKind::Column, 0, "s"});
    const std::vector<double> errors = {0.5, 0, 0, 0.25};
    const TTextReport report = Load(file, "m", "t", "v");
    EXPECT_EQ(Y(), (std::vector<double>{10, 20, 40, 50}));
    EXPECT_EQ(Series.YErrors(), errors);
    EXPECT_EQ(report.rowsWithoutYError, 2);
    Series.SetYColExpr("v/10");
    Info().SetAutoRowHitFreq(true);
    Options.budget = 2;
    Load(file, "m", "t", "v"); // thinned, without losing whose error it is
    EXPECT_EQ(Y(), (std::vector<double>{1, 4}));
    EXPECT_EQ(Series.YErrors(), (std::vector<double>{0.5, 0}));
    Info().SetYErrorRule({TYErrorKind::Column, 0, "none"});
    EXPECT_THROW(Load(file, "m", "t", "v"), EFileError);
    EXPECT_EQ(Series.YErrors(), (std::vector<double>{0.5, 0}));
    Info().SetYErrorRule({TYErrorKind::Constant, 2, {}});
    Load(file, "m", "t", "v");
    EXPECT_EQ(Series.YErrors(), (std::vector<double>{2, 2})); // by its rule
}

TEST_F(SqliteTest, AutomaticSamplingKeepsEveryPeak) {
    const std::string file = Peaks();
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Info().SetAutoRowHitFreq(true);
    Options.budget = 100;
    const TTextReport report = Load(file, "p");
    EXPECT_LE(Series.Count(), 100);
    EXPECT_GE(Series.Count(), 40);
    EXPECT_EQ(report.rowsChosen, 10'000);
    EXPECT_EQ(report.samplingFrequency, 100);
    const std::vector<double> y = Y();
    const auto at = [&](double value) {
        return X()[static_cast<std::size_t>(std::ranges::find(y, value) - y.begin())];
    };
    EXPECT_EQ(at(50), 123.4);
    EXPECT_EQ(at(-8), 777.7);
}

TEST_F(SqliteTest, ALongTableIsNotReadUnasked) {
    const std::string file = Peaks();
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Options.rowLimit = 9'999;
    EXPECT_TRUE(Load(file, "p").isOverLimit);
    EXPECT_EQ(Series.Count(), 0);
    Options.rowLimit = 10'000;
    EXPECT_FALSE(Load(file, "p").isOverLimit);
    EXPECT_EQ(Series.Count(), 10'000);
}

TEST_F(SqliteTest, FormulasSeeTheColumnsByName) {
    const std::string file =
        Sqlite("a.db", "create table m(t, volt, amp); insert into m values(1,2,3),(2,4,5),(3,0,0);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Series.SetXColExpr("X*10");
    Series.SetYColExpr("1/(volt*amp)");
    const TTextReport report = Load(file, "m", "t", "volt");
    EXPECT_EQ(X(), (std::vector<double>{10, 20}));
    EXPECT_EQ(Y(), (std::vector<double>{1.0 / 6, 0.05}));
    EXPECT_EQ(report.rowsSkipped, 1);
}

TEST_F(SqliteTest, HostileNamesAreNamesOnly) {
    const std::string file =
        Sqlite("a.db", "create table \"x\"\"; drop table m; --\"(\"a\"\"b.c\" real, \"select\" real);"
                       "create table m(t); insert into \"x\"\"; drop table m; --\" values(1,2),(3,4);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Load(file, "x\"; drop table m; --", "a\"b.c", "select");
    EXPECT_EQ(Y(), (std::vector<double>{2, 4}));
    EXPECT_EQ(DatabaseTables(file).size(), 2u);
}

TEST_F(SqliteTest, OnlyASelectOfOnesOwnRuns) {
    const std::string file = Sqlite("a.db", "create table m(t, v); insert into m values(1,2),(3,4);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    LoadQuery(file, "/* own */ with w as (select t, v*2 d from m) select * from w where d > 4;");
    EXPECT_EQ(Y(), (std::vector<double>{8}));
    for (const char* query : {"delete from m", "select 1, 2; delete from m",
                              "with w as (select 1) delete from m", "select 1,2) union select 3,4 from (m",
                              "pragma writable_schema=1", "", "update m set v=1", "attach 'b.db' as b"})
        if (*query) ThrownText<EFileError>([&] { LoadQuery(file, query); });
    EXPECT_EQ(Y(), (std::vector<double>{8})) << "a failed load leaves the points";
    Info().SetDatabase({});
    Load(file, "m");
    EXPECT_EQ(Y(), (std::vector<double>{2, 4}));
}

TEST_F(SqliteTest, CancelTakesEffectWhileTheEngineThinks) {
    const std::string file = Sqlite("a.db", "create table m(t, v); insert into m values(1,2);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    Info().SetDatabase({"",
                        "with recursive n(i) as (values(0) union all select i+1 from n) "
                        "select 1 t, count(*) v from n",
                        "", ""});
    Info().SetKind(TSourceKind::Database);
    TCancellingProgress progress(2);
    EXPECT_TRUE(Load(file, progress).cancelled);
    EXPECT_EQ(Series.Count(), 0);
}

TEST_F(SqliteTest, WhatCanNotBeReadSaysWhereAndWhy) {
    const std::string good =
        Sqlite("good.db", "create table m(t integer, v); insert into m values(1,'abc'),(2,'');"
                          "create table b(v blob); insert into b values(x'0102');"
                          "create table none(t, v);");
    LUMOPLOT_NEED(!good.empty(), "the program sqlite3 is missing");
    QFile whole(QString::fromStdString(
        Sqlite("whole.db",
               "create table m(t,v); with recursive n(i) as (values(0) union all select i+1 from n where "
               "i<5000) insert into m select i, i from n;")));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const std::string half = WithBytes("half.db", whole.readAll().left(20'000));
    const std::string noise = WithBytes("noise.db", Noise());
    const struct {
        std::string file;
        const char* table;
        const char* y;
        const char* part;
    } cases[] = {
        {good, "x", "", "there is no table 'x' (its tables are b, m, none)"},
        {good, "m", "volt", "no column is named 'volt' (its columns are t, v)"},
        {good, "m", "v", "row 1: 'abc' in column v is not a number"},
        {good, "b", "v", "column v holds binary data"},
        {good, "none", "v", "there are no rows"},
        {half, "m", "v", "half.db"},
        {noise, "m", "v", "encrypted"},
        {NameOf("missing.db"), "m", "v", "Can not open file"},
        {WithBytes("empty.db", {}), "m", "v", "is empty"},
        {WithBytes("old.db", QByteArray::fromHex("0a00000800020000") + QByteArray(2048, '\0')), "m", "v",
         "Paradox"},
    };
    for (const auto& test : cases) {
        const std::string text = ThrownText<EFileError>([&] { Load(test.file, test.table, "", test.y); });
        EXPECT_TRUE(Holds(text, test.part)) << text;
        EXPECT_EQ(Series.Count(), 0);
    }
}

TEST_F(SqliteTest, ALockedDatabaseIsToldOf) {
    const std::string file = Sqlite("a.db", "create table m(t,v); insert into m values(1,2);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    QProcess writer;
    writer.start("sqlite3", {"-batch", QString::fromStdString(file)});
    writer.write("begin exclusive;\n.print locked\n");
    ASSERT_TRUE(writer.waitForReadyRead(10'000));
    const std::string text = ThrownText<EFileError>([&] { Load(file, "m"); });
    EXPECT_TRUE(Holds(text, "locked")) << text;
    EXPECT_TRUE(Holds(text, "a.db")) << text;
    writer.closeWriteChannel();
    EXPECT_TRUE(writer.waitForFinished());
    EXPECT_EQ((Load(file, "m"), Series.Count()), 1);
}

} // namespace
} // namespace lumoplot
