// Database files for tests, made by the programs that people make them with.
#pragma once

#include "data/series/data_series.h"
#include "sources/database/database_loader.h"

#include <QByteArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace lumoplot {

/// Tests that need a program or a file that is missing here say so and end.
#define LUMOPLOT_NEED(condition, what)                                                                       \
    if (!(condition)) GTEST_SKIP() << what

class TDatabaseTest : public testing::Test {
protected:
    std::string NameOf(const char* file) const {
        return m_folder.filePath(QString::fromUtf8(file)).toStdString();
    }
    /// Makes a file of the statements by the program sqlite3; an empty name where that is missing.
    std::string Sqlite(const char* file, const std::string& statements) const;
    std::string WithBytes(const char* file, const QByteArray& bytes) const;

    /// Loads the table, with columns by name or number.
    TTextReport Load(const std::string& connection, const std::string& table, const std::string& x = {},
                     const std::string& y = {});
    TTextReport Load(const std::string& connection, TProgress& progress);
    TTextReport LoadQuery(const std::string& connection, const std::string& query);

    std::vector<double> X() const;
    std::vector<double> Y() const;
    TDSInfo& Info() { return Series.DataSourceInfo(); }

    TDataSeries Series;
    TTextLoadOptions Options;

private:
    QTemporaryDir m_folder;
};

/// "name=value" pairs that ODBC takes, of a field of a dBase table: its name, type, width and decimals.
struct TDbfField {
    const char* name;
    char type;
    int width;
    int decimals;
};
/// A dBase table as a program of that version writes it. Each row has its mark and its fields, padded.
QByteArray DbfBytes(unsigned char version, const std::vector<TDbfField>& fields,
                    const std::vector<QByteArray>& rows);

} // namespace lumoplot
