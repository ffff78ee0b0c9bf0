#include "sources/database/database_files.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace lumoplot {
namespace {

void AppendWord(QByteArray& bytes, int value) {
    bytes.append(static_cast<char>(value & 0xFF)).append(static_cast<char>(value >> 8 & 0xFF));
}

} // namespace

std::string TDatabaseTest::Sqlite(const char* file, const std::string& statements) const {
    const QString program = QStandardPaths::findExecutable("sqlite3");
    if (program.isEmpty()) return {};
    QProcess process;
    process.start(program, {"-batch", QString::fromStdString(NameOf(file))});
    process.write(statements.c_str());
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return NameOf(file);
}

std::string TDatabaseTest::WithBytes(const char* file, const QByteArray& bytes) const {
    QFile written(QString::fromStdString(NameOf(file)));
    EXPECT_TRUE(written.open(QIODevice::WriteOnly));
    written.write(bytes);
    return NameOf(file);
}

TTextReport TDatabaseTest::Load(const std::string& connection, const std::string& table, const std::string& x,
                                const std::string& y) {
    Info().SetKind(TSourceKind::Database);
    Info().SetSourceName(table);
    Info().SetXDataColumn(x);
    Info().SetYDataColumn(y);
    Series.SetDuplicatesAllowed(true);
    TSilentProgress progress;
    return Load(connection, progress);
}

TTextReport TDatabaseTest::Load(const std::string& connection, TProgress& progress) {
    return LoadDatabaseSeries(Series, connection, Options, progress);
}

TTextReport TDatabaseTest::LoadQuery(const std::string& connection, const std::string& query) {
    TDatabaseWish wish;
    wish.query = query;
    Info().SetDatabase(wish);
    return Load(connection, "");
}

std::vector<double> TDatabaseTest::X() const {
    std::vector<double> values;
    for (TPointCursor point = Series.First(); point; point = point.Next()) values.push_back(point.X());
    return values;
}

std::vector<double> TDatabaseTest::Y() const {
    std::vector<double> values;
    for (TPointCursor point = Series.First(); point; point = point.Next()) values.push_back(point.Y());
    return values;
}

QByteArray DbfBytes(unsigned char version, const std::vector<TDbfField>& fields,
                    const std::vector<QByteArray>& rows) {
    constexpr int kBacklink = 263; // behind the fields of the third dialect
    const bool hasBacklink = version == 0x30;
    const int header = 32 + 32 * static_cast<int>(fields.size()) + 1 + (hasBacklink ? kBacklink : 0);
    int width = 1;
    for (const TDbfField& field : fields) width += field.width;
    QByteArray bytes;
    bytes.append(static_cast<char>(version)).append(char(124)).append(char(6)).append(char(15));
    AppendWord(bytes, static_cast<int>(rows.size()));
    AppendWord(bytes, 0);
    AppendWord(bytes, header);
    AppendWord(bytes, width);
    bytes.append(20, '\0');
    int offset = 1;
    for (const TDbfField& field : fields) {
        bytes.append(QByteArray(field.name).leftJustified(11, '\0')).append(field.type);
        AppendWord(bytes, offset);
        AppendWord(bytes, 0);
        bytes.append(static_cast<char>(field.width))
            .append(static_cast<char>(field.decimals))
            .append(14, '\0');
        offset += field.width;
    }
    bytes.append('\x0D');
    if (hasBacklink) bytes.append(kBacklink, '\0');
    for (const QByteArray& row : rows) bytes.append(row.leftJustified(width, ' '));
    return bytes.append('\x1A');
}

} // namespace lumoplot
