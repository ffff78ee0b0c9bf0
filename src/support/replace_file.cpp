#include "support/replace_file.h"

#include "support/code_page.h"
#include "support/errors.h"
#include "support/system_path.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace lumoplot {
namespace {

namespace fs = std::filesystem;

using TFile = std::unique_ptr<std::FILE, decltype([](std::FILE* file) { std::fclose(file); })>;

fs::path PathOf(const std::string& name) {
    return fs::path(std::u8string(name.begin(), name.end()));
}

enum class TOpenMode { Read, Write, CreateNew, Change };

#if defined(_WIN32)
// That system's fopen knows no mode that asks for a new file.
TFile CreateNewFile(const fs::path& path) {
    const int file = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    return TFile(file < 0 ? nullptr : _wfdopen(file, L"wb"));
}
#endif

TFile OpenFile(const fs::path& path, TOpenMode mode) {
#if defined(_WIN32)
    static constexpr std::array kModes = {L"rb", L"wb", L"wbx", L"r+b"};
    if (mode == TOpenMode::CreateNew) return CreateNewFile(path);
    return TFile(_wfopen(path.c_str(), kModes[static_cast<int>(mode)]));
#else
    static constexpr std::array kModes = {"rb", "wb", "wbx", "r+b"};
    return TFile(std::fopen(path.c_str(), kModes[static_cast<int>(mode)]));
#endif
}

bool FlushToDisk(std::FILE* file) {
    if (std::fflush(file) != 0) return false;
#if defined(_WIN32)
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

bool WriteBytes(std::FILE* file, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return true; // fwrite takes no null pointer, not even for 0 bytes
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

bool WriteInPlace(const fs::path& path, std::span<const std::uint8_t> bytes) {
    TFile file = OpenFile(path, TOpenMode::Write);
    const bool written = file && WriteBytes(file.get(), bytes) && FlushToDisk(file.get());
    return written && std::fclose(file.release()) == 0;
}

std::vector<std::uint8_t> ReadAll(std::FILE* file) {
    std::vector<std::uint8_t> bytes;
    std::array<std::uint8_t, 65536> buffer;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file))
        bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
    return bytes;
}

// Nobody else's file is overwritten: the name must be new. It is cut, as names may have 255 bytes.
std::pair<TFile, fs::path> CreateLike(const fs::path& target, const fs::path& folder) {
    constexpr std::size_t kLongestStart = 200;
    const std::u8string name = target.filename().u8string();
    const std::string start(
        CutUtf8({reinterpret_cast<const char*>(name.data()), name.size()}, kLongestStart));
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path created = folder / PathOf(start + ".new" + std::to_string(attempt));
        if (TFile file = OpenFile(created, TOpenMode::CreateNew)) return {std::move(file), created};
    }
    return {};
}

enum class TReplacing { Done, Failed, NoPlaceBeside };

TReplacing WriteBesideAndRename(const fs::path& target, std::span<const std::uint8_t> bytes) {
    auto [file, beside] = CreateLike(target, target.parent_path());
    if (!file) return TReplacing::NoPlaceBeside;
    std::error_code error;
    if (const fs::file_status old = fs::status(target, error); fs::exists(old))
        fs::permissions(beside, old.permissions(), error);
    const bool written = WriteBytes(file.get(), bytes) && FlushToDisk(file.get());
    const bool closed = std::fclose(file.release()) == 0;
    if (written && closed) fs::rename(beside, target, error);
    if (written && closed && !error) return TReplacing::Done;
    fs::remove(beside, error);
    return TReplacing::Failed;
}

// The old content is kept in the folder for temporary files until the new one is complete; where neither can
// be written in the end, it stays there.
bool WriteInPlaceSafely(const fs::path& target, std::span<const std::uint8_t> bytes) {
    TFile old = OpenFile(target, TOpenMode::Read);
    if (!old) return false;
    const std::vector<std::uint8_t> oldBytes = ReadAll(old.get());
    if (std::ferror(old.get())) return false;
    old.reset();
    auto [file, aside] = CreateLike(target, fs::temp_directory_path());
    if (!file) return false;
    std::error_code error;
    fs::permissions(aside, fs::perms::owner_read | fs::perms::owner_write, error);
    const bool saved = WriteBytes(file.get(), oldBytes) && FlushToDisk(file.get());
    file.reset();
    const bool done = saved && WriteInPlace(target, bytes);
    if (done || !saved || WriteInPlace(target, oldBytes)) fs::remove(aside, error);
    return done;
}

// A new file would not be the one that other names or another owner have.
bool IsSharedWithOthers(const fs::path& target) {
    if (HasOtherNames(target)) return true;
#if defined(_WIN32)
    return false;
#else
    struct stat status = {};
    return stat(target.c_str(), &status) == 0 && status.st_uid != geteuid();
#endif
}

