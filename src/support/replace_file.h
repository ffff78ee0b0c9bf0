// Files are replaced whole: the bytes go to a file beside the target, are flushed to the disk, and take the
// target's name only when complete. A full disk or a crash leaves the old file. A file that has other names
// or another owner, or lies in a folder that takes no new file, is written in place while its old content is
// kept in the folder for temporary files.
#pragma once

#include "support/export.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lumoplot {

/// Writes the bytes to the file of that name (UTF-8), replacing one that exists and keeping its permissions;
/// a link keeps pointing at the file that it names. What is no regular file (a device, a pipe) is written in
/// place. Throws EFileError "Can not save to file NAME: REASON. ADVICE"; the old file is then untouched.
XYGRAPH_EXPORT void ReplaceFile(const std::string& name, std::span<const std::uint8_t> bytes);

/// The whole content of a file. Throws EFileError "Can not open file NAME: REASON. ADVICE"
/// or "Can not read file NAME: …".
std::vector<std::uint8_t> ReadWholeFile(const std::string& name);

/// The first half of replacing a file that nobody else has: the bytes are with the system in a new file
/// beside `name`, whose name this is ("NAME.new0"), but may not survive a power cut yet. Throws EFileError.
std::string WriteBeside(const std::string& name, std::span<const std::uint8_t> bytes);
/// The second half: waits until they are on the disk, and gives the file that name. Throws EFileError; the
/// file beside is gone then.
void PutInPlace(const std::string& beside, const std::string& name);

} // namespace lumoplot
