#include "support/system_path.h"

#if defined(_WIN32)
#include <algorithm>
#include <array>
#include <cwctype>
#include <string_view>

#include <windows.h>
#endif

namespace lumoplot {
namespace {

namespace fs = std::filesystem;

#if defined(_WIN32)
constexpr DWORD kWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool IsDigit(wchar_t c) {
    return c >= L'1' && c <= L'9';
}

// With any extension, in any case, in every folder.
bool IsDeviceName(const std::wstring& file) {
    std::wstring stem = file.substr(0, file.find(L'.'));
    stem.erase(std::min(stem.find_last_not_of(L' ') + 1, stem.size()));
    std::ranges::transform(stem, stem.begin(),
                           [](wchar_t c) { return static_cast<wchar_t>(std::towupper(c)); });
    constexpr std::array<std::wstring_view, 6> kDevices = {L"CON", L"PRN",    L"AUX",
                                                           L"NUL", L"CONIN$", L"CONOUT$"};
    if (std::ranges::find(kDevices, stem) != kDevices.end()) return true;
    return stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT")) && IsDigit(stem[3]);
}

// "a:b" is no file but a stream in one.
bool IsNoFileName(const std::wstring& file) {
    return IsDeviceName(file) || file.find_first_of(L":*?\"<>|") != std::wstring::npos;
}

// From a drive or a share on, with backslashes; empty for what the system takes for no name.
std::wstring WholeName(const fs::path& path) {
    std::wstring text(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    text.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(text.size()), text.data(), nullptr));
    return text;
}

// Without the mark names end at 259 characters, and those of folders at 247.
fs::path MarkedAsLong(const fs::path& path) {
    constexpr std::size_t kLongest = 240;
    const std::wstring text = WholeName(path);
    if (text.size() < kLongest || text.starts_with(LR"(\\?\)")) return path;
    if (text.starts_with(LR"(\\)")) return fs::path(LR"(\\?\UNC)" + text.substr(1));
    return fs::path(LR"(\\?\)" + text);
}
#endif

} // namespace

bool IsHeldByOthers([[maybe_unused]] const fs::path& path) {
#if defined(_WIN32)
    const HANDLE file = CreateFileW(path.c_str(), DELETE, kWithAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
    CloseHandle(file);
#endif
    return false;
}

bool HasOtherNames(const fs::path& path) {
#if defined(_WIN32)
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kWithAll, nullptr, OPEN_EXISTING, 0, nullptr);
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool isKnown = file != INVALID_HANDLE_VALUE && GetFileInformationByHandle(file, &information);
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
    return isKnown && information.nNumberOfLinks > 1;
#else
    std::error_code error;
    return fs::hard_link_count(path, error) > 1 && !error;
#endif
}

fs::path SystemPath(const std::string& name) {
    const std::u8string utf8(name.begin(), name.end());
#if defined(_WIN32)
    try {
        const fs::path path(utf8);
        return IsNoFileName(path.filename().wstring()) ? fs::path() : MarkedAsLong(path);
    } catch (const fs::filesystem_error&) { // bytes that are no UTF-8
        return {};
    }
#else
    return fs::path(utf8);
#endif
}

} // namespace lumoplot
