#include "common/thrown_text.h"
#include "sources/database/database_files.h"

#include <QFile>
#include <cstdlib>
#include <cstring>

namespace lumoplot {
namespace {

class FileTablesTest : public TDatabaseTest {};

template <class TValue>
QByteArray Raw(TValue value) {
    QByteArray bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

#ifdef Q_OS_UNIX

struct TDialect {
    const char* name;
    unsigned char version;
    std::vector<TDbfField> fields;
    std::vector<QByteArray> rows;
    std::vector<double> x;
    std::vector<double> y;
};

TEST_F(FileTablesTest, TablesOfThreeDialectsAreRead) {
    const TDialect dialects[] = {
        {"three.dbf",
         0x03,
         {{"NAME", 'C', 4, 0}, {"T", 'N', 6, 2}, {"V", 'N', 5, 1}},
         {" abc   1.50  2.5", "*abc   9.99  9.9", " d     2.00     ", " e     3.25 -4.0"},
         {1.5, 3.25},
         {2.5, -4}},
        {"four.dbf",
         0x8B,
         {{"WHEN", 'D', 8, 0}, {"V", 'F', 12, 0}, {"OK", 'L', 1, 0}, {"NOTE", 'M', 10, 0}},
         {" 19700101      1.5e+2T         1", " 19700103        7.25F          "},
         {25569, 25571},
         {150, 7.25}},
        {"fox.dbf",
         0x30,
         {{"AT", 'T', 8, 0}, {"COUNT", 'I', 4, 0}, {"LEVEL", 'B', 8, 3}, {"PRICE", 'Y', 8, 4}},
         {" " + Raw(std::int32_t{2440588}) + Raw(std::int32_t{43'200'000}) + Raw(std::int32_t{-7}) +
              Raw(0.1) + Raw(std::int64_t{12'345}),
          " " + Raw(std::int32_t{2440589}) + Raw(std::int32_t{0}) + Raw(std::int32_t{70'000}) + Raw(-2.5) +
              Raw(std::int64_t{-5})},
         {25569.5, 25570},
         {-7, 70'000}}};
    for (const TDialect& dialect : dialects) {
        const std::string file =
            WithBytes(dialect.name, DbfBytes(dialect.version, dialect.fields, dialect.rows));
        Load(file, "");
        EXPECT_EQ(X(), dialect.x) << dialect.name;
        EXPECT_EQ(Y(), dialect.y) << dialect.name;
    }
    Load(NameOf("fox.dbf"), "fox", "LEVEL", "PRICE");
    EXPECT_EQ(X(), (std::vector<double>{-2.5, 0.1}));
    EXPECT_EQ(Y(), (std::vector<double>{-0.0005, 1.2345}));
    Info().SetDatabase({"", "select a.T, b.V from three a join three b on a.T = b.T where b.V > 0", "", ""});
    Load(NameOf("three.dbf"), "");
    EXPECT_EQ(Y(), (std::vector<double>{2.5}));
}

TEST_F(FileTablesTest, ATruncatedTableNamesTheRow) {
    std::vector<QByteArray> rows(1000, " 1.0 2.0");
    const QByteArray whole = DbfBytes(0x03, {{"T", 'N', 3, 1}, {"V", 'N', 4, 1}}, rows);
    const std::string file = WithBytes("cut.dbf", whole.left(whole.size() / 2));
    const std::string text = ThrownText<EFileError>([&] { Load(file, "cut"); });
    EXPECT_NE(text.find("row "), std::string::npos) << text;
    EXPECT_NE(text.find("the file ends here"), std::string::npos) << text;
    EXPECT_EQ(Series.Count(), 0);
}

TEST_F(FileTablesTest, AnAccessDatabaseIsRead) {
    const char* folder = std::getenv("LUMOPLOT_DATABASES");
    const std::string file = std::string(folder ? folder : "") + "/nwind.mdb";
    LUMOPLOT_NEED(folder && QFile::exists(QString::fromStdString(file)),
                  "LUMOPLOT_DATABASES names no folder with nwind.mdb");
    Info().SetDatabase({"", "", "ProductID <= 3", "ProductID"});
    Load(file, "Products", "ProductID", "UnitPrice");
    EXPECT_EQ(X(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Y(), (std::vector<double>{18, 19, 10}));
    const std::string half = WithBytes("half.mdb", [&] {
        QFile whole(QString::fromStdString(file));
        return whole.open(QIODevice::ReadOnly) ? whole.read(1'000'000) : QByteArray();
    }());
    ThrownText<EFileError>([&] { Load(half, "Orders"); });
    EXPECT_EQ(Series.Count(), 3);
}

#endif

} // namespace
} // namespace lumoplot
