// The files in a zip archive, each unpacked while it is read. Nothing in the archive is believed: what goes
// beyond the file, does not unpack to the size and the checksum that are given, or to more than kMostUnpacked
// bytes is refused.
#pragma once

#include <QFile>
#include <QIODevice>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace lumoplot {

struct TZipEntry {
    std::int64_t header = 0; ///< its place in the archive
    std::int64_t packedSize = 0;
    std::int64_t size = 0;
    std::uint32_t checksum = 0;
    int method = 0;
    bool isEncrypted = false;
};

/// Throws EFileError with reasons that stand behind "File NAME".
class TZipArchive {
public:
    static constexpr std::int64_t kMostUnpacked = std::int64_t{4} << 30;
    static constexpr std::size_t kMostEntries = 100000;

    /// Takes the opened file. Throws "is no whole zip archive: …".
    explicit TZipArchive(std::unique_ptr<QFile> file);

    /// Null where there is none.
    const TZipEntry* Find(std::string_view name) const;
    /// From its front to its end; lives on without the archive. Read errors are those of the device, whose
    /// errorString() is a reason, too. Throws "is protected with a password: …" and "unpacks to more than 4
    /// GB".
    std::unique_ptr<QIODevice> Open(const TZipEntry& entry) const;
    /// All of a small file, empty where there is none. Throws "is damaged: …".
    QByteArray Read(std::string_view name) const;

private:
    void ReadDirectory(std::int64_t position, std::int64_t size);

    std::shared_ptr<QFile> m_file;
    std::map<std::string, TZipEntry, std::less<>> m_entries;
};

} // namespace lumoplot
