#if defined(_WIN32)
#include "sources/link/byte_pipe.h"
#include "support/errors.h"

#include <filesystem>
#include <windows.h>

namespace lumoplot {
namespace {

[[noreturn]] void ThrowPipeError(const std::string& name, DWORD error) {
    throw EFileError("Can not read " + (name.empty() ? "the standard input" : "pipe " + name) + ": error " +
                     std::to_string(error));
}

} // namespace

bool IsPipe(const std::string& name) {
    return name.starts_with(R"(\\.\pipe\)");
}

TBytePipe::TBytePipe(const std::string& name) : m_name(name), m_hadWriter(true) {
    if (name.empty()) {
        m_handle = GetStdHandle(STD_INPUT_HANDLE);
        return;
    }
    const std::u8string utf8(name.begin(), name.end());
    m_handle =
        CreateFileW(std::filesystem::path(utf8).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (m_handle == INVALID_HANDLE_VALUE) ThrowPipeError(name, GetLastError());
    m_isOwn = true;
}

TBytePipe::~TBytePipe() {
    if (m_isOwn) CloseHandle(m_handle);
}

std::optional<std::size_t> TBytePipe::Read(char* bytes, std::size_t capacity) {
    DWORD there = 0;
    if (GetFileType(m_handle) == FILE_TYPE_PIPE) {
        if (!PeekNamedPipe(m_handle, nullptr, 0, nullptr, &there, nullptr)) {
            if (GetLastError() == ERROR_BROKEN_PIPE) return std::nullopt;
            ThrowPipeError(m_name, GetLastError());
        }
        if (there == 0) return 0;
    } else {
        there = static_cast<DWORD>(capacity);
    }
    DWORD count = 0;
    const DWORD wanted = there < capacity ? there : static_cast<DWORD>(capacity);
    if (!ReadFile(m_handle, bytes, wanted, &count, nullptr)) {
        if (GetLastError() == ERROR_BROKEN_PIPE) return std::nullopt;
        ThrowPipeError(m_name, GetLastError());
    }
    if (count == 0) return std::nullopt;
    return count;
}

} // namespace lumoplot
#endif
