#include "support/replace_file.h"

#include "support/errors.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace lumoplot {
namespace {

namespace fs = std::filesystem;

using TFile = std::unique_ptr<std::FILE, decltype([](std::FILE* file) { std::fclose(file); })>;

fs::path PathOf(const std::string& name) {
    return fs::path(std::u8string(name.begin(), name.end()));
}

enum class TOpenMode { Read, Write, CreateNew };

TFile OpenFile(const fs::path& path, TOpenMode mode) {
#if defined(_WIN32)
    static constexpr std::array kModes = {L"rb", L"wb", L"wbx"};
    return TFile(_wfopen(path.c_str(), kModes[static_cast<int>(mode)]));
#else
    static constexpr std::array kModes = {"rb", "wb", "wbx"};
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
    return file && WriteBytes(file.get(), bytes) && std::fclose(file.release()) == 0;
}

// Nobody else's file is overwritten: the name beside the target must be new.
std::pair<TFile, fs::path> CreateBeside(const fs::path& target) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path beside = target;
        beside += ".new" + std::to_string(attempt);
        if (TFile file = OpenFile(beside, TOpenMode::CreateNew)) return {std::move(file), beside};
    }
    return {};
}

bool WriteBesideAndRename(const fs::path& target, std::span<const std::uint8_t> bytes) {
    auto [file, beside] = CreateBeside(target);
    if (!file) return false;
    std::error_code error;
    if (const fs::file_status old = fs::status(target, error); fs::exists(old))
        fs::permissions(beside, old.permissions(), error);
    const bool written = WriteBytes(file.get(), bytes) && FlushToDisk(file.get());
    const bool closed = std::fclose(file.release()) == 0;
    if (written && closed) fs::rename(beside, target, error);
    if (written && closed && !error) return true;
    fs::remove(beside, error);
    return false;
}

// An existing file is opened for writing once before it is replaced: a rename would also succeed on a file
// that the user has protected against writing.
bool MayBeWritten(const fs::path& target) {
#if defined(_WIN32)
    return _waccess(target.c_str(), 2) == 0;
#else
    return access(target.c_str(), W_OK) == 0;
#endif
}

bool Replace(const std::string& name, std::span<const std::uint8_t> bytes) {
    std::error_code error;
    fs::path target = PathOf(name);
    const fs::file_status status = fs::status(target, error);
    if (!fs::exists(status)) return !name.empty() && WriteBesideAndRename(target, bytes);
    if (fs::is_directory(status)) return false;
    if (!fs::is_regular_file(status)) return WriteInPlace(target, bytes);
    const fs::path resolved = fs::canonical(target, error);
    if (!error) target = resolved;
    return MayBeWritten(target) && WriteBesideAndRename(target, bytes);
}

} // namespace

void ReplaceFile(const std::string& name, std::span<const std::uint8_t> bytes) {
    bool done = false;
    try {
        done = Replace(name, bytes);
    } catch (const fs::filesystem_error&) {
    }
    if (!done) throw EFileError("Can not save to file " + name);
}

std::vector<std::uint8_t> ReadWholeFile(const std::string& name) {
    const fs::path path = PathOf(name);
    std::error_code error;
    TFile file = fs::is_directory(path, error) ? nullptr : OpenFile(path, TOpenMode::Read);
    if (!file) throw EFileError("Can not open file " + name);
    std::vector<std::uint8_t> bytes;
    if (const auto size = fs::file_size(path, error); !error) bytes.reserve(static_cast<std::size_t>(size));
    std::array<std::uint8_t, 65536> buffer;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get()))
        bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
    if (std::ferror(file.get())) throw EFileError("Can not read file " + name);
    return bytes;
}

} // namespace lumoplot