// What a link names, also where that does not exist yet.
fs::path Followed(fs::path target) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(target, error)); ++i)
        target = target.parent_path() / fs::read_symlink(target, error);
    return target;
}

// An existing file is opened for writing once before it is replaced: a rename would also succeed on a file
// that the user has protected against writing.
bool MayBeWritten(const fs::path& target) {
#if defined(_WIN32)
    return _waccess(target.c_str(), 2) == 0;
#else
    return faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
#endif
}

bool Replace(const std::string& name, std::span<const std::uint8_t> bytes) {
    std::error_code error;
    const fs::path target = Followed(SystemPath(name));
    if (target.empty()) return false;
    const fs::file_status status = fs::status(target, error);
    if (!fs::exists(status)) return WriteBesideAndRename(target, bytes) == TReplacing::Done;
    if (!fs::is_regular_file(status)) return WriteInPlace(target, bytes);
    if (!MayBeWritten(target)) return false;
    if (IsSharedWithOthers(target)) return WriteInPlaceSafely(target, bytes);
    const TReplacing replacing = WriteBesideAndRename(target, bytes);
    return replacing == TReplacing::Done ||
           (replacing == TReplacing::NoPlaceBeside && WriteInPlaceSafely(target, bytes));
}

bool MayMakeFilesIn(const fs::path& folder) {
#if defined(_WIN32)
    return _waccess(folder.c_str(), 2) == 0;
#else
    return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
#endif
}

constexpr std::size_t kLongestName = 255; // not every system says so by itself

/// And what to do about it.
std::string ReasonNotSaved(const fs::path& target) {
    std::error_code error;
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (target.empty()) return "it has no name. Choose one";
    if (fs::is_directory(target, error)) return "it is a folder. Choose another name";
    if (error == std::errc::filename_too_long || target.filename().native().size() > kLongestName)
        return "its name is too long. Choose a shorter one";
    if (!fs::is_directory(folder, error)) return "its folder does not exist. Choose another one";
    if (IsHeldByOthers(target)) return "another program has it open. Close it there or choose another name";
    if (fs::exists(target, error) && !MayBeWritten(target))
        return "it is protected against writing. Choose another name";
    if (!fs::exists(target, error) && !MayMakeFilesIn(folder))
        return "its folder can not be written. Choose another one";
    return "the disk may be full. Free some space or choose another folder";
}

std::string ReasonNotOpened(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) return "it is a folder. Choose a file";
    if (!fs::exists(path, error)) return "there is no such file. Check its name and folder";
    return "you may not read it. Ask for its permissions to be changed";
}

[[noreturn]] void ThrowNotSaved(const std::string& name) {
    const fs::path target = name.empty() ? fs::path() : SystemPath(name);
    const bool isRefused = !name.empty() && target.empty();
    throw EFileError("Can not save to file " + name + ": " +
                     (isRefused ? "the system takes no file of this name. Choose another one"
                                : ReasonNotSaved(Followed(target))));
}

} // namespace

void ReplaceFile(const std::string& name, std::span<const std::uint8_t> bytes) {
    bool done = false;
    try {
        done = Replace(name, bytes);
    } catch (const fs::filesystem_error&) {
    }
    if (!done) ThrowNotSaved(name);
}

std::string WriteBeside(const std::string& name, std::span<const std::uint8_t> bytes) {
    const fs::path target = SystemPath(name);
    auto [file, beside] = CreateLike(target, target.parent_path());
    bool written = file && WriteBytes(file.get(), bytes);
    if (file) written = std::fclose(file.release()) == 0 && written;
    std::error_code error;
    if (!written) fs::remove(beside, error);
    if (!written) ThrowNotSaved(name);
    const std::u8string created = beside.u8string();
    return {created.begin(), created.end()};
}

void PutInPlace(const std::string& beside, const std::string& name) {
    const fs::path path = SystemPath(beside);
    std::error_code error;
    TFile file = OpenFile(path, TOpenMode::Change);
    const bool isSafe = file && FlushToDisk(file.get());
    file.reset();
    if (isSafe) fs::rename(path, SystemPath(name), error);
    if (isSafe && !error) return;
    fs::remove(path, error);
    ThrowNotSaved(name);
}

std::vector<std::uint8_t> ReadWholeFile(const std::string& name) {
    const fs::path path = SystemPath(name);
    std::error_code error;
    TFile file = fs::is_directory(path, error) ? nullptr : OpenFile(path, TOpenMode::Read);
    if (!file) throw EFileError("Can not open file " + name + ": " + ReasonNotOpened(path));
    const std::vector<std::uint8_t> bytes = ReadAll(file.get());
    if (std::ferror(file.get()))
        throw EFileError("Can not read file " + name + ": the disk or network fails. Try again");
    return bytes;
}

} // namespace lumoplot
