#include "sources/spreadsheet/spreadsheet_text.h"

#include "support/errors.h"

#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::size_t kTextAtOnce = 16384;
constexpr std::int64_t kMostHeld = 4096;
constexpr std::int64_t kMostText = std::int64_t{4} << 30;

// Office files that are encrypted are in a container of another kind, whose directory says so.
void RequireNoPassword(QFile& file) {
    constexpr std::int64_t kHeader = 512;
    constexpr std::int64_t kDirectory = 4096;
    const QByteArray header = file.peek(kHeader);
    if (!header.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") || header.size() < kHeader) return;
    const int shift = qFromLittleEndian<quint16>(header.constData() + 0x1E);
    if (shift != 9 && shift != 12) return;
    const auto sector = qFromLittleEndian<quint32>(header.constData() + 0x30);
    if (!file.seek((std::int64_t{sector} + 1) << shift)) return;
    const QByteArray directory = file.read(kDirectory);
    file.seek(0);
    const QString name = QStringLiteral("EncryptedPackage");
    const QByteArrayView wide(reinterpret_cast<const char*>(name.utf16()), name.size() * 2);
    if (directory.contains(wide))
        throw EFileError("is protected with a password: save it without one and open that");
}

std::unique_ptr<TSpreadsheetBook> OpenBook(std::unique_ptr<QFile>& file) {
    RequireNoPassword(*file);
    if (!file->peek(4).startsWith("PK\3\4")) return nullptr;
    const auto archive = std::make_shared<TZipArchive>(std::move(file));
    auto book = OpenOds(archive);
    return book ? std::move(book) : OpenXlsx(archive);
}

enum class TContent { Nothing, Texts, Values };

// What the first rows hold.
TContent ContentOf(TSheetRows& rows) {
    constexpr int kRows = 1000;
    constexpr int kEnough = 2;
    TContent content = TContent::Nothing;
    std::vector<TSheetCell> cells;
    std::int64_t number = 0;
    std::int64_t repeats = 1;
    int withValues = 0;
    for (int row = 0; row < kRows && withValues < kEnough && rows.Next(cells, number, repeats); ++row) {
        if (!cells.empty()) content = TContent::Texts;
        if (std::ranges::any_of(cells, &TSheetCell::isValue)) ++withValues;
    }
    return withValues >= kEnough ? TContent::Values : content;
}

std::string NamesOf(TSpreadsheetBook& book) {
    constexpr std::size_t kMostNamed = 20;
    std::string names;
    for (std::size_t i = 0; i < kMostNamed && book.Sheet(i); ++i)
        names += (i == 0 ? "\"" : ", \"") + book.Sheet(i)->name + '"';
    return names;
}

std::size_t NamedSheet(TSpreadsheetBook& book, const std::string& name) {
    for (std::size_t i = 0; book.Sheet(i); ++i)
        if (book.Sheet(i)->name == name) return i;
    throw EFileError("has no sheet \"" + name + "\" but " + NamesOf(book));
}

std::size_t FirstSheet(TSpreadsheetBook& book) {
    std::optional<std::size_t> withTexts;
    std::optional<std::size_t> shown;
    for (std::size_t i = 0; book.Sheet(i); ++i) {
        if (book.Sheet(i)->isHidden) continue;
        const TContent content = ContentOf(*book.Rows(i));
        if (content == TContent::Values) return i;
        if (content == TContent::Texts && !withTexts) withTexts = i;
        if (!shown) shown = i;
    }
    return withTexts.value_or(shown.value_or(0));
}

bool IsFraction(const TSheetCell& cell) {
    return cell.isValue && cell.text.find('.') != std::string::npos &&
           cell.text.find(':') == std::string::npos;
}

} // namespace

TSheetPlace SheetPlaceOf(const std::string& name) {
    for (const char* ending : {".xlsx#", ".xlsm#", ".xltx#", ".ods#", ".ots#"}) {
        const std::string mark(ending);
        const auto found = std::ranges::search(
            name, mark, [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + ('a' - 'A') : a) == b; });
        if (found.empty()) continue;
        if (QFileInfo::exists(QString::fromStdString(name))) break;
        const auto hash = static_cast<std::size_t>(found.begin() - name.begin()) + mark.size() - 1;
        return {name.substr(0, hash), name.substr(hash + 1)};
    }
    return {name, {}};
}

std::string WithSheet(const std::string& name, const std::string& sheet) {
    const std::string file = SheetPlaceOf(name).file;
    return sheet.empty() ? file : file + '#' + sheet;
}

std::vector<TBookSheet> SheetsOf(const std::string& fileName) {
    auto file = std::make_unique<QFile>(QString::fromStdString(fileName));
    std::vector<TBookSheet> sheets;
    if (!QFileInfo(*file).isFile() || !file->open(QIODevice::ReadOnly)) return sheets;
    try {
        const auto book = OpenBook(file);
        for (std::size_t i = 0; book && book->Sheet(i); ++i) sheets.push_back(*book->Sheet(i));
    } catch (const EFileError&) {
        // Who reads it is told why it can not be read.
    }
    return sheets;
}

