#include "sources/packed/zip_archive.h"

#include "support/errors.h"

#include <QtEndian>
#include <algorithm>
#include <vector>
// Input that is only read is const.
#ifndef ZLIB_CONST
#define ZLIB_CONST
#endif
#include <zlib.h>

namespace lumoplot {
namespace {

constexpr int kStored = 0;
constexpr int kDeflated = 8;
constexpr std::int64_t kEndSize = 22;
constexpr std::int64_t kLongEndSize = 56;
constexpr std::int64_t kLocatorSize = 20;
constexpr std::int64_t kEntrySize = 46;
constexpr std::int64_t kLocalSize = 30;
constexpr std::int64_t kMostDirectory = 64 << 20;
constexpr std::int64_t kMostWhole = 16 << 20;
constexpr quint32 kInLongField = 0xFFFFFFFF;

template <class TNumber>
TNumber NumberAt(const QByteArray& bytes, std::int64_t place) {
    return qFromLittleEndian<TNumber>(bytes.constData() + place);
}

QByteArray BytesAt(QFile& file, std::int64_t position, std::int64_t count) {
    if (position < 0 || count < 0 || position > file.size() - count || !file.seek(position)) return {};
    QByteArray bytes = file.read(count);
    return bytes.size() == count ? bytes : QByteArray();
}

[[noreturn]] void ThrowDamaged(const char* what) {
    throw EFileError(std::string("is no whole zip archive: ") + what);
}

struct TDirectory {
    std::int64_t position = 0;
    std::int64_t size = 0;
};

// Of archives that are too long for 32 bits; as `directory` where there is no such record.
TDirectory LongDirectory(QFile& file, std::int64_t end, TDirectory directory) {
    const QByteArray locator = BytesAt(file, end - kLocatorSize, kLocatorSize);
    if (!locator.startsWith("PK\6\7")) return directory;
    const QByteArray record = BytesAt(file, NumberAt<qint64>(locator, 8), kLongEndSize);
    if (!record.startsWith("PK\6\6")) return directory;
    return {NumberAt<qint64>(record, 48), NumberAt<qint64>(record, 40)};
}

// The archive ends with the place of its directory, behind which there may be a comment.
TDirectory FindDirectory(QFile& file) {
    const std::int64_t tail = std::min<std::int64_t>(file.size(), kEndSize + 65535);
    const QByteArray bytes = BytesAt(file, file.size() - tail, tail);
    const qsizetype place = bytes.lastIndexOf(QByteArrayView("PK\5\6", 4));
    if (place < 0 || bytes.size() - place < kEndSize) ThrowDamaged("its end is missing");
    const TDirectory directory{NumberAt<quint32>(bytes, place + 16), NumberAt<quint32>(bytes, place + 12)};
    return LongDirectory(file, file.size() - tail + place, directory);
}

// Sizes and places that 32 bits do not hold stand in a field of their own, one behind the other.
void TakeLongNumbers(const QByteArray& fields, TZipEntry& entry) {
    for (qsizetype at = 0; at + 4 <= fields.size();) {
        const auto id = NumberAt<quint16>(fields, at);
        const qsizetype end = at + 4 + NumberAt<quint16>(fields, at + 2);
        at += 4;
        if (end > fields.size()) return;
        if (id == 1)
            for (std::int64_t* number : {&entry.size, &entry.packedSize, &entry.header})
                if (*number == kInLongField && at + 8 <= end) {
                    *number = NumberAt<qint64>(fields, at);
                    at += 8;
                }
        at = end;
    }
}

class TUnpackedEntry final : public QIODevice {
public:
    TUnpackedEntry(std::shared_ptr<QFile> file, const TZipEntry& entry, std::int64_t data)
        : m_file(std::move(file)), m_entry(entry), m_position(data), m_end(data + entry.packedSize),
          m_input(static_cast<std::size_t>(std::clamp<std::int64_t>(entry.packedSize, 1, kInputSize))) {
        m_isOpen = inflateInit2(&m_stream, kRawWindow) == Z_OK;
        QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    ~TUnpackedEntry() override { inflateEnd(&m_stream); }
    TUnpackedEntry(const TUnpackedEntry&) = delete;
    TUnpackedEntry& operator=(const TUnpackedEntry&) = delete;

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 capacity) override {
        if (m_isFailed) return -1;
        qint64 count = 0;
        while (count == 0 && capacity > 0 && !m_isAtEnd) {
            if (m_begin == m_filled && !Fill()) return Fail();
            count = m_entry.method == kStored ? Copy(data, capacity) : Inflate(data, capacity);
            if (count < 0) return Fail();
        }
        m_given += count;
        m_checksum = crc32(m_checksum, reinterpret_cast<const Bytef*>(data), static_cast<uInt>(count));
        const bool isTooLong = m_given > m_entry.size;
        if (isTooLong || (m_isAtEnd && (m_given != m_entry.size || m_checksum != m_entry.checksum)))
            return Fail();
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    static constexpr int kRawWindow = -15;
    static constexpr std::int64_t kInputSize = 65536;

    qint64 Fail() {
        m_isFailed = true;
        setErrorString(QStringLiteral("is damaged: what it has packed does not unpack"));
        return -1;
    }

    bool Fill() {
        const auto wanted = std::min<std::int64_t>(m_end - m_position, static_cast<qint64>(m_input.size()));
        if (!m_file->seek(m_position)) return false;
        const qint64 count = m_file->read(m_input.data(), wanted);
        if (count != wanted) return false;
        m_position += count;
        m_begin = 0;
        m_filled = static_cast<std::size_t>(count);
        if (m_entry.method == kStored) m_isAtEnd = count == 0;
        return m_entry.method == kStored || count > 0;
    }

    qint64 Copy(char* data, qint64 capacity) {
        const std::size_t count = std::min(static_cast<std::size_t>(capacity), m_filled - m_begin);
        std::copy_n(m_input.data() + m_begin, count, data);
        m_begin += count;
        return static_cast<qint64>(count);
    }

    qint64 Inflate(char* data, qint64 capacity) {
        constexpr qint64 kMostAtOnce = 1 << 30;
        const auto room = static_cast<uInt>(std::min(capacity, kMostAtOnce));
        m_stream.next_in = reinterpret_cast<const Bytef*>(m_input.data() + m_begin);
        m_stream.avail_in = static_cast<uInt>(m_filled - m_begin);
        m_stream.next_out = reinterpret_cast<Bytef*>(data);
        m_stream.avail_out = room;
        const int result = m_isOpen ? inflate(&m_stream, Z_NO_FLUSH) : Z_MEM_ERROR;
        m_begin = m_filled - m_stream.avail_in;
        m_isAtEnd = result == Z_STREAM_END;
        const bool isRight = m_isAtEnd || result == Z_OK || result == Z_BUF_ERROR;
        return isRight ? static_cast<qint64>(room - m_stream.avail_out) : -1;
    }

    std::shared_ptr<QFile> m_file;
    TZipEntry m_entry;
    std::int64_t m_position; ///< in the archive
    std::int64_t m_end;
    std::int64_t m_given = 0;
    uLong m_checksum = crc32(0, nullptr, 0);
    std::vector<char> m_input;
    std::size_t m_begin = 0; ///< of the input that is not unpacked yet
    std::size_t m_filled = 0;
    z_stream m_stream{};
    bool m_isOpen = false;
    bool m_isAtEnd = false;
    bool m_isFailed = false;
};

} // namespace

TZipArchive::TZipArchive(std::unique_ptr<QFile> file) : m_file(std::move(file)) {
    const TDirectory directory = FindDirectory(*m_file);
    ReadDirectory(directory.position, directory.size);
}

void TZipArchive::ReadDirectory(std::int64_t position, std::int64_t size) {
    if (size > kMostDirectory) ThrowDamaged("its list of files is too long");
    const QByteArray list = BytesAt(*m_file, position, size);
    if (list.isEmpty()) ThrowDamaged("its list of files is missing");
    for (qsizetype at = 0; at + kEntrySize <= list.size() && m_entries.size() < kMostEntries;) {
        if (!QByteArrayView(list).sliced(at).startsWith("PK\1\2")) break;
        const qsizetype nameSize = NumberAt<quint16>(list, at + 28);
        const qsizetype fieldsSize = NumberAt<quint16>(list, at + 30);
        const qsizetype name = at + kEntrySize;
        if (name + nameSize + fieldsSize > list.size()) ThrowDamaged("its list of files ends early");
        TZipEntry entry;
        entry.isEncrypted = (NumberAt<quint16>(list, at + 8) & 1) != 0;
        entry.method = NumberAt<quint16>(list, at + 10);
        entry.checksum = NumberAt<quint32>(list, at + 16);
        entry.packedSize = NumberAt<quint32>(list, at + 20);
        entry.size = NumberAt<quint32>(list, at + 24);
        entry.header = NumberAt<quint32>(list, at + 42);
        TakeLongNumbers(list.mid(name + nameSize, fieldsSize), entry);
        m_entries.emplace(list.mid(name, nameSize).toStdString(), entry);
        at = name + nameSize + fieldsSize + NumberAt<quint16>(list, at + 32);
    }
}

const TZipEntry* TZipArchive::Find(std::string_view name) const {
    const auto found = m_entries.find(name);
    return found == m_entries.end() ? nullptr : &found->second;
}

std::unique_ptr<QIODevice> TZipArchive::Open(const TZipEntry& entry) const {
    if (entry.isEncrypted)
        throw EFileError("is protected with a password: save it without one and open that");
    if (entry.size > kMostUnpacked || entry.size < 0) throw EFileError("unpacks to more than 4 GB");
    if (entry.method != kStored && entry.method != kDeflated)
        throw EFileError("is packed in an unusual way: save it again with its program");
    const QByteArray local = BytesAt(*m_file, entry.header, kLocalSize);
    if (!local.startsWith("PK\3\4")) ThrowDamaged("a file in it is missing");
    const std::int64_t data =
        entry.header + kLocalSize + NumberAt<quint16>(local, 26) + NumberAt<quint16>(local, 28);
    if (entry.packedSize < 0 || data > m_file->size() - entry.packedSize)
        ThrowDamaged("a file in it ends early");
    return std::make_unique<TUnpackedEntry>(m_file, entry, data);
}

QByteArray TZipArchive::Read(std::string_view name) const {
    const TZipEntry* entry = Find(name);
    if (!entry) return {};
    if (entry->size > kMostWhole) throw EFileError("is damaged: its list of sheets is too long");
    const auto device = Open(*entry);
    QByteArray bytes = device->readAll();
    if (bytes.size() != entry->size) throw EFileError(device->errorString().toStdString());
    return bytes;
}

} // namespace lumoplot
