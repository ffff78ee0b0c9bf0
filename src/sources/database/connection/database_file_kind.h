// Databases in files, known by how the file begins and not by its name.
#pragma once

#include "sources/database/connection/connection.h"

namespace lumoplot {

/// The kind of the file. Throws EFileError "Can not open file NAME: …", and says what a file is that can not
/// be read as a database, with the way to its data.
TDatabaseKind RequireDatabaseFile(const std::string& file);

} // namespace lumoplot