std::unique_ptr<TSpreadsheetText> TSpreadsheetText::Open(std::unique_ptr<QFile>& file,
                                                         const std::string& sheet) {
    const QString name = file->fileName();
    auto book = OpenBook(file);
    if (book) {
        const std::size_t index = sheet.empty() ? FirstSheet(*book) : NamedSheet(*book, sheet);
        return std::unique_ptr<TSpreadsheetText>(new TSpreadsheetText(std::move(book), index));
    }
    if (file) return nullptr;
    file = std::make_unique<QFile>(name);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw EFileError("can not be read: " + file->errorString().toStdString());
    return nullptr;
}

TSpreadsheetText::TSpreadsheetText(std::unique_ptr<TSpreadsheetBook> book, std::size_t sheet)
    : m_book(std::move(book)), m_sheet(sheet), m_sheetName(m_book->Sheet(sheet)->name),
      m_size(std::max<qint64>(m_book->Size(sheet), 1)) {
    QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 TSpreadsheetText::RawPosition() const {
    if (m_isAtEnd) return m_size;
    return m_rows ? std::min<qint64>(m_rows->Unpacked(), m_size) : 0;
}

bool TSpreadsheetText::seek(qint64 position) {
    Restart();
    while (position > 0) {
        char skipped[256];
        const qint64 count = readData(skipped, std::min<qint64>(position, sizeof skipped));
        if (count <= 0) return false;
        position -= count;
    }
    return true;
}

void TSpreadsheetText::Restart() {
    m_replayed = 0;
    m_isAtEnd = false;
    if (m_isFrontAll) return;
    m_isFrontAll = true;
    m_front.clear();
    m_rows.reset();
    m_text.clear();
    m_given = 0;
    m_repeats = m_lastRow = m_emptyRows = m_total = 0;
    m_width = 0;
    m_problem.clear();
}

qint64 TSpreadsheetText::readData(char* data, qint64 capacity) {
    if (m_replayed < m_front.size()) {
        const std::size_t count = std::min(static_cast<std::size_t>(capacity), m_front.size() - m_replayed);
        std::copy_n(m_front.data() + m_replayed, count, data);
        m_replayed += count;
        return static_cast<qint64>(count);
    }
    try {
        if (m_given == m_text.size() && m_problem.empty()) Fill();
    } catch (const std::exception& error) { // none may pass through the device
        m_problem = error.what();
    }
    if (!m_problem.empty()) {
        setErrorString(QString::fromStdString(m_problem));
        return -1;
    }
    const std::size_t count = std::min(static_cast<std::size_t>(capacity), m_text.size() - m_given);
    std::copy_n(m_text.data() + m_given, count, data);
    m_given += count;
    KeepFront({data, count});
    m_isAtEnd = count == 0 && capacity > 0;
    return static_cast<qint64>(count);
}

// What is read again and again until it is known how; some sheets stand behind others that are to be
// unpacked.
void TSpreadsheetText::KeepFront(std::string_view text) {
    constexpr std::size_t kMostFront = std::size_t{1} << 20;
    m_isFrontAll = m_isFrontAll && m_front.size() + text.size() <= kMostFront;
    if (!m_isFrontAll) m_front = {};
    if (m_isFrontAll) m_front += text;
    m_replayed = m_front.size();
}

void TSpreadsheetText::Fill() {
    if (!m_rows) m_rows = m_book->Rows(m_sheet);
    m_text.clear();
    m_given = 0;
    while (m_text.size() < kTextAtOnce && (m_repeats > 0 || NextRow()))
        for (; m_repeats > 0 && m_text.size() < kTextAtOnce; --m_repeats) AppendRow();
    m_total += static_cast<std::int64_t>(m_text.size());
    if (m_total > kMostText) throw EFileError("holds a sheet of more than 4 GB of text");
}

// Rows with cells, or so many empty ones that who reads them gets a chance to stop.
bool TSpreadsheetText::NextRow() {
    std::int64_t number = 0;
    std::int64_t repeats = 1;
    for (std::int64_t looked = 1; m_rows->Next(m_cells, number, repeats); ++looked) {
        m_emptyRows += number - m_lastRow - 1;
        m_lastRow = number + repeats - 1;
        if (m_cells.empty()) m_emptyRows += repeats;
        if (m_cells.empty() && looked < kMostHeld) continue;
        m_text.append(static_cast<std::size_t>(std::min(m_emptyRows, kMostSheetRows)), '\n');
        m_emptyRows = 0;
        m_repeats = m_cells.empty() ? 0 : repeats;
        return true;
    }
    return false;
}

// Cells that are empty at its end are told, too, as far as rows in front of it went.
void TSpreadsheetText::AppendRow() {
    m_width = std::max(m_width, m_cells.size());
    for (std::size_t i = 0; i < m_width; ++i) {
        if (i > 0) m_text += '\t';
        if (i >= m_cells.size()) continue;
        AppendCell(m_cells[i].text);
        m_hasPoint = m_hasPoint || IsFraction(m_cells[i]);
    }
    m_text += '\n';
}

void TSpreadsheetText::AppendCell(const std::string& text) {
    if (text.find_first_of("\t\n\r\"") == std::string::npos) {
        m_text += text;
        return;
    }
    m_text += '"';
    for (const char c : text) m_text.append(c == '"' ? 2 : 1, c);
    m_text += '"';
}

} // namespace lumoplot
