// Any spreadsheet file is read or refused with a message. The input holds the parts of the archive, each
// behind a line "=== NAME", so that what is changed in them reaches who reads their XML; the part without a
// name says how they are packed, and whether bytes of the archive itself are changed then.
#include "sources/report/text_explanation.h"
#include "sources/spreadsheet/sheet_place.h"
#include "sources/text/loading/text_preview.h"
#include "support/errors.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace {

using namespace lumoplot;

void Require(bool condition) {
    if (!condition) std::abort();
}

struct TPart {
    std::string name;
    std::string text;
};

std::vector<TPart> PartsOf(std::string_view input) {
    constexpr std::string_view kMark = "=== ";
    std::vector<TPart> parts;
    while (input.starts_with(kMark)) {
        input.remove_prefix(kMark.size());
        const std::size_t line = std::min(input.find('\n'), input.size());
        const std::size_t end = std::min(input.find("\n=== ", line), input.size());
        const std::size_t begin = std::min(line + 1, end);
        parts.push_back({std::string(input.substr(0, line)), std::string(input.substr(begin, end - begin))});
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return parts;
}

std::string Bytes(std::uint64_t number, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    return bytes;
}

std::string Deflated(const std::string& text) {
    constexpr int kRawWindow = -15;
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, kRawWindow, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        std::abort();
    std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())) + 64, '\0');
    std::string source = text;
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    Require(deflate(&stream, Z_FINISH) == Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string Zip(const std::vector<TPart>& parts, bool isDeflated) {
    std::string archive;
    std::string directory;
    std::size_t count = 0;
    for (const auto& [name, text] : parts) {
        if (name.empty()) continue;
        const std::string packed = isDeflated ? Deflated(text) : text;
        const uLong checksum = crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(text.data()),
                                     static_cast<uInt>(text.size()));
        const std::string description = Bytes(20, 2) + Bytes(0, 2) + Bytes(isDeflated ? 8 : 0, 2) +
                                        Bytes(0, 4) + Bytes(checksum, 4) + Bytes(packed.size(), 4) +
                                        Bytes(text.size(), 4) + Bytes(name.size(), 2) + Bytes(0, 2);
        directory += "PK\1\2" + Bytes(20, 2) + description + Bytes(0, 8) + Bytes(0, 2) +
                     Bytes(archive.size(), 4) + name;
        archive += "PK\3\4" + description + name + packed;
        ++count;
    }
    const std::size_t begin = archive.size();
    return archive + directory + "PK\5\6" + Bytes(0, 4) + Bytes(count, 2) + Bytes(count, 2) +
           Bytes(directory.size(), 4) + Bytes(begin, 4) + Bytes(0, 2);
}

// Changes some bytes, most of them in the list at the end.
void Damage(std::string& archive, int changes, std::uint32_t seed) {
    for (; changes > 0 && !archive.empty(); --changes) {
        seed = seed * 1664525 + 1013904223;
        const std::size_t range =
            (seed & 0x100) != 0 ? archive.size() : std::min<std::size_t>(archive.size(), 400);
        const std::size_t place = archive.size() - 1 - (seed >> 12) % range;
        archive[place] = static_cast<char>((seed & 0x200) != 0 ? 0xFF : seed >> 3);
    }
}

void Read(const std::string& name) {
    constexpr int kMostRows = 20;
    for (const TBookSheet& sheet : SheetsOf(name)) {
        try {
            Require(PreviewText(WithSheet(name, sheet.name), {}, kMostRows).rows.size() <= kMostRows);
        } catch (const ELumoError&) {
            // What can not be read is told.
        }
    }
    std::int64_t points = 0;
    TTextLoadOptions options;
    options.restart = [&points] { points = 0; };
    TSilentProgress progress;
    const auto sink = [&points](std::span<const double> x, std::span<const double>, std::span<const double>) {
        for (const double value : x) Require(std::isfinite(value));
        points += static_cast<std::int64_t>(x.size());
    };
    const TTextReport report = LoadText(name, {}, options, sink, progress);
    Require(report.rowsUsed == points && points > 0);
    Require(!Explain(report).Lines().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    static const QString name = folder.filePath(QStringLiteral("book.xlsx"));
    const std::vector<TPart> parts = PartsOf({reinterpret_cast<const char*>(data), size});
    if (parts.empty()) return 0;
    const std::string how = parts.back().name.empty() ? parts.back().text : "";
    const auto choice = [&how](std::size_t place) {
        return place < how.size() ? static_cast<unsigned char>(how[place]) : 0U;
    };
    std::string archive = Zip(parts, choice(0) % 2 == 0);
    Damage(archive, choice(0) % 16 < 8 ? 0 : static_cast<int>(choice(0) / 2 % 8), choice(1));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    file.write(archive.data(), static_cast<qint64>(archive.size()));
    file.close();
    try {
        Read(name.toStdString());
    } catch (const ELumoError&) {
        // What can not be read is told.
    }
    return 0;
}
