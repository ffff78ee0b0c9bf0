// Databases in the place of DATA: a file that is one, a server's address, or a saved connection.
#pragma once

#include "cli/data_input.h"
#include "cli/output.h"

namespace lumoplot {

/// The options --table, --query, --where, --order-by and --connect.
void AddDatabaseOptions(CLI::App& command, TTextOptions& options);

/// "--connect NAME|URL" stands in the place of DATA: it becomes the first argument behind the command, marked
/// as a connection.
void PutConnectionFirst(std::vector<std::string>& arguments);

/// The argument is a connection and no file's name.
bool IsConnection(const std::string& argument);

/// DATA as messages name it: without a password.
std::string ShownSource(const std::string& argument);

/// Fills a data set from a database and names it after the Y column; its source is manual afterwards.
TTextReport LoadDatabaseData(TDataSeries& series, const TDataOptions& options);

/// What a picture of it is called: the table's name, or the file's.
std::string DatabaseTitle(const TDataOptions& options);

/// The tables and views with their columns; with --table or --query those of it alone.
TDocument DatabaseDocument(const TDataOptions& options);

} // namespace lumoplot
