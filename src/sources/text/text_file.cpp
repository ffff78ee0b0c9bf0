#include "sources/text/text_file.h"

#include "sources/packed/compressed_file.h"
#include "sources/packed/file_signature.h"
#include "sources/spreadsheet/spreadsheet_text.h"
#include "support/code_page.h"
#include "support/errors.h"

#include <QBuffer>
#include <QFileInfo>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";
constexpr std::size_t kFirstBytes = 65536;

constexpr char16_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char* AppendUtf8(char* text, char32_t codePoint) {
    if (codePoint < 0x80) {
        *text++ = static_cast<char>(codePoint);
        return text;
    }
    const int more = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
    constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    *text++ = static_cast<char>(kLeads[more] | (codePoint >> (6 * more)));
    for (int i = more - 1; i >= 0; --i) *text++ = static_cast<char>(0x80 | ((codePoint >> (6 * i)) & 0x3F));
    return text;
}

// Without a character that the end of the piece cuts.
std::string_view WholeCharacters(std::string_view text) {
    std::size_t cut = text.size();
    while (cut > 0 && text.size() - cut < 4 && (static_cast<unsigned char>(text[cut - 1]) & 0xC0) == 0x80)
        --cut;
    const bool leads = cut > 0 && static_cast<unsigned char>(text[cut - 1]) >= 0xC0;
    return leads ? text.substr(0, cut - 1) : text;
}

// Text in Latin letters and digits has a zero in nearly every unit of UTF-16 and hardly one elsewhere.
std::optional<TTextEncoding> FindUnmarkedUtf16(std::string_view bytes) {
    const std::size_t units = bytes.size() / 2;
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i < units * 2; ++i)
        if (bytes[i] == '\0') ++zeros[i % 2];
    const auto most = [units](std::size_t count) { return units >= 2 && count * 10 >= units * 7; };
    const auto few = [units](std::size_t count) { return count * 20 <= units; };
    if (most(zeros[1]) && few(zeros[0])) return TTextEncoding::Utf16LittleEndian;
    if (most(zeros[0]) && few(zeros[1])) return TTextEncoding::Utf16BigEndian;
    return std::nullopt;
}

std::size_t MarkLength(std::string_view bytes, TTextEncoding encoding) {
    switch (encoding) {
    case TTextEncoding::Utf8:
    case TTextEncoding::Utf8WithMark:
    case TTextEncoding::CodePage: return bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    case TTextEncoding::Utf16LittleEndian: return bytes.starts_with(kUtf16LittleMark) ? 2 : 0;
    case TTextEncoding::Utf16BigEndian: break;
    }
    return bytes.starts_with(kUtf16BigMark) ? 2 : 0;
}

} // namespace

TTextEncoding FindEncoding(std::string_view firstBytes) {
    if (firstBytes.starts_with(kUtf8Mark)) return TTextEncoding::Utf8WithMark;
    if (firstBytes.starts_with(kUtf16LittleMark)) return TTextEncoding::Utf16LittleEndian;
    if (firstBytes.starts_with(kUtf16BigMark)) return TTextEncoding::Utf16BigEndian;
    if (const auto utf16 = FindUnmarkedUtf16(firstBytes)) return *utf16;
    const bool whole = firstBytes.size() < kFirstBytes;
    return IsValidUtf8(whole ? firstBytes : WholeCharacters(firstBytes)) ? TTextEncoding::Utf8
                                                                         : TTextEncoding::CodePage;
}

