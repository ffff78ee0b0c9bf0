// What kind a file is.
#pragma once

#include <optional>
#include <string>

namespace lumoplot {

enum class TFileKind { Graph, DataSet, Function, Text, Database };

/// The extension in lower case with its point; empty for a name without one.
std::string Extension(const std::string& name);

/// By the name's extension where it is one of the system's own, else by how the content begins.
/// Databases are always known by their content or as connections (cli/database_input.h). Throws EFileError
/// for a file that cannot be read.
TFileKind KindOfFile(const std::string& name);

/// The kind that a file of that name is written as: nothing for an extension that is none of .ltp, .lds,
/// .lfn, .dat, .csv and .txt.
std::optional<TFileKind> KindByExtension(const std::string& name);

} // namespace lumoplot
