// What the system's calls for files take as the name of a file. On Windows a name that belongs to a device
// ("NUL", "com1.txt") is no file's, and a long one has to be marked as such.
#pragma once

#include <filesystem>
#include <string>

namespace lumoplot {

/// From UTF-8; empty when the system keeps the name for a device or takes none like it.
std::filesystem::path SystemPath(const std::string& name);

/// Whether the file can not be replaced because a program has it open. Only Windows knows such a thing.
bool IsHeldByOthers(const std::filesystem::path& path);

/// Whether the file has more than one name (hard links).
bool HasOtherNames(const std::filesystem::path& path);

} // namespace lumoplot
