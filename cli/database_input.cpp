#include "cli/database_input.h"

#include "cli/arguments.h"
#include "data/series/ds_info.h"
#include "sources/database/connection/saved_connections.h"
#include "sources/database/database_loader.h"
#include "support/errors.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::string_view kMark = "connect:";
constexpr int kLookedAtRows = 100;

// A saved name comes before an address, a file comes last.
std::string ConnectionText(const std::string& argument) {
    if (!argument.starts_with(kMark)) return argument;
    const std::string name = argument.substr(kMark.size());
    if (const auto saved = SavedConnection(name)) return *saved;
    if (IsServer(name) || QFileInfo::exists(QString::fromStdString(name))) return name;
    throw EFileError("There is no saved connection '" + name + "', and it is neither a file nor an address");
}

TDSInfo DatabaseInfo(const TDataOptions& options, const std::string& connection) {
    const TTextOptions& text = options.text;
    if (!text.table.empty() && !text.query.empty()) throw EUsage("--table and --query exclude each other");
    TDSInfo info;
    info.SetKind(TSourceKind::Database);
    info.SetSourceName(text.table);
    info.SetDatabase({connection, text.query, text.where, text.orderBy});
    info.SetXDataColumn(text.xColumn);
    info.SetYDataColumn(text.yColumn);
    if (!text.yErrorColumn.empty()) info.SetYErrorRule({TYErrorKind::Column, 0, text.yErrorColumn});
    info.SetRowSamplingFrequency(text.every.value_or(1));
    return info;
}

// The drivers need one.
class TDatabaseApplication {
public:
    TDatabaseApplication() {
        static int count = 1;
        static char name[] = "xydata";
        static char* arguments[] = {name, nullptr};
        if (!QCoreApplication::instance()) m_application.emplace(count, arguments);
    }

private:
    std::optional<QCoreApplication> m_application;
};

TDocument ColumnsOf(const std::string& connection, const TDSInfo& info) {
    TDocument columns = TDocument::array();
    for (const TTableColumn& column : PreviewDatabase(connection, info, kLookedAtRows).table.columns)
        columns.push_back({{"Name", column.name}, {"Kind", KindText(column.kind)}});
    return columns;
}

} // namespace

void AddDatabaseOptions(CLI::App& command, TTextOptions& options) {
    const std::string group = "Reading of databases";
    command.add_option("--table", options.table, "Table or view (the only one)")
        ->type_name("NAME")
        ->group(group);
    command.add_option("--query", options.query, "A SELECT of your own in place of a table")
        ->type_name("SQL")
        ->group(group);
    command.add_option("--where", options.where, "Condition for the rows")->type_name("SQL")->group(group);
    command.add_option("--order-by", options.orderBy, "Order of the rows")->type_name("SQL")->group(group);
    // Taken out before the arguments are parsed.
    static std::string unused;
    command
        .add_option("--connect", unused,
                    "Stands for DATA: a saved connection, postgresql://USER@HOST/NAME, mysql://…, odbc:DSN")
        ->type_name("NAME|URL")
        ->group(group);
}

void PutConnectionFirst(std::vector<std::string>& arguments) {
    const auto found = std::ranges::find_if(arguments, [](const std::string& argument) {
        return argument == "--connect" || argument.starts_with("--connect=");
    });
    if (found == arguments.end() || found == arguments.begin()) return;
    const bool isJoined = *found != "--connect";
    if (!isJoined && found + 1 == arguments.end()) return;
    const std::string value = isJoined ? found->substr(std::string_view("--connect=").size()) : *(found + 1);
    arguments.erase(found, found + (isJoined ? 1 : 2));
    arguments.insert(arguments.begin() + 1, std::string(kMark) + value);
}

bool IsConnection(const std::string& argument) {
    return argument.starts_with(kMark) || IsServer(argument);
}

std::string ShownSource(const std::string& argument) {
    return WithoutPassword(argument.starts_with(kMark) ? argument.substr(kMark.size()) : argument);
}

TTextReport LoadDatabaseData(TDataSeries& series, const TDataOptions& options) {
    const TDatabaseApplication application;
    const std::string connection = ConnectionText(options.file);
    series.DataSourceInfo() = DatabaseInfo(options, connection);
    series.SetDuplicatesAllowed(!options.text.merge);
    TSilentProgress progress;
    TTextReport report = LoadDatabaseSeries(series, connection, {}, progress);
    for (const std::string& note : report.notes)
        PrintMessage(DatabaseSourceText(connection, series.DataSourceInfo()) + ": " + note);
    series.DataSourceInfo() = TDSInfo();
    return report;
}

std::string DatabaseTitle(const TDataOptions& options) {
    if (!options.text.table.empty()) return options.text.table;
    return IsConnection(options.file)
               ? ""
               : QFileInfo(QString::fromStdString(options.file)).completeBaseName().toStdString();
}

TDocument DatabaseDocument(const TDataOptions& options) {
    const TDatabaseApplication application;
    const std::string connection = ConnectionText(options.file);
    TDSInfo info = DatabaseInfo(options, connection);
    TDocument document = {{"Connection", WithoutPassword(connection)}};
    if (!info.SourceName().empty() || !info.Database().query.empty()) {
        document["Columns"] = ColumnsOf(connection, info);
        return document;
    }
    document["Tables"] = TDocument::array();
    for (const TSqlTable& table : DatabaseTables(connection)) {
        info.SetSourceName(table.Shown());
        document["Tables"].push_back({{"Name", table.Shown()},
                                      {"Kind", table.isView ? "view" : "table"},
                                      {"Columns", ColumnsOf(connection, info)}});
    }
    return document;
}

} // namespace lumoplot
