// A named pipe or the standard input, read without waiting: one file for each kind of system.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace lumoplot {

/// There is a named pipe of that name.
bool IsPipe(const std::string& name);

class TBytePipe {
public:
    /// Opens the pipe, or the standard input for an empty name. Throws EFileError.
    explicit TBytePipe(const std::string& name);
    ~TBytePipe();
    TBytePipe(const TBytePipe&) = delete;
    TBytePipe& operator=(const TBytePipe&) = delete;

    /// Reads what is there and returns how much that was, 0 while nothing is; nothing when nobody is left who
    /// writes. Throws EFileError.
    std::optional<std::size_t> Read(char* bytes, std::size_t capacity);

private:
    std::string m_name;
    void* m_handle = nullptr; ///< on Windows
    int m_descriptor = -1;    ///< elsewhere
    bool m_isOwn = false;     ///< to be closed
    bool m_hadWriter = false;
};

} // namespace lumoplot
