#if defined(_WIN32)
#include "sources/link/byte_pipe.h"
#include "support/errors.h"

#include <QDir>
#include <string_view>
#include <windows.h>

namespace lumoplot {
namespace {

[[noreturn]] void ThrowPipeError(const std::string& name, DWORD error) {
    if (error == ERROR_FILE_NOT_FOUND) throw EFileError("There is no pipe " + name);
    if (error == ERROR_PIPE_BUSY) throw EFileError("Another program reads pipe " + name);
    throw EFileError("Can not read " + (name.empty() ? "the standard input" : "pipe " + name) + ": error " +
                     std::to_string(error));
}

// `\\MACHINE\pipe\NAME`; a name by itself is that of a pipe of this machine.
std::wstring PipePath(const std::string& name) {
    const QString path = QDir::toNativeSeparators(QString::fromStdString(name));
    return (path.contains(u'\\') ? path : QStringLiteral(R"(\\.\pipe\)") + path).toStdWString();
}

bool IsPipePath(const std::wstring& path) {
    if (!path.starts_with(LR"(\\)")) return false;
    constexpr std::wstring_view kFolder = LR"(\pipe\)";
    const std::size_t begin = path.find(L'\\', 2);
    return begin != std::wstring::npos && path.size() > begin + kFolder.size() &&
           CompareStringOrdinal(path.c_str() + begin, static_cast<int>(kFolder.size()), kFolder.data(),
                                static_cast<int>(kFolder.size()), TRUE) == CSTR_EQUAL;
}

} // namespace

bool IsPipe(const std::string& name) {
    return name.find_first_of("/\\") != std::string::npos && IsPipePath(PipePath(name));
}

TBytePipe::TBytePipe(const std::string& name) : m_name(name), m_hadWriter(true) {
    if (name.empty()) {
        m_handle = GetStdHandle(STD_INPUT_HANDLE);
        return;
    }
    const std::wstring path = PipePath(name);
    if (!IsPipePath(path)) throw EFileError("There is no pipe " + name);
    m_handle = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
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