void TTextFile::Open(const TTextSource& source) {
    const auto refuse = [this](const std::string& reason) {
        throw EFileError("Can not open file " + m_name + ": " + reason);
    };
    if (source.Text) {
        auto memory = std::make_unique<QBuffer>();
        memory->setData(QByteArray::fromStdString(*source.Text));
        m_file = std::move(memory);
    } else {
        const TSheetPlace place = SheetPlaceOf(m_name);
        const QFileInfo info(QString::fromStdString(place.file));
        if (!info.exists()) refuse("there is no such file. Check its name and folder");
        if (info.isDir()) refuse("it is a folder. Choose a file");
        if (!info.isFile()) refuse("it is no regular file. Choose another one");
        auto file = std::make_unique<QFile>(info.filePath());
        if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            refuse(file->errorString().toStdString() + ". Check its permissions");
        std::unique_ptr<TPackedText> packed = OpenSheet(file, place.sheet);
        if (!packed) packed = TCompressedFile::Open(file);
        m_packed = packed.get();
        if (packed)
            m_file = std::move(packed);
        else
            m_file = std::move(file);
        return;
    }
    if (!m_file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        refuse(m_file->errorString().toStdString());
}

std::unique_ptr<TPackedText> TTextFile::OpenSheet(std::unique_ptr<QFile>& file, const std::string& sheet) {
    try {
        auto text = TSpreadsheetText::Open(file, sheet);
        m_sheet = text.get();
        if (text) m_sheetName = text->SheetName();
        return text;
    } catch (const EFileError& error) {
        throw EFileError("File " + SheetPlaceOf(m_name).file + " " + error.what());
    }
}

bool TTextFile::HasSheetPoint() const {
    return m_sheet && m_sheet->HasDecimalPoint();
}

std::int64_t TTextFile::Position() const {
    return m_packed ? m_packed->RawPosition() : m_position;
}

std::size_t TTextFile::AtMost(std::size_t wanted) const {
    constexpr std::size_t kLeast = 64;
    // Two bytes of UTF-16 become three, and what is compressed more.
    const auto size = static_cast<std::size_t>(m_size);
    return m_packed || size > wanted ? wanted : std::min(wanted, 2 * size + kLeast);
}

TTextFile::TTextFile(const TTextSource& source) : m_name(source.Name) {
    Open(source);
    m_size = m_packed ? m_packed->RawSize() : m_file->size();
    const auto refuseEmpty = [this] {
        throw EFileError(m_sheet ? "File " + m_name + ": the sheet \"" + *m_sheetName + "\" is empty"
                                 : "File " + m_name + " is empty. Choose another one");
    };
    if (m_size == 0) refuseEmpty();
    std::string first(AtMost(kFirstBytes), '\0');
    first.resize(ReadBytes(first.data(), first.size()));
    if (first.empty()) refuseEmpty();
    if (const auto kind = m_sheet ? std::string() : KnownBinary(first); !kind.empty())
        throw EFileError("File " + m_name + " is no text file but " + kind);
    Restart(FindEncoding(first));
}

void TTextFile::Restart(TTextEncoding encoding) {
    if (m_sheet) encoding = TTextEncoding::Utf8;
    m_encoding = encoding;
    m_heldByte = -1;
    m_heldUnit = 0;
    m_position = 0;
    if (!m_file->seek(0)) throw EFileError("Can not read file " + m_name);
    char mark[3];
    const std::size_t length = ReadBytes(mark, sizeof mark);
    const std::size_t skipped = MarkLength({mark, length}, encoding);
    m_position = static_cast<std::int64_t>(skipped);
    if (!m_file->seek(m_position)) throw EFileError("Can not read file " + m_name);
}

std::size_t TTextFile::ReadBytes(char* bytes, std::size_t capacity) {
    const qint64 count = m_file->read(bytes, static_cast<qint64>(capacity));
    if (count < 0)
        throw EFileError("Can not read file " + m_name + ": " + m_file->errorString().toStdString());
    m_position += count;
    return static_cast<std::size_t>(count);
}

std::size_t TTextFile::Read(char* text, std::size_t capacity) {
    const bool wide =
        m_encoding == TTextEncoding::Utf16LittleEndian || m_encoding == TTextEncoding::Utf16BigEndian;
    return wide ? ReadUtf16(text, capacity) : ReadBytes(text, capacity);
}

std::string TTextFile::LinesAt(std::int64_t position, std::size_t length) {
    position -= position % 2; // a unit of UTF-16, behind its mark or without one
    m_heldByte = -1;
    m_heldUnit = 0;
    if (m_file->isSequential() || !m_file->seek(position)) return {};
    m_position = position;
    std::string text(std::max<std::size_t>(length, 16), '\0');
    text.resize(Read(text.data(), text.size()));
    const std::size_t first = text.find_first_of("\r\n");
    const std::size_t last = text.find_last_of("\r\n");
    return first < last ? text.substr(first + 1, last - first) : std::string();
}

// One unit becomes at most three bytes, and a held surrogate at most three more.
std::size_t TTextFile::ReadUtf16(char* text, std::size_t capacity) {
    m_units.resize((capacity - 6) / 3 * 2);
    char* end = text;
    while (end == text) {
        const std::size_t count = ReadBytes(m_units.data(), m_units.size());
        for (std::size_t i = 0; i < count; ++i) {
            const int byte = static_cast<unsigned char>(m_units[i]);
            if (m_heldByte < 0) {
                m_heldByte = byte;
                continue;
            }
            const bool little = m_encoding == TTextEncoding::Utf16LittleEndian;
            end = TakeUnit(static_cast<char16_t>(little ? byte << 8 | m_heldByte : m_heldByte << 8 | byte),
                           end);
            m_heldByte = -1;
        }
        if (count > 0) continue;
        if (m_heldUnit != 0 || m_heldByte >= 0) end = AppendUtf8(end, kReplacement);
        m_heldUnit = 0;
        m_heldByte = -1;
        break;
    }
    return static_cast<std::size_t>(end - text);
}

char* TTextFile::TakeUnit(char16_t unit, char* text) {
    if (m_heldUnit != 0) {
        const char32_t high = m_heldUnit;
        m_heldUnit = 0;
        if (IsLowSurrogate(unit))
            return AppendUtf8(text, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00u));
        text = AppendUtf8(text, kReplacement);
    }
    if (IsHighSurrogate(unit)) {
        m_heldUnit = unit;
        return text;
    }
    return AppendUtf8(text, IsLowSurrogate(unit) ? kReplacement : unit);
}

} // namespace lumoplot
