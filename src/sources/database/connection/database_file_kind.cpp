#include "sources/database/connection/database_file_kind.h"

#include "sources/packed/file_signature.h"
#include "support/errors.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <optional>

namespace lumoplot {
namespace {

using namespace std::string_view_literals;

constexpr qint64 kLookedAt = 512;

unsigned ByteAt(std::string_view bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

unsigned WordAt(std::string_view bytes, std::size_t place) {
    return ByteAt(bytes, place) | ByteAt(bytes, place + 1) << 8;
}

// The header of a table: version, date of the last change, rows, length of the header and of a row. Fields
// are described in 32 bytes each; one dialect has 263 bytes behind them.
bool IsDBase(std::string_view bytes) {
    if (bytes.size() < 33) return false;
    constexpr std::string_view kVersions =
        "\x02\x03\x04\x05\x30\x31\x32\x43\x63\x83\x8B\x8C\x8E\xCB\xF5\xFB"sv;
    const unsigned header = WordAt(bytes, 8);
    const unsigned fields = (header - 1) % 32;
    return kVersions.find(bytes[0]) != std::string_view::npos && ByteAt(bytes, 2) <= 12 &&
           ByteAt(bytes, 3) <= 31 && header > 32 &&
           (fields == 0 || fields == 1 || (header - 264) % 32 == 0) && WordAt(bytes, 10) > 0 &&
           ByteAt(bytes, 12) == 0 && ByteAt(bytes, 13) == 0;
}

// A table of the kind that .db files were before: length of a row, of the header (in steps of 2 KB), type.
bool IsParadox(std::string_view bytes, const QString& suffix) {
    return suffix == QLatin1String("db") && bytes.size() > 88 && WordAt(bytes, 2) > 0 &&
           WordAt(bytes, 2) % 2048 == 0 && ByteAt(bytes, 4) <= 8 && ByteAt(bytes, 5) >= 1 &&
           ByteAt(bytes, 5) <= 32;
}

std::optional<TDatabaseKind> KindOf(std::string_view bytes) {
    if (bytes.starts_with("SQLite format 3\0"sv)) return TDatabaseKind::Sqlite;
    if (bytes.starts_with("\0\1\0\0Standard "sv)) return TDatabaseKind::Access;
    if (IsDBase(bytes)) return TDatabaseKind::DBase;
    return std::nullopt;
}

// An encrypted file has bytes of every kind.
bool LooksLikeText(std::string_view bytes) {
    return std::ranges::none_of(bytes, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < ' ' && c != '\t' && c != '\n' && c != '\r' && c != '\f';
    });
}

std::string FirstBytesOf(const std::string& name) {
    QFile file(QString::fromStdString(name));
    if (!file.open(QIODevice::ReadOnly))
        throw EFileError("Can not open file " + name + ": " + file.errorString().toStdString());
    return file.read(kLookedAt).toStdString();
}

std::string WhatItIs(const std::string& name, std::string_view bytes) {
    const QString suffix = QFileInfo(QString::fromStdString(name)).suffix().toLower();
    if (bytes.empty()) return "is empty";
    if (IsParadox(bytes, suffix))
        return "is a Paradox table, which can not be read here: save it as a dBase table (.dbf) or as CSV "
               "and "
               "open that";
    if (const std::string known = KnownBinary(bytes); !known.empty()) return "is no database but " + known;
    if (LooksLikeText(bytes)) return "is no database; if it is a text file, open it as one";
    return "is no database that is known here, or an encrypted one: decrypt it with the program that made it";
}

} // namespace

bool IsDatabaseFile(const std::string& file) {
    std::string bytes;
    try {
        bytes = FirstBytesOf(file);
    } catch (const EFileError&) {
        return false;
    }
    if (KindOf(bytes)) return true;
    static const QStringList kSuffixes = {"db", "db3", "sqlite", "sqlite3", "dbf", "mdb", "accdb"};
    const QString suffix = QFileInfo(QString::fromStdString(file)).suffix().toLower();
    return kSuffixes.contains(suffix) && !LooksLikeText(bytes);
}

TDatabaseKind RequireDatabaseFile(const std::string& file) {
    const std::string bytes = FirstBytesOf(file);
    const auto kind = KindOf(bytes);
    if (!kind) throw EFileError("File " + file + " " + WhatItIs(file, bytes));
    return *kind;
}

} // namespace lumoplot
